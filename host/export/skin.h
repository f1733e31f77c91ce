#pragma once

/// Skin clusters of the host: what moves a mesh's points, and by how much.

#include "host/export/deformers.h"
#include "support/types.h"

#include <vector>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

struct SKIN_INFLUENCE {
    MDagPath bone; ///< null for a matrix that isn't a node's
    MPlug matrix, inverse_bind;
};

struct SKIN_WEIGHT {
    u32 influence; ///< place in `influences`
    f32 weight;
};

/// One skin cluster at one mesh. A point comes out at p G (sum of w_i B_i M_i) inverse(G), as rows, with the envelope's
/// part of that and the rest of where it was.
struct SKIN {
    DEFORMER deformer;
    std::vector<SKIN_INFLUENCE> influences;        ///< those that any point has a weight for
    std::vector<std::vector<SKIN_WEIGHT>> weights; ///< of each point, the envelope worked in; none for one that stays
    std::vector<f32> left_over;                    ///< of each point, how much of it stays with the mesh

    /// What the influence does to points of the mesh at the host's present time, before the mesh's own place.
    [[nodiscard]] MMatrix matrix(std::size_t influence) const;
    [[nodiscard]] MMatrix geometry_matrix() const;
};

[[nodiscard]] SKIN read_skin(const DEFORMER& deformer, u32 point_count);

/// The nodes that a mesh's skin cluster, the last to act, moves it by.
[[nodiscard]] std::vector<MDagPath> bones_of(const MDagPath& shape);

} // namespace VOR2_EXPORTER_MAYA
