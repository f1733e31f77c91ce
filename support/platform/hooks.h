#pragma once

/// What a program around the library may put in the place of the operating system. All are empty by
/// default; set them before work starts. Not synchronised.

#include "support/platform/platform.h"

namespace VOR2_LOADER::platform {

/// Told of every file that is opened for writing, by its native name.
class OUTPUT_REDIRECTION {
public:
    virtual ~OUTPUT_REDIRECTION() = default;
    /// Gives the name to open instead, or nothing to refuse the file.
    [[nodiscard]] virtual std::optional<std::string> redirect(const std::string& native_name) = 0;
    /// Told when such a file is closed, by the name it was asked for; `whole` if every byte reached the system.
    virtual void closed(const std::string& /*native_name*/, bool /*whole*/) {}
    /// Told of every folder that is to be made; false refuses it.
    [[nodiscard]] virtual bool may_create_directory(const std::string& /*native_name*/) { return true; }
};
extern OUTPUT_REDIRECTION* output_redirection;

/// Stand for the clock and the account, so that a run can be repeated to the byte.
extern std::optional<UTC_TIME> fixed_time;
extern std::optional<std::string> fixed_account_name;

/// Take each file that was opened and give the stream to work on in its stead, which owns it from then on:
/// whoever wants to see what becomes of a save on a disk that fails puts it there.
extern std::FILE* (*output_stream_hook)(std::FILE* opened);
extern std::FILE* (*input_stream_hook)(std::FILE* opened);

/// Takes the lines that would go to standard output.
extern void (*print_line_hook)(std::string_view line);
/// Answers instead of the message box.
extern ANSWER (*ask_yes_no_hook)(const char* words, const char* caption);

} // namespace VOR2_LOADER::platform
