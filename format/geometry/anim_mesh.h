#pragma once

/// The mesh that is animated vertex by vertex: where a plain vertex holds a value, this one holds a track.

#include "format/geometry/tri_object.h"

namespace VOR2_LOADER {

/// Each track may be absent, also as an entry of a list; the getter of its value then leaves its
/// argument as it was. Two vertices are equal when all their tracks are.
class VOR2_ANIM_MESH_VERT : public ANIMATED_RECORD<VOR2_ANIM_MESH_VERT, VOR2_VERT, VOR2_INTERNAL_ANIM_OBJECT> {
public:
    OWNED<VOR2_ANIMATABLE_VECTOR_3> position_track;
    OWNED<VOR2_ANIMATABLE_VECTOR_3> normal_track;
    OWNED<VOR2_ANIMATABLE_COLOUR> colour_track;
    OWNED_ARRAY<VOR2_ANIMATABLE_VECTOR_3> uv_tracks; ///< entry i belongs to entry i of `mapping_channels`
    OWNED_ARRAY<VOR2_ANIMATABLE_BINORMAL_TANGENT> binormal_tangent_tracks;

    static constexpr auto record() {
        using C = VOR2_ANIM_MESH_VERT;
        return RECORD("VOR2_ANIM_MESH_VERT", optional("position_track", &C::position_track),
                      optional("normal_track", &C::normal_track), optional("colour_track", &C::colour_track),
                      optionals("uv_tracks", &C::uv_tracks),
                      optionals("binormal_tangent_tracks", &C::binormal_tangent_tracks).since(1.03F));
    }
    void get_position(VECTOR_3& out) const override { read(position_track, out); }
    void get_normal(VECTOR_3& out) const override { read(normal_track, out); }
    void get_colour(VOR2_COLOUR& out) const override { read(colour_track, out); }
    void get_uv_count(u32& out) const override { out = static_cast<u32>(uv_tracks.size()); }
    void get_uv(u32 index, VECTOR_3& out) const override { read(uv_tracks[index], out); }
    void get_binormal_tangent_count(u32& out) const override { out = static_cast<u32>(binormal_tangent_tracks.size()); }
    void get_binormal_tangent(u32 index, VOR2_BINORMAL_TANGENT& out) const override {
        read(binormal_tangent_tracks[index], out);
    }
    [[nodiscard]] OWNED<VOR2_VERT> clone() const override { return OWNED<VOR2_VERT>(new VOR2_ANIM_MESH_VERT(*this)); }

private:
    template<class FAMILY, class VALUE>
    static void read(const OWNED<FAMILY>& track, VALUE& out) {
        if (track) track->value(out);
    }
};

class VOR2_ANIM_MESH : public MESH<VOR2_ANIM_MESH, VOR2_ANIM_MESH_VERT, 8> {
public:
    static constexpr auto record() {
        return RECORD("VOR2_ANIM_MESH", base<VOR2_TRI_OBJECT>(),
                      not_stored(objects("vertices", &VOR2_ANIM_MESH::vertices)));
    }
};

} // namespace VOR2_LOADER
