#pragma once

#include <string>
#include <string_view>

namespace vor2::viewer {

/// A text as HTML and SVG tell it: what would be markup or end an attribute is escaped, and what XML has no place for,
/// control characters, is told as a blank.
inline std::string as_text(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return out;
}

} // namespace vor2::viewer
