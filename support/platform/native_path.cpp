#include "support/platform/native_path.h"

#include "support/text/unicode.h"

#include <type_traits>

namespace VOR2_LOADER::platform {

namespace fs = std::filesystem;

fs::path native_path(std::string_view name) {
    if constexpr (std::is_same_v<fs::path::value_type, char>) {
        return name;
    } else {
        const std::u16string units = to_utf16(name);
        return std::wstring(units.begin(), units.end());
    }
}

std::string why_unreadable(std::string_view name) {
    std::error_code ignored;
    const fs::file_status status = fs::status(native_path(name), ignored);
    if (fs::is_directory(status)) return "is a folder, not a file";
    if (fs::exists(status) && !fs::is_regular_file(status)) return "is no regular file";
    return {};
}

} // namespace VOR2_LOADER::platform
