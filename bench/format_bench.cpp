// Loading against memcpy of the same bytes, saving against one write of them, and the clock.

#include "bench/scenes.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

using namespace bench;

/// A scene on disk and in memory.
struct SAMPLE {
    VOR2 root;
    std::string path;
    std::vector<u8> bytes;
};

template<class FILL>
SAMPLE make_sample(const char* name, FILL fill) {
    SAMPLE sample;
    fill(sample.root);
    sample.path = temporary_path(name);
    sample.root.save(text_of(sample.path));
    VOR2_INPUT_BUFFER buffer(text_of(sample.path));
    sample.bytes.assign(buffer.start, buffer.end);
    return sample;
}

void limit(benchmark::State& state, const SAMPLE& sample) {
    std::vector<u8> to(sample.bytes.size());
    for (auto _ : state) {
        std::memcpy(to.data(), sample.bytes.data(), to.size());
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations() * sample.bytes.size()));
}

/// What saving can't be faster than: the same bytes to the same file in one call.
void write_limit(benchmark::State& state, const SAMPLE& sample) {
    for (auto _ : state) {
        std::FILE* file = std::fopen(sample.path.c_str(), "wb");
        (void)std::setvbuf(file, nullptr, _IONBF, 0);
        if (std::fwrite(sample.bytes.data(), 1, sample.bytes.size(), file) != sample.bytes.size()) std::abort();
        (void)std::fclose(file);
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations() * sample.bytes.size()));
}

void load(benchmark::State& state, const SAMPLE& sample) {
    VOR2_INPUT_BUFFER buffer(std::span<const u8>(sample.bytes), TEXT());
    for (auto _ : state) {
        buffer.cursor = buffer.start;
        VOR2 root;
        if (!root.load(buffer, false)) state.SkipWithError("load failed");
        benchmark::DoNotOptimize(&root);
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations() * sample.bytes.size()));
}

void save(benchmark::State& state, const SAMPLE& sample) {
    const TEXT name = text_of(sample.path);
    for (auto _ : state) {
        if (!sample.root.save(name)) state.SkipWithError("save failed");
    }
    state.SetItemsProcessed(static_cast<i64>(state.iterations() * sample.bytes.size()));
}

/// One step of the clock over all tracks, as playing the scene at 60 frames a second.
void play(benchmark::State& state, SAMPLE& sample, u64 tracks) {
    for (auto _ : state) sample.root.advance(1.0F / 60.0F);
    state.SetItemsProcessed(static_cast<i64>(state.iterations() * tracks));
}

struct SHAPE {
    const char* name;
    u32 nodes, keys;
};

struct SIZE {
    const char* name;
    u32 vertices;
};

void add(SAMPLE& sample, const std::string& name, u64 tracks) {
    const auto known = [&name](const char* what) { return name + "/" + what; };
    benchmark::RegisterBenchmark(known("memcpy").c_str(), [&](auto& state) { limit(state, sample); });
    benchmark::RegisterBenchmark(known("load").c_str(), [&](auto& state) { load(state, sample); });
    benchmark::RegisterBenchmark(known("write").c_str(), [&](auto& state) { write_limit(state, sample); });
    benchmark::RegisterBenchmark(known("save").c_str(), [&](auto& state) { save(state, sample); });
    if (tracks == 0) return;
    benchmark::RegisterBenchmark(known("play").c_str(), [&, tracks](auto& state) { play(state, sample, tracks); });
}

[[maybe_unused]] const bool registered = [] {
    static std::vector<SAMPLE> samples;
    const SHAPE shapes[] = {{"tracks/small", 20, 300},
                            {"tracks/medium", 100, 1000},
                            {"tracks/large", 200, 3000},
                            {"small_objects/small", 500, 1},
                            {"small_objects/large", 50000, 1}};
    std::vector<SIZE> sizes{{"small", 300}, {"medium", 9000}, {"large", 240000}};
    // Two gigabytes of scenes, for who asks for them (bench/run --huge).
    if (std::getenv("VOR2_BENCH_HUGE") != nullptr) sizes.push_back({"huge", 2000000});
    using FILL = void (*)(VOR2&, u32);
    const std::pair<const char*, FILL> kinds[] = {
        {"rigid", [](VOR2& root, u32 count) { add_mesh(root.rigids, count); }},
        {"weighted", add_weighted_mesh},
        {"morph", add_morph_mesh},
        {"anim", [](VOR2& root, u32 count) { add_mesh(root.anim_meshes, count / 4); }},
        {"many_objects", [](VOR2& root, u32 count) { add_small_objects(root, count / 3); }},
    };
    samples.reserve(std::size(shapes) + std::size(kinds) * sizes.size());
    for (const SHAPE& shape : shapes) {
        std::string file = std::string("vor2_bench_") + shape.name + ".vr2";
        std::replace(file.begin(), file.end(), '/', '_');
        samples.push_back(
            make_sample(file.c_str(), [&shape](VOR2& root) { add_nodes(root, shape.nodes, shape.keys); }));
        add(samples.back(), shape.name, u64{shape.nodes} * 2);
    }
    for (const auto& [kind, fill_root] : kinds) {
        for (const SIZE& size : sizes) {
            if (size.vertices > 240000 && kind != std::string_view("rigid") && kind != std::string_view("weighted"))
                continue;
            const std::string file = std::string("vor2_bench_") + kind + "_" + size.name + ".vr2";
            const u32 vertices = size.vertices;
            samples.push_back(make_sample(
                file.c_str(), [fill_root = fill_root, vertices](VOR2& root) { fill_root(root, vertices); }));
            add(samples.back(), std::string(kind) + "/" + size.name, vertices);
        }
    }
    return true;
}();

} // namespace
