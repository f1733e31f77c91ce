#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tool_test {

/// What a program is started with.
struct ProgramRun {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    std::vector<std::string> variables; ///< "NAME=value", on top of this process's environment
    std::filesystem::path folder;       ///< where it runs
    std::filesystem::path out, err;     ///< the files that take what it writes; its standard input is empty
};

/// Waits for the program's end. -1 when it couldn't be started, was ended by a signal or ran for longer than a minute.
/// `run_program_posix.cpp` and `run_program_windows.cpp` have the body.
int run_program(const ProgramRun& run);

} // namespace tool_test
