#pragma once

#include "format/scene/root.h"

#include <optional>
#include <vector>

namespace vor2::optimise {

/// How far from each node the points are that must not move, in metres in the node's space:
///
/// - at least as far as the vertices and control points that stand at the node, also those of an instance, or are
///   skinned to it with a weight that isn't 0 (an animated one at any of its keys, a morphing one with all its targets
///   at once);
/// - beyond that `stated`, where there is one, for every node. Otherwise as far as its furthest child, for a node
///   without children that turns as far as its parent, and 1 for a node that has a camera, a light, a helper, an
///   instance of these or an outside object, or whose distance would be 0 though it turns.
///
/// Children and parents stand as at the start of the scene's time range, to which the hierarchy's clock is moved, and
/// bones as the last `VOR2::prepare_weighted_meshes` found them.
std::vector<double> point_distances(VOR2_LOADER::VOR2& scene, std::optional<double> stated);

} // namespace vor2::optimise
