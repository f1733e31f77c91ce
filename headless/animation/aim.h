#pragma once

#include "headless/graph/math.h"

namespace headless {

/// Which of a node's axes is to point where. Lengths don't matter.
struct Aim {
    Vector3 axis{1, 0, 0}, up_axis{0, 1, 0}; ///< of the node
    Vector3 direction, up{0, 1, 0};          ///< in the world
};

/// The turn that takes `axis` into `direction` and `up_axis` into the half plane of `up`. Where one pair is parallel
/// the turn about the axis is any; without a direction or an axis it is the identity.
Matrix aim_rotation(const Aim& aim);
/// The turn that takes one direction into another about the line square to both; the identity where one has no length.
Matrix shortest_turn(const Vector3& from, const Vector3& to);

} // namespace headless
