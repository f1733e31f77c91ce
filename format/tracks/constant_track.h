#pragma once

#include "format/tracks/tracks.h"

namespace VOR2_LOADER {

/// A track of one key, and so of one value at all times.
template<class TRACK, class VALUE>
[[nodiscard]] OWNED<TRACK> constant_track(const VALUE& value, f32 time = 0.0F) {
    OWNED<TRACK> track = make_owned<TRACK>();
    track->add_key(value, time);
    return track;
}

} // namespace VOR2_LOADER
