#include "run_program.h"

#include <cstdlib>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool_test {

int run_program(const ProgramRun& run) {
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);
        if (chdir(run.folder.c_str()) != 0) _exit(126);
        for (const std::string& variable : run.variables) putenv(const_cast<char*>(variable.c_str()));
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(open(run.out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        dup2(open(run.err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
        std::vector<char*> words{const_cast<char*>(run.program.c_str())};
        for (const std::string& argument : run.arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        execv(words[0], words.data());
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace tool_test
