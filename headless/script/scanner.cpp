#include "headless/script/scanner.h"

#include <algorithm>

namespace headless {

Place place_in(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t line_start = before.rfind('\n') + 1; // npos + 1 is 0
    return {static_cast<int>(std::ranges::count(before, '\n')) + 1, static_cast<int>(before.size() - line_start) + 1};
}

bool starts_identifier(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool continues_identifier(char c) {
    return starts_identifier(c) || (c >= '0' && c <= '9');
}

bool Scanner::fail(std::size_t offset, std::string message) {
    if (error_) return false;
    const Place place = place_in(text_, offset);
    error_ = Error{std::move(message), {}, place.line, place.column};
    return false;
}

bool Scanner::take(std::string_view expected) {
    if (text_.substr(std::min(at_, text_.size()), expected.size()) != expected) return false;
    at_ += expected.size();
    return true;
}

bool Scanner::skip_blanks() {
    while (at_ < text_.size()) {
        const char c = text_[at_];
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v') {
            ++at_;
        } else if (c == '/' && peek(1) == '/') {
            at_ = std::min(text_.find('\n', at_), text_.size());
        } else if (c == '/' && peek(1) == '*') {
            const std::size_t end = text_.find("*/", at_ + 2);
            if (end == std::string_view::npos) return fail(at_, "Syntax error: a comment has no end");
            at_ = end + 2;
        } else {
            break;
        }
    }
    return true;
}

bool Scanner::read_string(std::string& buffer, std::string_view& out) {
    const std::size_t opening = at_++;
    const std::size_t stop = text_.find_first_of("\"\\", at_);
    if (stop != std::string_view::npos && text_[stop] == '"') {
        out = text_.substr(at_, stop - at_);
        at_ = stop + 1;
        return true;
    }
    if (!read_escaped_string(opening, buffer)) return false;
    out = buffer;
    return true;
}

bool Scanner::read_escaped_string(std::size_t opening, std::string& buffer) {
    buffer.clear();
    while (true) {
        const std::size_t stop = text_.find_first_of("\"\\", at_);
        if (stop == std::string_view::npos) return fail(opening, "Syntax error: a string has no end");
        buffer.append(text_, at_, stop - at_);
        at_ = stop + 1;
        if (text_[stop] == '"') return true;
        if (at_end()) return fail(opening, "Syntax error: a string has no end");
        const char c = text_[at_++];
        if (c == '\r' && peek() == '\n') ++at_; // a line that goes on behind its end
        if (c == '\n' || c == '\r') continue;
        buffer += c == 'n' ? '\n' : c == 't' ? '\t' : c == 'r' ? '\r' : c;
    }
}

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        case '"':
        case '\\':
            out += '\\';
            [[fallthrough]];
        default:
            out += c;
        }
    }
    return out + '"';
}

} // namespace headless
