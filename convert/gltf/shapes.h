#pragma once

/// Meshes in their places: plain, skinned, morphing, animated vertex by vertex, and what repeats them.

#include "convert/gltf/work.h"

namespace vor2::convert {

/// The scene's clock stands at its first time, and does so again afterwards.
void write_shapes(GltfWork& work, GltfScene& scene);

} // namespace vor2::convert
