#pragma once

#include "convert/gltf/work.h"

namespace vor2::convert {

/// The numbers of a mesh's vertices, in glTF's space.
struct MeshNumbers {
    std::vector<float> positions, normals, tangents, colours;
    std::vector<std::vector<float>> uvs;
};
/// Reads each vertex through its interface.
MeshNumbers numbers_of(const VOR2_LOADER::VOR2_TRI_OBJECT& mesh);

using Groups = VOR2_LOADER::ARRAY<VOR2_LOADER::VOR2_TRI_SUB_OBJECT>;
using Attributes = std::map<std::string, int>;

/// A primitive for each group that has triangles; the groups share their vertices.
std::vector<tinygltf::Primitive> primitives_of(GltfWork& work, const GltfScene& scene, const Groups& groups,
                                               std::uint32_t vertex_count, const Attributes& attributes,
                                               const std::string& name);

/// A mesh without targets or skin. One without triangles has no primitives, and can't be written.
tinygltf::Mesh mesh_of(GltfWork& work, const GltfScene& scene, const VOR2_LOADER::VOR2_TRI_OBJECT& mesh,
                       const MeshNumbers& numbers, Attributes attributes = {});

/// The index of the new mesh; -1 for one without primitives.
int add_mesh(GltfWork& work, tinygltf::Mesh mesh);

} // namespace vor2::convert
