#pragma once

/// What belongs to the scene as a whole: its time range and sample rate, global lighting, and which
/// camera is in use. The tracks are stored, animated and copied as they are; nothing here renders.

#include "format/materials/material_maps.h"

namespace VOR2_LOADER {

class VOR2_ENVIRONMENT
    : public ANIMATED_RECORD<VOR2_ENVIRONMENT, VOR2_INTERNAL_ANIM_OBJECT, VOR2_SERIALISABLE_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    VOR2_FLOAT32_RANGE time_range; ///< first and last time of the scene, in seconds
    OWNED<VOR2_ANIMATABLE_COLOUR> colour_track;
    OWNED<VOR2_MATERIAL_MAP> map;
    f64 sample_rate = 0; ///< samples per second at which the scene was taken

    static constexpr u32 CHUNK_ID = 2;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_ENVIRONMENT;
        return RECORD("VOR2_ENVIRONMENT", object("time_range", &C::time_range),
                      optional("colour_track", &C::colour_track), optional("map", &C::map),
                      value("sample_rate", &C::sample_rate).since(1.16F).result_ignored());
    }
    /// Drops the track and the map and sets the time range to 0, 0. Leaves `sample_rate` alone.
    void reset() {
        time_range = {};
        colour_track.reset();
        map.reset();
    }
};

class VOR2_GLOBAL_LIGHT_TINT : public ANIMATED_RECORD<VOR2_GLOBAL_LIGHT_TINT, VOR2_INTERNAL_ANIM_OBJECT,
                                                      VOR2_SERIALISABLE_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    OWNED<VOR2_ANIMATABLE_FLOAT32> float_track;
    OWNED<VOR2_ANIMATABLE_COLOUR> colour_track;

    static constexpr u32 CHUNK_ID = 3;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_GLOBAL_LIGHT_TINT;
        return RECORD("VOR2_GLOBAL_LIGHT_TINT", optional("float_track", &C::float_track),
                      optional("colour_track", &C::colour_track));
    }
};

class VOR2_AMBIENT_LIGHT : public ANIMATED_RECORD<VOR2_AMBIENT_LIGHT, VOR2_SERIALISABLE_OBJECT,
                                                  VOR2_INTERNAL_ANIM_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    OWNED<VOR2_ANIMATABLE_COLOUR> colour_track;

    static constexpr u32 CHUNK_ID = 4;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        return RECORD("VOR2_AMBIENT_LIGHT", optional("colour_track", &VOR2_AMBIENT_LIGHT::colour_track));
    }
};

/// Says by a number over time which camera is in use.
class VOR2_CAMERA_MAN
    : public ANIMATED_RECORD<VOR2_CAMERA_MAN, VOR2_INTERNAL_ANIM_OBJECT, VOR2_SERIALISABLE_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    OWNED<VOR2_ANIMATABLE_INT32> camera_track;

    static constexpr u32 CHUNK_ID = 22;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        return RECORD("VOR2_CAMERA_MAN", optional("camera_track", &VOR2_CAMERA_MAN::camera_track));
    }
};

} // namespace VOR2_LOADER
