#pragma once

/// Writes the file's tracks into joints as the host's animation, through the host's own key command.

#include "host/import/import_driver.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnIkJoint.h>

#include <vector>

namespace VOR2_EXPORTER_MAYA {

/// Keys each joint from its node's tracks: all positions, then all rotations, each at its own times. A key
/// whose time or value isn't finite is left out, with one warning for all; the one value of a track
/// without times sets the joint and no key.
void key_joints(const VOR2& root, const IMPORT_TIMES& times, const MDagPathArray& nodes);

/// Metres in the file's axes to centimetres in the host's.
void set_joint_position(MFnIkJoint& joint, const VECTOR_3& GAME_POS);
void set_joint_rotation(MFnIkJoint& joint, const QUATERNION& GAME_ROT);

/// The frames at which `key_joints` keys a node.
[[nodiscard]] std::vector<double> key_frames(const VOR2_MATRIX_NODE& node, const IMPORT_TIMES& times);

/// Playback ranges longer than this are re-oriented at their ends and at the joint's own keys alone.
inline constexpr double MOST_REORIENTED_FRAMES = 1000000.0;

/// Turns the first joint from the file's up axis to the host's at all its times: at each frame of the
/// playback range from its start on, at its stop, and at the frames of the joint's own keys, which would
/// else keep the old rotation between the new ones. Every time takes the pose that the joint had before
/// any of them was turned. A range that ends before it starts leaves the joint's own keys.
void reorient_first_joint(MFnIkJoint& joint, const MDagPath& path, const IMPORT_TIMES& times,
                          const std::vector<double>& own_frames);

} // namespace VOR2_EXPORTER_MAYA
