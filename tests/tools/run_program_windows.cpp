#include "run_program.h"

#include "support/platform/windows_headers.h"

#include <cstdio>
#include <system_error>

namespace tool_test {
namespace {

namespace fs = std::filesystem;

/// One word of a command line, as the program's start-up code takes it apart again.
std::wstring quoted(const std::wstring& word) {
    std::wstring line = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"') line.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        line.push_back(c);
    }
    return line.append(backslashes, L'\\') + L"\"";
}

std::wstring wide(const std::string& utf8) {
    return fs::path(reinterpret_cast<const char8_t*>(utf8.c_str())).wstring();
}

HANDLE inherited_file(const fs::path& name, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition, 0, nullptr);
}

/// Names of variables that stand in this process's environment for as long as this lives.
class Variables {
public:
    explicit Variables(const std::vector<std::string>& variables) {
        for (const std::string& variable : variables) {
            const std::size_t sign = variable.find('=');
            names_.push_back(wide(variable.substr(0, sign)));
            SetEnvironmentVariableW(names_.back().c_str(), wide(variable.substr(sign + 1)).c_str());
        }
    }
    ~Variables() {
        for (const std::wstring& name : names_) SetEnvironmentVariableW(name.c_str(), nullptr);
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

private:
    std::vector<std::wstring> names_;
};

/// An exception that ends a program leaves its own large number.
constexpr DWORD FIRST_EXCEPTION = 0x80000000U, NOT_RUN = 0xFFFFFFFFU;

DWORD exit_code_of(const PROCESS_INFORMATION& process) {
    DWORD code = NOT_RUN;
    if (WaitForSingleObject(process.hProcess, 300000) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.hProcess, &code);
    else
        TerminateProcess(process.hProcess, 1);
    return code;
}

DWORD run_once(const ProgramRun& run) {
    std::wstring line = quoted(run.program.wstring());
    for (const std::string& argument : run.arguments) line += L" " + quoted(wide(argument));
    const Variables variables(run.variables);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = inherited_file("NUL", GENERIC_READ, OPEN_EXISTING);
    start.hStdOutput = inherited_file(run.out, GENERIC_WRITE, CREATE_ALWAYS);
    start.hStdError = inherited_file(run.err, GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process{};
    DWORD code = NOT_RUN;
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, run.folder.c_str(), &start,
                       &process) != 0) {
        code = exit_code_of(process);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    for (const HANDLE file : {start.hStdInput, start.hStdOutput, start.hStdError}) CloseHandle(file);
    return code;
}

} // namespace

int run_program(const ProgramRun& run) {
    // Of some thousand programs that the emulator starts on a busy machine one ends before its own first line. What
    // ends a program of ours does so again.
    DWORD code = NOT_RUN;
    for (int turn = 0; turn < 3; ++turn) {
        code = run_once(run);
        if (code < FIRST_EXCEPTION) return static_cast<int>(code);
        std::fprintf(stderr, "%s ended with 0x%08lX\n", run.program.string().c_str(), code);
        std::error_code ignored;
        if (!fs::is_empty(run.out, ignored) || !fs::is_empty(run.err, ignored)) break;
    }
    return -1;
}

} // namespace tool_test
