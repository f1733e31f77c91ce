#pragma once

/// The mesh whose vertices are pulled towards targets. Only positions are morphed. Weights are used as
/// they stand: nothing clamps or normalises them.

#include "format/geometry/tri_object.h"

namespace VOR2_LOADER {

/// What one target does to a vertex. 16 bytes.
class VOR2_TARGET_VERT : public RECORDED<VOR2_TARGET_VERT, VOR2_SERIALISABLE_OBJECT> {
public:
    VECTOR_3 offset{0.0F, 0.0F, 0.0F}; ///< the displacement at weight 1
    i32 target_index = -1;             ///< in the mesh's `morph_targets`; outside of it, it does nothing

    static constexpr auto record() {
        using C = VOR2_TARGET_VERT;
        return RECORD("VOR2_TARGET_VERT", value("offset", &C::offset), value("target_index", &C::target_index));
    }
};

/// Its `position` is the base, which never changes; `get_position` gives the morphed one.
class VOR2_MORPH_MESH_VERT : public RECORDED<VOR2_MORPH_MESH_VERT, VOR2_RIGID_VERT> {
public:
    ARRAY<VOR2_TARGET_VERT> target_verts;    ///< in no order; of two entries for one target both count
    VECTOR_3 morph_offset{0.0F, 0.0F, 0.0F}; ///< of the last update; a file remembers it

    static constexpr auto record() {
        using C = VOR2_MORPH_MESH_VERT;
        return RECORD("VOR2_MORPH_MESH_VERT", base<VOR2_RIGID_VERT>(), objects("target_verts", &C::target_verts),
                      // It derives from the targets' weights.
                      value("morph_offset", &C::morph_offset).not_compared());
    }
    void get_position(VECTOR_3& out) const override { out = position + morph_offset; }
    [[nodiscard]] OWNED<VOR2_VERT> clone() const override { return OWNED<VOR2_VERT>(new VOR2_MORPH_MESH_VERT(*this)); }
};

class VOR2_MORPH_MESH : public MESH<VOR2_MORPH_MESH, VOR2_MORPH_MESH_VERT, 9> {
public:
    /// Each target's name and the track of its weight; a target without a track has weight 0.
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_FLOAT32>> morph_targets;

    static constexpr auto record() {
        using C = VOR2_MORPH_MESH;
        return RECORD("VOR2_MORPH_MESH", base<VOR2_TRI_OBJECT>(), objects("morph_targets", &C::morph_targets),
                      not_stored(objects("vertices", &C::vertices)));
    }
    /// Sums each vertex's offsets by the targets' present weights.
    void update_morph();
    void moved() { update_morph(); }
};

} // namespace VOR2_LOADER
