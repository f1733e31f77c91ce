// Posing a skeleton, skinning a mesh, and moving one track's cursor; bench/peer_bench.cpp does the same work with
// another library.

#include "bench/motion.h"
#include "bench/scenes.h"

#include <benchmark/benchmark.h>

namespace {

using namespace bench;

template<class TIMES>
void pose(benchmark::State& state) {
    VOR2 root;
    add_nodes(root, POSED_JOINTS, POSED_KEYS);
    TIMES times(POSED_SECONDS);
    for (auto _ : state) {
        root.matrix_hierarchy.set_time(times.next());
        benchmark::DoNotOptimize(&root.matrix_hierarchy.nodes.back().world_matrix);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations()) * POSED_JOINTS);
}

/// Keys so far apart that rotations move on the arc.
void pose_on_arcs(benchmark::State& state) {
    VOR2 root;
    add_nodes(root, POSED_JOINTS, POSED_KEYS);
    for (VOR2_MATRIX_NODE& node : root.matrix_hierarchy.nodes) {
        for (u64 k = 0; k < node.rotation_track->key_values().size(); ++k) {
            const f32 angle = static_cast<f32>(k % 2);
            node.rotation_track->key_values()[k] = {std::sin(angle / 2), 0.0F, 0.0F, std::cos(angle / 2)};
        }
    }
    STEPS times(POSED_SECONDS);
    for (auto _ : state) root.matrix_hierarchy.set_time(times.next());
    state.SetItemsProcessed(static_cast<i64>(state.iterations()) * POSED_JOINTS);
}

/// A mesh as a file gives it, and a few poses of its bones.
void skin(benchmark::State& state) {
    const std::string path = temporary_path("vor2_bench_skin.vr2");
    {
        VOR2 made;
        add_weighted_mesh(made, SKINNED_VERTICES);
        made.save(text_of(path));
    }
    VOR2 root;
    if (!root.load(text_of(path), true)) state.SkipWithError("load failed");
    root.matrix_hierarchy.set_time(0.07F);
    for (auto _ : state) {
        root.weighted_meshes[0]->skin(root.matrix_hierarchy);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations()) * SKINNED_VERTICES);
}

template<class TIMES>
void seek(benchmark::State& state) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR track;
    const u32 keys = static_cast<u32>(state.range(0));
    for (u32 k = 0; k < keys; ++k) track.add_key(0, static_cast<f32>(k) / 60.0F);
    TIMES times(static_cast<f32>(keys - 1) / 60.0F);
    for (auto _ : state) {
        track.set_time(times.next());
        benchmark::DoNotOptimize(track.cursor_index());
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations()));
}

BENCHMARK(pose<STEPS>)->Name("pose/steps");
BENCHMARK(pose<JUMPS>)->Name("pose/jumps");
BENCHMARK(pose_on_arcs)->Name("pose/arcs");
BENCHMARK(skin)->Name("skin/four_bones");
BENCHMARK(seek<STEPS>)->Name("step")->Arg(600)->Arg(6000)->Arg(60000);
BENCHMARK(seek<JUMPS>)->Name("seek")->Arg(600)->Arg(6000)->Arg(60000);

} // namespace
