#include "tools/vor2/cli/messages.h"

#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/system.h"

#include <cstdio>

namespace tool {
namespace {

bool quiet_run = false;
std::size_t problem_count = 0;

void write_line(std::string line) {
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    line += '\n';
    Progress::clear_line();
    (void)std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace

void set_quiet(bool quiet) {
    quiet_run = quiet;
}

bool is_quiet() {
    return quiet_run;
}

void problem(std::string_view file, std::string_view why) {
    ++problem_count;
    std::string line = "vor2: ";
    if (!file.empty()) line.append(file).append(": ");
    write_line(line.append(why));
}

std::size_t problems_told() {
    return problem_count;
}

void note(std::string_view text) {
    if (!quiet_run) write_line("vor2: " + std::string(text));
}

bool finish(vor2::inspect::TextOut& out) {
    const int error = out.finish();
    if (error != 0) problem("standard output", error_text(error));
    return error == 0;
}

} // namespace tool
