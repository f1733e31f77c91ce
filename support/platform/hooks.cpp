#include "support/platform/hooks.h"

namespace VOR2_LOADER::platform {

OUTPUT_REDIRECTION* output_redirection = nullptr;
std::optional<UTC_TIME> fixed_time;
std::optional<std::string> fixed_account_name;
std::FILE* (*output_stream_hook)(std::FILE* opened) = nullptr;
std::FILE* (*input_stream_hook)(std::FILE* opened) = nullptr;
void (*print_line_hook)(std::string_view line) = nullptr;
ANSWER (*ask_yes_no_hook)(const char* words, const char* caption) = nullptr;

void print_line(std::string_view line) {
    if (print_line_hook != nullptr) return print_line_hook(line);
    (void)std::fwrite(line.data(), 1, line.size(), stdout);
    (void)std::fputc('\n', stdout);
    (void)std::fflush(stdout);
}

void note_closed(std::u16string_view name, bool whole) {
    if (output_redirection != nullptr) output_redirection->closed(native_file_name(name), whole);
}

} // namespace VOR2_LOADER::platform
