#pragma once

/// How far apart the joints of two scenes stand in the world over time. Joints are the same whose paths are.

#include "format/vor2.h"

#include <vector>

namespace vor2::viewer {

struct JointPair {
    VOR2_LOADER::u64 first, second; ///< indices of nodes
    double distance = 0;            ///< the greatest, in metres; infinite where only one place is finite
    double time = 0;                ///< when
};

struct SceneDistance {
    std::vector<double> times, greatest; ///< at each time the greatest distance of any pair
    std::vector<JointPair> pairs;        ///< the worst first
    VOR2_LOADER::u64 only_first = 0, only_second = 0;
};

/// Moves the clocks of both hierarchies.
SceneDistance measure_distance(VOR2_LOADER::VOR2& first, VOR2_LOADER::VOR2& second);

} // namespace vor2::viewer
