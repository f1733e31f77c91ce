#pragma once

#include "convert/gltf/work.h"

namespace vor2::convert {

/// The file's material of each of the scene's; -1 for an absent one.
std::vector<int> write_materials(GltfWork& work, const VOR2_LOADER::VOR2& scene);

} // namespace vor2::convert
