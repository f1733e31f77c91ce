#include "inspect/json_writer.h"

#include "support/text/unicode.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>

namespace vor2::inspect {
namespace {

template<class NUMBER>
std::string shortest_text(NUMBER number) {
    if (std::isnan(number)) return "nan";
    if (std::isinf(number)) return number < 0 ? "-inf" : "inf";
    // "-0" would be a whole number to many a reader, and those know one zero.
    if (number == 0 && std::signbit(number)) return "-0.0";
    char digits[40];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    return {digits, result.ptr};
}

void append_escape(std::string& text, unsigned unit) {
    static constexpr char hex[] = "0123456789abcdef";
    text += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) text += hex[unit >> shift & 0xFU];
}

bool is_surrogate(char32_t code_point) {
    return code_point >= 0xD800 && code_point <= 0xDFFF;
}

} // namespace

std::string shortest(float number) {
    return shortest_text(number);
}

std::string shortest(double number) {
    return shortest_text(number);
}

std::string quoted(std::u16string_view text) {
    std::string out = "\"";
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = VOR2_LOADER::next_code_point(text, i);
        if (c == U'"' || c == U'\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == U'\n') {
            out += "\\n";
        } else if (c == U'\r') {
            out += "\\r";
        } else if (c == U'\t') {
            out += "\\t";
        } else if (c < 0x20 || (c >= 0x7F && c < 0xA0) || is_surrogate(c)) {
            append_escape(out, static_cast<unsigned>(c));
        } else {
            VOR2_LOADER::append_utf8(out, c);
        }
    }
    return out += '"';
}

void TextOut::flush() {
    if (target_ != nullptr) {
        target_->append(buffer_);
    } else if (!buffer_.empty() && error_ == 0 &&
               std::fwrite(buffer_.data(), 1, buffer_.size(), stream_) != buffer_.size()) {
        error_ = errno != 0 ? errno : EIO;
    }
    buffer_.clear();
}

int TextOut::finish() {
    flush();
    if (stream_ != nullptr && error_ == 0 && std::fflush(stream_) != 0) error_ = errno != 0 ? errno : EIO;
    return error_;
}

void JsonWriter::new_line() {
    out_.put('\n');
    out_.indent(levels_.size());
}

void JsonWriter::before_value() {
    if (after_key_) {
        after_key_ = false;
        return;
    }
    if (levels_.empty()) return;
    Level& level = levels_.back();
    if (!level.empty) out_.put(',');
    if (indented_ && !level.on_one_line) {
        new_line();
    } else if (!level.empty && indented_) {
        out_.put(' ');
    }
    level.empty = false;
}

void JsonWriter::begin(char bracket, bool on_one_line) {
    before_value();
    out_.put(bracket);
    levels_.push_back({on_one_line || (!levels_.empty() && levels_.back().on_one_line)});
}

void JsonWriter::end(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (indented_ && !level.on_one_line && !level.empty) new_line();
    out_.put(bracket);
}

void JsonWriter::key(std::string_view name) {
    before_value();
    out_.put('"');
    out_.put(name);
    out_.put(indented_ ? std::string_view("\": ") : std::string_view("\":"));
    after_key_ = true;
}

void JsonWriter::value_text(std::string_view text) {
    before_value();
    out_.put(text);
}

void JsonWriter::number(float value) {
    before_value();
    if (!std::isfinite(value)) out_.put('"');
    out_.put(shortest(value));
    if (!std::isfinite(value)) out_.put('"');
}

void JsonWriter::number(double value) {
    before_value();
    if (!std::isfinite(value)) out_.put('"');
    out_.put(shortest(value));
    if (!std::isfinite(value)) out_.put('"');
}

void JsonWriter::text(std::string_view utf8) {
    const std::u16string units = VOR2_LOADER::to_utf16(utf8);
    value_text(quoted(units));
}

} // namespace vor2::inspect
