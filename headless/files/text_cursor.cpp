#include "headless/files/text_cursor.h"

#include "headless/graph/number_text.h"
#include "support/text/ascii.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace headless {

using VOR2_LOADER::lower;

namespace {

bool blank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool stands_alone(char c) {
    return c == '{' || c == '}' || c == ':';
}

} // namespace

bool same_word(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

double last_digit_of(std::string_view number) {
    const std::size_t exponent_at = std::min(number.find_first_of("eE"), number.size());
    int exponent = 0;
    if (exponent_at < number.size()) {
        const std::string_view digits = without_plus(number.substr(exponent_at + 1));
        std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    }
    const std::size_t point = number.find('.');
    const auto decimals = point < exponent_at ? static_cast<int>(exponent_at - point - 1) : 0;
    return std::pow(10.0, exponent - decimals);
}

TextCursor::TextCursor(std::string_view text, const std::string& path) : text_(text), path_(path) {
    if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
}

std::size_t TextCursor::skip_blanks() {
    while (at_ < text_.size() && blank(text_[at_])) ++at_;
    return at_;
}

void TextCursor::skip(char wanted) {
    if (skip_blanks() < text_.size() && text_[at_] == wanted) ++at_;
}

std::string_view TextCursor::word() {
    const std::size_t start = skip_blanks();
    if (at_end()) return {};
    do ++at_;
    while (!at_end() && !stands_alone(text_[start]) && !blank(text_[at_]) && !stands_alone(text_[at_]));
    return text_.substr(start, at_ - start);
}

std::string_view TextCursor::rest_of_line(char stop) {
    std::size_t start = at_;
    while (!at_end() && text_[at_] != '\n' && text_[at_] != '\r' && text_[at_] != stop) ++at_;
    std::size_t end = at_;
    while (start < end && blank(text_[start])) ++start;
    while (start < end && blank(text_[end - 1])) --end;
    return text_.substr(start, end - start);
}

bool TextCursor::number(double& out) {
    const std::string_view digits = without_plus(text_.substr(skip_blanks()));
    const char* const end = digits.data() + digits.size();
    double value = 0.0;
    const auto [behind, problem] = std::from_chars(digits.data(), end, value);
    if (problem != std::errc() || !std::isfinite(value)) return false;
    if (behind != end && !blank(*behind) && !stands_alone(*behind)) return false;
    out = value;
    at_ = static_cast<std::size_t>(behind - text_.data());
    return true;
}

bool TextCursor::fail(std::size_t place, const std::string& message) {
    error_ = Error{message, path_, 1, 1};
    for (std::size_t i = 0; i < place; ++i) {
        const bool line_end = text_[i] == '\n' || (text_[i] == '\r' && !text_.substr(i + 1).starts_with('\n'));
        error_.line += line_end ? 1 : 0;
        error_.column = line_end ? 1 : error_.column + 1;
    }
    return false;
}

std::string TextCursor::quoted(std::string_view word) {
    if (word.empty()) return "the end of the file";
    std::string shown(word.substr(0, 40));
    for (char& c : shown) c = c >= 0 && c < ' ' ? '?' : c;
    return "\"" + shown + (word.size() > 40 ? "...\"" : "\"");
}

} // namespace headless
