#pragma once

/// Numbers of a scene as numpy arrays that look straight into it, and arrays of a script as numbers of a scene.

#include "python/src/places.h"

#include <pybind11/numpy.h>

namespace vor2::python {

namespace py = pybind11;

/// The numbers of a list's elements: one dimension, or a row for each element.
py::array view_list(const Place& list, const Field& field);
/// The numbers of a vector, or the rows of a matrix, which can't be written to.
py::array view_tuple(const Place& value, const Field& field);
/// How numbers lie that each element of a list holds.
struct Column {
    std::ptrdiff_t offset;
    char number;
    u32 width;
};
/// That field of every element; none where the list is empty.
py::array view_column(const Place& list, const ListOperations& operations, const Column& column);

/// The numbers of whatever numpy makes an array of, in the given type, side by side. Raises a TypeError for numbers of
/// another sort, and a ValueError for another shape than (`width`), or with `is_list` (n) or (n, `width`), and for
/// numbers that the type can't hold. `name` is what the message calls it.
py::array to_numbers(py::handle value, char number, u32 width, bool is_list, const std::string& name);
/// The same for one number, which it writes to `to`.
void put_number(py::handle value, char number, void* to, const std::string& name);
py::object get_number(char number, const void* from);

} // namespace vor2::python
