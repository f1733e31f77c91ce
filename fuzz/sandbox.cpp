#include "fuzz/sandbox.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace fuzz {
namespace {

bool is_visited = false;
bool is_dirty = false;

std::string make_folder() {
    const fs::path memory = "/dev/shm";
    std::string name = ((fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "vor2_fuzz_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr || chdir(name.c_str()) != 0) {
        std::perror(name.c_str());
        std::exit(2); // NOLINT(concurrency-mt-unsafe)
    }
    std::atexit([] {
        std::error_code ignored;
        fs::remove_all(sandbox(), ignored);
    });
    return name + "/";
}

/// libFuzzer ends the names of the inputs that it keeps in a hash of 40 digits.
bool is_finding(std::string_view name) {
    return name.size() > 41 && name[name.size() - 41] == '-' &&
           name.find_first_not_of("0123456789abcdef", name.size() - 40) == name.npos;
}

/// Whether the file may be opened; `errno` says why not.
bool permitted(const char* name, bool writes) {
    if (!is_visited || is_finding(name)) return true;
    const fs::path place = (fs::path(sandbox()) / name).lexically_normal();
    const bool inside = place.string().starts_with(sandbox());
    is_dirty = is_dirty || (inside && writes);
    if (!inside) errno = writes ? EACCES : ENOENT;
    return inside;
}

} // namespace

const std::string& sandbox() {
    static const std::string& folder = *new std::string(make_folder()); // still asked for at the process's end
    return folder;
}

Visit::Visit() {
    (void)sandbox();
    is_visited = true;
}

Visit::~Visit() {
    is_visited = false;
    if (!std::exchange(is_dirty, false)) return;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(sandbox(), ignored)) fs::remove_all(entry, ignored);
}

std::string file_in_sandbox(const std::string& name) {
    std::ifstream file(sandbox() + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void put_in_sandbox(const std::string& name, const std::string& bytes) {
    is_dirty = true;
    std::ofstream(sandbox() + name, std::ios::binary) << bytes;
}

} // namespace fuzz

// What the linker puts in the place of the system's calls, and those calls.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,cert-dcl50-cpp)
extern "C" {
std::FILE* __real_fopen(const char* name, const char* mode);
int __real_open(const char* name, int flags, ...);
int __real_mkdir(const char* name, mode_t mode);

std::FILE* __wrap_fopen(const char* name, const char* mode) {
    return fuzz::permitted(name, mode[0] != 'r') ? __real_fopen(name, mode) : nullptr;
}
int __wrap_open(const char* name, int flags, ...) {
    std::va_list more;
    va_start(more, flags);
    const int rights = (flags & O_CREAT) != 0 ? va_arg(more, int) : 0;
    va_end(more);
    return fuzz::permitted(name, (flags & O_ACCMODE) != O_RDONLY) ? __real_open(name, flags, rights) : -1;
}
int __wrap_mkdir(const char* name, mode_t mode) {
    return fuzz::permitted(name, true) ? __real_mkdir(name, mode) : -1;
}
int __wrap_posix_spawnp(pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*, char* const*,
                        char* const*) {
    return ENOENT;
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,cert-dcl50-cpp)
