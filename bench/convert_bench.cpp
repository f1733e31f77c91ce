// A skinned character as .vr2 and as glTF: how long each takes to come into memory.

#include "bench/scenes.h"
#include "convert/gltf/tiny_gltf.h"
#include "convert/gltf_reader.h"
#include "convert/gltf_writer.h"

#include <benchmark/benchmark.h>

#ifdef VOR2_HAS_ASSIMP
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#endif

#include <cmath>

namespace {

using namespace bench;

constexpr u32 vertex_count = 100'000, joint_count = 100, key_count = 1'000;

void add_joints(VOR2& scene) {
    scene.matrix_hierarchy.nodes.grow_by(joint_count);
    for (u32 j = 0; j < joint_count; ++j) {
        VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes[j];
        node.name = text_of("joint" + std::to_string(j));
        node.parent_index = static_cast<i32>(j) - 1;
        auto position = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        auto rotation = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
        for (u32 k = 0; k < key_count; ++k) {
            const f32 time = static_cast<f32>(k) / 30.0F, angle = std::sin(time + static_cast<f32>(j)) * 0.1F;
            position->add_key({0.0F, 0.02F, 0.001F * angle}, time);
            rotation->add_key({std::sin(angle), 0.0F, 0.0F, std::cos(angle)}, time);
        }
        node.position_track = std::move(position);
        node.rotation_track = std::move(rotation);
    }
    scene.matrix_hierarchy.link_parents();
    scene.environment.time_range = {0.0F, static_cast<f32>(key_count - 1) / 30.0F};
}

void add_skin(VOR2& scene) {
    auto mesh = make_owned<VOR2_WEIGHTED_MESH>();
    mesh->vertices.grow_by(vertex_count);
    for (u32 v = 0; v < vertex_count; ++v) {
        VOR2_WEIGHTED_MESH_VERT& vertex = mesh->vertices[v];
        const f32 turn = static_cast<f32>(v) * 0.1F;
        vertex.rest_position = {0.2F * std::cos(turn), static_cast<f32>(v) * 2e-5F, 0.2F * std::sin(turn)};
        vertex.rest_normal = {std::cos(turn), 0.0F, std::sin(turn)};
        vertex.uvs.push_back({turn, static_cast<f32>(v) * 1e-5F, 0.0F});
        for (u32 b = 0; b < 4; ++b) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = static_cast<i32>((v / 1000 + b) % joint_count);
            bone.weight = 0.25F;
        }
        if (v >= 2) mesh->add_sub_object_triangle({v - 2, v - 1, v}, 0xFFFFFFFF, vertex_count);
    }
    mesh->mapping_channels.push_back(1);
    scene.weighted_meshes.push_back(std::move(mesh));
}

struct Character {
    std::vector<u8> vr2;
    std::string glb;

    Character() {
        VOR2 scene;
        add_joints(scene);
        add_skin(scene);
        scene.prepare_weighted_meshes();
        const TEXT name = text_of(temporary_path("character"));
        scene.save(name);
        VOR2_INPUT_BUFFER buffer(name);
        vr2.assign(buffer.start, buffer.end);
        const vor2::convert::Take take{&scene, "walk"};
        vor2::convert::GltfFile file;
        (void)vor2::convert::write_gltf({&take, 1}, {}, file);
        glb = std::move(file.bytes);
    }
};

const Character& character() {
    static const Character one;
    return one;
}

void load_vr2(benchmark::State& state) {
    VOR2_INPUT_BUFFER buffer(std::span<const u8>(character().vr2), TEXT());
    for (auto _ : state) {
        buffer.cursor = buffer.start;
        VOR2 root;
        if (!root.load(buffer, false)) state.SkipWithError("load failed");
        benchmark::DoNotOptimize(&root);
    }
    state.SetItemsProcessed(state.iterations() * vertex_count);
}

/// The glTF library alone, which leaves the numbers where they lie in the file's buffer.
void parse_glb(benchmark::State& state) {
    const std::string& glb = character().glb;
    for (auto _ : state) {
        tinygltf::TinyGLTF reader;
        tinygltf::Model model;
        std::string error, warning;
        if (!reader.LoadBinaryFromMemory(&model, &error, &warning, reinterpret_cast<const unsigned char*>(glb.data()),
                                         static_cast<unsigned>(glb.size())))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(&model);
    }
    state.SetItemsProcessed(state.iterations() * vertex_count);
}

/// Through it into a scene.
void load_glb(benchmark::State& state) {
    const std::string& glb = character().glb;
    for (auto _ : state) {
        vor2::convert::ImportedFile file;
        (void)vor2::convert::read_gltf({{reinterpret_cast<const u8*>(glb.data()), glb.size()}, "file", {}}, file);
        if (!file.animations.empty()) vor2::convert::set_animation(file.animations[0], file.scene);
        VOR2 root;
        vor2::convert::Report report;
        vor2::convert::build_scene(file.scene, root, report);
        benchmark::DoNotOptimize(&root);
    }
    state.SetItemsProcessed(state.iterations() * vertex_count);
}

#ifdef VOR2_HAS_ASSIMP
void load_glb_with_assimp(benchmark::State& state) {
    const std::string& glb = character().glb;
    for (auto _ : state) {
        Assimp::Importer importer;
        if (importer.ReadFileFromMemory(glb.data(), glb.size(), 0, "glb") == nullptr)
            state.SkipWithError("load failed");
    }
    state.SetItemsProcessed(state.iterations() * vertex_count);
}
BENCHMARK(load_glb_with_assimp)->Name("character/load glb (Assimp)")->Unit(benchmark::kMillisecond);
#endif

BENCHMARK(load_vr2)->Name("character/load vr2")->Unit(benchmark::kMillisecond);
BENCHMARK(parse_glb)->Name("character/parse glb (tinygltf)")->Unit(benchmark::kMillisecond);
BENCHMARK(load_glb)->Name("character/load glb as a scene (tinygltf)")->Unit(benchmark::kMillisecond);

} // namespace
