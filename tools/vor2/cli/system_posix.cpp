#include "tools/vor2/cli/system.h"

#include "support/platform/platform.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool {
namespace {

constexpr std::array endings{SIGINT, SIGTERM, SIGHUP};

sigset_t ending_signals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int ending : endings) sigaddset(&set, ending);
    return set;
}

/// While it lasts the process can't be told to end; it hears of it afterwards.
class EndingHeld {
public:
    EndingHeld() {
        const sigset_t set = ending_signals();
        pthread_sigmask(SIG_BLOCK, &set, &before_);
    }
    ~EndingHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    EndingHeld(const EndingHeld&) = delete;
    EndingHeld& operator=(const EndingHeld&) = delete;

private:
    sigset_t before_{};
};

// The handler may touch lock-free atomics and nothing that allocates.
std::array<std::atomic<char*>, 4096> watched_files{};

void remove_watched_files(int signal) {
    for (const std::atomic<char*>& path : watched_files) {
        const char* name = path.load();
        if (name != nullptr) unlink(name);
    }
    (void)::signal(signal, SIG_DFL);
    (void)raise(signal);
}

void keep_number_taken(int number, int flags) {
    if (fcntl(number, F_GETFD) < 0 && errno == EBADF) {
        const int opened = open("/dev/null", flags | O_CLOEXEC);
        if (opened >= 0 && opened != number) dup2(opened, number);
    }
}

} // namespace

void prepare_process() {
    // Opened the wrong way round: a read or write through them fails as it would on a closed stream.
    keep_number_taken(STDIN_FILENO, O_WRONLY);
    keep_number_taken(STDOUT_FILENO, O_RDONLY);
    keep_number_taken(STDERR_FILENO, O_RDONLY);
    (void)::signal(SIGPIPE, SIG_IGN);
    (void)::signal(SIGXFSZ, SIG_IGN);
    for (const int ending : endings) {
        struct sigaction before {};
        if (sigaction(ending, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) {
            (void)::signal(ending, remove_watched_files);
        }
    }
}

bool input_is_terminal() {
    return isatty(STDIN_FILENO) != 0;
}

bool error_is_terminal() {
    return isatty(STDERR_FILENO) != 0;
}

void leave_ending_to_the_first_thread() {
    const sigset_t endings = ending_signals();
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);
}

int make_watched_file(const std::string& path) {
    const EndingHeld held;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return errno;
    close(file);
    const auto place = std::ranges::find(watched_files, nullptr, [](const auto& name) { return name.load(); });
    if (place != watched_files.end()) place->store(strdup(path.c_str()));
    return 0;
}

void keep_if_interrupted(const std::string& path) {
    const EndingHeld held;
    for (std::atomic<char*>& place : watched_files) {
        char* name = place.load();
        if (name == nullptr || path != name) continue;
        place.store(nullptr);
        std::free(name); // NOLINT(cppcoreguidelines-no-malloc)
        return;
    }
}

TerminalSize terminal_size() {
    TerminalSize size;
    winsize window{};
    if (isatty(STDOUT_FILENO) != 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) == 0 && window.ws_col > 0) {
        size.columns = window.ws_col;
        size.rows = window.ws_row;
    }
    // The first of the three that is set rules; the plain "C" locale and one of another character set take ASCII.
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value == nullptr || *value == '\0') continue;
        std::string locale(value);
        std::erase(locale, '-');
        size.takes_utf8 = strcasestr(locale.c_str(), "utf8") != nullptr;
        return size;
    }
    return size;
}

void show_document(const std::string& path) {
    VOR2_LOADER::platform::start_program("xdg-open", path.c_str());
}

bool may_write_in(const std::string& folder) {
    return access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) == 0;
}

std::FILE* temporary_stream() {
    return std::tmpfile();
}

long start_worker(std::FILE* output, std::FILE* errors, const std::function<int()>& work) {
    (void)std::fflush(nullptr);
    const pid_t child = fork();
    if (child != 0) return child;
    const int empty = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(empty, STDIN_FILENO);
    dup2(fileno(output), STDOUT_FILENO);
    dup2(fileno(errors), STDERR_FILENO);
    const int code = work();
    (void)std::fflush(nullptr);
    _exit(code);
}

WorkerEnd wait_for_worker() {
    int status = 0;
    pid_t child = 0;
    do {
        child = waitpid(-1, &status, 0);
    } while (child < 0 && errno == EINTR);
    if (WIFSIGNALED(status)) return {child, -1, WTERMSIG(status)};
    return {child, WEXITSTATUS(status), 0};
}

} // namespace tool
