#include "headless/files/text_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace headless {
namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

Error failed(const std::string& what, const std::string& path) {
    return Error{what + ": " + std::strerror(errno), path};
}

bool write_all(File file, std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) return false;
    return std::fclose(file.release()) == 0;
}

// A new file beside the target, under a name that nobody uses.
File open_beside(const std::string& target, std::string& name) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = target + ".part" + (attempt == 0 ? "" : std::to_string(attempt));
        if (File file{std::fopen(name.c_str(), "wbx")}) return file;
        if (errno != EEXIST) break;
    }
    return {};
}

// A link is followed, so that it goes on naming the file that is written.
std::filesystem::path resolved(const std::string& path) {
    std::error_code problem;
    const std::filesystem::path target = std::filesystem::canonical(path, problem);
    return problem ? std::filesystem::path(path) : target;
}

// Devices and pipes are written to, never replaced.
Result<void> write_into(const std::string& path, std::string_view bytes) {
    File file(std::fopen(path.c_str(), "wb"));
    if (!file || !write_all(std::move(file), bytes)) return failed("can't be written", path);
    return {};
}

} // namespace

Result<std::string> read_text_file(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return Error{"is a folder, not a file", path};
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) return failed("can't be read", path);
    std::string bytes;
    const std::uintmax_t size = std::filesystem::file_size(path, ignored);
    bytes.resize(ignored ? 0 : static_cast<std::size_t>(size));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    // What a pipe or a growing file holds beyond the size that it stated.
    char more[4096];
    for (std::size_t n = 0; (n = std::fread(more, 1, sizeof more, file.get())) > 0;) bytes.append(more, n);
    if (std::ferror(file.get())) return failed("can't be read", path);
    return bytes;
}

Result<void> write_text_file(const std::string& path, std::string_view bytes) {
    std::error_code problem;
    const std::filesystem::path target = resolved(path);
    const std::filesystem::file_status status = std::filesystem::status(target, problem);
    if (std::filesystem::is_directory(status)) return Error{"can't be written: it is a folder", path};
    const bool there = std::filesystem::exists(status);
    if (there && !std::filesystem::is_regular_file(status)) return write_into(path, bytes);
    if (there && !File(std::fopen(path.c_str(), "ab"))) return failed("can't be written", path);
    std::string beside;
    File file = open_beside(target.string(), beside);
    if (!file) return failed("can't be written", path);
    if (!write_all(std::move(file), bytes)) {
        const Error error = failed("can't be written", path);
        std::filesystem::remove(beside, problem);
        return error;
    }
    if (there) std::filesystem::permissions(beside, status.permissions(), problem);
    std::filesystem::rename(beside, target, problem);
    if (!problem) return {};
    const Error error{"can't be written: " + problem.message(), path};
    std::filesystem::remove(beside, problem);
    return error;
}

} // namespace headless
