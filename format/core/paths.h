#pragma once

/// Operations on the names of files, as references and reports use them. Names are 16-bit texts;
/// separators are the backslash and the slash.

#include "support/text/text.h"

namespace VOR2_LOADER {

inline constexpr std::size_t LONGEST_DIRECTORY = 4096;

/// Whether the path begins with a separator or has a colon anywhere.
[[nodiscard]] bool is_absolute(std::u16string_view path);
/// `name` itself if it is absolute; otherwise `name` beside `base_file`, that is behind the last backslash
/// of it. Only the backslash counts here: a base without one leaves `name` as it is.
[[nodiscard]] TEXT resolve_path(std::u16string_view base_file, std::u16string_view name);
/// The part behind the last separator, or the whole path where there is none; `is_file` is then set. A
/// path with a separator and no dot behind the last one counts as a folder: the result is empty and
/// `is_file` cleared.
[[nodiscard]] TEXT file_name_of(std::u16string_view path, bool& is_file);
/// The path without its `file_name_of`.
[[nodiscard]] TEXT directory_of(std::u16string_view path, bool& is_file);
/// Whether anything stands at that path.
[[nodiscard]] bool file_exists(std::u16string_view path);
/// Makes the folder and every missing one above it; true if it exists afterwards. False for a path of more
/// than `LONGEST_DIRECTORY` characters, which no system takes.
[[nodiscard]] bool create_directories(std::u16string_view path);

} // namespace VOR2_LOADER
