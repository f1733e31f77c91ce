#pragma once

/// Where everything in a scene stands at the time that its clock was moved to.

#include "format/vor2.h"
#include "inspect/json_writer.h"

namespace vor2::inspect {

/// A node a line: its position in metres, then its name as JSON quotes it, so that a line stays one.
void write_pose_text(const VOR2_LOADER::VOR2& scene, TextOut& out);
/// One JSON object: the time, the nodes with name, parent and world_matrix (three rows of four numbers, the translation
/// last in each), and the lists of meshes with name, positions and normals.
void write_pose_json(const VOR2_LOADER::VOR2& scene, float time, TextOut& out);

} // namespace vor2::inspect
