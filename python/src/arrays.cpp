#include "python/src/arrays.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace vor2::python {

namespace {

py::dtype dtype_of(char number) {
    if (number == '?') return py::dtype("?");
    return py::dtype(std::string(number == 'd' ? "f8" : number == 'f' ? "f4" : number == 'i' ? "i4" : "u4"));
}

/// What an array holds, so that the memory it looks into stays.
struct View {
    AnchorRef anchor;
    explicit View(AnchorRef of) : anchor(std::move(of)) {
        ++anchor->views;
        ++anchor->keeper()->views;
        anchor->keeper()->is_changed = true;
    }
    View(const View&) = delete;
    View& operator=(const View&) = delete;
    ~View() {
        --anchor->views;
        --anchor->keeper()->views;
    }
};

py::array view(const AnchorRef& anchor, const void* first, char number, std::vector<py::ssize_t> shape,
               std::vector<py::ssize_t> strides) {
    const py::capsule base(new View(anchor), [](void* held) { delete static_cast<View*>(held); });
    return py::array(dtype_of(number), std::move(shape), std::move(strides), first, base);
}

py::ssize_t size_of(char number) {
    return number == 'd' ? 8 : number == '?' ? 1 : 4;
}

/// Rows of `width` numbers, or the numbers alone where there is one each.
py::array view_rows(const AnchorRef& anchor, const char* first, char number, u32 width, u64 count, std::size_t stride) {
    std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(count)}, strides{static_cast<py::ssize_t>(stride)};
    if (width > 1) {
        shape.push_back(width);
        strides.push_back(size_of(number));
    }
    return view(anchor, first, number, std::move(shape), std::move(strides));
}

py::array nothing(char number, u32 width) {
    std::vector<py::ssize_t> shape{0};
    if (width > 1) shape.push_back(width);
    return py::array(dtype_of(number), std::move(shape));
}

std::string told(py::handle value) {
    return py::str(value).cast<std::string>();
}

bool has_shape(const py::array& array, u32 width, bool is_list) {
    const py::ssize_t rows = is_list ? 1 : 0;
    if (width == 1 && is_list) return array.ndim() == 1;
    return array.ndim() == rows + 1 && array.shape(rows) == width;
}

std::string wanted_shape(u32 width, bool is_list) {
    const std::string number = std::to_string(width);
    if (!is_list) return "(" + number + ",)";
    return width == 1 ? "(n,)" : "(n, " + number + ")";
}

float narrowed(double wide, const std::string& name, const char* what) {
    const auto narrow = static_cast<float>(wide);
    if (std::isinf(narrow) && !std::isinf(wide))
        throw py::value_error(name + ": " + what + " is too large for single precision");
    return narrow;
}

py::array narrowed(const py::array& wide, const std::string& name) {
    py::array made(dtype_of('f'), std::vector<py::ssize_t>(wide.shape(), wide.shape() + wide.ndim()));
    const auto* from = static_cast<const double*>(wide.data());
    auto* to = static_cast<float*>(made.mutable_data());
    for (py::ssize_t i = 0; i < wide.size(); ++i) to[i] = narrowed(from[i], name, "a number");
    return made;
}

void refuse_out_of_range(const py::array& array, char number, const std::string& name) {
    const py::int_ least(number == 'I' ? std::int64_t{0} : std::numeric_limits<std::int32_t>::min());
    const py::int_ most(number == 'I' ? std::int64_t{std::numeric_limits<u32>::max()}
                                      : std::int64_t{std::numeric_limits<std::int32_t>::max()});
    const py::int_ smallest(array.attr("min")()), largest(array.attr("max")());
    if (smallest < least || largest > most)
        throw py::value_error(name + ": " + told(smallest < least ? smallest : largest) + " isn't from " + told(least) +
                              " to " + told(most));
}

py::array contiguous(const py::array& array, char number) {
    return py::module_::import("numpy").attr("ascontiguousarray")(array, dtype_of(number));
}

} // namespace

py::array view_list(const Place& list, const Field& field) {
    const u64 count = field.list->size(list.address());
    if (count == 0) return nothing(field.number, field.width);
    char* data = static_cast<char*>(field.list->data(list.address()));
    const AnchorRef anchor = Anchor::of_block(list.anchor(), data, field.list->stride);
    anchor->touched = field.touched;
    return view_rows(anchor, data + field.lead, field.number, field.width, count, field.list->stride);
}

