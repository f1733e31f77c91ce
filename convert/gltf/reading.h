#pragma once

/// What the parts of the reader share. Each throws a `BadFile` for what isn't there.

#include "convert/gltf/accessors.h"
#include "convert/gltf_reader.h"

namespace vor2::convert {

struct GltfReading {
    const tinygltf::Model& model;
    GltfAccessors accessors;
    Report& report;
    ImportedFile& out;
    std::vector<int> places; ///< for each of the file's nodes its place in the scene; -1 for one that isn't in it
    std::map<int, std::size_t> meshes;               ///< by the file's mesh, its first appearance without a skin
    std::map<int, std::vector<std::size_t>> of_node; ///< by the file's node, the meshes that it got
};

void read_materials(GltfReading& reading);
/// The mesh of one of the file's nodes.
void read_mesh(GltfReading& reading, int node);
void read_animations(GltfReading& reading);

} // namespace vor2::convert
