#include "headless/script/statement_reader.h"

#include <array>

namespace headless {
namespace {

// Printable ASCII that may stand in a bare word.
constexpr std::array<bool, 256> word_characters = [] {
    std::array<bool, 256> out{};
    for (int c = 0x21; c < 0x7f; ++c) out[c] = true;
    for (const char c : {';', '"', '(', ')'}) out[static_cast<unsigned char>(c)] = false;
    return out;
}();

bool in_word(char c) {
    return word_characters[static_cast<unsigned char>(c)];
}

std::string shown(char c) {
    static constexpr char digits[] = "0123456789abcdef";
    if (c > ' ' && c < 0x7f) return std::string("'") + c + "'";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("byte 0x") + digits[byte >> 4] + digits[byte & 15];
}

} // namespace

std::string& StatementReader::spare_buffer() {
    if (unescaped_used_ == unescaped_.size()) unescaped_.emplace_back();
    return unescaped_[unescaped_used_++];
}

bool StatementReader::next() {
    words_.clear();
    unescaped_used_ = 0;
    while (scanner_.skip_blanks()) {
        if (scanner_.at_end()) {
            if (words_.empty()) return false;
            return scanner_.fail(words_.front().offset, "Syntax error: the statement isn't ended by ';'");
        }
        if (scanner_.peek() == ';') {
            scanner_.advance();
            if (words_.empty()) continue;
            return true;
        }
        if (!read_word()) return false;
    }
    return false;
}

bool StatementReader::read_word() {
    const std::size_t begin = scanner_.at();
    if (words_.size() == max_statement_words) return scanner_.fail(begin, "The statement has too many words");
    const char first = scanner_.peek();
    if (words_.empty() && !starts_identifier(first))
        return scanner_.fail(begin, "Syntax error: a statement can't begin with " + shown(first));
    if (first == '(') return read_joined_strings();
    if (first == '"') {
        std::string_view text;
        std::string& buffer = spare_buffer();
        if (!scanner_.read_string(buffer, text)) return false;
        if (text.data() != buffer.data()) --unescaped_used_;
        words_.push_back({text, begin, true});
        return true;
    }
    if (!in_word(first)) return scanner_.fail(begin, "Syntax error: unexpected " + shown(first));
    std::size_t end = begin + 1;
    const std::string_view text = scanner_.text();
    while (end < text.size() && in_word(text[end])) ++end;
    scanner_.go_to(end);
    words_.push_back({text.substr(begin, end - begin), begin, false});
    return true;
}

bool StatementReader::read_joined_strings() {
    const std::size_t begin = scanner_.at();
    std::string& joined = spare_buffer();
    joined.clear();
    std::string piece;
    int open = 0;
    do {
        if (!scanner_.skip_blanks()) return false;
        const char c = scanner_.peek();
        if (c == '(') {
            ++open;
        } else if (c == ')') {
            --open;
        } else if (c == '"') {
            std::string_view text;
            if (!scanner_.read_string(piece, text)) return false;
            joined += text;
            continue;
        } else if (c != '+') {
            return scanner_.at_end() ? scanner_.fail(begin, "Syntax error: '(' without ')'")
                                     : scanner_.fail(scanner_.at(), "Syntax error: unexpected " + shown(c));
        }
        scanner_.advance();
    } while (open > 0);
    words_.push_back({joined, begin, true});
    return true;
}

} // namespace headless
