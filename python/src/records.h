#pragma once

/// The scene's objects in Python: a class for each of the library's, with an attribute for each field of its record.

#include "python/src/arrays.h"
#include "support/text/text.h"

namespace vor2::python {

/// What a Python object of a record refers to.
struct Handle {
    Place place;
    const ClassInfo* info;
    void* address() const { return place.address(); }
};

/// The record behind a Python object; null where that is something else.
Handle* handle_of(py::handle object);
/// The same for an argument that must be a record of that class: raises a TypeError in its name for all else.
Handle& wanted(py::handle object, const ClassInfo& info, const std::string& name);
py::object make_record(const Place& place, const ClassInfo* info);
/// A record that nothing owns but the script.
py::object make_root(void* object, const ClassInfo& info);

/// Puts a copy of whatever a script gave for a record into the one that lies there.
void assign_record(const Place& place, const ClassInfo& info, py::handle value, const std::string& name);
/// The same for an object that may be absent.
void assign_optional(const Place& place, const OptionalOperations& operations, py::handle value,
                     const std::string& name);
/// And a record or None for the object that is there.
py::object get_optional(const Place& place, const OptionalOperations& operations);

py::str text_of(const VOR2_LOADER::TEXT& text);
/// What of it isn't UTF-8 goes back to the same bytes.
py::str text_of(const std::string& utf8);

/// Waits until the library is done with what another thread asked of it.
void wait_until_idle(Keeper& keeper);

/// `vor2.Error`, made by the module.
extern PyObject* error_type;
[[noreturn]] void raise_error(const std::string& line);

void add_records(py::module_& module);
void add_lists(py::module_& module);
py::object make_list(const Place& list, const Field& field);
/// Puts copies of all that a script gave into a list of records.
void assign_list(const Place& list, const Field& field, py::handle value);

} // namespace vor2::python
