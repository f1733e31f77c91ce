#include "format/core/paths.h"

#include "support/platform/platform.h"

namespace VOR2_LOADER {
namespace {

constexpr std::u16string_view SEPARATORS = u"\\/";

/// Where the file's name starts.
std::size_t file_name_start(std::u16string_view path, bool& is_file) {
    const std::size_t separator = path.find_last_of(SEPARATORS);
    is_file = separator == path.npos || path.find(u'.', separator) != path.npos;
    if (!is_file) return path.size();
    return separator == path.npos ? 0 : separator + 1;
}

} // namespace

bool is_absolute(std::u16string_view path) {
    if (path.empty()) return false;
    return SEPARATORS.find(path[0]) != SEPARATORS.npos || path.find(u':') != path.npos;
}

TEXT resolve_path(std::u16string_view base_file, std::u16string_view name) {
    TEXT path;
    const std::size_t separator = base_file.rfind(u'\\');
    if (!is_absolute(name) && separator != base_file.npos) path.append(base_file.substr(0, separator + 1));
    path.append(name);
    return path;
}

TEXT file_name_of(std::u16string_view path, bool& is_file) {
    return TEXT(path.substr(file_name_start(path, is_file)));
}

TEXT directory_of(std::u16string_view path, bool& is_file) {
    return TEXT(path.substr(0, file_name_start(path, is_file)));
}

bool file_exists(std::u16string_view path) {
    return platform::file_exists(path);
}

bool create_directories(std::u16string_view path) {
    if (path.empty() || path.size() > LONGEST_DIRECTORY) return false;
    for (std::size_t i = path.find_first_of(SEPARATORS, 1); i != path.npos; i = path.find_first_of(SEPARATORS, i + 1)) {
        // A drive, a share or a folder of others can't be made; what counts is whether the whole exists.
        static_cast<void>(platform::create_directory(path.substr(0, i)));
    }
    return platform::create_directory(path);
}

} // namespace VOR2_LOADER
