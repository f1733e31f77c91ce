#pragma once

/// glTF 2.0 in. Nodes keep their names, hierarchy and keys; skins become weighted meshes, targets morph meshes, line
/// strips splines, and what the writer puts into `extras` comes back. Steps between keys stay steps, by a further key
/// just before each, and cubic curves are sampled.

#include "convert/scene_builder.h"

#include <functional>
#include <optional>
#include <span>

namespace vor2::convert {

struct GltfSource {
    std::span<const std::uint8_t> bytes; ///< of a .glb or a .gltf file; which of them, its first bytes say
    std::string name;                    ///< how the names of pictures that lie in the file begin
    /// Gives the bytes of a file by the name that the glTF has for it, relative to its own place.
    std::function<std::optional<std::vector<std::uint8_t>>(const std::string& name)> read;
};

/// Nothing in the file is trusted: an index, a count or a length that names what isn't there fails it, with one
/// sentence, and no more memory is taken than some fifty times what the file holds.
Report read_gltf(const GltfSource& source, ImportedFile& out);

} // namespace vor2::convert
