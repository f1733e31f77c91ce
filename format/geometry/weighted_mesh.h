#pragma once

/// The skinned mesh. A file holds for each vertex its place at the start of the scene's time range and its
/// bones with weights; `compute_local_data` derives the rest, and from then on `skin` puts the vertex
/// together for any pose of the hierarchy.
///
/// Weights are used as they stand: nothing normalises them. A bone index outside the hierarchy, -1
/// included, contributes nothing, as a weight of 0 would.

#include "format/geometry/bone_palette.h"
#include "format/geometry/tri_object.h"

namespace VOR2_LOADER {

/// One bone's part in a vertex. 8 bytes in a file; what is local to the bone is derived.
class VOR2_BONE_WEIGHT_DATA : public RECORDED<VOR2_BONE_WEIGHT_DATA, VOR2_SERIALISABLE_OBJECT> {
public:
    i32 bone_index = -1; ///< in `nodes` of the root's hierarchy; -1 means no bone
    f32 weight = 0;
    VECTOR_3 local_position{0.0F, 0.0F, 0.0F};            ///< `rest_position` in the bone's space
    VECTOR_3 local_normal{0.0F, 1.0F, 0.0F};              ///< `rest_normal` in the bone's orientation
    ARRAY<VOR2_BINORMAL_TANGENT> local_binormal_tangents; ///< the vertex's pairs in the bone's orientation

    static constexpr auto record() {
        using C = VOR2_BONE_WEIGHT_DATA;
        return RECORD("VOR2_BONE_WEIGHT_DATA", value("bone_index", &C::bone_index), value("weight", &C::weight),
                      not_stored(value("local_position", &C::local_position)),
                      not_stored(value("local_normal", &C::local_normal)),
                      not_stored(objects("local_binormal_tangents", &C::local_binormal_tangents)));
    }
};

/// One matrix for each node of the hierarchy.
using NODE_MATRICES = std::span<const MATRIX_3X4>;

/// `position`, `normal` and `binormal_tangents` are the result of the last skinning, or what the file
/// held, and lie in world space.
class VOR2_WEIGHTED_MESH_VERT : public RECORDED<VOR2_WEIGHTED_MESH_VERT, VOR2_RIGID_VERT> {
public:
    ARRAY<VOR2_BONE_WEIGHT_DATA> bone_weights;
    VECTOR_3 rest_position{0.0F, 0.0F, 0.0F}; ///< in world space at the start of the scene's time range
    VECTOR_3 rest_normal{0.0F, 0.0F, 0.0F};

    static constexpr auto record() {
        using C = VOR2_WEIGHTED_MESH_VERT;
        return RECORD("VOR2_WEIGHTED_MESH_VERT", base<VOR2_RIGID_VERT>(), objects("bone_weights", &C::bone_weights),
                      value("rest_position", &C::rest_position), value("rest_normal", &C::rest_normal));
    }
    [[nodiscard]] OWNED<VOR2_VERT> clone() const override {
        return OWNED<VOR2_VERT>(new VOR2_WEIGHTED_MESH_VERT(*this));
    }
    /// Fills in each bone weight's local data. A bone outside the arrays gets the defaults and no pairs.
    void compute_local_data(NODE_MATRICES inverse_world, NODE_MATRICES inverse_rotation);
    /// Poses the vertex from the nodes' present world matrices. A vertex that no bone moves comes out at
    /// the origin with a NaN for its normal, by which a check of the scene finds it.
    void skin(const VOR2_MATRIX_HIERARCHY& hierarchy);
};

/// The clock doesn't skin a mesh: the root does, once all nodes and meshes have moved.
class VOR2_WEIGHTED_MESH : public MESH<VOR2_WEIGHTED_MESH, VOR2_WEIGHTED_MESH_VERT, 10> {
public:
    static constexpr auto record() {
        return RECORD("VOR2_WEIGHTED_MESH", base<VOR2_TRI_OBJECT>(),
                      not_stored(objects("vertices", &VOR2_WEIGHTED_MESH::vertices)));
    }
    /// `inverse_world` holds each node's world matrix inverted, `inverse_rotation` the transpose of its
    /// 3 by 3 part without a translation, both at the start of the scene's time range.
    void compute_local_data(NODE_MATRICES inverse_world, NODE_MATRICES inverse_rotation);
    /// Poses every vertex, to the bits that its own `skin` gives.
    void skin(const VOR2_MATRIX_HIERARCHY& hierarchy);
    /// The same for who poses several meshes by one hierarchy.
    void skin(const BONE_PALETTE& palette);
};

} // namespace VOR2_LOADER
