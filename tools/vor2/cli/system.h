#pragma once

/// What the tool asks of the operating system beyond the standard library. `system_posix.cpp` and
/// `system_windows.cpp` have the bodies, `system.cpp` what is the same on both.

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Before anything else: makes writing into a closed pipe an error like any other instead of the process's end,
/// and keeps the numbers of closed standard streams from being given to files.
void prepare_process();
bool input_is_terminal();
bool error_is_terminal();
struct TerminalSize {
    int columns = 80, rows = 30; ///< where standard output is none
    bool takes_utf8 = true;
};
TerminalSize terminal_size();
unsigned processor_count();
/// What an `errno` value means, in lower case.
std::string error_text(int error);

/// For a thread that the process starts: leaves it to the first one to be told that the process is to end.
void leave_ending_to_the_first_thread();

/// Makes an empty file in `folder` under a name of its own, with the rights that a new file gets. On failure the
/// name is empty and `error` holds the reason. Until `keep_if_interrupted` the file doesn't stay when the process is
/// told to end; at most a few thousand are so watched.
std::string make_scratch_file(const std::string& folder, int& error);
/// What it is made of: makes a file where there is none and watches it, with no moment between. 0, or the reason it
/// failed.
int make_watched_file(const std::string& path);
void keep_if_interrupted(const std::string& path);
/// Shows a document in the program that the desktop has for such, and doesn't wait for it.
void show_document(const std::string& path);
/// Whether the folder may be written to.
bool may_write_in(const std::string& folder);

/// A file for reading and writing that is gone once it is closed; null with `errno` set on failure.
std::FILE* temporary_stream();

/// Runs `work` in a process of its own, with standard output and error going to the given files and standard input
/// empty. Gives a handle, negative with `errno` set on failure. Windows has no process that goes on from here, so there
/// the work is done at once, within the call.
long start_worker(std::FILE* output, std::FILE* errors, const std::function<int()>& work);
struct WorkerEnd {
    long handle = -1;
    int exit_code = -1; ///< negative when a signal ended it
    int signal = 0;
};
/// Waits for one of the workers to end.
WorkerEnd wait_for_worker();

} // namespace tool
