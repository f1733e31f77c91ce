#pragma once

/// Generated scenes in three sizes, the same at every run.

#include "format/vor2.h"

#include <cmath>
#include <filesystem>
#include <string>

namespace bench {

using namespace VOR2_LOADER;

/// A name in the system's folder for temporary files.
inline std::string temporary_path(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}
inline TEXT text_of(const std::string& name) {
    return TEXT(std::u16string(name.begin(), name.end()));
}

/// A hierarchy of chains of ten nodes, each with `keys` keys on position and rotation.
inline void add_nodes(VOR2& root, u32 nodes, u32 keys) {
    ARRAY<VOR2_MATRIX_NODE>& list = root.matrix_hierarchy.nodes;
    list.grow_by(nodes);
    for (u32 n = 0; n < nodes; ++n) {
        VOR2_MATRIX_NODE& node = list[n];
        node.name = text_of("joint" + std::to_string(n));
        node.parent_index = n % 10 == 0 ? -1 : static_cast<i32>(n) - 1;
        auto position = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        auto rotation = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
        for (u32 k = 0; k < keys; ++k) {
            const f32 time = static_cast<f32>(k) / 60.0F;
            const f32 angle = std::sin(time + static_cast<f32>(n));
            position->add_key({angle, 1.0F, time}, time);
            rotation->add_key({std::sin(angle / 2), 0.0F, 0.0F, std::cos(angle / 2)}, time);
        }
        node.position_track = std::move(position);
        node.rotation_track = std::move(rotation);
    }
    root.matrix_hierarchy.link_parents();
    root.environment.time_range = {0.0F, static_cast<f32>(keys) / 60.0F};
}

/// A vertex's plain values, with two UV sets and a tangent frame.
inline void fill(VOR2_RIGID_VERT& vertex, u32 i) {
    const f32 x = static_cast<f32>(i % 1000), z = static_cast<f32>(i / 1000);
    vertex.position = {x, 0.0F, z};
    vertex.normal = {0.0F, 1.0F, 0.0F};
    vertex.colour = {1, 1, 1, 1};
    vertex.uvs.reserve(2);
    vertex.uvs.push_back({x, z, 0.0F});
    vertex.uvs.push_back({z, x, 0.0F});
}
inline void fill(VOR2_WEIGHTED_MESH_VERT& vertex, u32 i) {
    fill(static_cast<VOR2_RIGID_VERT&>(vertex), i);
    vertex.rest_position = vertex.position;
    vertex.rest_normal = vertex.normal;
    vertex.bone_weights.reserve(4);
    for (u32 bone = 0; bone < 4; ++bone) {
        VOR2_BONE_WEIGHT_DATA& weight = vertex.bone_weights.emplace_back();
        weight.bone_index = static_cast<i32>((i + bone) % 100);
        weight.weight = 0.25F;
    }
}
inline void fill(VOR2_MORPH_MESH_VERT& vertex, u32 i) {
    fill(static_cast<VOR2_RIGID_VERT&>(vertex), i);
    vertex.target_verts.reserve(2);
    for (i32 target = 0; target < 2; ++target) {
        VOR2_TARGET_VERT& target_vert = vertex.target_verts.emplace_back();
        target_vert.target_index = target;
        target_vert.offset = {1.0F, 0.0F, 0.0F};
    }
}
inline void fill(VOR2_ANIM_MESH_VERT& vertex, u32 i) {
    vertex.position_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    vertex.normal_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    for (u32 key = 0; key < 10; ++key) {
        vertex.position_track->add_key({static_cast<f32>(i), 0.0F, 0.0F}, static_cast<f32>(key));
        vertex.normal_track->add_key({0.0F, 1.0F, 0.0F}, static_cast<f32>(key));
    }
}

/// One mesh of that class with `count` vertices, three to a triangle.
template<class MESH>
void add_mesh(OWNED_ARRAY<MESH>& meshes, u32 count) {
    MESH& mesh = *meshes.emplace_back(make_owned<MESH>());
    mesh.mapping_channels.push_back(1);
    mesh.mapping_channels.push_back(2);
    mesh.vertices.grow_by(count);
    for (u32 i = 0; i < count; ++i) fill(mesh.vertices[i], i);
    VOR2_TRI_SUB_OBJECT& group = mesh.sub_objects.emplace_back();
    group.triangles.reserve(count / 3);
    for (u32 i = 0; i + 2 < count; i += 3) group.add_triangle_index({i, i + 1, i + 2});
}

/// Morph targets that the vertices of `fill` move to.
inline void add_morph_mesh(VOR2& root, u32 count) {
    add_mesh(root.morph_meshes, count);
    for (int i = 0; i < 2; ++i) {
        auto& target = root.morph_meshes.back()->morph_targets.emplace_back();
        target.track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        target.track->add_key(0, 0);
        target.track->add_key(1, 10);
    }
}

/// A skinned mesh and the hundred bones of its weights.
inline void add_weighted_mesh(VOR2& root, u32 count) {
    add_nodes(root, 100, 10);
    add_mesh(root.weighted_meshes, count);
    root.prepare_weighted_meshes();
}

/// Helpers and lights with nothing in them.
inline void add_small_objects(VOR2& root, u32 count) {
    for (u32 i = 0; i < count; ++i) {
        root.helpers.push_back(make_owned<VOR2_HELPER>());
        root.helpers.back()->name = text_of("helper" + std::to_string(i));
        root.lights.push_back(make_owned<VOR2_POINT_LIGHT>());
    }
}

} // namespace bench
