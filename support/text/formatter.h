#pragma once

/// `FORMATTER`, the printf-like engine behind records and reports.
///
/// A directive is `%`, then "-", then one of "+" or a blank, then "0", then width digits, then "."
/// and precision digits, then one letter; all but the letter may be missing, and the order is fixed.
/// "%%" is a percent sign. A call runs: construct, `next`, `put` the argument, `next`, `put`, ...,
/// until `next` gives false; then `output` is the result.
///
/// Nothing matches arguments against directives: the argument's type chooses the `put`, and the
/// letter chooses within it. An argument that the letter doesn't fit writes nothing and is used up.
///
/// | letter | 32-bit integer                | 64-bit value          | text     | float |
/// |--------|-------------------------------|-----------------------|----------|-------|
/// | d u    | decimal, signed / unsigned    |                       |          |       |
/// | x X    | hexadecimal                   | the low 32 bits       |          |       |
/// | p P    | two fields of 8 hex digits    | the same              |          |       |
/// | c C    | one character (narrow)        |                       |          |       |
/// | s S    |                               | a C string (wide)     | the text |       |
/// | f      |                               |                       |          | fixed (narrow) |
///
/// Widths fill with blanks, or for numbers with "0" when the directive says so, in front of the
/// sign: "%05d" of -5 is "000-5". A float's precision of 0 means 6. A directive that the format
/// ends within has the letter NUL, which fits nothing.

#include "support/text/text.h"

namespace VOR2_LOADER {

template<class CHARACTER>
class FORMATTER {
public:
    using TEXT_TYPE = BASIC_TEXT<CHARACTER>;
    static constexpr bool IS_WIDE = sizeof(CHARACTER) == 2;

    /// `format` is owned by the caller and must outlive the formatter.
    explicit FORMATTER(const TEXT_TYPE& format_text);
    FORMATTER(const TEXT_TYPE&&) = delete;

    /// Copies what lies before the next directive and reads the directive; false at the end.
    [[nodiscard]] bool next();

    void put(i32 value);
    void put(u32 value);
    /// For `s` the value is a pointer to a NUL-terminated narrow string.
    void put(u64 value) requires(sizeof(CHARACTER) == 2);
    void put(const TEXT_TYPE& value);
    void put(f32 value) requires(sizeof(CHARACTER) == 1);

    [[nodiscard]] const TEXT_TYPE& output() const noexcept { return my_output; }

private:
    void read();
    [[nodiscard]] u16 read_number();
    void put_integer(u32 bits, bool is_signed, u32 high_field);
    void fill(std::string_view text, CHARACTER fill_character);
    void put_pointer(u32 high, u32 low);
    [[nodiscard]] NARROW_TEXT hexadecimal(u32 value, bool upper) const;
    void append_narrow(std::string_view text);

    const TEXT_TYPE& my_format;
    TEXT_TYPE my_output;
    u16 my_position = 0;
    CHARACTER my_current = 0;
    bool my_left_justify = false;
    CHARACTER my_sign = 0;
    CHARACTER my_pad = ' ';
    u16 my_width = 0;
    u16 my_precision = 0;
};

/// A whole format call: each argument in turn to the next directive. Arguments beyond the directives
/// are left over, and directives beyond the arguments write nothing.
template<class CHARACTER, class... ARGUMENTS>
[[nodiscard]] BASIC_TEXT<CHARACTER> formatted(const BASIC_TEXT<CHARACTER>& format, const ARGUMENTS&... arguments) {
    FORMATTER<CHARACTER> formatter(format);
    ((formatter.next() ? formatter.put(arguments) : void()), ...);
    while (formatter.next()) {
    }
    return formatter.output();
}

extern template class FORMATTER<char>;
extern template class FORMATTER<char16_t>;

} // namespace VOR2_LOADER
