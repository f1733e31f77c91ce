#include "tools/vor2/cli/messages.h"

#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/system.h"

#include <cstdio>

namespace tool {
namespace {

bool quiet_run = false;
thread_local std::size_t problem_count = 0;
thread_local MessageListener* listener = nullptr;
constexpr std::string_view prefix = "vor2: ";

std::string one_line(std::string line) {
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

std::string line_of(std::string_view file, std::string_view text) {
    std::string line;
    if (!file.empty()) line.append(file).append(": ");
    return one_line(line.append(text));
}

void write_line(std::string_view text) {
    std::string line(prefix);
    line.append(text) += '\n';
    Progress::clear_line();
    (void)std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace

void set_quiet(bool quiet) {
    quiet_run = quiet;
}

bool is_quiet() {
    return quiet_run || listener != nullptr;
}

void problem(std::string_view file, std::string_view why) {
    ++problem_count;
    const std::string line = line_of(file, why);
    if (listener != nullptr) return listener->take_problem(line);
    write_line(line);
}

std::size_t problems_told() {
    return problem_count;
}

void note(std::string_view text) {
    note(std::string_view(), text);
}

void note(std::string_view file, std::string_view text) {
    const std::string line = line_of(file, text);
    if (listener != nullptr) return listener->take_note(line);
    if (!quiet_run) write_line(line);
}

std::FILE* results() {
    return listener == nullptr ? stdout : listener->printed_;
}

MessageListener::MessageListener(std::FILE* printed) : printed_(printed) {
    listener = this;
}

MessageListener::~MessageListener() {
    listener = nullptr;
}

void MessageListener::leave() {
    listener = nullptr;
}

bool MessageListener::is_there() {
    return listener != nullptr;
}

void pass_on(std::FILE* errors, bool as_problems) {
    if (std::fseek(errors, 0, SEEK_SET) != 0) return;
    std::string line;
    for (int c = std::fgetc(errors); c != EOF; c = std::fgetc(errors)) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        const std::string_view text = std::string_view(line).substr(line.starts_with(prefix) ? prefix.size() : 0);
        if (as_problems && line.find(": warning: ") == std::string::npos) {
            problem({}, text);
        } else {
            note(text);
        }
        line.clear();
    }
}

bool finish(vor2::inspect::TextOut& out) {
    const int error = out.finish();
    if (error != 0) problem("standard output", error_text(error));
    return error == 0;
}

} // namespace tool
