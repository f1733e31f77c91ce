#pragma once

#include "optimise/optimise.h"
#include "optimise/skeleton.h"

#include <functional>

namespace vor2::optimise {

/// Called for a joint at a time where it is over.
using TellOver = std::function<void(std::uint32_t joint, VOR2_LOADER::f32 time)>;

/// Poses both hierarchies through their own tracks at each of `times` and at three times between each two of them, and
/// fills in what the reports of nodes tell of errors. Moves both clocks.
void measure(VOR2_LOADER::VOR2_MATRIX_HIERARCHY& original, VOR2_LOADER::VOR2_MATRIX_HIERARCHY& thinned,
             const std::vector<Joint>& joints, const std::vector<VOR2_LOADER::f32>& times, const Limits& limits,
             std::vector<NodeReport>& reports, const TellOver& over);

} // namespace vor2::optimise
