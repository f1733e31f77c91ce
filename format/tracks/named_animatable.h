#pragma once

#include "format/core/entity.h"
#include "format/tracks/track_families.h"

namespace VOR2_LOADER {

/// A name paired with a track of one family: a morph target's weight, a shader's parameter, a value
/// that the format doesn't know by name. `VALUE_FAMILY` is one of the families INT32, FLOAT32,
/// VECTOR_3 and VECTOR_4.
template<class VALUE_FAMILY>
class VOR2_NAMED_ANIMATABLE
    : public ANIMATED_RECORD<VOR2_NAMED_ANIMATABLE<VALUE_FAMILY>, VOR2_ENTITY, VOR2_INTERNAL_ANIM_OBJECT> {
public:
    OWNED<VALUE_FAMILY> track; ///< may be absent

    static constexpr auto record() {
        // Lists of named values are compared by their names alone.
        return RECORD("VOR2_NAMED_ANIMATABLE", base<VOR2_ENTITY>(),
                      optional("track", &VOR2_NAMED_ANIMATABLE::track).not_compared());
    }
};

} // namespace VOR2_LOADER
