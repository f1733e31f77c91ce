#pragma once

/// From a `.vr2` file to keyed joints. Only the hierarchy, the scene's time range and the export record
/// reach the host. The rate of the keys is worked out from the keys; the file's sample rate isn't read.

#include "format/scene/root.h"

#include <maya/MDagPathArray.h>
#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// What of a scene's time becomes of the host's.
struct IMPORT_TIMES {
    double diff = 1.0;       ///< the smallest spacing of neighbouring keys, in seconds
    float fps_diff = 0.0F;   ///< the host's frames per second over the file's keys per second
    float maya_start = 0.0F; ///< the range in host frames
    float maya_stop = 0.0F;
};

/// Imports a file: sets the playback range, makes a joint for each node, and keys the joints. The clock
/// stays at the last key set, and nothing is selected.
///
/// False, with a message and with the host's scene as it was, for a file that doesn't load whole and for
/// a time unit without a rate. A file without nodes sets the playback range and nothing else, with a
/// warning. What a node lacks isn't keyed, and the joint rests there.
[[nodiscard]] bool import_scene(const MString& path);

/// To standard output and to the user.
void show_file_info(const VOR2& root);

/// Lowers `diff` to the smallest gap above 0 between neighbouring keys of any track of the first
/// `node_count` nodes. Node 0 and the first gap of each track don't count.
void smallest_key_gap(double& diff, const VOR2& root, u32 node_count);

/// Works out `fps_diff` and the range, and sets the host's animation and playback range to it. A time
/// range that isn't finite leaves the host's range, with a warning, and gives frames 0 to 0. False, with a
/// message, for a time unit without a rate.
[[nodiscard]] bool set_playback_range(const VOR2& root, IMPORT_TIMES& times);

/// A joint under the world for each of the first `node_count` nodes, in order, named as the host lets it.
[[nodiscard]] MDagPathArray create_joints(const VOR2& root, u32 node_count);

/// Hangs each joint but the first under its parent's. A node without a parent (a negative index) stays
/// under the world; so does one, with a warning, whose index lies outside the hierarchy or would close a
/// circle.
void parent_joints(const VOR2& root, const MDagPathArray& nodes);

} // namespace VOR2_EXPORTER_MAYA
