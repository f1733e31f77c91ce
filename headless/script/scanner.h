#pragma once

#include "headless/graph/result.h"

#include <optional>
#include <string>
#include <string_view>

namespace headless {

/// Line and column of an offset in a text, both counted from 1; a column is a byte. Costs a walk over the text, so
/// it is for messages only.
struct Place {
    int line = 1;
    int column = 1;
};
Place place_in(std::string_view text, std::size_t offset);

/// Reads a script or a scene file from front to back: blanks, comments and quoted strings, as MEL has them. The text
/// must outlive the scanner. After the first error nothing more is read and the scanner stands still.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    std::string_view text() const { return text_; }
    std::size_t at() const { return at_; }
    bool at_end() const { return at_ >= text_.size(); }
    /// The character `ahead` places on; 0 behind the end.
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void advance(std::size_t count = 1) { at_ += count; }
    void go_to(std::size_t offset) { at_ = offset; }
    /// Steps over the text `expected` if it stands here.
    bool take(std::string_view expected);

    /// Passes over white space and comments; false when a block comment has no end.
    bool skip_blanks();
    /// Reads the string that begins here with a double quote. Without escapes the result is a view of the text,
    /// otherwise of `buffer`, which holds the string with its escapes resolved. False when the string has no end.
    bool read_string(std::string& buffer, std::string_view& out);

    bool failed() const { return error_.has_value(); }
    const Error& error() const { return *error_; }
    bool fail(std::size_t offset, std::string message); ///< notes the first error only; always false

private:
    bool read_escaped_string(std::size_t opening, std::string& buffer);

    std::string_view text_;
    std::size_t at_ = 0;
    std::optional<Error> error_;
};

/// A string as MEL writes it, in quotes and with escapes.
std::string quoted(std::string_view text);
/// Letters, digits and "_", the first of them no digit: what a variable or a command may be called.
bool starts_identifier(char c);
bool continues_identifier(char c);

} // namespace headless
