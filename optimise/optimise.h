#pragma once

/// Fewer keys for a scene's hierarchy, with a promise about the world: no node, and no point at a stated distance from
/// one, moves by more than a tolerance at any time.
///
/// Only keys of nodes are taken away; none is moved, changed or added, and all other tracks stay as they are. Of each
/// track the first and the last key stay, by which it loops, unless all that would be left have the same value: then
/// the first is left. The pose at the start of the scene's time range, which skinned meshes are bound in, stays exactly
/// as it is. Tracks that aren't well-formed, or hold numbers that aren't finite, stay whole, and nodes are not looked
/// at while they stand nowhere finite.
///
/// What counts is where the whole hierarchy puts a point, not what one track does, and at all times, not at those of
/// keys. A node's matrix takes a point p of its space to R p + t; beside the original's R' and t' no point with
/// |p| <= d is further off than |t - t'| + d |R - R'|, the last being the spectral norm, and one comes that far where
/// the two act in one direction. A vertex that is skinned by weights that add up to 1 is off by no more than the worst
/// of its bones' points.
///
/// Method. Each track is thinned by the longest steps that are feasible (Imai and Iri, "Polygonal approximations of a
/// curve", 1988), where a step is feasible when with it everything below the node stays within an allowance in the
/// world, under the ancestors as they were thinned. Tracks come from the roots to the leaves, and the allowance of the
/// i-th of the n moving tracks on the way to a leaf grows with i / n up to the tolerance, so that each finds room that
/// the ones before it didn't take. Then, from the leaves to the roots and with all others as they have become, each
/// track looks at the full tolerance for ways over fewer keys between those that it has. In the end the result is
/// measured through the library's own tracks, and where it is over after all, keys come back until it isn't. The time
/// is linear in keys times the nodes below each track; the memory is that of a few copies of the hierarchy and
/// `Limits::memory`.

#include "format/scene/root.h"

#include <optional>
#include <string>
#include <vector>

namespace vor2::optimise {

struct Limits {
    double position = 0;                  ///< metres, more than 0
    std::optional<double> rotation;       ///< radians: of a node's axes in the world
    std::optional<double> point_distance; ///< metres; what it is by default is told by `point_distances`
    /// Bytes for the poses of a stretch of time. Scenes that need more are worked on in several, between which every
    /// track keeps a key; a stretch has 16 poses at the least.
    std::uint64_t memory = std::uint64_t{256} << 20;
};

struct NodeReport {
    std::uint64_t keys_before = 0, keys_after = 0;
    double point_distance = 0; ///< metres
    double worst_position = 0; ///< metres, at `worst_time`: of points up to `point_distance` from the node
    double worst_time = 0;     ///< seconds
    double worst_rotation = 0; ///< radians, at whatever time
};

struct Result {
    std::string problem;           ///< why the scene was left as it was; empty when all went well
    std::vector<NodeReport> nodes; ///< by their index in the hierarchy
    std::uint64_t keys_before = 0, keys_after = 0;
    /// The node that `worst_position` is the greatest of; nothing in a scene where nothing moved.
    std::optional<std::uint64_t> worst_node;

    [[nodiscard]] bool good() const { return problem.empty(); }
};

/// Where more nodes, or more nodes times different times of keys, make the scene one to be left alone.
inline constexpr std::uint64_t most_nodes = 65'536;
inline constexpr std::uint64_t most_node_times = std::uint64_t{1} << 29;

/// Thins out the scene's hierarchy. The errors of the result are those found at four times the density of the original
/// keys: at the time of every key of every node and at three times between each two of them. Cursors end at the times
/// that they were at.
Result optimise_keys(VOR2_LOADER::VOR2& scene, const Limits& limits);

} // namespace vor2::optimise
