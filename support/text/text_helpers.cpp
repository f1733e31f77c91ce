#include "support/text/text_helpers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace VOR2_LOADER {

namespace {

template<class TO, class FROM>
BASIC_TEXT<TO> convert(std::basic_string_view<FROM> characters) {
    BASIC_TEXT<TO> text;
    text.resize_uninitialised(characters.size());
    for (std::size_t i = 0; i < characters.size(); ++i) {
        text[i] = static_cast<TO>(static_cast<std::make_unsigned_t<FROM>>(characters[i]));
    }
    return text;
}

template<class VIEW>
i32 last_place(VIEW text, VIEW pattern) {
    if (text.empty() || pattern.empty()) return -1;
    const auto place = text.rfind(pattern);
    return place == VIEW::npos ? -1 : static_cast<i32>(place);
}

template<class CHARACTER>
BASIC_TEXT<CHARACTER>& shift_letters(BASIC_TEXT<CHARACTER>& text, CHARACTER first, CHARACTER last, int by) {
    for (CHARACTER& character : text) {
        if (character >= first && character <= last) character = static_cast<CHARACTER>(character + by);
    }
    return text;
}

NARROW_TEXT exact_expansion(f64 value, u16 precision) {
    // 2^128 has 39 digits before the point.
    std::string digits(static_cast<std::size_t>(precision) + 48, '\0');
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, precision);
    digits.resize(static_cast<std::size_t>(result.ptr - digits.data()));
    return {std::string_view(digits)};
}

} // namespace

TEXT widen(const char* characters, u16 start, u16 count) {
    return widen(std::string_view(characters + start, count));
}
TEXT widen(std::string_view characters) {
    return convert<char16_t>(characters);
}
NARROW_TEXT narrow(const char16_t* characters, u16 start, u16 count) {
    return narrow(std::u16string_view(characters + start, count));
}
NARROW_TEXT narrow(std::u16string_view characters) {
    NARROW_TEXT text;
    text.resize_uninitialised(characters.size());
    for (std::size_t i = 0; i < characters.size(); ++i) text[i] = static_cast<char>(characters[i] & 0xFF);
    return text;
}

i32 find_last(std::u16string_view text, std::u16string_view pattern) {
    return last_place(text, pattern);
}
i32 find_last(std::string_view text, std::string_view pattern) {
    return last_place(text, pattern);
}

NARROW_TEXT to_base(u32 value, u32 base) {
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value, static_cast<int>(base));
    return {std::string_view(digits.data(), static_cast<std::size_t>(result.ptr - digits.data()))};
}

NARROW_TEXT to_decimal(u32 value) {
    return to_base(value, 10);
}

NARROW_TEXT float_to_text(f32 value, u16 precision) {
    NARROW_TEXT text;
    if (std::isnan(value)) return {"nan"};
    if (std::signbit(value) && value != 0.0F) text.append('-');
    const f64 magnitude = std::fabs(static_cast<f64>(value));
    if (std::isinf(magnitude)) {
        text.append(std::string_view("inf"));
        return text;
    }
    constexpr u16 MOST_DIGITS = 19; // 10^19 is the largest power of ten below 2^64
    constexpr f64 TOO_LARGE = 18446744073709551616.0;
    u64 scale = 1;
    for (u16 i = 0; i < precision && i < MOST_DIGITS; ++i) scale *= 10;
    const f64 raised = static_cast<f64>(scale) * magnitude + 0.5;
    if (precision > MOST_DIGITS || raised >= TOO_LARGE) {
        text.append(exact_expansion(magnitude, precision).view());
        return text;
    }
    const u64 scaled = static_cast<u64>(raised);
    const std::string fraction = std::to_string(scaled % scale);
    text.append(std::to_string(scaled / scale));
    text.append('.');
    if (precision == 0) return text;
    text.append(repeat('0', static_cast<u16>(precision - fraction.size())).view());
    text.append(fraction);
    return text;
}

NARROW_TEXT& to_lower(NARROW_TEXT& text) {
    return shift_letters(text, 'A', 'Z', 'a' - 'A');
}
NARROW_TEXT& to_upper(NARROW_TEXT& text) {
    return shift_letters(text, 'a', 'z', 'A' - 'a');
}
TEXT& to_lower(TEXT& text) {
    return shift_letters(text, u'A', u'Z', u'a' - u'A');
}
TEXT& to_upper(TEXT& text) {
    return shift_letters(text, u'a', u'z', u'A' - u'a');
}

} // namespace VOR2_LOADER
