#pragma once

/// What stands somewhere in a scene, and two small records that are mixed in beside it.

#include "format/core/entity.h"
#include "format/tracks/extended_properties.h"

namespace VOR2_LOADER {

/// Base of meshes, splines, lights, cameras, helpers, instances and references. It holds no transform
/// of its own: its place is a node of the hierarchy. An index outside the hierarchy is kept and written
/// back, and means that the object stands nowhere: nothing in the library reads a node by it.
class VOR2_POSITIONAL_OBJECT : public ANIMATED_RECORD<VOR2_POSITIONAL_OBJECT, VOR2_ENTITY, VOR2_INTERNAL_ANIM_OBJECT> {
public:
    TEXT text_1, text_2;  ///< kept and nothing else
    u32 matrix_index = 0; ///< the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root
    VOR2_EXTENDED_PROPERTIES extended_properties;
    OWNED<VOR2_ANIMATABLE_BOUNDING_BOX> box_track; ///< the object's bounding box over time

    static constexpr auto record() {
        using C = VOR2_POSITIONAL_OBJECT;
        return RECORD("VOR2_POSITIONAL_OBJECT", base<VOR2_ENTITY>(), text("text_1", &C::text_1),
                      text("text_2", &C::text_2), value("matrix_index", &C::matrix_index).save_ignored(),
                      object("extended_properties", &C::extended_properties).since(1.04F).result_ignored(),
                      optional("box_track", &C::box_track).since(1.13F).load_ignored());
    }
};

/// Which lights an object is lit by. The numbers are carried and not interpreted.
class VOR2_LIT_OBJECT : public RECORDED<VOR2_LIT_OBJECT, VOR2_SERIALISABLE_OBJECT> {
public:
    ARRAY<u32> light_refs;

    static constexpr auto record() {
        return RECORD("VOR2_LIT_OBJECT", uncounted_values("light_refs", &VOR2_LIT_OBJECT::light_refs));
    }
};

/// Stands where instances and references of older files have a scale track, of which there is nothing to keep or
/// to write.
class UNUSED__VOR2_SCALED_OBJECT : public RECORDED<UNUSED__VOR2_SCALED_OBJECT, VOR2_SERIALISABLE_OBJECT> {
public:
    static constexpr auto record() {
        return RECORD("UNUSED__VOR2_SCALED_OBJECT",
                      passed_over<VOR2_ANIMATABLE_VECTOR_3>("scale_track").read_below(1.13F));
    }
};

/// A name at a node. The clock doesn't move it.
class VOR2_HELPER : public ANIMATED_RECORD<VOR2_HELPER, VOR2_POSITIONAL_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    static constexpr u32 CHUNK_ID = 17;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() { return RECORD("VOR2_HELPER", base<VOR2_POSITIONAL_OBJECT>()); }
};

} // namespace VOR2_LOADER
