#pragma once

#include "headless/graph/scene.h"

#include <string>
#include <string_view>

namespace headless {

struct BvhOptions {
    double unit_in_centimetres = 1.0; ///< what one unit of the file's lengths is
    bool z_is_up = false;             ///< else Y is, as most files have it; none says
};

/// Reads a motion capture file into a scene: joints with the rotate order that their channels ask for, an end joint
/// for each end site (named as its parent with "_end"), and for every channel a curve with a key a frame and linear
/// tangents. Position channels hold a joint's whole translation, in place of the offset. Names are made legal and
/// unique. A scene that held nothing of its own takes over the file's frame rate as its time unit, its range as the
/// playback range, and stands at its first frame, time 0; another keeps what it has.
/// Of more or fewer frames than the file says those that are there are read, which a warning tells.
/// An error names line and column, and leaves the scene as it was. See `parse_bvh` for what is one.
Result<void> read_bvh(Scene& scene, const std::string& path, const BvhOptions& options = {});
Result<void> read_bvh_text(Scene& scene, std::string_view text, const std::string& path,
                           const BvhOptions& options = {});

} // namespace headless
