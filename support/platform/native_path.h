#pragma once

#include "support/text/unicode.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

namespace VOR2_LOADER::platform {

/// An 8-bit name, UTF-8 on every system, as a path of the standard library. Its own conversion goes by the C library's
/// locale on some Windows compilers, and throws where a byte is part of no letter; here such a byte stands for itself.
[[nodiscard]] inline std::filesystem::path native_path(std::string_view name) {
    if constexpr (std::is_same_v<std::filesystem::path::value_type, char>) {
        return name;
    } else {
        const std::u16string units = to_utf16(name);
        return std::wstring(units.begin(), units.end());
    }
}

} // namespace VOR2_LOADER::platform
