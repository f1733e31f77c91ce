#pragma once

/// Files by their native names, and the standard library's paths.

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

/// Waits until the file's bytes are on the disk or, for a folder, which files it holds. 0, or the `errno` value of what
/// went wrong. A file system that has nothing to wait for is no error.
int flush_to_disk(const std::string& name);

} // namespace VOR2_LOADER::platform
