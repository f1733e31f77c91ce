#pragma once

/// What stands in a scene beside meshes. The format gives the tracks of lights and cameras no meaning; here they have
/// one:
///
/// | | |
/// |---|---|
/// | light: `colour_track_1`, `float_track` | colour, intensity (1 without one) |
/// | light: `max_params.attenuation_2.float_track_2` | range in metres |
/// | spot light: `float_track_1`, `float_track_2` | inner and outer half angle of the cone |
/// | camera: `camera_type` | 0 perspective, 1 orthographic |
/// | camera: `float_track_1` | vertical field of view in radians; half the height of what an orthographic one sees |
/// | camera: `range_track_1` | nearest and furthest distance |
///
/// They look along the negative y axis of their node, with z up.

#include "convert/gltf/work.h"

namespace vor2::convert {

void write_objects(GltfWork& work, GltfScene& scene);

} // namespace vor2::convert
