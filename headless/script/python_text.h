#pragma once

#include "headless/graph/result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace headless {

/// Reads Python lines from front to back: blanks, names, numbers and strings. What reads gives false at an error, of
/// which the first is kept. The text must outlive the reader.
class PythonText {
public:
    explicit PythonText(std::string_view text) : text_(text) {}

    std::size_t at() const { return at_; }
    bool at_end() const { return at_ >= text_.size(); }
    /// The character `ahead` places on; 0 behind the end.
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void advance() { ++at_; }
    void go_to(std::size_t offset) { at_ = offset; }
    /// Whether a statement ends here.
    bool at_statement_end() const { return at_end() || peek() == '\n' || peek() == ';'; }
    /// Whether "=" stands here that gives a name its value.
    bool at_assignment();
    bool at_string() const;

    /// Passes over blanks and comments; within brackets a line's end is a blank.
    void skip();
    /// Steps over the character if it is the next one behind blanks.
    bool take(char c);
    /// The same for a bracket, which is open until it is closed.
    bool open(char bracket);
    bool close(char bracket);
    /// Empty when no name stands here.
    std::string_view identifier();
    bool dotted_name(std::string& out); ///< "a.b.c"
    using Number = std::variant<std::int64_t, double>;
    bool number(Number& out);
    /// All strings that stand here one behind the other, as one in UTF-8.
    bool strings(std::string& out);

    /// Notes the first error only; always false. `syntax` has the place told even for a text of one line.
    bool fail(std::size_t offset, Error error, bool syntax);
    bool syntax_error(const std::string& what);
    const std::optional<Error>& error() const { return error_; }

private:
    bool string(std::string& out);
    bool escape(std::string& out, bool unicode);
    bool coded(std::string& out, int length, bool unicode);
    unsigned digits(std::size_t begin, int least, int most, int base);

    std::string_view text_;
    std::size_t at_ = 0;
    int brackets_ = 0;
    std::optional<Error> error_;
};

} // namespace headless