py::array view_tuple(const Place& value, const Field& field) {
    if (field.kind != Kind::matrix) return view(value.anchor(), value.address(), field.number, {field.width}, {4});
    py::array matrix = view(value.anchor(), value.address(), field.number, {3, 4}, {16, 4});
    matrix.attr("setflags")(py::arg("write") = false);
    return matrix;
}

py::array view_column(const Place& list, const ListOperations& operations, const Column& column) {
    const u64 count = operations.size(list.address());
    if (count == 0) return nothing(column.number, column.width);
    char* data = static_cast<char*>(operations.data(list.address()));
    const AnchorRef anchor = Anchor::of_block(list.anchor(), data, operations.stride);
    return view_rows(anchor, data + column.offset, column.number, column.width, count, operations.stride);
}

py::array to_numbers(py::handle value, char number, u32 width, bool is_list, const std::string& name) {
    const py::array array = py::array::ensure(value);
    if (!array) {
        PyErr_Clear();
        throw py::type_error(name + ": no array of numbers can be made of a " + Py_TYPE(value.ptr())->tp_name);
    }
    const char sort = array.dtype().kind();
    const bool is_empty = array.size() == 0 && array.ndim() <= 2 && is_list;
    if (is_empty && (array.ndim() == 1 || has_shape(array, width, is_list))) return nothing(number, width);
    const bool is_whole = sort == 'i' || sort == 'u';
    if (!is_whole && (number != 'f' || sort != 'f'))
        throw py::type_error(name + ": numbers of the type " + told(array.dtype()) + " are given, " +
                             (number == 'f'   ? "float32"
                              : number == 'i' ? "int32"
                                              : "uint32") +
                             " is needed");
    if (!has_shape(array, width, is_list))
        throw py::value_error(name + ": an array of the shape " + told(array.attr("shape")) + " is given, " +
                              wanted_shape(width, is_list) + " is needed");
    if (number != 'f') {
        refuse_out_of_range(array, number, name);
        return contiguous(array, number);
    }
    if (sort == 'f' && array.itemsize() == 4) return contiguous(array, 'f');
    return narrowed(contiguous(array, 'd'), name);
}

void put_number(py::handle value, char number, void* to, const std::string& name) {
    const auto refuse = [&](const char* wanted) {
        PyErr_Clear();
        throw py::type_error(name + ": a " + Py_TYPE(value.ptr())->tp_name + " is given, " + wanted + " is needed");
    };
    if (PyBool_Check(value.ptr())) refuse(number == 'f' || number == 'd' ? "a number" : "a whole number");
    if (number == 'f' || number == 'd') {
        const double wide = PyFloat_AsDouble(value.ptr());
        if (wide == -1 && PyErr_Occurred() != nullptr) refuse("a number");
        if (number == 'd') {
            std::memcpy(to, &wide, sizeof wide);
            return;
        }
        const float narrow = narrowed(wide, name, told(value).c_str());
        std::memcpy(to, &narrow, sizeof narrow);
        return;
    }
    if (PyIndex_Check(value.ptr()) == 0) refuse("a whole number");
    const py::object whole = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!whole) throw py::error_already_set();
    int overflow = 0;
    const long long wide = PyLong_AsLongLongAndOverflow(whole.ptr(), &overflow);
    const long long least = number == 'I' ? 0 : std::numeric_limits<std::int32_t>::min();
    const long long most = number == 'I' ? std::numeric_limits<u32>::max() : std::numeric_limits<std::int32_t>::max();
    if (overflow != 0 || wide < least || wide > most)
        throw py::value_error(name + ": " + told(whole) + " isn't from " + std::to_string(least) + " to " +
                              std::to_string(most));
    const auto narrow = static_cast<u32>(wide);
    std::memcpy(to, &narrow, sizeof narrow);
}

py::object get_number(char number, const void* from) {
    switch (number) {
    case 'd': {
        double value = 0;
        std::memcpy(&value, from, sizeof value);
        return py::float_(value);
    }
    case 'f': {
        float value = 0;
        std::memcpy(&value, from, sizeof value);
        return py::float_(double{value});
    }
    case 'i': {
        std::int32_t value = 0;
        std::memcpy(&value, from, sizeof value);
        return py::int_(value);
    }
    default: {
        u32 value = 0;
        std::memcpy(&value, from, sizeof value);
        return py::int_(value);
    }
    }
}

} // namespace vor2::python
