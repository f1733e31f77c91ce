#pragma once

/// Lights: positional objects with a fixed set of tracks. The library reads, writes, copies and animates
/// them and interprets none; the members' names say no more than type and place. Any track or map may be
/// absent. The clock passes over a light's own box track.

#include "format/materials/material_maps.h"
#include "format/scene/positional_object.h"

namespace VOR2_LOADER {

template<class SELF>
using LIGHT_PARAMS = ANIMATED_RECORD<SELF, VOR2_SERIALISABLE_OBJECT, VOR2_INTERNAL_ANIM_OBJECT>;

/// Reading and writing it always count as done.
struct MAX_ATTENUATION : public LIGHT_PARAMS<MAX_ATTENUATION> {
    OWNED<VOR2_ANIMATABLE_INT32> state_track;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1, float_track_2;

    static constexpr auto record() {
        using C = MAX_ATTENUATION;
        return RECORD("MAX_ATTENUATION", optional("state_track", &C::state_track).result_ignored(),
                      optional("float_track_1", &C::float_track_1).result_ignored(),
                      optional("float_track_2", &C::float_track_2).result_ignored());
    }
};

class VOR2_MAX_LIGHT_PARAMS : public LIGHT_PARAMS<VOR2_MAX_LIGHT_PARAMS> {
public:
    MAX_ATTENUATION attenuation_1, attenuation_2;

    static constexpr auto record() {
        using C = VOR2_MAX_LIGHT_PARAMS;
        return RECORD("VOR2_MAX_LIGHT_PARAMS", object("attenuation_1", &C::attenuation_1),
                      object("attenuation_2", &C::attenuation_2));
    }
};

class VOR2_LIGHT_OBJECT_SHADOW_PARAMS : public LIGHT_PARAMS<VOR2_LIGHT_OBJECT_SHADOW_PARAMS> {
public:
    OWNED<VOR2_ANIMATABLE_COLOUR> colour_track;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track;
    OWNED<VOR2_ANIMATABLE_INT32> state_track_1;
    OWNED<VOR2_MATERIAL_MAP> map;
    OWNED<VOR2_ANIMATABLE_INT32> state_track_2;

    static constexpr auto record() {
        using C = VOR2_LIGHT_OBJECT_SHADOW_PARAMS;
        return RECORD("VOR2_LIGHT_OBJECT_SHADOW_PARAMS", optional("colour_track", &C::colour_track),
                      optional("float_track", &C::float_track), optional("state_track_1", &C::state_track_1),
                      optional("map", &C::map), optional("state_track_2", &C::state_track_2));
    }
};

class VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS : public LIGHT_PARAMS<VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS> {
public:
    OWNED<VOR2_ANIMATABLE_INT32> state_track;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1, float_track_2;

    static constexpr auto record() {
        using C = VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS;
        return RECORD("VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS", optional("state_track", &C::state_track),
                      optional("float_track_1", &C::float_track_1), optional("float_track_2", &C::float_track_2));
    }
};

class VOR2_LIGHT_SHADOW_MAP_PARAMS : public LIGHT_PARAMS<VOR2_LIGHT_SHADOW_MAP_PARAMS> {
public:
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1;
    OWNED<VOR2_ANIMATABLE_INT32> state_track_1;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_2;
    OWNED<VOR2_ANIMATABLE_INT32> state_track_2, state_track_3;

    static constexpr auto record() {
        using C = VOR2_LIGHT_SHADOW_MAP_PARAMS;
        return RECORD("VOR2_LIGHT_SHADOW_MAP_PARAMS", optional("float_track_1", &C::float_track_1),
                      optional("state_track_1", &C::state_track_1), optional("float_track_2", &C::float_track_2),
                      optional("state_track_2", &C::state_track_2), optional("state_track_3", &C::state_track_3));
    }
};

class VOR2_LIGHT_SHADOW_PARAMS : public LIGHT_PARAMS<VOR2_LIGHT_SHADOW_PARAMS> {
public:
    OWNED<VOR2_ANIMATABLE_INT32> state_track;
    VOR2_LIGHT_OBJECT_SHADOW_PARAMS object_shadow_params;
    VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS atmospheric_shadow_params;
    VOR2_LIGHT_SHADOW_MAP_PARAMS shadow_map_params;

