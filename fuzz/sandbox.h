#pragma once

/// Keeps whatever an input asks of the file system within one folder in memory: while a `Visit` lasts, every file
/// that would be opened anywhere else isn't there, and no program starts. The build wraps the calls that the
/// system's code opens files with (see CMakeLists.txt).

#include <string>

namespace fuzz {

/// With a "/" at its end. It is the current folder of the process from the first question on.
const std::string& sandbox();

/// For one input. The files that it left behind are gone afterwards.
class Visit {
public:
    Visit();
    ~Visit();
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
};

/// The bytes of a file in the sandbox; empty when there is none.
std::string file_in_sandbox(const std::string& name);
void put_in_sandbox(const std::string& name, const std::string& bytes);

} // namespace fuzz
