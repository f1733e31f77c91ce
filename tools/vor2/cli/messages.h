#pragma once

/// What the tool says beside its results, all on standard error: problems, notes, progress.

#include "inspect/json_writer.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// Suppresses notes and progress; problems are always told.
void set_quiet(bool quiet);
bool is_quiet();

/// One line "vor2: FILE: why". An empty `file` leaves its part out. Line ends and control characters within become
/// blanks, so that a problem stays one line.
void problem(std::string_view file, std::string_view why);
/// How many lines `problem` has told in this process.
std::size_t problems_told();
/// A line "vor2: text", unless quiet.
void note(std::string_view text);

/// Ends what is printed on standard output. False, told to the user, when it couldn't be written.
bool finish(vor2::inspect::TextOut& out);

} // namespace tool
