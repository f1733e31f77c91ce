#pragma once

/// Materials: how a surface looks, as a fixed set of animated values with maps, or as a shader's name with
/// its parameters. Triangle groups point into the root's `materials` by index. Where a member's meaning
/// isn't said, the library keeps, copies and compares it and nothing more.

#include "format/materials/material_maps.h"
#include "format/tracks/extended_properties.h"

namespace VOR2_LOADER {

class VOR2_MATERIAL : public ANIMATED_RECORD<VOR2_MATERIAL, VOR2_ENTITY, VOR2_INTERNAL_ANIM_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    TEXT material_text;
    VOR2_EXTENDED_PROPERTIES extended_properties; ///< not moved by the clock

    [[nodiscard]] virtual bool equals(const VOR2_MATERIAL& other) const = 0;
    [[nodiscard]] virtual u32 kind() const = 0;
    [[nodiscard]] virtual OWNED<VOR2_MATERIAL> clone() const = 0;
    [[nodiscard]] virtual std::string_view class_name() const = 0;
    /// 0 a standard material, 1 a shader material, nothing for any other number.
    [[nodiscard]] static OWNED<VOR2_MATERIAL> make(u32 kind);

    static constexpr u32 CHUNK_ID = 13;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_MATERIAL;
        return RECORD("VOR2_MATERIAL", base<VOR2_ENTITY>(), text("material_text", &C::material_text).since(1.08F),
                      object("extended_properties", &C::extended_properties).since(1.15F).save_ignored());
    }
};
[[nodiscard]] inline OWNED<VOR2_MATERIAL> make_material(u32 kind) {
    return VOR2_MATERIAL::make(kind);
}

class VOR2_STANDARD_MATERIAL final : public FAMILY_KIND<VOR2_STANDARD_MATERIAL, VOR2_MATERIAL, 0, VOR2_MATERIAL> {
public:
    OWNED<VOR2_ANIMATABLE_COLOUR> ambient_colour, colour_track_1, colour_track_2, colour_track_3;
    OWNED<VOR2_ANIMATABLE_FLOAT32> transparency, float_track_1, float_track_2, float_track_3;
    bool material_flag = false;
    u32 material_word = 2;
    OWNED_ARRAY<VOR2_MATERIAL_MAP> maps; ///< an entry may be absent

    static constexpr auto record() {
        using C = VOR2_STANDARD_MATERIAL;
        return RECORD("VOR2_STANDARD_MATERIAL", base<VOR2_MATERIAL>(), optional("ambient_colour", &C::ambient_colour),
                      optional("colour_track_1", &C::colour_track_1), optional("colour_track_2", &C::colour_track_2),
                      optional("colour_track_3", &C::colour_track_3), optional("transparency", &C::transparency),
                      optional("float_track_1", &C::float_track_1), optional("float_track_2", &C::float_track_2),
                      optional("float_track_3", &C::float_track_3), flag("material_flag", &C::material_flag),
                      value("material_word", &C::material_word), optionals("maps", &C::maps));
    }
};

/// A shader's parameter that is a text.
class VOR2_SHADER_STRING_PARAM : public RECORDED<VOR2_SHADER_STRING_PARAM, VOR2_ENTITY> {
public:
    TEXT value;

    static constexpr auto record() {
        return RECORD("VOR2_SHADER_STRING_PARAM", base<VOR2_ENTITY>(), text("value", &VOR2_SHADER_STRING_PARAM::value));
    }
};

/// A shader's parameter that is a light.
class VOR2_SHADER_LIGHT_PARAM : public RECORDED<VOR2_SHADER_LIGHT_PARAM, VOR2_ENTITY> {
public:
    u32 light_word_0 = 0xFFFFFFFF, light_word_1 = 0xFFFFFFFF;

    static constexpr auto record() {
        using C = VOR2_SHADER_LIGHT_PARAM;
        return RECORD("VOR2_SHADER_LIGHT_PARAM", base<VOR2_ENTITY>(), value("light_word_0", &C::light_word_0),
                      // Its short write has never reached the result of a save.
                      value("light_word_1", &C::light_word_1).save_ignored());
    }
};

class VOR2_SHADER_MATERIAL final : public FAMILY_KIND<VOR2_SHADER_MATERIAL, VOR2_MATERIAL, 1, VOR2_MATERIAL> {
public:
    TEXT shader_name;
    u32 shader_word = 0;
    ARRAY<VOR2_SHADER_STRING_PARAM> string_params;
    ARRAY<VOR2_SHADER_LIGHT_PARAM> light_params;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_FLOAT32>> float_params;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_INT32>> int_params;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_VECTOR_3>> vector_3_params;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_VECTOR_4>> vector_4_params;
    u32 shader_tail_word = 0;

    static constexpr auto record() {
        using C = VOR2_SHADER_MATERIAL;
        return RECORD("VOR2_SHADER_MATERIAL", base<VOR2_MATERIAL>(), text("shader_name", &C::shader_name),
                      value("shader_word", &C::shader_word), objects("string_params", &C::string_params),
                      objects("light_params", &C::light_params), objects("float_params", &C::float_params),
                      objects("int_params", &C::int_params), objects("vector_3_params", &C::vector_3_params),
                      objects("vector_4_params", &C::vector_4_params),
                      value("shader_tail_word", &C::shader_tail_word).since(1.14F));
    }
};

CLASSES<VOR2_STANDARD_MATERIAL, VOR2_SHADER_MATERIAL> classes_of(const VOR2_MATERIAL*);

} // namespace VOR2_LOADER
