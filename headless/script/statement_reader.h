#pragma once

#include "headless/script/scanner.h"

#include <deque>
#include <span>
#include <vector>

namespace headless {

/// A word of a statement: a bare one, or a string with its quotes gone and its escapes resolved.
struct Word {
    std::string_view text;
    std::size_t offset = 0; ///< in the text of the statements
    bool quoted = false;
};

/// More words than this make a statement an error: a file must not decide how much memory is taken.
inline constexpr std::size_t max_statement_words = std::size_t{1} << 24;

/// Takes a text of plain statements apart, as a scene file holds them: words and strings ended by ";". Strings
/// joined by "+" in parentheses are one word. Variables, expressions and control flow are the interpreter's affair;
/// here "$", "{" and their like are characters of words. The time is linear in the text, and words are views of it
/// but for strings with escapes.
class StatementReader {
public:
    explicit StatementReader(std::string_view text) : scanner_(text) {}

    /// Goes to the next statement that isn't empty; false at the end of the text and at an error.
    bool next();
    /// Of the statement that `next` went to; good until the next call.
    std::span<const Word> words() const { return words_; }
    bool failed() const { return scanner_.failed(); }
    const Error& error() const { return scanner_.error(); }
    Place place_of(const Word& word) const { return place_in(scanner_.text(), word.offset); }

private:
    bool read_word();
    bool read_joined_strings();
    std::string& spare_buffer();

    Scanner scanner_;
    std::vector<Word> words_;
    std::deque<std::string> unescaped_; // strings of the statement that aren't views of the text
    std::size_t unescaped_used_ = 0;
};

} // namespace headless
