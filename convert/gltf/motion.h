#pragma once

#include "convert/gltf/work.h"

namespace vor2::convert {

/// Adds the scene's tracks to an animation. Nodes of the scene that have none in the file are passed over. With
/// `constants` a node that stands still gets a channel too where that isn't how the file has it.
void write_motion(GltfWork& work, GltfScene& scene, tinygltf::Animation& animation, bool constants);

/// Brings an animation's times to 0 or above, as glTF wants them. Its accessors belong to no other.
void shift_to_zero(GltfWork& work, const tinygltf::Animation& animation);

} // namespace vor2::convert
