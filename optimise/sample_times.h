#pragma once

#include "format/scene/matrix_hierarchy.h"

#include <vector>

namespace vor2::optimise {

/// The times of all keys of all nodes, each once and ascending; those that aren't finite are left out.
std::vector<VOR2_LOADER::f32> key_times_of(const VOR2_LOADER::VOR2_MATRIX_HIERARCHY& hierarchy);

/// Those times with one or three more between two of them where a rotation turns by more than `fast_turn` or
/// `fastest_turn` from one to the next: elsewhere differences of poses between two keys are as good as straight.
std::vector<VOR2_LOADER::f32> sample_times(const VOR2_LOADER::VOR2_MATRIX_HIERARCHY& hierarchy,
                                           const std::vector<VOR2_LOADER::f32>& key_times);
inline constexpr double fast_turn = 0.035, fastest_turn = 0.25; ///< radians

/// The `k`-th of `parts` times from `from` on to, and without, `to`.
inline VOR2_LOADER::f32 time_between(VOR2_LOADER::f32 from, VOR2_LOADER::f32 to, int k, int parts) {
    return static_cast<VOR2_LOADER::f32>(from + (static_cast<double>(to) - from) * k / parts);
}

} // namespace vor2::optimise
