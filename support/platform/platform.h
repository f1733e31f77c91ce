#pragma once

/// The operating system, behind one face: the only place with a choice between systems.
///
/// Names of files are 16-bit texts with backslashes as separators, the format's own convention.
/// A unit of a name stands either for a UTF-16 code unit or, as the host hands names over, for one
/// byte of an 8-bit name, zero-extended. On POSIX `native_file_name` settles which: a run of units
/// that forms a UTF-8 sequence is taken as bytes, anything else is converted from UTF-16, and
/// backslashes become slashes. On Windows a process whose 8-bit character set is UTF-8, as the tool's
/// is, settles it the same way and keeps backslashes. In any other, the host's, the low bytes of the units
/// are the 8-bit name that files and folders are written under, and a file is found by its 16-bit name as
/// it stands or else by that one.

#include "support/types.h"

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace VOR2_LOADER::platform {

/// At least `alignment` aligned; null when memory runs out.
[[nodiscard]] void* aligned_allocate(std::size_t size, std::size_t alignment) noexcept;
void aligned_free(void* block) noexcept;

/// Zeroed pages of the system, null when it has none. `size` is a multiple of 65,536 and the same
/// number is handed back to `free_pages`.
[[nodiscard]] void* allocate_pages(std::size_t size) noexcept;
void free_pages(void* pages, std::size_t size) noexcept;

/// The name as the system's file calls take it.
[[nodiscard]] std::string native_file_name(std::u16string_view name);

/// Buffered binary files, for sequential access where the system can be told so. On failure null,
/// with the reason in `error` (an `errno` value). Only regular files open for reading: a folder, a
/// device or a pipe is refused at once and never waited for. A pipe is refused for writing, too.
[[nodiscard]] std::FILE* open_for_reading(std::u16string_view name, i32& error);
/// Where an 8-bit character set other than UTF-8 rules on Windows, the name is cut to 8 bits and 260
/// characters; elsewhere it is taken whole.
[[nodiscard]] std::FILE* open_for_writing(std::u16string_view name, bool append, i32& error);
/// To be called once a file that was opened for writing is closed.
void note_closed(std::u16string_view name, bool whole);

/// Whether anything stands at that name.
[[nodiscard]] bool file_exists(std::u16string_view name);
/// Whether both names lead to one and the same file that exists, through links and whatever spellings.
[[nodiscard]] bool same_file(std::u16string_view a, std::u16string_view b);
/// Makes one folder; true if it exists afterwards.
[[nodiscard]] bool create_directory(std::u16string_view name);
/// Lets a file that was marked read-only be written again; does nothing for a missing one.
void make_writable(std::u16string_view name);

/// Coordinated universal time.
struct UTC_TIME {
    u16 year, month, day, hour, minute, second;
};
[[nodiscard]] UTC_TIME utc_now();
/// The name of the account; nothing when it can't be had or takes more than `capacity` - 1 bytes.
[[nodiscard]] std::optional<std::string> account_name(std::size_t capacity);

enum class ANSWER { YES, NO };
/// A modal question with the buttons Yes and No. `owner` is a window handle or null. Where nobody could
/// answer, it is YES at once.
[[nodiscard]] ANSWER ask_yes_no(void* owner, const char* words, const char* caption);
/// Starts a program with one argument and doesn't wait for it.
void start_program(const char* program, const char* argument);

/// One line to standard output, with a line end.
void print_line(std::string_view line);

} // namespace VOR2_LOADER::platform
