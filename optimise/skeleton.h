#pragma once

/// A hierarchy in the order of a walk from the roots to the leaves, so that all below a node follows it.

#include "format/scene/matrix_hierarchy.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vor2::optimise {

struct Joint {
    std::uint32_t node = 0;              ///< in the hierarchy
    std::optional<std::uint32_t> parent; ///< a joint before this one
    std::uint32_t end = 0;               ///< the joint behind the last one below this
    bool has_tracks = false;             ///< without, it stands where its `world_matrix` says, whatever its parent does
    double point_distance = 0;           ///< metres
};

/// `point_distances` has one for each node.
std::vector<Joint> walk_order(const VOR2_LOADER::VOR2_MATRIX_HIERARCHY& hierarchy,
                              const std::vector<double>& point_distances);

} // namespace vor2::optimise