    static constexpr auto record() {
        using C = VOR2_LIGHT_SHADOW_PARAMS;
        return RECORD("VOR2_LIGHT_SHADOW_PARAMS", optional("state_track", &C::state_track),
                      object("object_shadow_params", &C::object_shadow_params),
                      object("atmospheric_shadow_params", &C::atmospheric_shadow_params),
                      object("shadow_map_params", &C::shadow_map_params));
    }
};

/// What all lights have; it is also the whole record of a point light.
class VOR2_LIGHT : public ANIMATED_RECORD<VOR2_LIGHT, VOR2_POSITIONAL_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    OWNED<VOR2_ANIMATABLE_INT32> state_track;
    OWNED<VOR2_ANIMATABLE_COLOUR> colour_track_1, colour_track_2, colour_track_3;
    OWNED<VOR2_ANIMATABLE_VECTOR_3> vector_track;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track;
    OWNED<VOR2_MATERIAL_MAP> map;
    VOR2_MAX_LIGHT_PARAMS max_params;
    VOR2_LIGHT_SHADOW_PARAMS shadow_params;

    [[nodiscard]] virtual bool equals(const VOR2_LIGHT& other) const = 0;
    [[nodiscard]] virtual u32 kind() const = 0;
    [[nodiscard]] virtual OWNED<VOR2_LIGHT> clone() const = 0;
    [[nodiscard]] virtual std::string_view class_name() const = 0;
    /// 0 a directional, 1 a point, 2 a spot light, nothing for any other number.
    [[nodiscard]] static OWNED<VOR2_LIGHT> make(u32 kind);

    static constexpr u32 CHUNK_ID = 5;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_LIGHT;
        return RECORD("VOR2_LIGHT", base<VOR2_POSITIONAL_OBJECT>().not_walked(),
                      optional("state_track", &C::state_track).since(1.07F),
                      optional("colour_track_1", &C::colour_track_1), optional("colour_track_2", &C::colour_track_2),
                      optional("colour_track_3", &C::colour_track_3), optional("vector_track", &C::vector_track),
                      optional("float_track", &C::float_track), optional("map", &C::map),
                      object("max_params", &C::max_params).since(1.05F),
                      object("shadow_params", &C::shadow_params).since(1.07F));
    }
};

/// A light with a direction: what a directional and a spot light add.
template<class SELF, u32 NUMBER>
class DIRECTED_LIGHT : public FAMILY_KIND<SELF, VOR2_LIGHT, NUMBER, VOR2_LIGHT> {
public:
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1, float_track_2;
    i32 linked_index = -1;

protected:
    static constexpr auto record_named(std::string_view name) {
        return RECORD(name, base<VOR2_LIGHT>(), optional("float_track_1", &DIRECTED_LIGHT::float_track_1),
                      optional("float_track_2", &DIRECTED_LIGHT::float_track_2),
                      value("linked_index", &DIRECTED_LIGHT::linked_index));
    }
};

class VOR2_DIRECTIONAL_LIGHT final : public DIRECTED_LIGHT<VOR2_DIRECTIONAL_LIGHT, 0> {
public:
    static constexpr auto record() { return record_named("VOR2_DIRECTIONAL_LIGHT"); }
};

class VOR2_POINT_LIGHT final : public FAMILY_KIND<VOR2_POINT_LIGHT, VOR2_LIGHT, 1, VOR2_LIGHT> {
public:
    static constexpr auto record() { return RECORD("VOR2_POINT_LIGHT", base<VOR2_LIGHT>()); }
};

class VOR2_SPOT_LIGHT final : public DIRECTED_LIGHT<VOR2_SPOT_LIGHT, 2> {
public:
    static constexpr auto record() { return record_named("VOR2_SPOT_LIGHT"); }
};

CLASSES<VOR2_DIRECTIONAL_LIGHT, VOR2_POINT_LIGHT, VOR2_SPOT_LIGHT> classes_of(const VOR2_LIGHT*);

} // namespace VOR2_LOADER
