#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace headless {

/// How a curve passes a key on one side. The numbers are those of the attributes; a number outside the list is kept
/// as it is and acts as `spline`.
enum class Tangent : std::uint8_t {
    by_default = 0, ///< as the curve's `tan` says
    fixed = 1,      ///< along the key's own tangent vector
    linear = 2,     ///< straight to the neighbour on that side
    flat = 3,       ///< level
    step = 5,       ///< holds the key's value up to the next key
    slow = 6,       ///< eases: leaves or reaches the key at rest
    fast = 7,       ///< leaves or reaches the key at twice the mean speed of the stretch on that side
    spline = 9,     ///< parallel to the line from the key before to the key behind
    clamped = 10,   ///< as spline, but level toward a neighbour of nearly the same value
    plateau = 16,   ///< as spline, level at extremes and at the ends, never beyond the neighbours' values
    step_next = 17, ///< jumps to the next key's value at once
    automatic = 18, ///< as plateau, but as steep as it may be instead of level
};

/// What a curve does before its first and behind its last key. Numbers outside the list act as `constant`.
enum class Infinity : std::uint8_t {
    constant = 0,
    linear = 1, ///< along the end key's outer tangent
    cycle = 3,
    cycle_with_offset = 4, ///< each round begins where the one before ended
    oscillate = 5,         ///< every other round runs backward
};

/// A tangent vector: along x the input (seconds, or the driver's unit), along y the value. A weighted curve's control
/// point lies a third of the vector from its key; else only the slope counts.
struct TangentVector {
    double x = 1.0;
    double y = 0.0;
    bool operator==(const TangentVector&) const = default;
};

/// By the word that scripts use ("spline", "stepnext", "auto"); nothing for another word.
std::optional<Tangent> tangent_by_name(std::string_view name);

} // namespace headless
