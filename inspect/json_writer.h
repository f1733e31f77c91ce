#pragma once

/// JSON straight to a stream, a value at a time and without a tree in memory.
///
/// A writer of our own, because none in common use tells a float by its own shortest digits (they widen it to a double
/// first), keeps a lone surrogate, or writes lists of numbers on one line.
///
/// Numbers have as many digits as give the same float or double back. What JSON has no number for is told as the
/// strings "nan", "inf" and "-inf". Texts of 16-bit units keep every unit: a surrogate without its partner is told as
/// its escape, which every reader of JSON gives back.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace vor2::inspect {

/// The shortest decimal that reads back to the same number; "nan", "inf" or "-inf".
std::string shortest(float number);
std::string shortest(double number);
/// A text as a JSON string with its quotes.
std::string quoted(std::u16string_view text);

/// Buffered bytes to a stream, or to a string. The first failure sticks.
class TextOut {
public:
    explicit TextOut(std::FILE* stream) : stream_(stream) { buffer_.reserve(buffer_size); }
    explicit TextOut(std::string& target) : target_(&target) { buffer_.reserve(buffer_size); }
    ~TextOut() { flush(); }
    TextOut(const TextOut&) = delete;
    TextOut& operator=(const TextOut&) = delete;

    void put(std::string_view text) {
        if (buffer_.size() + text.size() > buffer_size) flush();
        buffer_.append(text);
    }
    void put(char c) { put(std::string_view(&c, 1)); }
    void put(std::size_t count, char c) { put(std::string(count, c)); }
    /// Two blanks a level. Deeper levels than 40 stand no further to the right, so that a file with deep nesting gives
    /// text linear in its size.
    void indent(std::size_t levels) { put(2 * std::min<std::size_t>(levels, 40), ' '); }
    void flush();
    /// Flushes; 0, or the `errno` value of the first write that failed.
    [[nodiscard]] int finish();

private:
    static constexpr std::size_t buffer_size = 1U << 16;
    std::FILE* stream_ = nullptr;
    std::string* target_ = nullptr;
    std::string buffer_;
    int error_ = 0;
};

class JsonWriter {
public:
    enum class Layout {
        indented, ///< objects and lists over several lines, lists of numbers on one
        line      ///< everything on one line
    };
    JsonWriter(TextOut& out, Layout layout) : out_(out), indented_(layout == Layout::indented) {}

    void begin_object() { begin('{', false); }
    void end_object() { end('}'); }
    /// With `inline_values` the elements stand on one line.
    void begin_array(bool inline_values = false) { begin('[', inline_values); }
    void end_array() { end(']'); }
    void key(std::string_view name); ///< of plain letters

    void number(float value);
    void number(double value);
    void number(std::int64_t value) { value_text(std::to_string(value)); }
    void number(std::uint64_t value) { value_text(std::to_string(value)); }
    void boolean(bool value) { value_text(value ? "true" : "false"); }
    void null() { value_text("null"); }
    void text(std::u16string_view value) { value_text(quoted(value)); }
    void text(std::string_view utf8); ///< bytes that are no UTF-8 become units of their own
    /// A key with its value.
    template<class NUMBER>
    void number(std::string_view name, NUMBER value) {
        key(name);
        number(value);
    }
    void boolean(std::string_view name, bool value) {
        key(name);
        boolean(value);
    }
    template<class TEXT>
    void text(std::string_view name, const TEXT& value) {
        key(name);
        text(value);
    }
    /// Behind the last value: a line end.
    void finish() { out_.put('\n'); }

private:
    struct Level {
        bool on_one_line;
        bool empty = true;
    };
    void begin(char bracket, bool on_one_line);
    void end(char bracket);
    void before_value();
    void value_text(std::string_view text);
    void new_line();

    TextOut& out_;
    bool indented_;
    bool after_key_ = false;
    std::vector<Level> levels_;
};

} // namespace vor2::inspect
