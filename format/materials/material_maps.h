#pragma once

/// Material maps: a picture with its placement, or a wrapper of up to two further maps that says how
/// the channels of a normal texture are read. The library keeps every value and draws nothing. Maps nest
/// as deep as a file says, and no operation on them recurses.

#include "format/core/entity.h"
#include "format/core/nested_record.h"
#include "format/tracks/track_families.h"

namespace VOR2_LOADER {

class VOR2_MATERIAL_MAP : public ANIMATED_RECORD<VOR2_MATERIAL_MAP, VOR2_ENTITY, VOR2_INTERNAL_ANIM_OBJECT> {
public:
    TEXT map_text;
    OWNED<VOR2_ANIMATABLE_FLOAT32> map_value;

    [[nodiscard]] virtual u32 kind() const = 0;
    [[nodiscard]] virtual bool equals(const VOR2_MATERIAL_MAP& other) const = 0;
    [[nodiscard]] virtual OWNED<VOR2_MATERIAL_MAP> clone() const = 0;
    [[nodiscard]] virtual std::string_view class_name() const = 0;
    /// 0 a bitmap map, 1 a normal map, nothing for any other number.
    [[nodiscard]] static OWNED<VOR2_MATERIAL_MAP> make(u32 kind);

    static constexpr auto record() {
        using C = VOR2_MATERIAL_MAP;
        // Two maps that differ in their names alone are the same map.
        return RECORD("VOR2_MATERIAL_MAP", base<VOR2_ENTITY>().not_compared(), text("map_text", &C::map_text),
                      optional("map_value", &C::map_value));
    }
};
[[nodiscard]] inline OWNED<VOR2_MATERIAL_MAP> make_material_map(u32 kind) {
    return VOR2_MATERIAL_MAP::make(kind);
}

/// What U and V do beyond the picture.
class VOR2_UV_MATERIAL_WRAP_MODE : public RECORDED<VOR2_UV_MATERIAL_WRAP_MODE, VOR2_SERIALISABLE_OBJECT> {
public:
    u32 u_mode = 0xFFFFFFFF, v_mode = 0xFFFFFFFF;

    static constexpr auto record() {
        using C = VOR2_UV_MATERIAL_WRAP_MODE;
        return RECORD("VOR2_UV_MATERIAL_WRAP_MODE", value("u_mode", &C::u_mode), value("v_mode", &C::v_mode));
    }
};

class VOR2_BITMAP_MATERIAL_MAP_COORDINATES
    : public ANIMATED_RECORD<VOR2_BITMAP_MATERIAL_MAP_COORDINATES, VOR2_INTERNAL_ANIM_OBJECT,
                             VOR2_SERIALISABLE_OBJECT> {
public:
    u32 coordinate_word_0 = 8, coordinate_word_1 = 0;
    OWNED<VOR2_ANIMATABLE_VECTOR_2> uv_track_0, uv_track_1; ///< pairs of U and V
    VOR2_UV_MATERIAL_WRAP_MODE wrap_mode;
    OWNED<VOR2_ANIMATABLE_VECTOR_3> uvw_track;

    static constexpr auto record() {
        using C = VOR2_BITMAP_MATERIAL_MAP_COORDINATES;
        return RECORD("VOR2_BITMAP_MATERIAL_MAP_COORDINATES", value("coordinate_word_0", &C::coordinate_word_0),
                      // Its short write has never reached the result of a save.
                      value("coordinate_word_1", &C::coordinate_word_1).save_ignored(),
                      optional("uv_track_0", &C::uv_track_0), optional("uv_track_1", &C::uv_track_1),
                      object("wrap_mode", &C::wrap_mode), optional("uvw_track", &C::uvw_track));
    }
};

/// The part of the picture to use.
class VOR2_BITMAP_CROP_PLACE
    : public ANIMATED_RECORD<VOR2_BITMAP_CROP_PLACE, VOR2_INTERNAL_ANIM_OBJECT, VOR2_SERIALISABLE_OBJECT> {
public:
    bool crop_place_flag = false;
    u32 crop_place_mode = 0xFFFFFFFF;
    OWNED<VOR2_ANIMATABLE_RECTF> crop_place_rect;

    static constexpr auto record() {
        using C = VOR2_BITMAP_CROP_PLACE;
        return RECORD("VOR2_BITMAP_CROP_PLACE", flag("crop_place_flag", &C::crop_place_flag),
                      value("crop_place_mode", &C::crop_place_mode), optional("crop_place_rect", &C::crop_place_rect));
    }
};

class VOR2_BITMAP_MATERIAL_MAP_BITMAP_PARAMS
    : public ANIMATED_RECORD<VOR2_BITMAP_MATERIAL_MAP_BITMAP_PARAMS, VOR2_INTERNAL_ANIM_OBJECT,
                             VOR2_SERIALISABLE_OBJECT> {
public:
    TEXT bitmap_name{u"NONAME"};
    u32 param_word_0 = 0, param_word_1 = 0;
    VOR2_BITMAP_CROP_PLACE crop_place;

    static constexpr auto record() {
        using C = VOR2_BITMAP_MATERIAL_MAP_BITMAP_PARAMS;
        return RECORD("VOR2_BITMAP_MATERIAL_MAP_BITMAP_PARAMS", text("bitmap_name", &C::bitmap_name),
                      value("param_word_0", &C::param_word_0), value("param_word_1", &C::param_word_1),
                      object("crop_place", &C::crop_place));
    }
};

/// Not driven by the clock. 12 bytes.
class VOR2_BITMAP_MATERIAL_MAP_TIME : public RECORDED<VOR2_BITMAP_MATERIAL_MAP_TIME, VOR2_SERIALISABLE_OBJECT> {
public:
    f32 time_value_0 = 0, time_value_1 = 1;
    u32 time_word = 0;

