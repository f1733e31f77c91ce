#include "headless/files/text_file.h"

#include "support/platform/native_path.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace headless {

using VOR2_LOADER::platform::flush_to_disk;
using VOR2_LOADER::platform::native_path;
using VOR2_LOADER::platform::why_unreadable;
namespace {

namespace fs = std::filesystem;

struct Close {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

Error failed(const std::string& what, const std::string& path, int problem) {
    return Error{what + ": " + std::strerror(problem), path};
}

// A new file beside the target, under a name that nobody uses; null where none can be made.
std::FILE* open_beside(const std::string& target, std::string& name) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = target + ".part" + (attempt == 0 ? "" : std::to_string(attempt));
        std::error_code ignored;
        if (fs::exists(native_path(name), ignored)) continue; // an old C library doesn't know the x
        if (std::FILE* file = std::fopen(name.c_str(), "wbx")) return file;
        if (errno != EEXIST) break;
    }
    return nullptr;
}

// A link is followed, so that it goes on naming the file that is written.
std::string resolved(const std::string& path) {
    std::error_code problem;
    const fs::path target = fs::canonical(native_path(path), problem);
    return problem ? path : target.string();
}

std::string folder_of(const std::string& path) {
    const fs::path folder = native_path(path).parent_path();
    return folder.empty() ? "." : folder.string();
}

} // namespace

Result<std::string> read_text_file(const std::string& path) {
    // Opening a pipe alone may wait for ever.
    if (const std::string why = why_unreadable(path); !why.empty()) return Error{why, path};
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) return failed("can't be read", path, errno);
    std::string bytes;
    std::error_code problem;
    const std::uintmax_t size = fs::file_size(native_path(path), problem);
    if (!problem && size > longest_text_file) return Error{"is longer than 2147483647 bytes", path};
    bytes.resize(problem ? 0 : static_cast<std::size_t>(size));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    // What a growing file holds beyond the size that it stated; some of the system's own state none.
    char more[4096];
    for (std::size_t n = 0; (n = std::fread(more, 1, sizeof more, file.get())) > 0;) {
        if (bytes.size() + n > longest_text_file) return Error{"is longer than 2147483647 bytes", path};
        bytes.append(more, n);
    }
    if (std::ferror(file.get())) return failed("can't be read", path, errno);
    return bytes;
}

Result<OutputFile> OutputFile::open(const std::string& path) {
    std::error_code ignored;
    OutputFile out;
    out.path_ = path;
    out.target_ = resolved(path);
    const fs::file_status status = fs::status(native_path(out.target_), ignored);
    if (fs::is_directory(status)) return Error{"can't be written: it is a folder", path};
    const bool there = fs::exists(status);
    if (there && !fs::is_regular_file(status)) {
        out.file_.reset(std::fopen(path.c_str(), "wb"));
    } else {
        if (there && !File(std::fopen(path.c_str(), "ab"))) return failed("can't be written", path, errno);
        out.file_.reset(open_beside(out.target_, out.beside_));
    }
    if (!out.file_) return failed("can't be written", path, errno);
    if (there && !out.beside_.empty()) fs::permissions(native_path(out.beside_), status.permissions(), ignored);
    return out;
}

OutputFile::~OutputFile() {
    if (!file_) return;
    file_.reset();
    std::error_code ignored;
    if (!beside_.empty()) fs::remove(native_path(beside_), ignored);
}

void OutputFile::write(std::string_view bytes) {
    if (problem_ == 0 && std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) problem_ = errno;
}

Result<void> OutputFile::commit() {
    if (std::fclose(file_.release()) != 0 && problem_ == 0) problem_ = errno;
    if (beside_.empty()) return problem_ == 0 ? Result<void>() : failed("can't be written", path_, problem_);
    // The name goes over to bytes that are on the disk, so that a power cut leaves the old file or the new one.
    if (problem_ == 0) problem_ = flush_to_disk(beside_);
    std::error_code moved;
    if (problem_ == 0) fs::rename(native_path(beside_), native_path(target_), moved);
    if (problem_ == 0 && !moved) {
        flush_to_disk(folder_of(target_));
        return {};
    }
    std::error_code ignored;
    fs::remove(native_path(beside_), ignored);
    return problem_ != 0 ? failed("can't be written", path_, problem_)
                         : Error{"can't be written: " + moved.message(), path_};
}

} // namespace headless
