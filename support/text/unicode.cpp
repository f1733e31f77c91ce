#include "support/text/unicode.h"

namespace VOR2_LOADER {

namespace {

/// Length of the well-formed sequence (shortest form, no surrogates, at most 10FFFF) at the start
/// of `units`, each of which holds one byte; 0 if there is none.
template<class UNITS>
std::size_t sequence_length(UNITS units) {
    const auto byte = [&](std::size_t i) -> unsigned {
        return i < units.size()
                   ? static_cast<unsigned>(static_cast<std::make_unsigned_t<typename UNITS::value_type>>(units[i]))
                   : 0x100U;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    unsigned low = 0x80;
    unsigned high = 0xBF;
    std::size_t length = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return 0;
    }
    if (byte(1) < low || byte(1) > high) return 0;
    for (std::size_t i = 2; i < length; ++i) {
        if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
    }
    return length;
}

bool is_high_surrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool is_low_surrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

void append_utf8(std::string& text, char32_t code_point) {
    const auto put = [&](char32_t bits) { text.push_back(static_cast<char>(static_cast<unsigned char>(bits))); };
    const auto put_tail = [&](int shift) { put(0x80 | ((code_point >> shift) & 0x3F)); };
    if (code_point < 0x80) {
        put(code_point);
    } else if (code_point < 0x800) {
        put(0xC0 | (code_point >> 6));
        put_tail(0);
    } else if (code_point < 0x10000) {
        put(0xE0 | (code_point >> 12));
        put_tail(6);
        put_tail(0);
    } else {
        put(0xF0 | (code_point >> 18));
        put_tail(12);
        put_tail(6);
        put_tail(0);
    }
}

char32_t next_code_point(std::u16string_view text, std::size_t& index) {
    const char32_t unit = text[index++];
    if (!is_high_surrogate(unit) || index >= text.size() || !is_low_surrogate(text[index])) return unit;
    return 0x10000 + ((unit - 0xD800) << 10) + (text[index++] - 0xDC00U);
}

std::size_t widened_utf8_sequence_length(std::u16string_view text) {
    return sequence_length(text);
}

std::string to_utf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) append_utf8(out, next_code_point(text, i));
    return out;
}

std::string to_readable_utf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t bytes = widened_utf8_sequence_length(text.substr(i));
        for (std::size_t k = 0; k < bytes; ++k) out.push_back(static_cast<char>(text[i++]));
        if (bytes == 0) append_utf8(out, next_code_point(text, i));
    }
    return out;
}

std::u16string to_utf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = sequence_length(text.substr(i));
        const auto lead = static_cast<unsigned char>(text[i]);
        if (length <= 1) {
            out.push_back(lead);
            ++i;
            continue;
        }
        char32_t code_point = lead & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length; ++k) {
            code_point = (code_point << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        }
        i += length;
        if (code_point < 0x10000) {
            out.push_back(static_cast<char16_t>(code_point));
        } else {
            out.push_back(static_cast<char16_t>(0xD800 + ((code_point - 0x10000) >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((code_point - 0x10000) & 0x3FF)));
        }
    }
    return out;
}

} // namespace VOR2_LOADER
