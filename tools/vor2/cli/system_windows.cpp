#include "support/platform/platform.h"
#include "support/platform/windows_headers.h"
#include "tools/vor2/cli/system.h"

#include <cerrno>
#include <deque>
#include <mutex>
#include <set>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace tool {
namespace {

struct WatchedFiles {
    std::mutex mutex;
    std::set<std::string> paths;
};

WatchedFiles& watched_files() {
    static WatchedFiles files;
    return files;
}

// Runs on a thread of the system's own, after which the process ends.
BOOL WINAPI remove_watched_files(DWORD /*event*/) {
    WatchedFiles& files = watched_files();
    const std::lock_guard lock(files.mutex);
    for (const std::string& path : files.paths) DeleteFileA(path.c_str());
    return FALSE;
}

std::deque<WorkerEnd> finished_workers;

/// Stands for one of the standard streams' numbers for as long as it lives.
class Redirection {
public:
    Redirection(int number, int other) : number_(number), before_(_dup(number)) { _dup2(other, number_); }
    ~Redirection() {
        if (before_ < 0) return;
        _dup2(before_, number_);
        _close(before_);
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

private:
    int number_, before_;
};

bool is_console(DWORD stream) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

} // namespace

void prepare_process() {
    // The same bytes as on every other system, line ends included.
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        if (_fileno(stream) >= 0) _setmode(_fileno(stream), _O_BINARY);
    }
    // A drive without a disk is an error like any other, not a question to the user.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCtrlHandler(remove_watched_files, TRUE);
}

bool input_is_terminal() {
    return is_console(STD_INPUT_HANDLE);
}

bool error_is_terminal() {
    return is_console(STD_ERROR_HANDLE);
}

void leave_ending_to_the_first_thread() {} // a thread of the system's own is told

int make_watched_file(const std::string& path) {
    const std::lock_guard lock(watched_files().mutex);
    const int file = _open(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (file < 0) return errno;
    _close(file);
    watched_files().paths.insert(path);
    return 0;
}

void keep_if_interrupted(const std::string& path) {
    const std::lock_guard lock(watched_files().mutex);
    watched_files().paths.erase(path);
}

TerminalSize terminal_size() {
    TerminalSize size;
    CONSOLE_SCREEN_BUFFER_INFO screen;
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &screen) != 0) {
        size.columns = screen.srWindow.Right - screen.srWindow.Left + 1;
        size.rows = screen.srWindow.Bottom - screen.srWindow.Top + 1;
    }
    return size;
}

void show_document(const std::string& path) {
    VOR2_LOADER::platform::start_program("explorer", path.c_str());
}

bool may_write_in(const std::string& folder) {
    return _access(folder.empty() ? "." : folder.c_str(), 2) == 0;
}

std::FILE* temporary_stream() {
    wchar_t folder[MAX_PATH + 1];
    wchar_t name[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH, folder) == 0 || GetTempFileNameW(folder, L"vr2", 0, name) == 0) {
        errno = EACCES;
        return nullptr;
    }
    return _wfopen(name, L"w+bTD");
}

long start_worker(std::FILE* output, std::FILE* errors, const std::function<int()>& work) {
    static long last_handle = 0;
    std::fflush(nullptr);
    const int empty = _open("NUL", _O_RDONLY | _O_BINARY);
    if (empty < 0) return -1;
    {
        const Redirection input(_fileno(stdin), empty);
        const Redirection results(_fileno(stdout), _fileno(output));
        const Redirection messages(_fileno(stderr), _fileno(errors));
        finished_workers.push_back({++last_handle, work(), 0});
        std::fflush(nullptr);
    }
    _close(empty);
    return last_handle;
}

WorkerEnd wait_for_worker() {
    if (finished_workers.empty()) return {};
    const WorkerEnd end = finished_workers.front();
    finished_workers.pop_front();
    return end;
}

} // namespace tool
