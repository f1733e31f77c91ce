#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// All of a file's bytes. Nothing when there is no such file, or it can't be read; `why` says so.
std::optional<std::vector<std::uint8_t>> read_whole(const std::string& name, std::string& why);
/// Writes a file of an `OutputSet` that is alive. False, told to the user, when that fails.
bool write_whole(const std::string& name, std::string_view bytes);
/// Writes a file that appears whole or not at all, or to standard output where `name` is empty. False, told to the
/// user, when that fails.
bool write_result(const std::string& name, std::string_view bytes);

} // namespace tool
