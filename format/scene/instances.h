#pragma once

/// Instances: a further copy of an object of the scene, with a place of its own but no geometry.
///
/// Which sort of object an instance repeats is said by the root's array that it stands in, not by its
/// class: any class can come in any of the ten arrays. The class follows from the `chunk_id`.

#include "format/geometry/tri_object.h"

namespace VOR2_LOADER {

class VOR2_INSTANCE
    : public ANIMATED_RECORD<VOR2_INSTANCE, VOR2_POSITIONAL_OBJECT, UNUSED__VOR2_SCALED_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    u32 instanced_object = 0; ///< what it repeats; carried and not interpreted here

    static constexpr u32 KIND = 0;
    [[nodiscard]] virtual bool equals(const VOR2_INSTANCE& other) const;
    [[nodiscard]] virtual u32 kind() const { return KIND; }
    [[nodiscard]] virtual OWNED<VOR2_INSTANCE> clone() const;
    [[nodiscard]] virtual std::string_view class_name() const { return "VOR2_INSTANCE"; }
    /// The class of that chunk, 14, 16, 18 or 19; nothing for any other number.
    [[nodiscard]] static OWNED<VOR2_INSTANCE> make_of_chunk(u32 chunk_id);

    static constexpr u32 CHUNK_ID = 14;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_INSTANCE;
        return RECORD("VOR2_INSTANCE", base<VOR2_POSITIONAL_OBJECT>(),
                      // Versions below 1.12 didn't write the scale here, so that only 1.12 itself has one.
                      base<UNUSED__VOR2_SCALED_OBJECT>().since(1.12F), value("instanced_object", &C::instanced_object));
    }
};

class VOR2_GEOM_INSTANCE : public FAMILY_KIND<VOR2_GEOM_INSTANCE, VOR2_INSTANCE, 1, VOR2_INSTANCE, VOR2_LIT_OBJECT> {
public:
    static constexpr u32 CHUNK_ID = 16;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        return RECORD("VOR2_GEOM_INSTANCE", base<VOR2_INSTANCE>(), base<VOR2_LIT_OBJECT>());
    }
};

class VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS
    : public FAMILY_KIND<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS, VOR2_INSTANCE, 2, VOR2_GEOM_INSTANCE> {
public:
    ARRAY<u32> material_list; ///< stand for the materials used instead of those of the object

    static constexpr u32 CHUNK_ID = 18;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS;
        return RECORD("VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS", base<VOR2_GEOM_INSTANCE>(),
                      uncounted_values("material_list", &C::material_list));
    }
};

class VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS
    : public FAMILY_KIND<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS, VOR2_INSTANCE, 3, VOR2_GEOM_INSTANCE> {
public:
    ARRAY<VOR2_TRI_SUB_OBJECT> sub_objects;

    static constexpr u32 CHUNK_ID = 19;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS;
        return RECORD("VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS", base<VOR2_GEOM_INSTANCE>(),
                      objects("sub_objects", &C::sub_objects).load_ignored());
    }
};

} // namespace VOR2_LOADER
