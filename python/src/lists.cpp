#include "python/src/records.h"

#include <algorithm>
#include <cstring>

namespace vor2::python {

namespace {

/// The order of a list of `count` elements of which the first are kept and the rest are new.
std::vector<std::ptrdiff_t> keeping(std::size_t kept, std::size_t count) {
    std::vector<std::ptrdiff_t> order;
    order.reserve(count);
    for (std::size_t i = 0; i < count; ++i) order.push_back(i < kept ? static_cast<std::ptrdiff_t>(i) : -1);
    return order;
}

/// A list of records or of optional ones, as a sequence.
struct RecordList {
    Place list;
    const Field* field;

    const ListOperations& operations() const { return *field->list; }
    bool of_optionals() const { return field->kind == Kind::optionals; }
    std::size_t size() const {
        wait_until_idle(list.keeper());
        return operations().size(list.address());
    }
    std::size_t index_of(py::ssize_t index) const {
        const auto count = static_cast<py::ssize_t>(size());
        if (index < 0) index += count;
        if (index < 0 || index >= count) throw py::index_error(field->name + ": no element has that index");
        return static_cast<std::size_t>(index);
    }
    void* slot(std::size_t index) const {
        return static_cast<char*>(operations().data(list.address())) + index * operations().stride;
    }
    py::object get(py::ssize_t at) const {
        const std::size_t index = index_of(at);
        if (!of_optionals()) return make_record(list.element(operations(), index), field->record());
        const OptionalOperations::Object object = field->optional->get(slot(index));
        if (object.address == nullptr) return py::none();
        return make_record(list.object(object.address), object.info);
    }

    /// The elements with those indices, and new ones for negative numbers, are the list from here on.
    void reorder(const std::vector<std::ptrdiff_t>& order, u64 room = 0) const {
        list.keeper().is_changed = true;
        const std::size_t count = size();
        if (of_optionals()) {
            std::vector<char> stays(count, 0);
            for (const std::ptrdiff_t index : order) {
                if (index >= 0) stays[static_cast<std::size_t>(index)] = 1;
            }
            for (std::size_t i = 0; i < count; ++i) {
                if (!stays[i]) take(i);
            }
            operations().rebuild(list.address(), order, room);
            return;
        }
        const AnchorRef anchor = Anchor::find(list.keeper(), operations().data(list.address()));
        Kept old = operations().rebuild(list.address(), order, room);
        if (anchor) anchor->move_elements(operations().data(list.address()), order, count, std::move(old));
    }
    void take(std::size_t index) const {
        const void* address = field->optional->get(slot(index)).address;
        Kept old = field->optional->exchange(slot(index), nullptr, nullptr);
        if (address != nullptr) let_go(list.keeper(), address, std::move(old));
    }

