#pragma once

/// Native names of files and the standard library's paths.

#include <filesystem>
#include <string>
#include <string_view>

namespace VOR2_LOADER::platform {

/// An 8-bit name, UTF-8 on every system, as a path of the standard library. Its own conversion goes by the C library's
/// locale on some Windows compilers, and throws where a byte is part of no letter; here such a byte stands for itself.
[[nodiscard]] std::filesystem::path native_path(std::string_view name);

/// Why nothing can be read there that ends and never makes the reader wait: "is a folder, not a file", "is no regular
/// file". Empty for a file, and where nothing is.
[[nodiscard]] std::string why_unreadable(std::string_view name);

} // namespace VOR2_LOADER::platform
