#pragma once

#include "headless/graph/math.h"
#include "headless/graph/result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// A joint of a motion capture file, in the file's own units.
struct BvhJoint {
    enum class Channel : std::uint8_t { x_position, y_position, z_position, x_rotation, y_rotation, z_rotation };

    std::string name; ///< as the file spells it, possibly with blanks; of an end site, its parent's and "_end"
    int parent = -1;  ///< index of an earlier joint; -1 for a root
    Vector3 offset;
    std::vector<Channel> channels; ///< in the order listed, each at most once
    std::size_t first_channel = 0; ///< place of its first value in a frame
};

/// Joints within joints that a file may have; more are refused.
inline constexpr std::size_t max_bvh_depth = 1024;

/// A motion capture file (BVH): a hierarchy, and the values of all its channels frame by frame.
struct BvhFile {
    std::vector<BvhJoint> joints; ///< parents before children
    std::size_t channel_count = 0;
    std::size_t frame_count = 0;  ///< those that are there
    std::size_t stated_count = 0; ///< those that the file says it has
    double frame_time = 0.0;      ///< seconds; positive when there is more than one frame
    double frame_time_step = 0.0; ///< one unit of its last digit as written, but for zeros that fill up
    std::vector<double> values;   ///< `frame_count` times `channel_count`, all finite
};

/// Reads the text of such a file, in time linear in its length and without recursion. Keywords come in any case,
/// white space and line ends are free, names run to the end of their line or the brace. An error names line and
/// column (in bytes): anything that isn't of the format, a channel listed twice, a number that isn't finite, values
/// that make no whole frames or none at all where some are stated, an end before the end. Of more or fewer frames than
/// stated there are those that are there. `path` is for messages alone.
Result<BvhFile> parse_bvh(std::string_view text, const std::string& path);

} // namespace headless
