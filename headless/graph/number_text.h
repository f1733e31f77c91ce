#pragma once

#include <string_view>

namespace headless {

/// A text without the plus that a number may begin with and std::from_chars doesn't take. Of "+-7" the plus stays,
/// so that it is still no number.
constexpr std::string_view without_plus(std::string_view text) {
    return text.starts_with('+') && !text.starts_with("+-") ? text.substr(1) : text;
}

} // namespace headless
