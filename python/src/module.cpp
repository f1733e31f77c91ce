#include "python/src/work.h"

#include <pybind11/stl.h>

namespace py = pybind11;

namespace {

/// "boolean", "number" and so on, for the types that editors are told.
const char* kind_name(vor2::python::Kind kind) {
    using vor2::python::Kind;
    switch (kind) {
    case Kind::boolean:
        return "boolean";
    case Kind::number:
        return "number";
    case Kind::tuple:
        return "tuple";
    case Kind::matrix:
        return "matrix";
    case Kind::text:
        return "text";
    case Kind::texts:
        return "texts";
    case Kind::record:
        return "record";
    case Kind::optional:
        return "optional";
    case Kind::numbers:
        return "numbers";
    case Kind::records:
        return "records";
    case Kind::optionals:
        return "optionals";
    }
    return "";
}

/// Of each class its name, its bases, and its fields with name, kind, type of numbers, and the class or family that
/// they hold.
py::list tell_classes() {
    py::list all;
    for (const vor2::python::ClassInfo* info : vor2::python::all_classes()) {
        py::list fields;
        for (const vor2::python::Field& field : info->fields) {
            fields.append(py::make_tuple(field.name, kind_name(field.kind), std::string(1, field.number), field.width,
                                         field.holds));
        }
        all.append(py::make_tuple(info->name, py::cast(info->bases), fields));
    }
    return all;
}

} // namespace

PYBIND11_MODULE(_core, module) {
    namespace python = vor2::python;
    python::error_type = PyErr_NewExceptionWithDoc(
        "vor2.Error", "What the library or the tool refused, in its own words. `lines` holds all that was told.",
        nullptr, nullptr);
    if (python::error_type == nullptr) throw py::error_already_set();
    module.add_object("Error", py::handle(python::error_type));
    python::add_records(module);
    python::add_lists(module);
    python::add_scene_work(module);
    python::add_pose(module);
    python::add_verbs(module);
    module.def("tell_classes", tell_classes);
    module.attr("version") = VOR2_VERSION;
}
