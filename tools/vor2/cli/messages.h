#pragma once

/// What the tool says beside its results, all on standard error: problems, notes, progress.

#include "inspect/json_writer.h"

#include <cstddef>
#include <cstdio>
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
/// A line "vor2: text", or "vor2: FILE: text", unless quiet.
void note(std::string_view text);
void note(std::string_view file, std::string_view text);

/// Where results are printed: standard output, or what a listener has in its place.
std::FILE* results();

/// While one lives, what this thread would say on standard error goes to it, line by line without "vor2: ", and nothing
/// shows how far work is: for a program that runs verbs as a library.
class MessageListener {
public:
    /// `printed` takes what verbs print as their results.
    explicit MessageListener(std::FILE* printed);
    virtual ~MessageListener();
    MessageListener(const MessageListener&) = delete;
    MessageListener& operator=(const MessageListener&) = delete;

    virtual void take_problem(const std::string& line) = 0;
    virtual void take_note(const std::string& line) = 0;
    /// In a process that was split off: its streams are read by the other one.
    static void leave();
    static bool is_there();

private:
    friend std::FILE* results();
    std::FILE* printed_;
};

/// Hands on what a worker process said, "vor2: " before each line, and whether that were problems.
void pass_on(std::FILE* errors, bool as_problems);

/// Ends what is printed on standard output. False, told to the user, when it couldn't be written.
bool finish(vor2::inspect::TextOut& out);

} // namespace tool
