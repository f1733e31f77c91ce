#include "support/text/formatter.h"

#include "support/text/text_helpers.h"

#include <algorithm>
#include <limits>

namespace VOR2_LOADER {

template<class CHARACTER>
FORMATTER<CHARACTER>::FORMATTER(const TEXT_TYPE& format_text) : my_format(format_text) {
    my_output.reserve(64);
}

/// Reads the next character; the NUL at the format's end is read over and over.
template<class CHARACTER>
void FORMATTER<CHARACTER>::read() {
    const u64 length = std::min<u64>(my_format.length(), std::numeric_limits<u16>::max());
    my_current = my_position < length ? my_format[my_position++] : CHARACTER{};
}

template<class CHARACTER>
u16 FORMATTER<CHARACTER>::read_number() {
    u32 number = 0;
    for (; my_current >= '0' && my_current <= '9'; read()) {
        number = static_cast<u16>(number * 10 + static_cast<u32>(my_current - '0'));
    }
    return static_cast<u16>(number);
}

template<class CHARACTER>
bool FORMATTER<CHARACTER>::next() {
    while (true) {
        const u16 before = my_position;
        read();
        if (my_position == before) return false;
        if (my_current != '%') {
            my_output.append(my_current);
            continue;
        }
        const u16 behind_sign = my_position;
        read();
        if (my_position == behind_sign) return false;
        if (my_current != '%') break;
        my_output.append(my_current);
    }
    my_left_justify = my_current == '-';
    if (my_left_justify) read();
    my_sign = my_current == '+' || my_current == ' ' ? my_current : CHARACTER{};
    if (my_sign != 0) read();
    my_pad = my_current == '0' ? '0' : ' ';
    if (my_pad == '0') read();
    my_width = read_number();
    my_precision = 0;
    if (my_current == '.') {
        read();
        my_precision = read_number();
    }
    return true;
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::append_narrow(std::string_view text) {
    if constexpr (IS_WIDE) {
        my_output.append(widen(text).view());
    } else {
        my_output.append(text);
    }
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::fill(std::string_view text, CHARACTER fill_character) {
    const u64 missing = text.size() < my_width ? my_width - text.size() : 0;
    const TEXT_TYPE run = repeat(fill_character, static_cast<u16>(missing));
    if (!my_left_justify) my_output.append(run.view());
    append_narrow(text);
    if (my_left_justify) my_output.append(run.view());
}

template<class CHARACTER>
NARROW_TEXT FORMATTER<CHARACTER>::hexadecimal(u32 value, bool upper) const {
    NARROW_TEXT digits = to_base(value, 16);
    return upper ? to_upper(digits) : digits;
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put_pointer(u32 high, u32 low) {
    for (const u32 field : {high, low}) {
        const NARROW_TEXT digits = hexadecimal(field, my_current == 'P');
        append_narrow(repeat('0', static_cast<u16>(8 - digits.length())).view());
        append_narrow(digits.view());
    }
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put_integer(u32 bits, bool is_signed, u32 high_field) {
    switch (my_current) {
    case 'd': {
        const bool negative = (bits & 0x80000000U) != 0;
        NARROW_TEXT text;
        if (negative) text.append('-');
        if (!negative && my_sign != 0) text.append(static_cast<char>(my_sign));
        text.append(to_decimal(negative ? 0U - bits : bits).view());
        return fill(text.view(), my_pad);
    }
    case 'u':
        return fill(to_decimal(bits).view(), my_pad);
    case 'x':
    case 'X':
        return fill(hexadecimal(bits, my_current == 'X').view(), my_pad);
    case 'p':
    case 'P':
        return put_pointer(IS_WIDE && is_signed ? high_field : 0, bits);
    case 'c':
    case 'C':
        if constexpr (!IS_WIDE) {
            const char character = static_cast<char>(bits & 0xFF);
            fill(std::string_view(&character, 1), my_pad);
        }
        return;
    default:
        return;
    }
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put(i32 value) {
    put_integer(static_cast<u32>(value), true, value < 0 ? 0xFFFFFFFFU : 0U);
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put(u32 value) {
    put_integer(value, false, 0);
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put(u64 value) requires(sizeof(CHARACTER) == 2) {
    const u32 low = static_cast<u32>(value);
    if (my_current == 'x' || my_current == 'X') return fill(hexadecimal(low, my_current == 'X').view(), my_pad);
    if (my_current == 'p' || my_current == 'P') return put_pointer(static_cast<u32>(value >> 32), low);
    if (my_current != 's' && my_current != 'S') return;
    const char* characters = reinterpret_cast<const char*>(static_cast<std::uintptr_t>(value)); // NOLINT
    fill(characters != nullptr ? std::string_view(characters) : std::string_view(), ' ');
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put(const TEXT_TYPE& value) {
    if (my_current != 's' && my_current != 'S') return;
    const u64 missing = value.length() < my_width ? my_width - value.length() : 0;
    const TEXT_TYPE run = repeat(static_cast<CHARACTER>(' '), static_cast<u16>(missing));
    if (!my_left_justify) my_output.append(run.view());
    my_output.append(value.view());
    if (my_left_justify) my_output.append(run.view());
}

template<class CHARACTER>
void FORMATTER<CHARACTER>::put(f32 value) requires(sizeof(CHARACTER) == 1) {
    if (my_current != 'f') return;
    NARROW_TEXT text;
    const bool negative = value < 0.0F;
    if (!negative && my_sign != 0) text.append(my_sign);
    text.append(float_to_text(value, my_precision == 0 ? u16{6} : my_precision).view());
    fill(text.view(), my_pad);
}

template class FORMATTER<char>;
template class FORMATTER<char16_t>;

} // namespace VOR2_LOADER
