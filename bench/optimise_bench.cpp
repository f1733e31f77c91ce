// Taking keys away from the hierarchies of three sizes, within a tenth of a millimetre.

#include "bench/scenes.h"
#include "optimise/optimise.h"

#include <benchmark/benchmark.h>

namespace {

using namespace bench;

/// Chains of joints that swing, each at its own pace and a little unevenly.
VOR2 swinging(i64 joints, i64 keys, i64 chain) {
    VOR2 scene;
    add_nodes(scene, static_cast<u32>(joints), static_cast<u32>(keys));
    for (u64 i = 0; i < scene.matrix_hierarchy.nodes.size(); ++i) {
        VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes[i];
        node.parent_index = i % static_cast<u64>(chain) == 0 ? -1 : static_cast<i32>(i) - 1;
        const f32 pace = 1.0F + static_cast<f32>(i % 7) * 0.3F;
        for (u64 k = 0; k < node.rotation_track->key_values().size(); ++k) {
            const f32 time = static_cast<f32>(k) / 60.0F;
            const f32 angle = 0.4F * std::sin(pace * time) + 0.05F * std::sin(7.3F * pace * time);
            node.rotation_track->key_values()[k] = {0.0F, 0.0F, std::sin(angle / 2), std::cos(angle / 2)};
            if (node.parent_index >= 0) node.position_track->key_values()[k] = {0.1F, 0.0F, 0.0F};
        }
    }
    scene.matrix_hierarchy.link_parents();
    return scene;
}

void optimise(benchmark::State& state) {
    const VOR2 scene = swinging(state.range(0), state.range(1), state.range(2));
    vor2::optimise::Limits limits;
    limits.position = 1e-4;
    vor2::optimise::Result result;
    for (auto _ : state) {
        VOR2 copy(scene);
        result = vor2::optimise::optimise_keys(copy, limits);
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations()) * static_cast<i64>(result.keys_before));
    state.counters["kept"] = static_cast<double>(result.keys_after) / static_cast<double>(result.keys_before);
}
BENCHMARK(optimise)
    ->ArgNames({"nodes", "keys", "chain"})
    ->Args({40, 600, 10})
    ->Args({100, 2500, 10})
    ->Args({400, 10000, 10})
    ->Args({400, 1000, 400})
    ->Unit(benchmark::kMillisecond);

} // namespace
