#include "format/geometry/weighted_mesh.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {
namespace {

bool is_index(i32 index, u64 size) {
    return index >= 0 && static_cast<u64>(index) < size;
}

void bind(VOR2_BONE_WEIGHT_DATA& bone, const VOR2_WEIGHTED_MESH_VERT& vertex, const MATRIX_3X4& inverse_world,
          const MATRIX_3X4& inverse_rotation) {
    bone.local_position = inverse_world.transform_point(vertex.rest_position);
    bone.local_normal = inverse_rotation.transform_point(vertex.rest_normal);
    bone.local_binormal_tangents.reserve(vertex.binormal_tangents.size());
    for (const VOR2_BINORMAL_TANGENT& pair : vertex.binormal_tangents) {
        bone.local_binormal_tangents.emplace_back(inverse_rotation.transform_point(pair.binormal),
                                                  inverse_rotation.transform_point(pair.tangent));
    }
}

} // namespace

void VOR2_WEIGHTED_MESH_VERT::compute_local_data(NODE_MATRICES inverse_world, NODE_MATRICES inverse_rotation) {
    const u64 node_count = std::min(inverse_world.size(), inverse_rotation.size());
    for (VOR2_BONE_WEIGHT_DATA& bone : bone_weights) {
        bone.local_binormal_tangents.clear();
        if (is_index(bone.bone_index, node_count)) {
            const auto index = static_cast<std::size_t>(bone.bone_index);
            bind(bone, *this, inverse_world[index], inverse_rotation[index]);
        } else {
            bone.local_position = {0.0F, 0.0F, 0.0F};
            bone.local_normal = {0.0F, 1.0F, 0.0F};
        }
    }
}

void VOR2_WEIGHTED_MESH_VERT::skin(const VOR2_MATRIX_HIERARCHY& hierarchy) {
    constexpr VECTOR_3 ZERO{0.0F, 0.0F, 0.0F};
    for (VOR2_BINORMAL_TANGENT& pair : binormal_tangents) pair = {ZERO, ZERO};
    normal = ZERO;
    VECTOR_3 sum = ZERO;
    for (const VOR2_BONE_WEIGHT_DATA& bone : bone_weights) {
        if (!is_index(bone.bone_index, hierarchy.nodes.size())) continue;
        const MATRIX_3X4& matrix = hierarchy.nodes[static_cast<u64>(bone.bone_index)].world_matrix;
        sum += matrix.transform_point(bone.local_position) * bone.weight;
        normal += matrix.transform_direction(bone.local_normal) * bone.weight;
        const u64 pair_count = std::min(binormal_tangents.size(), bone.local_binormal_tangents.size());
        for (u64 j = 0; j < pair_count; ++j) {
            const VOR2_BINORMAL_TANGENT& local = bone.local_binormal_tangents[j];
            binormal_tangents[j].binormal += matrix.transform_direction(local.binormal) * bone.weight;
            binormal_tangents[j].tangent += matrix.transform_direction(local.tangent) * bone.weight;
        }
    }
    for (VOR2_BINORMAL_TANGENT& pair : binormal_tangents) pair.normalise_pair();
    normal = normal.normalised();
    position = sum;
}

void VOR2_WEIGHTED_MESH::compute_local_data(NODE_MATRICES inverse_world, NODE_MATRICES inverse_rotation) {
    for (VOR2_WEIGHTED_MESH_VERT& vertex : vertices) vertex.compute_local_data(inverse_world, inverse_rotation);
}

template struct RECORD_OPERATIONS<VOR2_BONE_WEIGHT_DATA>;
template struct RECORD_OPERATIONS<VOR2_WEIGHTED_MESH_VERT>;
template struct RECORD_OPERATIONS<VOR2_WEIGHTED_MESH>;

} // namespace VOR2_LOADER