    static constexpr auto record() {
        using C = VOR2_BITMAP_MATERIAL_MAP_TIME;
        return RECORD("VOR2_BITMAP_MATERIAL_MAP_TIME", value("time_value_0", &C::time_value_0),
                      value("time_value_1", &C::time_value_1), value("time_word", &C::time_word));
    }
};

class VOR2_BITMAP_MATERIAL_MAP final
    : public FAMILY_KIND<VOR2_BITMAP_MATERIAL_MAP, VOR2_MATERIAL_MAP, 0, VOR2_MATERIAL_MAP> {
public:
    VOR2_BITMAP_MATERIAL_MAP_COORDINATES coordinates;
    VOR2_BITMAP_MATERIAL_MAP_BITMAP_PARAMS bitmap_params;
    VOR2_BITMAP_MATERIAL_MAP_TIME time;

    static constexpr auto record() {
        using C = VOR2_BITMAP_MATERIAL_MAP;
        return RECORD("VOR2_BITMAP_MATERIAL_MAP", base<VOR2_MATERIAL_MAP>(), object("coordinates", &C::coordinates),
                      object("bitmap_params", &C::bitmap_params), object("time", &C::time));
    }
};

/// For each channel of a normal texture, which way it points.
class VOR2_NORMAL_CHANNEL_DIRECTION : public RECORDED<VOR2_NORMAL_CHANNEL_DIRECTION, VOR2_SERIALISABLE_OBJECT> {
public:
    bool first_channel = false, second_channel = false, third_channel = false;

    static constexpr auto record() {
        using C = VOR2_NORMAL_CHANNEL_DIRECTION;
        return RECORD("VOR2_NORMAL_CHANNEL_DIRECTION", flag("first_channel", &C::first_channel),
                      flag("second_channel", &C::second_channel), flag("third_channel", &C::third_channel));
    }
};

class VOR2_NORMAL_MATERIAL_MAP final : public NESTED_RECORD<VOR2_NORMAL_MATERIAL_MAP, VOR2_MATERIAL_MAP, 1> {
public:
    OWNED<VOR2_MATERIAL_MAP> first_map, second_map;
    VOR2_NORMAL_CHANNEL_DIRECTION channel_direction;
    u32 normal_map_word = 0xFFFFFFFF;

    VOR2_NORMAL_MATERIAL_MAP() = default;
    // NOLINTNEXTLINE(bugprone-copy-constructor-init): the base is copied with the fields, as one of them
    VOR2_NORMAL_MATERIAL_MAP(const VOR2_NORMAL_MATERIAL_MAP& source) : NESTED_RECORD() { copy_nested(source); }
    VOR2_NORMAL_MATERIAL_MAP& operator=(const VOR2_NORMAL_MATERIAL_MAP& source) {
        return *this = VOR2_NORMAL_MATERIAL_MAP(source);
    }
    VOR2_NORMAL_MATERIAL_MAP(VOR2_NORMAL_MATERIAL_MAP&&) noexcept = default;
    VOR2_NORMAL_MATERIAL_MAP& operator=(VOR2_NORMAL_MATERIAL_MAP&&) noexcept = default;
    ~VOR2_NORMAL_MATERIAL_MAP() override { release_nested(); }

    static constexpr auto record() {
        using C = VOR2_NORMAL_MATERIAL_MAP;
        return RECORD("VOR2_NORMAL_MATERIAL_MAP", base<VOR2_MATERIAL_MAP>(), nested("first_map", &C::first_map),
                      nested("second_map", &C::second_map), object("channel_direction", &C::channel_direction),
                      value("normal_map_word", &C::normal_map_word));
    }
};

CLASSES<VOR2_BITMAP_MATERIAL_MAP, VOR2_NORMAL_MATERIAL_MAP> classes_of(const VOR2_MATERIAL_MAP*);

} // namespace VOR2_LOADER
