#pragma once

#include "convert/axes.h"
#include "convert/bind_pose.h"

namespace vor2::convert {

/// Adds the meshes: skinned ones with their vertices in the world of the bind pose, morphing ones with their targets,
/// the others as they are; then what repeats them, and lines. A skinned mesh with targets keeps the skin, and a note
/// says so.
void add_shapes(const ImportedScene& source, const BindPose& pose, VOR2_LOADER::VOR2& scene, Report& report);
/// Adds lights and cameras.
void add_objects(const ImportedScene& source, VOR2_LOADER::VOR2& scene);

} // namespace vor2::convert