    void grow() const {
        const std::size_t count = size();
        const bool is_watched = count > 0 && !of_optionals() && count == operations().capacity(list.address()) &&
                                Anchor::find(list.keeper(), operations().data(list.address())) != nullptr;
        list.keeper().is_changed = true;
        if (!is_watched) return operations().append(list.address());
        reorder(keeping(count, count + 1), count * 2);
    }
    /// Puts a copy into an element that is new.
    void fill(std::size_t index, py::handle value) const {
        if (of_optionals()) {
            void* made = nullptr;
            const Handle* from = check(value);
            if (from != nullptr) made = from->info->clone(from->address());
            field->optional->exchange(slot(index), made, from == nullptr ? nullptr : from->info);
        } else {
            assign_record(list.element(operations(), index), *field->record(), value, field->name);
        }
    }
    /// Refuses, before anything changes, what the list can't take. Null for None.
    const Handle* check(py::handle value) const {
        if (of_optionals() && value.is_none()) return nullptr;
        const Handle* from = handle_of(value);
        const bool fits =
            from != nullptr && (of_optionals() ? from->info->family == field->optional : from->info == field->record());
        if (!fits && from == nullptr && !of_optionals() && field->record()->as_numbers().width > 0) {
            const ClassInfo::Numbers numbers = field->record()->as_numbers();
            (void)to_numbers(value, numbers.number, numbers.width, false, field->name);
            return nullptr;
        }
        if (!fits) throw py::type_error(field->name + ": takes no " + Py_TYPE(value.ptr())->tp_name);
        wait_until_idle(from->place.keeper());
        return from;
    }
    void append(py::handle value) const {
        (void)check(value);
        grow();
        fill(size() - 1, value);
    }
    void insert(py::ssize_t at, py::handle value) const {
        (void)check(value);
        const auto count = static_cast<py::ssize_t>(size());
        if (at < 0) at = std::max<py::ssize_t>(at + count, 0);
        at = std::min(at, count);
        std::vector<std::ptrdiff_t> order;
        for (py::ssize_t i = 0; i < count; ++i) {
            if (i == at) order.push_back(-1);
            order.push_back(i);
        }
        if (at == count) order.push_back(-1);
        reorder(order);
        fill(static_cast<std::size_t>(at), value);
    }
    void set(py::ssize_t at, py::handle value) const {
        const std::size_t index = index_of(at);
        (void)check(value);
        const py::object held = py::reinterpret_borrow<py::object>(value);
        std::vector<std::ptrdiff_t> order = keeping(size(), size());
        order[index] = -1;
        // The value may be the very element that is replaced.
        const py::object copy = handle_of(value) == nullptr ? held : held.attr("copy")();
        reorder(order);
        fill(index, copy);
    }
    void assign(py::handle values) const {
        if (!of_optionals() && handle_of(values) == nullptr && field->record()->as_numbers().width > 0 &&
            py::isinstance<py::array>(values))
            return assign_array(values);
        std::vector<py::object> all;
        for (const py::handle value : py::iter(values)) {
            (void)check(value);
            all.push_back(py::reinterpret_borrow<py::object>(value));
        }
        reorder(keeping(0, all.size()));
        for (std::size_t i = 0; i < all.size(); ++i) fill(i, all[i]);
    }
    void assign_array(py::handle values) const {
        const ClassInfo::Numbers numbers = field->record()->as_numbers();
        const py::array rows = to_numbers(values, numbers.number, numbers.width, true, field->name);
        reorder(keeping(0, static_cast<std::size_t>(rows.shape(0))));
        const std::size_t size = numbers.width * sizeof(float);
        const auto* from = static_cast<const char*>(rows.data());
        for (py::ssize_t i = 0; i < rows.shape(0); ++i, from += size)
            std::memcpy(static_cast<char*>(slot(static_cast<std::size_t>(i))) + numbers.lead, from, size);
    }
    void resize(py::ssize_t wanted) const {
        constexpr py::ssize_t most = 0x7FFFFFFF;
        if (wanted < 0 || wanted > most)
            throw py::value_error(field->name + ": no list has " + std::to_string(wanted) + " elements");
        reorder(keeping(size(), static_cast<std::size_t>(wanted)));
    }
    void remove(std::size_t first, std::size_t count, std::ptrdiff_t step) const {
        std::vector<char> gone(size(), 0);
        for (std::size_t i = 0; i < count; ++i)
            gone[first + static_cast<std::size_t>(static_cast<std::ptrdiff_t>(i) * step)] = 1;
        std::vector<std::ptrdiff_t> order;
        for (std::size_t i = 0; i < gone.size(); ++i) {
            if (!gone[i]) order.push_back(static_cast<std::ptrdiff_t>(i));
        }
        reorder(order);
    }
    py::object pop(py::ssize_t at) const {
        py::object last = get(at);
        remove(index_of(at), 1, 1);
        return last;
    }

