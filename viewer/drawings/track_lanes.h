#pragma once

/// The tracks of nodes as lanes of curves, of one scene or of two over each other.

#include "format/vor2.h"
#include "viewer/drawings/curve_sheet.h"

#include <optional>

namespace vor2::viewer {

struct TrackLaneOptions {
    double start = 0, end = 0;   ///< seconds
    bool quaternions = false;    ///< rotations as x, y, z, w instead of as angles in degrees about x, y and z
    bool only_different = false; ///< of two nodes, only tracks whose curves differ by more than `tolerance`
    double tolerance = 0;
};

/// Lanes for position, rotation and scale, as far as the node has them; `other` is drawn with them in dashes. Moves the
/// cursors of the nodes' tracks.
std::vector<Lane> lanes_of(VOR2_LOADER::VOR2_MATRIX_NODE& node, VOR2_LOADER::VOR2_MATRIX_NODE* other,
                           const TrackLaneOptions& options);

} // namespace vor2::viewer
