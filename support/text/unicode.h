#pragma once

/// UTF-8 and UTF-16, as far as names and messages need them.

#include <cstddef>
#include <string>
#include <string_view>

namespace VOR2_LOADER {

/// Appends the UTF-8 form of `code_point`; a lone surrogate keeps its three-byte form, so that
/// nothing is lost.
void append_utf8(std::string& text, char32_t code_point);

/// Reads the code point at `index` and moves `index` behind it; a surrogate without its partner is
/// given as it stands. `index` must lie within `text`.
[[nodiscard]] char32_t next_code_point(std::u16string_view text, std::size_t& index);

/// The number of units at the start of `text`, 1 to 4, that are the zero-extended bytes of one
/// well-formed UTF-8 sequence; 0 if they are none.
[[nodiscard]] std::size_t widened_utf8_sequence_length(std::u16string_view text);

/// The whole text as UTF-8, unit for unit as UTF-16 says.
[[nodiscard]] std::string to_utf8(std::u16string_view text);

/// The whole text as UTF-8 for people to read: bytes that a host widened one by one come back as
/// the letters they were, everything else as UTF-16 says.
[[nodiscard]] std::string to_readable_utf8(std::u16string_view text);

/// UTF-8 to UTF-16; a byte that is part of no well-formed sequence becomes its own unit.
[[nodiscard]] std::u16string to_utf16(std::string_view text);

} // namespace VOR2_LOADER
