#pragma once

#include "convert/scene_builder.h"

namespace vor2::convert {

/// The one pose in which all skins of a scene are bound.
struct BindPose {
    bool differs = false;              ///< from the pose at the first time
    std::vector<Placement> placements; ///< of each node in its parent; empty unless it differs
    std::vector<Affine> rest; ///< for each mesh with a skin, what brings its vertices to the world in that pose
};

/// The skins' inverse bind matrices leave open where the bound mesh stands in the world: it is put where the joint that
/// comes first in the hierarchy has it at the first time. Two skins that bind a joint in different poses can't both be
/// had; a note names the joint.
BindPose bind_pose(const ImportedScene& source, const std::vector<Affine>& worlds, double first, Report& report);

} // namespace vor2::convert
