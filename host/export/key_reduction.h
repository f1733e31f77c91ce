#pragma once

#include "format/tracks/tracks.h"

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Two values differ where a component of one is more than this from the other's, in single precision.
/// A comparison with a NaN finds no difference.
inline constexpr f32 KEY_TOLERANCE = 0.0001F;

/// Remove, in place, the keys whose values add nothing: those that differ neither from the last key that
/// stayed nor from the key behind them, and the last key where it doesn't differ from the one before. No
/// key moves. The first always stays, so a track that never changes ends with one key.
void reduce_vector_keys(VOR2_ANIMATABLE_VECTOR_3& track);
void reduce_quaternion_keys(VOR2_ANIMATABLE_QUATERNION& track);

} // namespace VOR2_EXPORTER_MAYA
