#include "tests/optimise/poses.h"
#include "tool_test.h"

namespace tool_test {
namespace {

using namespace VOR2_LOADER;
namespace fs = std::filesystem;

class OptimiseVerb : public ToolTest {
protected:
    VOR2 load(const std::string& name) const {
        VOR2 scene;
        const std::string bytes = read(name);
        VOR2_INPUT_BUFFER buffer({reinterpret_cast<const u8*>(bytes.data()), bytes.size()}, TEXT());
        EXPECT_TRUE(scene.load(buffer, false)) << buffer.problem();
        return scene;
    }
};

TEST_F(OptimiseVerb, captured_motion_keeps_its_points_within_the_tolerance) {
    std::vector<fs::path> scenes{fs::path(VOR2_SOURCE_DIR) / "examples/walking_biped.ma"};
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(VOR2_SHARED_DATA, ignored)) {
        if (entry.path().extension() == ".bvh") scenes.push_back(entry.path());
    }
    for (const fs::path& path : scenes) {
        ASSERT_EQ(run({"export", path.generic_string(), "-o", "in.vr2", "--sample-at", "120"}).exit_code, 0) << path;
        for (const auto& [words, tolerance] : {std::pair("0.1mm", 1e-4), std::pair("1cm", 1e-2)}) {
            const Outcome outcome = run({"optimise", "in.vr2", "out.vr2", "--tolerance", words, "--report", "--json"});
            ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
            const Json report = Json::parse(outcome.out);
            EXPECT_EQ(report["bytes_before"], read("in.vr2").size());
            EXPECT_EQ(report["bytes_after"], read("out.vr2").size());
            EXPECT_LT(report["bytes_after"], report["bytes_before"]);
            EXPECT_LE(report["worst"]["error"], tolerance);
            std::vector<double> distances;
            for (const Json& node : report["nodes"]) distances.push_back(node["point_distance"]);
            const VOR2 before = load("in.vr2"), after = load("out.vr2");
            EXPECT_LE(furthest_move(before.matrix_hierarchy, after.matrix_hierarchy, distances,
                                    before.environment.time_range.start, before.environment.time_range.end, 400),
                      tolerance)
                << path;
        }
    }
}

TEST_F(OptimiseVerb, tells_what_it_did_and_writes_over_its_input) {
    VOR2 scene = two_nodes();
    VOR2_MATRIX_NODE& hips = scene.matrix_hierarchy.nodes[1];
    hips.position_track->key_times().clear();
    hips.position_track->key_values().clear();
    for (int k = 0; k <= 8; ++k)
        hips.position_track->add_key({0.5F * static_cast<f32>(k), k == 3 ? 0.002F : 0.0F, 0.0F},
                                     0.25F * static_cast<f32>(k));
    save(scene, "a.vr2");
    const Outcome told = run({"optimise", "a.vr2", "b.vr2", "--tolerance", "5mm", "--report"});
    EXPECT_EQ(told.exit_code, 0) << told.err;
    EXPECT_TRUE(told.out.starts_with("b.vr2: keys 10 -> 3 (30 %), bytes ")) << told.out;
    EXPECT_NE(told.out.find("worst error 2 mm at 'hips' at 0.75 s\n"), std::string::npos) << told.out;
    EXPECT_NE(told.out.find("\n10\t3\t"), std::string::npos) << told.out;

    ASSERT_EQ(
        run({"optimise", "a.vr2", "a.vr2", "--tolerance", "0.1 mm", "--rotation", "1deg", "--point", "0"}).exit_code,
        0);
    EXPECT_EQ(load("a.vr2").matrix_hierarchy.nodes[1].position_track->key_times().size(), 5U);
    EXPECT_EQ(run({"diff", "a.vr2", "b.vr2", "--ignore", "position_track"}).exit_code, 0);

    expect_refused({"optimise", "none.vr2", "c.vr2", "--tolerance", "1mm"}, "none.vr2", "");
    for (const std::string length : {"0.1", "mm", "-1mm", "0mm", "1in", "nanmm"}) {
        const Outcome wrong = run({"optimise", "a.vr2", "c.vr2", "--tolerance=" + length});
        EXPECT_EQ(wrong.exit_code, 2) << length;
        EXPECT_NE(wrong.err.find("--tolerance"), std::string::npos) << wrong.err;
    }
    EXPECT_EQ(run({"optimise", "a.vr2", "c.vr2"}).exit_code, 2);
    EXPECT_FALSE(exists("c.vr2"));
}

} // namespace
} // namespace tool_test
