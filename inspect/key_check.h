#pragma once

/// The part of the strict check that looks at every number and every track, wherever it stands.

#include "inspect/strict_check.h"

namespace vor2::inspect {

/// Tells numbers that aren't finite and, of each track, times that don't ascend, keys out of step (neither one value
/// nor as many as times, or none at all) and rotations that aren't of unit length; of a list the first such element.
/// Gives how many findings there were.
std::uint64_t check_keys(const VOR2_LOADER::VOR2& scene, const std::function<void(const Finding&)>& tell);

} // namespace vor2::inspect
