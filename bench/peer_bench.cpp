// The work of bench/motion_bench.cpp done by ozz-animation, under the same names. Built where the CMake variable
// VOR2_BENCH_PEER names the folder that it is installed in.

#include "bench/motion.h"

#include <ozz/animation/offline/animation_builder.h>
#include <ozz/animation/offline/raw_animation.h>
#include <ozz/animation/offline/raw_skeleton.h>
#include <ozz/animation/offline/skeleton_builder.h>
#include <ozz/animation/runtime/animation.h>
#include <ozz/animation/runtime/local_to_model_job.h>
#include <ozz/animation/runtime/sampling_job.h>
#include <ozz/animation/runtime/skeleton.h>
#include <ozz/base/maths/simd_math.h>
#include <ozz/base/maths/soa_transform.h>
#include <ozz/geometry/runtime/skinning_job.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace bench;

/// The joints of `add_nodes` in bench/scenes.h with their keys.
struct PEER_SCENE {
    ozz::unique_ptr<ozz::animation::Skeleton> skeleton;
    ozz::unique_ptr<ozz::animation::Animation> animation;

    PEER_SCENE() {
        ozz::animation::offline::RawSkeleton raw;
        raw.roots.resize(POSED_JOINTS / 10);
        int number = 0;
        for (auto& root : raw.roots) {
            auto* joint = &root;
            for (int depth = 0; depth < 10; ++depth) {
                joint->name = "joint" + std::to_string(number++);
                joint->transform = ozz::math::Transform::identity();
                if (depth == 9) break;
                joint->children.resize(1);
                joint = joint->children.data();
            }
        }
        skeleton = ozz::animation::offline::SkeletonBuilder()(raw);
        ozz::animation::offline::RawAnimation keys;
        keys.duration = POSED_SECONDS;
        keys.tracks.resize(POSED_JOINTS);
        for (int n = 0; n < POSED_JOINTS; ++n) {
            for (int k = 0; k < POSED_KEYS; ++k) {
                const float time = static_cast<float>(k) / 60.0F;
                const float angle = std::sin(time + static_cast<float>(n));
                keys.tracks[n].translations.push_back({time, {angle, 1.0F, time}});
                keys.tracks[n].rotations.push_back({time, {std::sin(angle / 2), 0.0F, 0.0F, std::cos(angle / 2)}});
            }
        }
        animation = ozz::animation::offline::AnimationBuilder()(keys);
    }
};

/// Samples and goes from local to model space.
class POSER {
public:
    POSER() : my_context(POSED_JOINTS) {
        my_locals.resize(static_cast<std::size_t>(my_scene.skeleton->num_soa_joints()));
        matrices.resize(POSED_JOINTS);
    }
    bool pose(float time) {
        ozz::animation::SamplingJob sample;
        sample.animation = my_scene.animation.get();
        sample.context = &my_context;
        sample.ratio = time / POSED_SECONDS;
        sample.output = ozz::make_span(my_locals);
        ozz::animation::LocalToModelJob to_model;
        to_model.skeleton = my_scene.skeleton.get();
        to_model.input = ozz::make_span(my_locals);
        to_model.output = ozz::make_span(matrices);
        return sample.Run() && to_model.Run();
    }
    ozz::vector<ozz::math::Float4x4> matrices;

private:
    PEER_SCENE my_scene;
    ozz::animation::SamplingJob::Context my_context;
    ozz::vector<ozz::math::SoaTransform> my_locals;
};

template<class TIMES>
void pose(benchmark::State& state) {
    POSER poser;
    TIMES times(POSED_SECONDS);
    for (auto _ : state) {
        if (!poser.pose(times.next())) state.SkipWithError("a job failed");
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * POSED_JOINTS);
}

void skin(benchmark::State& state) {
    constexpr std::size_t VERTICES = SKINNED_VERTICES, BONES = BONES_A_VERTEX;
    POSER poser;
    poser.pose(0.07F);
    std::vector<float> positions(VERTICES * 3), normals(VERTICES * 3), weights(VERTICES * (BONES - 1), 0.25F);
    std::vector<std::uint16_t> bones(VERTICES * BONES);
    for (std::size_t i = 0; i < VERTICES; ++i) {
        positions[i * 3] = static_cast<float>(i % 1000);
        positions[i * 3 + 2] = static_cast<float>(i / 1000);
        normals[i * 3 + 1] = 1;
        for (std::size_t b = 0; b < BONES; ++b)
            bones[i * BONES + b] = static_cast<std::uint16_t>((i + b) % POSED_JOINTS);
    }
    std::vector<float> out_positions(positions.size()), out_normals(normals.size());
    ozz::geometry::SkinningJob job;
    job.vertex_count = SKINNED_VERTICES;
    job.influences_count = BONES_A_VERTEX;
    job.joint_matrices = ozz::make_span(poser.matrices);
    job.joint_indices = {bones.data(), bones.size()};
    job.joint_indices_stride = sizeof(std::uint16_t) * BONES;
    job.joint_weights = {weights.data(), weights.size()};
    job.joint_weights_stride = sizeof(float) * (BONES - 1);
    job.in_positions = {positions.data(), positions.size()};
    job.in_normals = {normals.data(), normals.size()};
    job.out_positions = {out_positions.data(), out_positions.size()};
    job.out_normals = {out_normals.data(), out_normals.size()};
    job.in_positions_stride = job.in_normals_stride = sizeof(float) * 3;
    job.out_positions_stride = job.out_normals_stride = sizeof(float) * 3;
    for (auto _ : state) {
        if (!job.Run()) state.SkipWithError("the job failed");
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * SKINNED_VERTICES);
}

BENCHMARK(pose<STEPS>)->Name("pose/steps");
BENCHMARK(pose<JUMPS>)->Name("pose/jumps");
BENCHMARK(skin)->Name("skin/four_bones");

} // namespace
