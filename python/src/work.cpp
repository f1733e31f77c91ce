#include "python/src/work.h"

#include "format/geometry/scene_check.h"
#include "inspect/check_document.h"
#include "inspect/diff_document.h"
#include "inspect/info_screen.h"
#include "inspect/record_json.h"
#include "python/src/listener.h"
#include "tools/vor2/cli/scene_file.h"

#include <pybind11/stl.h>

#include <algorithm>

namespace vor2::python {

using namespace VOR2_LOADER;
using namespace vor2::inspect;

std::mutex& outputs_lock() {
    static std::mutex lock;
    return lock;
}

Work::Work(std::vector<Keeper*> keepers) : keepers_(std::move(keepers)) {
    const auto any_busy = [this] {
        return std::any_of(keepers_.begin(), keepers_.end(), [](const Keeper* keeper) { return keeper->is_busy; });
    };
    while (any_busy()) {
        for (Keeper* keeper : keepers_) wait_until_idle(*keeper);
    }
    for (Keeper* keeper : keepers_) {
        touch_all(*keeper);
        keeper->is_busy = true;
    }
    thread_ = PyEval_SaveThread();
}

Work::~Work() {
    PyEval_RestoreThread(thread_);
    for (Keeper* keeper : keepers_) keeper->is_busy = false;
}

Handle& wanted_scene(py::handle object) {
    Handle& handle = wanted(object, *find_class("VOR2"), "scene");
    wait_until_idle(handle.place.keeper());
    return handle;
}

void Listener::tell(bool failed) const {
    const py::object warn = py::module_::import("warnings").attr("warn");
    const py::object sort = py::module_::import("vor2").attr("Note");
    for (const std::string& note : notes_) warn(text_of(note), sort, 2);
    if (!failed && problems_.empty()) return;
    py::list lines;
    for (const std::string& problem : problems_) lines.append(text_of(problem));
    if (lines.empty()) lines.append(text_of("the work failed without a word"));
    const py::object error = py::handle(error_type)(lines[0]);
    error.attr("lines") = lines;
    PyErr_SetObject(error_type, error.ptr());
    throw py::error_already_set();
}

namespace {

VOR2& scene_of(const Handle& handle) {
    return *static_cast<VOR2*>(handle.address());
}

py::object load(const std::string& name, bool leave_out_missing) {
    auto scene = std::make_unique<VOR2>();
    Listener listener;
    bool loaded = false;
    {
        const py::gil_scoped_release release;
        loaded = tool::load_scene(*scene, name);
        if (loaded && leave_out_missing) tool::leave_out_missing_references(*scene, name);
    }
    listener.tell(!loaded);
    py::object made = make_root(scene.release(), *find_class("VOR2"));
    Keeper& keeper = handle_of(made)->place.keeper();
    keeper.file = name;
    keeper.is_changed = false;
    return made;
}

void save(py::handle object, const std::string& name, bool allow_outside) {
    const Handle& handle = wanted_scene(object);
    const VOR2& scene = scene_of(handle);
    Listener listener;
    bool saved = false;
    {
        const Work work({&handle.place.keeper()});
        const std::lock_guard guard(outputs_lock());
        saved = tool::save_scene(scene, name, allow_outside);
    }
    listener.tell(!saved);
}

/// What the library writes to a string, without the interpreter's lock.
template<class WRITE>
py::object written(std::vector<Keeper*> keepers, const WRITE& write) {
    std::string text;
    {
        const Work work(std::move(keepers));
        TextOut out(text);
        write(out);
    }
    return text_of(text);
}

py::object dump(py::handle object) {
    const Handle& handle = wanted_scene(object);
    return written({&handle.place.keeper()}, [&](TextOut& out) { write_scene_json(scene_of(handle), out); });
}

py::object check(py::handle object, bool strict) {
    const Handle& handle = wanted_scene(object);
    VOR2& scene = scene_of(handle);
    const std::string& file = handle.place.keeper().file;
    return written({&handle.place.keeper()}, [&](TextOut& out) {
        const NARROW_TEXT report = report_of(scene);
        write_check_json({scene, file, tool::library_name(file), report.view(), strict}, JsonWriter::Layout::line, out);
    });
}

py::object diff(py::handle first, py::handle second, double tolerance, const std::vector<std::string>& ignored) {
    if (!(tolerance >= 0)) throw py::value_error("tolerance: a number below 0 makes no sense");
    const Handle& a = wanted_scene(first);
    const Handle& b = wanted_scene(second);
    DiffOptions options;
    options.tolerance = tolerance;
    options.ignored = ignored;
    std::vector<Keeper*> keepers{&a.place.keeper()};
    if (&b.place.keeper() != keepers[0]) keepers.push_back(&b.place.keeper());
    return written(keepers, [&](TextOut& out) {
        write_diff_json({scene_of(a), scene_of(b), a.place.keeper().file, b.place.keeper().file}, options, out);
    });
}

py::object facts(const std::string& name) {
    Listener listener;
    std::string text;
    bool loaded = false;
    {
        const py::gil_scoped_release release;
        VOR2_INPUT_BUFFER buffer(tool::library_name(name));
        VOR2 scene;
        loaded = tool::load_scene(scene, name, buffer);
        TextOut out(text);
        if (loaded) write_info_json(gather_facts(name, scene, {buffer.start, buffer.end}), out);
    }
    listener.tell(!loaded);
    return text_of(text);
}

/// The track's value at each time, a row each.
py::array sample(py::handle track, py::handle times) {
    const Handle* handle = handle_of(track);
    if (handle == nullptr || handle->info->sample == nullptr)
        throw py::type_error(std::string("sample: a ") + Py_TYPE(track.ptr())->tp_name +
                             " is given, a track is needed");
    Keeper& keeper = handle->place.keeper();
    wait_until_idle(keeper);
    const py::array given = to_numbers(times, 'f', 1, true, "times");
    const Field& values = *handle->info->find("key_values");
    std::vector<py::ssize_t> shape{given.shape(0)};
    if (values.width > 1) shape.push_back(values.width);
    py::array made(py::dtype(values.number == 'i' ? "i4" : "f4"), shape);
    const std::span<const float> all(static_cast<const float*>(given.data()), static_cast<std::size_t>(given.size()));
    void* out = made.mutable_data();
    const void* address = handle->address();
    const Work work({&keeper});
    handle->info->sample(address, all, out);
    return made;
}

} // namespace

void add_scene_work(py::module_& module) {
    module.def("load", load, py::arg("name"), py::arg("leave_out_missing"));
    module.def("save", save, py::arg("scene"), py::arg("name"), py::arg("allow_outside"));
    module.def("dump", dump, py::arg("scene"));
    module.def("check", check, py::arg("scene"), py::arg("strict"));
    module.def("diff", diff, py::arg("first"), py::arg("second"), py::arg("tolerance"), py::arg("ignored"));
    module.def("facts", facts, py::arg("name"));
    module.def("sample", sample, py::arg("track"), py::arg("times"));
    module.def("source", [](py::handle scene) { return text_of(wanted_scene(scene).place.keeper().file); });
    module.def(
        "live", [] { return Anchor::count; }, "How many blocks of memory anybody looks into.");
}

} // namespace vor2::python
