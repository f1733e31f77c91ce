#pragma once

/// Conversions between the two widths of text, and helpers on them. Positions and counts are 16
/// bits wide, as no text of the format exceeds 65,535 characters.

#include "support/text/text.h"

namespace VOR2_LOADER {

/// Each byte zero-extended to a code unit.
[[nodiscard]] TEXT widen(const char* characters, u16 start, u16 count);
[[nodiscard]] TEXT widen(std::string_view characters);
/// The low byte of each code unit: a character above 255 loses its high byte.
[[nodiscard]] NARROW_TEXT narrow(const char16_t* characters, u16 start, u16 count);
[[nodiscard]] NARROW_TEXT narrow(std::u16string_view characters);

/// `count` characters from `start` on; the caller keeps within the text.
template<class CHARACTER>
[[nodiscard]] BASIC_TEXT<CHARACTER> sub_text(const BASIC_TEXT<CHARACTER>& text, u16 start, u16 count) {
    return {std::basic_string_view<CHARACTER>(text.data() + start, count)};
}

/// Index of the last place where `pattern` stands in `text`; -1 if it doesn't or either is empty.
[[nodiscard]] i32 find_last(std::u16string_view text, std::u16string_view pattern);
[[nodiscard]] i32 find_last(std::string_view text, std::string_view pattern);

template<class CHARACTER>
[[nodiscard]] BASIC_TEXT<CHARACTER> join(const BASIC_TEXT<CHARACTER>& first, const BASIC_TEXT<CHARACTER>& second) {
    BASIC_TEXT<CHARACTER> joined;
    joined.reserve(first.length() + second.length() + 1);
    joined.append(first.view());
    joined.append(second.view());
    return joined;
}

/// Same length and same code units; case counts.
template<class CHARACTER>
[[nodiscard]] bool equals(const BASIC_TEXT<CHARACTER>& a, const BASIC_TEXT<CHARACTER>& b) {
    return a == b;
}

template<class CHARACTER>
[[nodiscard]] BASIC_TEXT<CHARACTER> repeat(CHARACTER character, u16 count) {
    BASIC_TEXT<CHARACTER> text;
    text.resize_uninitialised(count);
    for (u16 i = 0; i < count; ++i) text[i] = character;
    return text;
}

/// Digits of `value`, lower case from "0123456789abcdef"; "0" for 0. `base` lies from 2 to 16.
[[nodiscard]] NARROW_TEXT to_base(u32 value, u32 base);
[[nodiscard]] NARROW_TEXT to_decimal(u32 value);

/// Fixed notation with exactly `precision` digits behind the point, rounded half up on the value
/// widened to double. What doesn't fit that arithmetic (more than 19 digits, or a value of 2^64 and
/// more once scaled) is written from its exact decimal expansion; a NaN gives "nan", an infinity
/// "inf". A negative value has "-" in front.
[[nodiscard]] NARROW_TEXT float_to_text(f32 value, u16 precision);

/// Change the text itself, ASCII letters only, and give it back.
NARROW_TEXT& to_lower(NARROW_TEXT& text);
NARROW_TEXT& to_upper(NARROW_TEXT& text);
TEXT& to_lower(TEXT& text);
TEXT& to_upper(TEXT& text);

} // namespace VOR2_LOADER
