#pragma once

#include "convert/gltf/work.h"

namespace vor2::convert {

/// The scene's skinned meshes, each with a skin of its own. The clock is moved to the start of the scene's time range.
void write_weighted_meshes(GltfWork& work, GltfScene& scene);

} // namespace vor2::convert
