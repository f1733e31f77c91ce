#include "python/src/records.h"

#include "format/vor2.h"

#include <chrono>
#include <cstring>
#include <map>
#include <thread>

namespace vor2::python {

PyObject* error_type = nullptr;

namespace {

using VOR2_LOADER::ARRAY;
using VOR2_LOADER::TEXT;

struct RecordObject {
    PyObject base;
    Handle* handle;
};

PyTypeObject* record_type = nullptr;
std::map<const ClassInfo*, PyTypeObject*>& types() {
    static std::map<const ClassInfo*, PyTypeObject*> all;
    return all;
}

const ClassInfo* class_of_type(const PyTypeObject* type) {
    for (const auto& [info, known] : types()) {
        if (known == type) return info;
    }
    return nullptr;
}

/// Runs what may throw for a caller that is C.
template<class CALL, class RESULT>
RESULT guarded(const CALL& call, RESULT failed) {
    try {
        return call();
    } catch (py::error_already_set& error) {
        error.restore();
    } catch (const py::builtin_exception& error) {
        error.set_error();
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
    return failed;
}

TEXT to_text(py::handle value, const std::string& name) {
    constexpr std::size_t longest = 0xFFFF;
    if (!PyUnicode_Check(value.ptr()))
        throw py::type_error(name + ": a " + Py_TYPE(value.ptr())->tp_name + " is given, a str is needed");
    const auto bytes =
        py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(value.ptr(), "utf-16-le", "surrogatepass"));
    if (!bytes) throw py::error_already_set();
    const std::string_view units = bytes;
    if (units.size() / sizeof(char16_t) > longest)
        throw py::value_error(name + ": a text of more than 65,535 units doesn't fit a file");
    std::u16string text(units.size() / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), units.data(), units.size());
    return TEXT(std::u16string_view(text));
}

py::object get_texts(const ARRAY<TEXT>& texts) {
    py::tuple all(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) all[i] = text_of(texts[i]);
    return py::object(all);
}

ARRAY<TEXT> to_texts(py::handle value, const std::string& name) {
    if (PyUnicode_Check(value.ptr())) throw py::type_error(name + ": a str is given, a list of them is needed");
    ARRAY<TEXT> texts;
    for (const py::handle one : py::iter(value)) texts.push_back(to_text(one, name));
    return texts;
}

py::object get_field(const Place& owner, const Field& field) {
    const Place place = owner.member(field.offset);
    void* address = place.address();
    switch (field.kind) {
    case Kind::boolean:
        return py::bool_(*static_cast<bool*>(address));
    case Kind::number:
        return get_number(field.number, address);
    case Kind::tuple:
    case Kind::matrix:
        return view_tuple(place, field);
    case Kind::text:
        return text_of(*static_cast<TEXT*>(address));
    case Kind::texts:
        return get_texts(*static_cast<ARRAY<TEXT>*>(address));
    case Kind::record:
        return make_record(place, field.record());
    case Kind::optional:
        return get_optional(place, *field.optional);
    case Kind::numbers:
        return view_list(place, field);
    case Kind::records:
    case Kind::optionals:
        return make_list(place, field);
    }
    return py::none();
}

void assign_numbers(const Place& list, const Field& field, py::handle value) {
    const py::array numbers = to_numbers(value, field.number, field.width, true, field.name);
    void* address = list.address();
    const void* old_data = field.list->data(address);
    const auto count = static_cast<u64>(numbers.shape(0));
    Kept old = field.list->exchange(address, numbers.data(), count);
    if (field.lead > 0) {
        // The elements are objects, into which the numbers are put one by one.
        auto* to = static_cast<char*>(field.list->data(address)) + field.lead;
        const auto* from = static_cast<const char*>(numbers.data());
        const std::size_t size = field.width * sizeof(float);
        for (u64 i = 0; i < count; ++i) std::memcpy(to + i * field.list->stride, from + i * size, size);
    }
    let_go(list.keeper(), old_data, std::move(old));
}

void set_field(const Place& owner, const Field& field, py::handle value) {
    const Place place = owner.member(field.offset);
    void* address = place.address();
    switch (field.kind) {
    case Kind::boolean: {
        const int truth = PyObject_IsTrue(value.ptr());
        if (!PyBool_Check(value.ptr()) && std::strcmp(Py_TYPE(value.ptr())->tp_name, "numpy.bool_") != 0)
            throw py::type_error(field.name + ": a " + Py_TYPE(value.ptr())->tp_name + " is given, a bool is needed");
        *static_cast<bool*>(address) = truth > 0;
        break;
    }
    case Kind::number:
        put_number(value, field.number, address, field.name);
        break;
    case Kind::tuple: {
        const py::array numbers = to_numbers(value, field.number, field.width, false, field.name);
        std::memcpy(address, numbers.data(), field.width * sizeof(float));
        break;
    }
    case Kind::matrix:
        throw py::attribute_error(field.name + " follows from the tracks and can't be set");
    case Kind::text:
        *static_cast<TEXT*>(address) = to_text(value, field.name);
        break;
    case Kind::texts:
        *static_cast<ARRAY<TEXT>*>(address) = to_texts(value, field.name);
        break;
    case Kind::record:
        assign_record(place, *field.record(), value, field.name);
        break;
    case Kind::optional:
        assign_optional(place, *field.optional, value, field.name);
        break;
    case Kind::numbers:
        assign_numbers(place, field, value);
        break;
    case Kind::records:
    case Kind::optionals:
        assign_list(place, field, value);
        break;
    }
    if (field.touched != nullptr) field.touched(owner.address());
    owner.keeper().is_changed = true;
}

/// The field of that name in the object's own class: the attribute may be a base's.
const Field& field_of(const Handle& handle, void* closure) {
    const auto& field = *static_cast<const Field*>(closure);
    const Field* own = handle.info->find(field.name);
    return own == nullptr ? field : *own;
}

PyObject* get_attribute(PyObject* self, void* closure) {
    return guarded(
        [&]() -> PyObject* {
            Handle& handle = *handle_of(self);
            wait_until_idle(handle.place.keeper());
            return get_field(handle.place, field_of(handle, closure)).release().ptr();
        },
        static_cast<PyObject*>(nullptr));
}

int set_attribute(PyObject* self, PyObject* value, void* closure) {
    return guarded(
        [&] {
            Handle& handle = *handle_of(self);
            const Field& field = field_of(handle, closure);
            if (value == nullptr) throw py::attribute_error(field.name + " can't be deleted");
            wait_until_idle(handle.place.keeper());
            set_field(handle.place, field, value);
            return 0;
        },
        -1);
}

PyObject* new_record(PyTypeObject* type, PyObject* positional, PyObject* named) {
    return guarded(
        [&]() -> PyObject* {
            const ClassInfo* info = class_of_type(type);
            const std::string name(type->tp_name);
            if (info == nullptr) throw py::type_error(name + " is what several classes share; make one of those");
            if (PyTuple_GET_SIZE(positional) > 0) throw py::type_error(name + " takes its fields by their names");
            py::object made = make_root(info->create(), *info);
            if (named != nullptr) {
                for (const auto& [field, value] : py::reinterpret_borrow<py::dict>(named))
                    py::setattr(made, field, value);
            }
            return made.release().ptr();
        },
        static_cast<PyObject*>(nullptr));
}

void free_record(PyObject* self) {
    PyTypeObject* type = Py_TYPE(self);
    delete reinterpret_cast<RecordObject*>(self)->handle;
    type->tp_free(self);
    Py_DECREF(type);
}

PyObject* compare_records(PyObject* a, PyObject* b, int operation) {
    return guarded(
        [&]() -> PyObject* {
            const Handle* first = handle_of(a);
            const Handle* second = handle_of(b);
            if ((operation != Py_EQ && operation != Py_NE) || first == nullptr || second == nullptr)
                return py::handle(Py_NotImplemented).inc_ref().ptr();
            wait_until_idle(first->place.keeper());
            wait_until_idle(second->place.keeper());
            const bool equal = first->info == second->info && first->info->equal(first->address(), second->address());
            return py::bool_(equal == (operation == Py_EQ)).release().ptr();
        },
        static_cast<PyObject*>(nullptr));
}

PyObject* tell_record(PyObject* self) {
    return guarded(
        [&]() -> PyObject* {
            const Handle& handle = *handle_of(self);
            wait_until_idle(handle.place.keeper());
            std::string text = "<" + handle.info->name;
            const Field* name = handle.info->find("name");
            if (name != nullptr && name->kind == Kind::text)
                text += " " + py::repr(get_field(handle.place, *name)).cast<std::string>();
            return py::str(text + ">").release().ptr();
        },
        static_cast<PyObject*>(nullptr));
}

PyObject* copy_record(PyObject* self, PyObject* /*none*/) {
    return guarded(
        [&]() -> PyObject* {
            const Handle& handle = *handle_of(self);
            wait_until_idle(handle.place.keeper());
            return make_root(handle.info->clone(handle.address()), *handle.info).release().ptr();
        },
        static_cast<PyObject*>(nullptr));
}

PyObject* deep_copy_record(PyObject* self, PyObject* /*memo*/) {
    return copy_record(self, nullptr);
}

PyMethodDef record_methods[] = {
    {"copy", copy_record, METH_NOARGS, "A copy with all that it holds, which belongs to nothing."},
    {"__copy__", copy_record, METH_NOARGS, nullptr},
    {"__deepcopy__", deep_copy_record, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyTypeObject* make_type(const std::string& name, PyTypeObject* base, PyGetSetDef* attributes) {
    std::vector<PyType_Slot> slots;
    if (base == nullptr) {
        slots = {{Py_tp_new, reinterpret_cast<void*>(new_record)},
                 {Py_tp_dealloc, reinterpret_cast<void*>(free_record)},
                 {Py_tp_richcompare, reinterpret_cast<void*>(compare_records)},
                 {Py_tp_hash, reinterpret_cast<void*>(PyObject_HashNotImplemented)},
                 {Py_tp_repr, reinterpret_cast<void*>(tell_record)},
                 {Py_tp_methods, record_methods}};
    }
    if (attributes != nullptr) slots.push_back({Py_tp_getset, attributes});
    slots.push_back({0, nullptr});
    // The type keeps the name's characters.
    const std::string* full_name = new std::string("vor2." + name);
    PyType_Spec description{full_name->c_str(), sizeof(RecordObject), 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE,
                            slots.data()};
    PyObject* bases = base == nullptr ? nullptr : PyTuple_Pack(1, base);
    PyObject* type = PyType_FromSpecWithBases(&description, bases);
    Py_XDECREF(bases);
    if (type == nullptr) throw py::error_already_set();
    return reinterpret_cast<PyTypeObject*>(type);
}

PyGetSetDef* attributes_of(const ClassInfo& info) {
    auto* attributes = new PyGetSetDef[info.fields.size() + 1]();
    for (std::size_t i = 0; i < info.fields.size(); ++i)
        attributes[i] = {info.fields[i].name.c_str(), get_attribute, set_attribute, nullptr,
                         const_cast<Field*>(&info.fields[i])};
    return attributes;
}

} // namespace

Handle* handle_of(py::handle object) {
    if (!PyObject_TypeCheck(object.ptr(), record_type)) return nullptr;
    return reinterpret_cast<RecordObject*>(object.ptr())->handle;
}

Handle& wanted(py::handle object, const ClassInfo& info, const std::string& name) {
    Handle* handle = handle_of(object);
    if (handle == nullptr || handle->info != &info)
        throw py::type_error(name + ": a " + Py_TYPE(object.ptr())->tp_name + " is given, a " + info.name +
                             " is needed");
    return *handle;
}

py::object make_record(const Place& place, const ClassInfo* info) {
    PyTypeObject* type = types().at(info);
    PyObject* made = type->tp_alloc(type, 0);
    if (made == nullptr) throw py::error_already_set();
    reinterpret_cast<RecordObject*>(made)->handle = new Handle{place, info};
    return py::reinterpret_steal<py::object>(made);
}

py::object make_root(void* object, const ClassInfo& info) {
    return make_record(Place(Anchor::make_root(object, info)), &info);
}

py::object get_optional(const Place& place, const OptionalOperations& operations) {
    const OptionalOperations::Object object = operations.get(place.address());
    if (object.address == nullptr) return py::none();
    return make_record(place.object(object.address), object.info);
}

void assign_record(const Place& place, const ClassInfo& info, py::handle value, const std::string& name) {
    const Handle* handle = handle_of(value);
    const ClassInfo::Numbers numbers = info.as_numbers();
    if (handle == nullptr && numbers.width > 0) {
        const py::array given = to_numbers(value, numbers.number, numbers.width, false, name);
        std::memcpy(static_cast<char*>(place.address()) + numbers.lead, given.data(), numbers.width * sizeof(float));
        return;
    }
    const Handle& from = wanted(value, info, name);
    wait_until_idle(from.place.keeper());
    Kept old = info.exchange(place.address(), from.address());
    if (numbers.width == 0) place.anchor()->keep(std::move(old));
}

void assign_optional(const Place& place, const OptionalOperations& operations, py::handle value,
                     const std::string& name) {
    void* made = nullptr;
    const ClassInfo* info = nullptr;
    if (!value.is_none()) {
        const Handle* from = handle_of(value);
        if (from == nullptr || from->info->family != &operations)
            throw py::type_error(name + ": takes no " + Py_TYPE(value.ptr())->tp_name);
        wait_until_idle(from->place.keeper());
        info = from->info;
        made = info->clone(from->address());
    }
    const void* old_address = operations.get(place.address()).address;
    Kept old = operations.exchange(place.address(), made, info);
    if (old_address != nullptr) let_go(place.keeper(), old_address, std::move(old));
}

void wait_until_idle(Keeper& keeper) {
    while (keeper.is_busy) {
        const py::gil_scoped_release release;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

py::str text_of(const VOR2_LOADER::TEXT& text) {
    int little_endian = -1;
    PyObject* made = PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.c_str()),
                                           static_cast<py::ssize_t>(text.length() * sizeof(char16_t)), "surrogatepass",
                                           &little_endian);
    if (made == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

py::str text_of(const std::string& utf8) {
    PyObject* made = PyUnicode_DecodeUTF8(utf8.data(), static_cast<py::ssize_t>(utf8.size()), "surrogateescape");
    if (made == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

void raise_error(const std::string& line) {
    PyErr_SetObject(error_type, text_of(line).ptr());
    throw py::error_already_set();
}

void add_records(py::module_& module) {
    record_type = make_type("Record", nullptr, nullptr);
    module.add_object("Record", py::handle(reinterpret_cast<PyObject*>(record_type)));
    std::map<std::string, PyTypeObject*> by_name;
    for (const ClassInfo* info : all_classes()) {
        PyTypeObject* base = record_type;
        for (const std::string& name : info->bases) {
            PyTypeObject*& type = by_name[name];
            if (type == nullptr) {
                type = make_type(name, base, nullptr);
                module.add_object(name.c_str(), py::handle(reinterpret_cast<PyObject*>(type)));
            }
            base = type;
        }
        PyTypeObject* type = make_type(info->name, base, attributes_of(*info));
        by_name[info->name] = type;
        types()[info] = type;
        module.add_object(info->name.c_str(), py::handle(reinterpret_cast<PyObject*>(type)));
    }
}

} // namespace vor2::python
