#pragma once

#include "headless/graph/math.h"

#include <span>

namespace headless {

/// The rotation in a matrix's upper block, freed of scale and shear: the first row keeps its direction, the second its
/// plane with the first. A mirroring block counts as turned with all three axes negated; rows too short for a
/// direction give one that completes the others.
Matrix rotation_part(const Matrix& matrix);

enum class ArcChoice { shortest, longest };

/// From `a` (at 0) to `b` (at 1) at even speed, along the shorter or the longer arc between them.
Quaternion slerp(const Quaternion& a, const Quaternion& b, double part, ArcChoice arc = ArcChoice::shortest);

struct WeightedRotation {
    Quaternion rotation;
    double weight = 0.0; ///< positive
};

/// How several rotations become one; numbered as the attribute is. Other numbers act as `average`.
enum class RotationBlend : std::uint8_t {
    no_flip =
        0, ///< as `average`: the history by which the host avoids flips would make a pose depend on what was asked
    average = 1,  ///< the normalised weighted sum, each rotation taken on the side of the sum before it
    shortest = 2, ///< by pairs in order along the shorter arc, each step by its share of the weights so far
    longest = 3,  ///< likewise along the longer arc
};

/// The weighted mean; the identity for an empty list.
Quaternion blend(std::span<const WeightedRotation> rotations, RotationBlend how);

} // namespace headless
