#include "headless/script/python_text.h"

#include "headless/script/scanner.h"
#include "support/text/unicode.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace headless {

void PythonText::skip() {
    while (!at_end()) {
        const char c = peek();
        if (c == '#') {
            at_ = std::min(text_.find('\n', at_), text_.size());
        } else if (c == '\\' && (peek(1) == '\n' || (peek(1) == '\r' && peek(2) == '\n'))) {
            at_ += peek(1) == '\n' ? 2 : 3;
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || (c == '\n' && brackets_ > 0)) {
            ++at_;
        } else {
            return;
        }
    }
}

bool PythonText::take(char c) {
    skip();
    if (peek() != c) return false;
    ++at_;
    return true;
}

bool PythonText::open(char bracket) {
    if (!take(bracket)) return false;
    ++brackets_;
    return true;
}

bool PythonText::close(char bracket) {
    if (!take(bracket)) return false;
    --brackets_;
    return true;
}

std::string_view PythonText::identifier() {
    skip();
    const std::size_t begin = at_;
    if (!starts_identifier(peek())) return {};
    while (continues_identifier(peek())) ++at_;
    return text_.substr(begin, at_ - begin);
}

bool PythonText::dotted_name(std::string& out) {
    out = identifier();
    if (out.empty()) return syntax_error("a name is missing");
    while (take('.')) {
        const std::string_view next = identifier();
        if (next.empty()) return syntax_error("a name is missing");
        out += '.';
        out += next;
    }
    return true;
}

bool PythonText::number(Number& out) {
    const char* begin = text_.data() + at_;
    const char* end = text_.data() + text_.size();
    double value = 0.0;
    std::int64_t count = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (error == std::errc::invalid_argument) return syntax_error("a value is missing");
    const auto [count_stop, count_error] = std::from_chars(begin, end, count);
    const bool whole = count_error == std::errc() && count_stop == stop;
    out = whole ? Number(count) : Number(value);
    at_ += stop - begin;
    return true;
}

bool PythonText::at_assignment() {
    skip();
    return peek() == '=' && peek(1) != '=';
}

bool PythonText::at_string() const {
    std::size_t length = 0; // of the letters in front
    while (length < 2 && peek(length) && std::string_view("rRuUbB").find(peek(length)) != std::string_view::npos)
        ++length;
    return peek(length) == '"' || peek(length) == '\'';
}

bool PythonText::strings(std::string& out) {
    do {
        if (!string(out)) return false;
        skip();
    } while (at_string());
    return true;
}

bool PythonText::string(std::string& out) {
    const std::size_t begin = at_;
    bool raw = false, unicode = false;
    for (; peek() != '"' && peek() != '\''; ++at_) {
        raw |= peek() == 'r' || peek() == 'R';
        unicode |= peek() == 'u' || peek() == 'U';
    }
    const char quote = peek();
    const bool triple = peek(1) == quote && peek(2) == quote;
    const std::string closing(triple ? 3 : 1, quote);
    at_ += closing.size();
    while (text_.substr(std::min(at_, text_.size()), closing.size()) != closing) {
        if (at_end() || (!triple && peek() == '\n')) {
            at_ = begin;
            return fail(begin, Error{"SyntaxError: a string has no end"}, true);
        }
        if (peek() != '\\') {
            out += text_[at_++];
        } else if (raw) {
            out += text_[at_++];
            if (!at_end()) out += text_[at_++];
        } else if (!escape(out, unicode)) {
            return false;
        }
    }
    at_ += closing.size();
    return true;
}

bool PythonText::escape(std::string& out, bool unicode) {
    static constexpr std::pair<char, char> simple[] = {{'\\', '\\'}, {'\'', '\''}, {'"', '"'},  {'a', '\a'},
                                                       {'b', '\b'},  {'f', '\f'},  {'n', '\n'}, {'r', '\r'},
                                                       {'t', '\t'},  {'v', '\v'}};
    const char c = peek(1);
    for (const auto& [letter, meant] : simple) {
        if (c != letter) continue;
        out += meant;
        at_ += 2;
        return true;
    }
    if (c == '\n') {
        at_ += 2;
        return true;
    }
    if (c >= '0' && c <= '7') {
        out += static_cast<char>(digits(at_ + 1, 1, 3, 8));
        return true;
    }
    if (c == 'x') return coded(out, 2, false);
    if (c == 'u' && unicode) return coded(out, 4, true);
    out += text_[at_++]; // one that means nothing stays as it is
    return true;
}

bool PythonText::coded(std::string& out, int length, bool unicode) {
    const std::size_t begin = at_;
    const unsigned code = digits(at_ + 2, length, length, 16);
    if (at_ == begin) return fail(begin, Error{"SyntaxError: a character's number isn't hexadecimal"}, true);
    if (unicode)
        VOR2_LOADER::append_utf8(out, code);
    else
        out += static_cast<char>(code);
    return true;
}

// So many digits from an offset on, and goes behind them; stays where it is when there are too few.
unsigned PythonText::digits(std::size_t begin, int least, int most, int base) {
    const std::size_t end = std::min(begin + static_cast<std::size_t>(most), text_.size());
    unsigned code = 0;
    const auto [stop, error] = std::from_chars(text_.data() + begin, text_.data() + end, code, base);
    const auto found = static_cast<std::size_t>(stop - text_.data()) - begin;
    if (error == std::errc() && found >= static_cast<std::size_t>(least)) at_ = begin + found;
    return code;
}

bool PythonText::fail(std::size_t offset, Error error, bool syntax) {
    if (error_) return false;
    if (error.line == 0 && error.file.empty() && (syntax || text_.find('\n') != std::string_view::npos)) {
        const Place place = place_in(text_, offset);
        error.line = place.line;
        error.column = place.column;
    }
    error_ = std::move(error);
    return false;
}

bool PythonText::syntax_error(const std::string& what) {
    const std::string where = at_end() ? "the end" : "'" + std::string(1, peek()) + "'";
    return fail(at_, Error{"SyntaxError: " + what + " at " + where}, true);
}

} // namespace headless
