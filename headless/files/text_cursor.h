#pragma once

#include "headless/graph/result.h"

#include <string>
#include <string_view>

namespace headless {

/// Whether two words are the same but for the case of their letters (ASCII).
bool same_word(std::string_view a, std::string_view b);
/// What one unit of the last digit of a number as written is worth: 0.001 for "1.250", 10 for "12e1".
double last_digit_of(std::string_view number);

/// Walks the words and numbers of a text. Never passes its end.
class TextCursor {
public:
    /// A byte order mark at the start is passed over. `path` is for messages.
    TextCursor(std::string_view text, const std::string& path);

    std::string_view text() const { return text_; }
    std::size_t place() const { return at_; }
    bool at_end() const { return at_ == text_.size(); }

    std::size_t skip_blanks(); ///< spaces and line ends of any kind; the place behind them
    void skip(char wanted);    ///< blanks, and the character if it comes next
    /// A run of characters up to a blank, a colon or a brace; a brace or a colon is a word of its own. Empty at
    /// the end.
    std::string_view word();
    /// What stands before the line's end or `stop`, without blanks around it.
    std::string_view rest_of_line(char stop);
    /// A finite number with a blank, a brace or the end behind it; else false, with the cursor where it was.
    bool number(double& out);

    /// Keeps the error, with line and column of a place; false, to be returned at once.
    bool fail(std::size_t place, const std::string& message);
    const Error& error() const { return error_; }
    /// A word as messages show it: quoted, cut when long; the end of the file by name.
    static std::string quoted(std::string_view word);

private:
    std::string_view text_;
    const std::string& path_;
    std::size_t at_ = 0;
    Error error_;
};

} // namespace headless
