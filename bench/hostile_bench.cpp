// Files that ask for more than their bytes are worth: a load, some steps of the clock and a copy, at sizes of which
// each is sixteen times the one before. What is linear takes sixteen times as long.

#include "format/vor2.h"
#include "tests/format/bounds/hostile_files.h"

#include <benchmark/benchmark.h>

#include <limits>

namespace {

using namespace VOR2_LOADER;

void use(benchmark::State& state, const BYTES& file) {
    for (auto _ : state) {
        VOR2_INPUT_BUFFER buffer(std::span<const u8>(file.data), TEXT());
        VOR2 root;
        if (!root.load(buffer, true)) state.SkipWithError("load failed");
        for (const f32 time : {0.3F, 1e9F, -1e9F, std::numeric_limits<f32>::quiet_NaN()}) root.set_time(time);
        root.advance(0.1F);
        const VOR2 copy(root);
        benchmark::DoNotOptimize(&copy);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * file.size()));
}

const bool registered = [] {
    for (const u32 kilobytes : {16U, 256U, 4096U}) {
        each_hostile_scene(kilobytes * 1024, [kilobytes](const std::string& what, const BYTES& file) {
            const std::string name = "hostile/" + what + "/" + std::to_string(kilobytes);
            benchmark::RegisterBenchmark(name.c_str(), [file](auto& state) { use(state, file); });
        });
    }
    return true;
}();

} // namespace
