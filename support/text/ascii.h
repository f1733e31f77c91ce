#pragma once

#include <string>

namespace VOR2_LOADER {

/// Of ASCII letters only, whatever the locale: for file names' endings and words of file formats.
constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
inline std::string lowered(std::string text) {
    for (char& c : text) c = lower(c);
    return text;
}

} // namespace VOR2_LOADER
