#pragma once

/// Cameras and their effects. The library reads, writes, copies and animates their tracks and interprets
/// none; any of them may be absent. Which camera is in use is said by `VOR2_CAMERA_MAN`. The clock passes
/// over a camera's own box track.

#include "format/scene/positional_object.h"

namespace VOR2_LOADER {

class VOR2_CAMERA_EFFECT
    : public ANIMATED_RECORD<VOR2_CAMERA_EFFECT, VOR2_SERIALISABLE_OBJECT, VOR2_INTERNAL_ANIM_OBJECT> {
public:
    [[nodiscard]] virtual bool equals(const VOR2_CAMERA_EFFECT& other) const = 0;
    [[nodiscard]] virtual u32 kind() const = 0;
    [[nodiscard]] virtual OWNED<VOR2_CAMERA_EFFECT> clone() const = 0;
    [[nodiscard]] virtual std::string_view class_name() const = 0;
    /// 0 motion blur, 1 depth of field, nothing for any other number.
    [[nodiscard]] static OWNED<VOR2_CAMERA_EFFECT> make(u32 kind);

    static constexpr auto record() { return RECORD("VOR2_CAMERA_EFFECT"); }
};

class VOR2_CAMERA_MOTION_BLUR_EFFECT final
    : public FAMILY_KIND<VOR2_CAMERA_MOTION_BLUR_EFFECT, VOR2_CAMERA_EFFECT, 0, VOR2_CAMERA_EFFECT> {
public:
    OWNED<VOR2_ANIMATABLE_INT32> state_track_1, state_track_2, state_track_3, state_track_4, state_track_5;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1, float_track_2, float_track_3;

    static constexpr auto record() {
        using C = VOR2_CAMERA_MOTION_BLUR_EFFECT;
        return RECORD("VOR2_CAMERA_MOTION_BLUR_EFFECT", optional("state_track_1", &C::state_track_1),
                      optional("float_track_1", &C::float_track_1), optional("float_track_2", &C::float_track_2),
                      optional("state_track_2", &C::state_track_2), optional("float_track_3", &C::float_track_3),
                      optional("state_track_3", &C::state_track_3), optional("state_track_4", &C::state_track_4),
                      optional("state_track_5", &C::state_track_5));
    }
};

class VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT final
    : public FAMILY_KIND<VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT, VOR2_CAMERA_EFFECT, 1, VOR2_CAMERA_EFFECT> {
public:
    OWNED<VOR2_ANIMATABLE_INT32> state_track_1, state_track_2, state_track_3, state_track_4, state_track_5,
        state_track_6, state_track_7;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1, float_track_2, float_track_3, float_track_4;

    static constexpr auto record() {
        using C = VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT;
        return RECORD("VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT", optional("state_track_1", &C::state_track_1),
                      optional("float_track_1", &C::float_track_1), optional("state_track_2", &C::state_track_2),
                      optional("state_track_3", &C::state_track_3), optional("float_track_2", &C::float_track_2),
                      optional("float_track_3", &C::float_track_3), optional("state_track_4", &C::state_track_4),
                      optional("float_track_4", &C::float_track_4), optional("state_track_5", &C::state_track_5),
                      optional("state_track_6", &C::state_track_6), optional("state_track_7", &C::state_track_7));
    }
};

CLASSES<VOR2_CAMERA_MOTION_BLUR_EFFECT, VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT> classes_of(const VOR2_CAMERA_EFFECT*);

class VOR2_CAMERA : public ANIMATED_RECORD<VOR2_CAMERA, VOR2_POSITIONAL_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    u32 camera_type = 0;
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track_1, float_track_2;
    OWNED<VOR2_ANIMATABLE_FLOAT32_RANGE> range_track_1, range_track_2;
    OWNED_ARRAY<VOR2_CAMERA_EFFECT> effects; ///< in any order; an entry may be absent

    [[nodiscard]] OWNED<VOR2_CAMERA> clone() const { return make_owned<VOR2_CAMERA>(*this); }
    static constexpr u32 CHUNK_ID = 6;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_CAMERA;
        return RECORD("VOR2_CAMERA", base<VOR2_POSITIONAL_OBJECT>().not_walked(), value("camera_type", &C::camera_type),
                      optional("float_track_1", &C::float_track_1), optional("float_track_2", &C::float_track_2),
                      optional("range_track_1", &C::range_track_1), optional("range_track_2", &C::range_track_2),
                      optionals("effects", &C::effects));
    }
};

} // namespace VOR2_LOADER
