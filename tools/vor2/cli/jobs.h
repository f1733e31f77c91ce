#pragma once

/// The same work on many files, several at a time.

#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Calls `work` with the index of each file and gives `exit_refused` when any of them did. A single file is worked on
/// here. More are each worked on in a process of their own, `jobs` at a time (0: one for each processor), so that
/// nothing of one file reaches another and a bad one stops none of the rest; what they print comes out in the order
/// of the files. A summary ends it, unless the run is quiet.
int run_for_each(const std::vector<std::string>& files, unsigned jobs, const std::string& title,
                 const std::function<int(std::size_t)>& work);

/// Works on one file in a process of its own, for work by a library that a bad file may bring down: that is told as a
/// problem with the file, and the exit code is `exit_refused`.
int run_apart(const std::string& file, const std::string& title, const std::function<int()>& work);

} // namespace tool
