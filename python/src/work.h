#pragma once

/// What the library does for a script, without the interpreter's lock.

#include "python/src/records.h"

#include <mutex>

namespace vor2::python {

/// Keeps scenes to the thread that works on them, without the interpreter's lock, while it lives.
class Work {
public:
    explicit Work(std::vector<Keeper*> keepers);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    std::vector<Keeper*> keepers_;
    PyThreadState* thread_;
};

/// What redirects files for a process, and the one host in it, are used by one thread at a time.
std::mutex& outputs_lock();

void add_scene_work(py::module_& module);
void add_pose(py::module_& module);
void add_verbs(py::module_& module);

/// The scene behind an argument, once nobody else works on it. Raises a TypeError for all else.
Handle& wanted_scene(py::handle object);

} // namespace vor2::python
