#include "convert/gltf/shapes.h"

#include "convert/gltf/extras.h"
#include "convert/gltf/meshes.h"
#include "convert/gltf/skins.h"
#include "convert/properties.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

/// Puts a mesh on the file's node of that place, or under it where the node has one already.
int place(GltfWork& work, const GltfScene& scene, u32 matrix_index, int mesh, const std::string& name) {
    int node = scene.node_at(matrix_index);
    if (matrix_index >= scene.nodes.size() || work.node(node).mesh >= 0) {
        tinygltf::Node added;
        added.name = name;
        const int parent = node;
        node = work.add_node(std::move(added));
        hang(work, node, parent);
    }
    work.node(node).mesh = mesh;
    return node;
}

/// Offsets that stand at few vertices take few bytes.
int write_offsets(GltfWork& work, std::size_t count, const std::vector<std::uint32_t>& places,
                  const std::vector<float>& offsets) {
    if (places.size() * 2 < count) return work.buffers.sparse_triples(count, places, offsets);
    std::vector<float> all(3 * count);
    for (std::size_t i = 0; i < places.size(); ++i) std::copy_n(&offsets[3 * i], 3, &all[3 * std::size_t{places[i]}]);
    return work.buffers.floats(all, 3, Use::vertices, true);
}

struct TargetOffsets {
    std::vector<std::uint32_t> places;
    std::vector<float> offsets;
};

std::vector<TargetOffsets> offsets_of(const VOR2_MORPH_MESH& mesh) {
    std::vector<TargetOffsets> targets(mesh.morph_targets.size());
    for (u32 v = 0; v < mesh.vertex_count(); ++v) {
        for (const VOR2_TARGET_VERT& entry : mesh.vertices[v].target_verts) {
            const u64 index = static_cast<u32>(entry.target_index);
            if (index >= targets.size()) continue;
            TargetOffsets& target = targets[index];
            const Vec3 offset = converted(widened(entry.offset), Axes::mirrored);
            const bool again = !target.places.empty() && target.places.back() == v;
            if (!again) {
                target.places.push_back(v);
                target.offsets.resize(target.offsets.size() + 3);
            }
            float* sum = &target.offsets[target.offsets.size() - 3];
            for (std::size_t k = 0; k < 3; ++k) {
                sum[k] += static_cast<float>(offset[k]);
                if (!std::isfinite(sum[k])) sum[k] = 0;
            }
        }
    }
    return targets;
}

void write_morph_mesh(GltfWork& work, GltfScene& scene, VOR2_MORPH_MESH& mesh, std::vector<int>& places) {
    for (VOR2_MORPH_MESH_VERT& vertex : mesh.vertices) vertex.morph_offset = {0.0F, 0.0F, 0.0F};
    tinygltf::Mesh out = mesh_of(work, scene, mesh, numbers_of(mesh));
    mesh.update_morph();
    places.push_back(-1);
    if (out.primitives.empty()) return;
    tinygltf::Value::Array names;
    for (const TargetOffsets& target : offsets_of(mesh)) {
        const int accessor = write_offsets(work, mesh.vertex_count(), target.places, target.offsets);
        for (tinygltf::Primitive& primitive : out.primitives) primitive.targets.push_back({{"POSITION", accessor}});
    }
    for (const auto& target : mesh.morph_targets) {
        const f32 weight = target.track ? target.track->value() : 0.0F;
        out.weights.push_back(std::isfinite(weight) ? static_cast<double>(weight) : 0.0);
        names.push_back(value_of(target.name));
    }
    if (!names.empty()) put(out.extras, "targetNames", tinygltf::Value(std::move(names)));
    places.back() = add_mesh(work, std::move(out));
    scene.morphing.emplace_back(place(work, scene, mesh.matrix_index, places.back(), utf8_of(mesh.name)), &mesh);
}

