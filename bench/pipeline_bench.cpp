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

Scene& new_scene(Session& session) {
    session.new_scene();
    Scene& scene = session.scene();
    scene.time_unit = *TimeUnit::by_name("ntscf");
    scene.playback = {0.0, (samples - 1) / rate, 0.0, (samples - 1) / rate};
    return scene;
}

/// Keys attributes at every sample.
void animate(Scene& scene, Node& node, std::initializer_list<const char*> attributes, double phase) {
    static const KeyTimes shared = [] {
        std::vector<double> times;
        for (int k = 0; k < samples; ++k) times.push_back(k / rate);
        return KeyTimes(std::move(times));
    }();
    for (const char* name : attributes) {
        std::vector<double> values;
        for (int k = 0; k < samples; ++k) values.push_back(std::sin(0.02 * k + phase));
        (void)set_keys(scene, node.plug(node.find_attribute(name)), shared, std::move(values), Tangent::linear);
        phase += 1.0;
    }
}

/// Chains of ten joints, every translation and rotation keyed at every sample.
void make_skeleton(Session& session, int joints) {
    Scene& scene = new_scene(session);
    Node* parent = nullptr;
    for (int j = 0; j < joints; ++j) {
        parent = *scene.create_node("joint", "joint" + std::to_string(j), j % 10 == 0 ? nullptr : parent);
        animate(scene, *parent, {"tx", "ty", "tz", "rx", "ry", "rz"}, j);
        if (j % 10 == 0) scene.selection.add(scene.item(*parent));
    }
}

/// Legs of three joints, each led by a keyed handle and a keyed knee through a pole vector constraint.
void make_legs(Session& session, int joints) {
    Scene& scene = new_scene(session);
    const auto connect = [&](const std::string& from, const std::string& to) {
        if (!scene.connect(*scene.find_plug(from), *scene.find_plug(to))) std::abort();
    };
    (void)scene.create_node("ikRPsolver", "ikRPsolver");
    for (int j = 0; j < joints / 3; ++j) {
        const std::string n = std::to_string(j);
        Node& hip = **scene.create_node("joint", "hip" + n);
        Node& knee = **scene.create_node("joint", "knee" + n, &hip);
        for (const char* name : {"ankle", "effector"}) {
            const char* type = name[0] == 'a' ? "joint" : "ikEffector";
            Node& end = **scene.create_node(type, name + n, &knee);
            end.set(end.find_plug("tx").key, 4.0);
        }
        knee.set(knee.find_plug("tx").key, 3.0);
        knee.set(knee.find_plug("pa").key, Vector3{0, .5, 0});
        animate(scene, hip, {"tx", "ty", "tz"}, j);
        animate(scene, **scene.create_node("ikHandle", "handle" + n), {"tx", "ty", "tz"}, j + .5);
        animate(scene, **scene.create_node("transform", "front" + n), {"tx", "ty", "tz"}, j + 3.0);
        (void)scene.create_node("poleVectorConstraint", "pole" + n);
        connect("hip" + n + ".msg", "handle" + n + ".hsj");
        connect("effector" + n + ".hp", "handle" + n + ".hee");
        connect("ikRPsolver.msg", "handle" + n + ".hsv");
        connect("front" + n + ".t", "pole" + n + ".tg[0].tt");
        connect("front" + n + ".pm[0]", "pole" + n + ".tg[0].tpm");
        connect("hip" + n + ".t", "pole" + n + ".crp");
        connect("hip" + n + ".pm[0]", "pole" + n + ".ps");
        connect("handle" + n + ".pim[0]", "pole" + n + ".cpim");
        for (const char* axis : {"x", "y", "z"}) connect("pole" + n + ".ct" + axis, "handle" + n + ".pv" + axis);
        scene.selection.add(scene.item(hip));
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

void export_legs(benchmark::State& state) {
    const int joints = static_cast<int>(state.range(0));
    make_legs(session(), joints);
    for (auto _ : state) run(state, "VOR2Export -f \"" + bench::temporary_path("vor2_bench_legs.vr2") + "\" -sAt 60");
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
BENCHMARK(export_legs)->Name("legs")->Arg(51)->Arg(102)->Arg(201)->Arg(402)->Unit(benchmark::kMillisecond);
BENCHMARK(import_skeleton)->Name("import")->Arg(50)->Arg(100)->Arg(200)->Arg(400)->Unit(benchmark::kMillisecond);
BENCHMARK(export_list)->Name("list")->Arg(1000)->Arg(2000)->Arg(4000)->Arg(8000)->Unit(benchmark::kMillisecond);

} // namespace
