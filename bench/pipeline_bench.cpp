// The whole road through the host: export of an animated skeleton and import of the result, at sizes
// that double, so that the growth shows.

#include "bench/scenes.h"
#include "headless/animation/keying.h"
#include "headless/session.h"
#include "host/plugin/plugin.h"
#include "support/platform/hooks.h"

#include <benchmark/benchmark.h>

namespace {

using namespace headless;

constexpr int samples = 3000;
constexpr double rate = 60.0;

Session& session() {
    Session& current = Session::current();
    if (!current.is_plugin_loaded("vor2")) {
        VOR2_LOADER::platform::print_line_hook = [](std::string_view) {};
        current.set_message_sink([](MessageKind kind, const std::string& text) {
            if (kind == MessageKind::error) std::fprintf(stderr, "%s\n", text.c_str());
        });
        if (!current.load_plugin("vor2", initializePlugin, uninitializePlugin)) std::abort();
    }
    return current;
}

/// Chains of ten joints, every translation and rotation keyed at every sample.
void make_skeleton(Session& session, int joints) {
    session.new_scene();
    Scene& scene = session.scene();
    scene.time_unit = *TimeUnit::by_name("ntscf");
    scene.playback = {0.0, (samples - 1) / rate, 0.0, (samples - 1) / rate};
    std::vector<double> times;
    for (int k = 0; k < samples; ++k) times.push_back(k / rate);
    const KeyTimes shared(std::move(times));
    Node* parent = nullptr;
    for (int j = 0; j < joints; ++j) {
        parent = *scene.create_node("joint", "joint" + std::to_string(j), j % 10 == 0 ? nullptr : parent);
        int axis = 0;
        for (const char* name : {"tx", "ty", "tz", "rx", "ry", "rz"}) {
            std::vector<double> values;
            for (int k = 0; k < samples; ++k) values.push_back(std::sin(0.02 * k + j + axis));
            const Plug plug = parent->plug(parent->find_attribute(name));
            (void)set_keys(scene, plug, shared, std::move(values), Tangent::linear);
            ++axis;
        }
        if (j % 10 == 0) scene.selection.add(scene.item(*parent));
    }
}

std::string exported_file(int joints) {
    return bench::temporary_path(("vor2_bench_pipeline_" + std::to_string(joints) + ".vr2").c_str());
}

void run(benchmark::State& state, const std::string& line) {
    if (!session().run_mel(line)) state.SkipWithError(line.c_str());
}

void export_skeleton(benchmark::State& state) {
    const int joints = static_cast<int>(state.range(0));
    make_skeleton(session(), joints);
    for (auto _ : state) run(state, "VOR2Export -f \"" + exported_file(joints) + "\" -sAt 60");
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * joints * samples);
}

void import_skeleton(benchmark::State& state) {
    const int joints = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        session().new_scene();
        session().scene().time_unit = *TimeUnit::by_name("ntscf");
        state.ResumeTiming();
        run(state, "VOR2Import -f \"" + exported_file(joints) + "\"");
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * joints * samples);
}

/// Props side by side, each named to the export, at one sample: what finding them costs.
void export_list(benchmark::State& state) {
    session().new_scene();
    Scene& scene = session().scene();
    scene.playback = {0.0, 0.0, 0.0, 0.0};
    std::string line = "VOR2Export -f \"" + bench::temporary_path("vor2_bench_list.vr2") + "\"";
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const Node* prop = *scene.create_node("transform", "prop" + std::to_string(100'000 + i));
        line += " -enl " + prop->name();
    }
    for (auto _ : state) run(state, line);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

BENCHMARK(export_skeleton)->Name("export")->Arg(50)->Arg(100)->Arg(200)->Arg(400)->Unit(benchmark::kMillisecond);
BENCHMARK(import_skeleton)->Name("import")->Arg(50)->Arg(100)->Arg(200)->Arg(400)->Unit(benchmark::kMillisecond);
BENCHMARK(export_list)->Name("list")->Arg(1000)->Arg(2000)->Arg(4000)->Arg(8000)->Unit(benchmark::kMillisecond);

} // namespace