/// The times at which any vertex has a key, as far as they are shown.
std::vector<float> key_times_of(const VOR2_ANIM_MESH& mesh, float start) {
    std::vector<float> times{start};
    for (const VOR2_ANIM_MESH_VERT& vertex : mesh.vertices) {
        if (!vertex.position_track || vertex.position_track->key_values().size() < 2) continue;
        for (const f32 time : vertex.position_track->key_times()) {
            if (std::isfinite(time) && time > start) times.push_back(time);
        }
        if (times.size() > 100'000) {
            std::sort(times.begin(), times.end());
            times.erase(std::unique(times.begin(), times.end()), times.end());
        }
        expect_to_fit(12.0 * static_cast<double>(times.size()) * mesh.vertex_count());
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

/// Where all vertices stand at each of the times, as offsets from the first.
void add_poses(GltfWork& work, VOR2_ANIM_MESH& mesh, const std::vector<float>& times, const std::vector<float>& base,
               tinygltf::Mesh& out) {
    expect_to_fit(static_cast<double>(times.size()) * 4 * static_cast<double>(base.size()));
    for (std::size_t i = 1; i < times.size(); ++i) {
        mesh.set_time(times[i]);
        std::vector<float> offsets;
        for (u32 v = 0; v < mesh.vertex_count(); ++v) {
            VECTOR_3 position(0.0F, 0.0F, 0.0F);
            mesh.vertex(v).get_position(position);
            const Vec3 there = converted(widened(position), Axes::mirrored);
            for (std::size_t k = 0; k < 3; ++k) {
                const auto offset = static_cast<float>(there[k] - static_cast<double>(base[std::size_t{3} * v + k]));
                offsets.push_back(std::isfinite(offset) ? offset : 0.0F);
            }
        }
        const int accessor = work.buffers.floats(offsets, 3, Use::vertices, true);
        for (tinygltf::Primitive& primitive : out.primitives) primitive.targets.push_back({{"POSITION", accessor}});
    }
    out.weights.assign(times.size() - 1, 0.0);
}

void write_anim_mesh(GltfWork& work, GltfScene& scene, VOR2_ANIM_MESH& mesh, std::vector<int>& places) {
    const float time = work.options.pose_time.value_or(scene.start);
    mesh.set_time(work.options.anim_meshes_as_targets ? scene.start : time);
    const MeshNumbers numbers = numbers_of(mesh);
    tinygltf::Mesh out = mesh_of(work, scene, mesh, numbers);
    places.push_back(-1);
    if (out.primitives.empty()) return;
    const std::vector<float> times = key_times_of(mesh, scene.start);
    if (work.options.anim_meshes_as_targets && times.size() > 1) add_poses(work, mesh, times, numbers.positions, out);
    const bool moves = !out.weights.empty();
    places.back() = add_mesh(work, std::move(out));
    const int node = place(work, scene, mesh.matrix_index, places.back(), utf8_of(mesh.name));
    if (moves) scene.posed.emplace_back(node, times);
    if (!moves && times.size() > 1)
        work.report.note("mesh " + utf8_of(mesh.name) +
                         " moves vertex by vertex, and is written as it stands at one time");
    mesh.set_time(scene.start);
}

/// With the instance's own materials or groups, where it has some, over the vertices of what it repeats.
int mesh_of_instance(GltfWork& work, const GltfScene& scene, const VOR2_INSTANCE& instance, int mesh) {
    tinygltf::Mesh own = work.model.meshes[static_cast<std::size_t>(mesh)];
    if (instance.kind() == VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS::KIND) {
        const auto& list = static_cast<const VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS&>(instance).material_list;
        for (std::size_t i = 0; i < std::min<std::size_t>(own.primitives.size(), list.size()); ++i)
            own.primitives[i].material = list[i] < scene.materials.size() ? scene.materials[list[i]] : -1;
        return add_mesh(work, std::move(own));
    }
    if (instance.kind() == VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS::KIND) {
        const auto& groups = static_cast<const VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS&>(instance).sub_objects;
        const Attributes attributes = own.primitives[0].attributes;
        const auto targets = own.primitives[0].targets;
        const auto count = work.model.accessors[static_cast<std::size_t>(attributes.at("POSITION"))].count;
        own.primitives = primitives_of(work, scene, groups, static_cast<u32>(count), attributes, own.name);
        for (tinygltf::Primitive& primitive : own.primitives) primitive.targets = targets;
        return add_mesh(work, std::move(own));
    }
    return mesh;
}

void write_instances(GltfWork& work, const GltfScene& scene, const OWNED_ARRAY<VOR2_INSTANCE>& instances,
                     const std::vector<int>& meshes) {
    for (const OWNED<VOR2_INSTANCE>& instance : instances) {
        if (!instance) continue;
        const int mesh = instance->instanced_object < meshes.size() ? meshes[instance->instanced_object] : -1;
        if (mesh < 0) {
            work.report.note("instance " + utf8_of(instance->name) + " repeats nothing that is there, and is left out");
            continue;
        }
        const int own = mesh_of_instance(work, scene, *instance, mesh);
        if (own >= 0) place(work, scene, instance->matrix_index, own, utf8_of(instance->name));
    }
}

} // namespace

void write_shapes(GltfWork& work, GltfScene& scene) {
    std::vector<int> rigids, morphs, animated;
    for (const OWNED<VOR2_RIGID>& mesh : scene.scene.rigids) {
        rigids.push_back(mesh ? add_mesh(work, mesh_of(work, scene, *mesh, numbers_of(*mesh))) : -1);
        if (rigids.back() >= 0) place(work, scene, mesh->matrix_index, rigids.back(), utf8_of(mesh->name));
    }
    for (OWNED<VOR2_MORPH_MESH>& mesh : scene.scene.morph_meshes) {
        if (mesh) write_morph_mesh(work, scene, *mesh, morphs);
        if (!mesh) morphs.push_back(-1);
    }
    for (OWNED<VOR2_ANIM_MESH>& mesh : scene.scene.anim_meshes) {
        if (mesh) write_anim_mesh(work, scene, *mesh, animated);
        if (!mesh) animated.push_back(-1);
    }
    write_instances(work, scene, scene.scene.rigid_instances, rigids);
    write_instances(work, scene, scene.scene.morph_mesh_instances, morphs);
    write_instances(work, scene, scene.scene.anim_mesh_instances, animated);
    if (!scene.scene.weighted_mesh_instances.empty())
        work.report.note("instances of skinned meshes stand where the first does, and are left out");
    write_weighted_meshes(work, scene);
    scene.scene.set_time(scene.start);
}

} // namespace vor2::convert