    std::vector<std::size_t> indices(const py::slice& slice) const {
        py::ssize_t start = 0, stop = 0, step = 0, count = 0;
        if (!slice.compute(static_cast<py::ssize_t>(size()), &start, &stop, &step, &count))
            throw py::error_already_set();
        std::vector<std::size_t> all;
        for (py::ssize_t i = 0; i < count; ++i) all.push_back(static_cast<std::size_t>(start + i * step));
        return all;
    }
    py::list get_slice(const py::slice& slice) const {
        py::list all;
        for (const std::size_t index : indices(slice)) all.append(get(static_cast<py::ssize_t>(index)));
        return all;
    }
    void remove_slice(const py::slice& slice) const {
        const std::vector<std::size_t> all = indices(slice);
        if (all.empty()) return;
        remove(std::min(all.front(), all.back()), all.size(),
               all.size() < 2 ? 1
                              : std::abs(static_cast<std::ptrdiff_t>(all[1]) - static_cast<std::ptrdiff_t>(all[0])));
    }

    py::array column(const std::string& name) const {
        if (of_optionals()) throw py::type_error(field->name + ": its objects don't lie side by side");
        const Field* wanted = field->record()->find(name);
        if (wanted == nullptr) throw py::key_error(field->record()->name + " has no field " + name);
        wait_until_idle(list.keeper());
        if (wanted->kind == Kind::boolean) return view_column(list, operations(), {wanted->offset, '?', 1});
        if (wanted->kind == Kind::number || wanted->kind == Kind::tuple)
            return view_column(list, operations(), {wanted->offset, wanted->number, wanted->width});
        if (wanted->kind == Kind::record) {
            const ClassInfo::Numbers numbers = wanted->record()->as_numbers();
            if (numbers.width > 0)
                return view_column(list, operations(), {wanted->offset + numbers.lead, numbers.number, numbers.width});
        }
        throw py::type_error(field->record()->name + "." + name + ": isn't made of numbers alone");
    }
    py::array array() const {
        const ClassInfo::Numbers numbers = of_optionals() ? ClassInfo::Numbers() : field->record()->as_numbers();
        if (numbers.width == 0) throw py::type_error(field->name + ": its elements aren't made of numbers alone");
        wait_until_idle(list.keeper());
        return view_column(list, operations(), {numbers.lead, numbers.number, numbers.width});
    }
    std::string tell() const {
        return "<" + std::to_string(size()) + (of_optionals() ? " of " : " " + field->record()->name + " of ") +
               field->name + ">";
    }
};

/// Goes on to the next element as long as there is one.
struct RecordIterator {
    RecordList list;
    std::size_t next = 0;
    py::object step() {
        if (next >= list.size()) throw py::stop_iteration();
        return list.get(static_cast<py::ssize_t>(next++));
    }
};

} // namespace

py::object make_list(const Place& list, const Field& field) {
    return py::cast(RecordList{list, &field});
}

void assign_list(const Place& list, const Field& field, py::handle value) {
    RecordList{list, &field}.assign(value);
}

void add_lists(py::module_& module) {
    py::class_<RecordIterator>(module, "RecordIterator")
        .def("__iter__", [](py::object self) { return self; })
        .def("__next__", &RecordIterator::step);
    py::class_<RecordList>(module, "RecordList")
        .def("__len__", &RecordList::size)
        .def("__iter__", [](const RecordList& self) { return RecordIterator{self}; })
        .def("__getitem__", &RecordList::get)
        .def("__getitem__", &RecordList::get_slice)
        .def("__setitem__", &RecordList::set)
        .def("__delitem__", [](const RecordList& self, py::ssize_t at) { self.remove(self.index_of(at), 1, 1); })
        .def("__delitem__", &RecordList::remove_slice)
        .def("__repr__", &RecordList::tell)
        .def("append", &RecordList::append, py::arg("record"))
        .def("insert", &RecordList::insert, py::arg("index"), py::arg("record"))
        .def(
            "extend",
            [](const RecordList& self, const py::iterable& values) {
                const py::list all(values);
                for (const py::handle value : all) (void)self.check(value);
                for (const py::handle value : all) self.append(value);
            },
            py::arg("records"))
        .def("pop", &RecordList::pop, py::arg("index") = -1)
        .def("clear", [](const RecordList& self) { self.reorder({}); })
        .def("resize", &RecordList::resize, py::arg("count"))
        .def("column", &RecordList::column, py::arg("field"))
        .def_property_readonly("array", &RecordList::array);
}

} // namespace vor2::python
