#include "support/platform/hooks.h"
#include "support/platform/native_path.h"
#include "support/platform/platform.h"
#include "support/platform/thread_pointer.h"
#include "support/text/unicode.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <vector>

#include <fcntl.h>
#include <pthread.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration): POSIX asks programs to declare it

namespace VOR2_LOADER::platform {
namespace {

/// Half of what it takes to fill a large block would be the system's handing out its pages one by one.
constexpr std::size_t LARGE = std::size_t{4} << 20U, LARGE_PAGE = std::size_t{2} << 20U;

void want_large_pages([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    (void)madvise(block, size & ~(LARGE_PAGE - 1), MADV_HUGEPAGE);
#endif
}

} // namespace

void* aligned_allocate(std::size_t size, std::size_t alignment) noexcept {
    const bool is_large = size >= LARGE;
    if (!is_large && alignment <= alignof(std::max_align_t)) return std::malloc(size);
    void* block = nullptr;
    if (posix_memalign(&block, is_large ? std::max(alignment, LARGE_PAGE) : alignment, size) != 0) return nullptr;
    if (is_large) want_large_pages(block, size);
    return block;
}

void aligned_free(void* block) noexcept {
    std::free(block);
}

void* allocate_pages(std::size_t size) noexcept {
    void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) return nullptr;
    if (size >= LARGE) want_large_pages(pages, size);
    return pages;
}

void free_pages(void* pages, std::size_t size) noexcept {
    munmap(pages, size);
}

std::string native_file_name(std::u16string_view name) {
    std::string native;
    native.reserve(name.size());
    for (std::size_t i = 0; i < name.size();) {
        const std::size_t bytes = widened_utf8_sequence_length(name.substr(i));
        if (bytes > 0) {
            for (const std::size_t stop = i + bytes; i < stop; ++i) {
                native.push_back(name[i] == u'\\' ? '/' : static_cast<char>(name[i]));
            }
        } else {
            append_utf8(native, next_code_point(name, i));
        }
    }
    return native;
}

namespace {

/// 0 for what may be opened. Reading wants a regular file: anything else may wait or never end. Writing
/// wants a place to go back to, which pipes have not.
i32 reason_to_refuse(const struct stat& facts, bool reading) {
    if (S_ISREG(facts.st_mode)) return 0;
    if (S_ISDIR(facts.st_mode)) return EISDIR;
    return reading || S_ISFIFO(facts.st_mode) || S_ISSOCK(facts.st_mode) ? EINVAL : 0;
}

/// Looks first, since opening alone can do something to a device, and again at what was opened, since
/// names change hands. Never waits, as a pipe without a partner would make it; that flag goes again once
/// the file is open.
std::FILE* open_stream(const std::string& name, int flags, const char* mode, bool reading, i32& error) {
    struct stat facts {};
    if (stat(name.c_str(), &facts) == 0 && (error = reason_to_refuse(facts, reading)) != 0) return nullptr;
    const int file = open(name.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (file < 0) {
        error = errno;
        return nullptr;
    }
    error = fstat(file, &facts) == 0 ? reason_to_refuse(facts, reading) : errno;
    if (error != 0) {
        close(file);
        return nullptr;
    }
    fcntl(file, F_SETFL, fcntl(file, F_GETFL) & ~O_NONBLOCK);
    posix_fadvise(file, 0, 0, POSIX_FADV_SEQUENTIAL);
    std::FILE* stream = fdopen(file, mode);
    if (stream == nullptr) {
        error = errno;
        close(file);
        return nullptr;
    }
    error = 0;
    return stream;
}

} // namespace

std::FILE* open_for_reading(std::u16string_view name, i32& error) {
    return open_stream(native_file_name(name), O_RDONLY, "rb", true, error);
}

std::FILE* open_for_writing(std::u16string_view name, bool append, i32& error) {
    std::string native = native_file_name(name);
    if (output_redirection != nullptr) {
        std::optional<std::string> other = output_redirection->redirect(native);
        if (!other) {
            error = EACCES;
            return nullptr;
        }
        native = std::move(*other);
    }
    const int flags = O_WRONLY | O_CREAT | (append ? O_APPEND : O_TRUNC);
    return open_stream(native, flags, append ? "ab" : "wb", false, error);
}

bool file_exists(std::u16string_view name) {
    struct stat facts {};
    return stat(native_file_name(name).c_str(), &facts) == 0;
}

bool same_file(std::u16string_view a, std::u16string_view b) {
    struct stat facts_a {};
    struct stat facts_b {};
    return stat(native_file_name(a).c_str(), &facts_a) == 0 && stat(native_file_name(b).c_str(), &facts_b) == 0 &&
           facts_a.st_dev == facts_b.st_dev && facts_a.st_ino == facts_b.st_ino;
}

bool create_directory(std::u16string_view name) {
    const std::string native = native_file_name(name);
    if (output_redirection != nullptr && !output_redirection->may_create_directory(native)) return false;
    if (mkdir(native.c_str(), 0777) == 0) return true;
    struct stat facts {};
    return stat(native.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

void make_writable(std::u16string_view name) {
    const std::string native = native_file_name(name);
    struct stat facts {};
    if (stat(native.c_str(), &facts) == 0) chmod(native.c_str(), (facts.st_mode & 07777U) | S_IWUSR);
}

UTC_TIME utc_now() {
    if (fixed_time) return *fixed_time;
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    return {static_cast<u16>(parts.tm_year + 1900), static_cast<u16>(parts.tm_mon + 1), static_cast<u16>(parts.tm_mday),
            static_cast<u16>(parts.tm_hour),        static_cast<u16>(parts.tm_min),     static_cast<u16>(parts.tm_sec)};
}

std::optional<std::string> account_name(std::size_t capacity) {
    std::string name;
    if (fixed_account_name) {
        name = *fixed_account_name;
    } else {
        std::vector<char> space(16384);
        passwd entry{};
        passwd* found = nullptr;
        if (getpwuid_r(geteuid(), &entry, space.data(), space.size(), &found) != 0 || found == nullptr) return {};
        name = found->pw_name;
    }
    if (name.empty() || name.size() >= capacity) return {};
    return name;
}

ANSWER ask_yes_no(void* /*owner*/, const char* words, const char* caption) {
    if (ask_yes_no_hook != nullptr) return ask_yes_no_hook(words, caption);
    if (isatty(STDIN_FILENO) == 0) return ANSWER::YES;
    (void)std::fprintf(stderr, "%s\n%s [yes/no] ", caption, words);
    char line[64] = {};
    if (std::fgets(line, sizeof line, stdin) == nullptr) return ANSWER::YES;
    return line[0] == 'n' || line[0] == 'N' ? ANSWER::NO : ANSWER::YES;
}

void start_program(const char* program, const char* argument) {
    char* const arguments[] = {const_cast<char*>(program), const_cast<char*>(argument), nullptr};
    pid_t child = 0;
    posix_spawnp(&child, program, nullptr, nullptr, arguments, environ);
}

int flush_to_disk(const std::string& name) {
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return errno;
    // Not every file system can; one that can't has nothing to wait for.
    const int error = fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
    close(file);
    return error;
}

THREAD_POINTER::THREAD_POINTER(DESTROY destroy) noexcept
    : my_destroy(destroy), my_key_is_made(pthread_key_create(&my_key, destroy) == 0) {}

THREAD_POINTER::~THREAD_POINTER() {
    if (!my_key_is_made) return;
    if (void* object = get(); object != nullptr) my_destroy(object);
    pthread_key_delete(my_key);
}

void* THREAD_POINTER::get() const noexcept {
    return my_key_is_made ? pthread_getspecific(my_key) : nullptr;
}

bool THREAD_POINTER::set(void* object) noexcept {
    return my_key_is_made && pthread_setspecific(my_key, object) == 0;
}

} // namespace VOR2_LOADER::platform
