#include "tool_test.h"

#include <cmath>
#include <limits>

namespace tool_test {
namespace {

using namespace VOR2_LOADER;

constexpr float infinity = std::numeric_limits<float>::infinity();

TEST_F(ToolTest, dump_tells_every_value_so_that_it_reads_back) {
    VOR2 scene = two_nodes();
    const float numbers[] = {0.1F, -0.0F, 1.17549435e-38F, 3.40282347e+38F, 16777217.0F, 1.0F / 3.0F};
    auto track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
    for (const float number : numbers) track->add_key(number, number);
    track->add_key(std::nanf(""), infinity);
    track->add_key(-infinity, 0.0F);
    scene.global_light_tint = make_owned<VOR2_GLOBAL_LIGHT_TINT>();
    scene.global_light_tint->float_track = std::move(track);
    scene.environment.sample_rate = 1.0 / 3.0;
    scene.inf.creator = TEXT(u"\"quoted\\\"\t\u00FC\U0001F600\x01\x7F");
    const std::u16string lone = {u'<', char16_t{0xDC00}, char16_t{0xD83D}, u'>'};
    scene.inf.file_info = TEXT(std::u16string_view(lone));
    save(scene, "scene.vr2");

    const Outcome outcome = run({"dump", "scene.vr2", "--json"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    // The reader of JSON here takes no lone surrogates: their escapes are looked at and taken out.
    std::string text = outcome.out;
    const std::string escapes = "<\\udc00\\ud83d>";
    ASSERT_NE(text.find(escapes), std::string::npos);
    text.replace(text.find(escapes), escapes.size(), "");
    const Json dump = Json::parse(text);
    EXPECT_EQ(dump["inf"]["creator"], "\"quoted\\\"\t\u00FC\U0001F600\x01\x7F");
    EXPECT_EQ(dump["environment"]["sample_rate"].get<double>(), 1.0 / 3.0);
    EXPECT_EQ(dump["environment"]["map"], nullptr);
    EXPECT_EQ(dump["matrix_hierarchy"]["nodes"][1]["parent_index"], 0);
    const Json& told = dump["global_light_tint"]["float_track"];
    EXPECT_EQ(told["class"], "VOR2_ANIMATABLE_FLOAT32_LINEAR");
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        const float back = told["key_values"][i].get<float>();
        EXPECT_EQ(std::memcmp(&back, &numbers[i], sizeof back), 0) << numbers[i];
    }
    EXPECT_EQ(told["key_values"][6], "nan");
    EXPECT_EQ(told["key_times"][6], "inf");
    EXPECT_EQ(told["key_values"][7], "-inf");

    const Outcome lines = run({"dump", "scene.vr2"});
    EXPECT_EQ(lines.exit_code, 0);
    EXPECT_NE(lines.out.find("\n    [1] VOR2_MATRIX_NODE\n      name \"hips\"\n      parent_index 0\n"),
              std::string::npos);
    EXPECT_NE(lines.out.find("\n          [1] 4 8 0\n"), std::string::npos);
    EXPECT_NE(lines.out.find("file_info \"" + escapes + "\""), std::string::npos);
}

TEST_F(ToolTest, info_shows_each_file_and_goes_past_bad_ones) {
    VOR2 scene = two_nodes();
    scene.inf.file_info =
        TEXT(u"USERNAME:\tanna\r\nEXPORTED:\t02/03/2016,04:05:06\r\nVOR_NAME:\t/o/w.vr2\r\nMAYA_FILE:\t/s/w.ma\r\n");
    save(scene, "a.vr2");
    save(VOR2(), "empty.vr2");
    write("broken.vr2", read("a.vr2").substr(0, 100));

    const Outcome screen = run({"info", "a.vr2"});
    EXPECT_EQ(screen.exit_code, 0);
    EXPECT_EQ(screen.err, "");
    for (const std::string part : {"version 1.16", "2016-03-02 04:05:06 UTC by anna", "/s/w.ma", "0 s to 2 s",
                                   "2 nodes", "3 keys in 2 tracks", "    hips ", "matrix hierarchy"}) {
        EXPECT_NE(screen.out.find(part), std::string::npos) << part << "\n" << screen.out;
    }

    const Outcome many = run({"info", "--json", "-j", "3", "a.vr2", "missing.vr2", "broken.vr2", "empty.vr2"});
    EXPECT_EQ(many.exit_code, 1);
    ASSERT_EQ(many.problems().size(), 3U) << many.err;
    EXPECT_TRUE(many.problems()[0].starts_with("vor2: missing.vr2: "));
    EXPECT_TRUE(many.problems()[1].starts_with("vor2: broken.vr2: "));
    EXPECT_EQ(many.problems()[2], "vor2: 4 files, 2 failed");
    const std::size_t line_end = many.out.find('\n');
    const Json first = Json::parse(many.out.substr(0, line_end));
    const Json second = Json::parse(many.out.substr(line_end + 1));
    EXPECT_EQ(first["file"], "a.vr2");
    EXPECT_EQ(first["user"], "anna");
    EXPECT_EQ(first["nodes"][1]["position_keys"], 2);
    EXPECT_EQ(first["nodes"][0]["position_keys"], nullptr);
    EXPECT_EQ(second["file"], "empty.vr2");
    // An empty scene's five chunks, as their records' sizes give them.
    std::map<std::string, int> sizes;
    for (const Json& record : second["records"]) sizes[record["name"]] = record["bytes"];
    EXPECT_EQ(sizes, (std::map<std::string, int>{{"scene information", 40},
                                                 {"array lengths", 104},
                                                 {"environment", 32},
                                                 {"camera man", 12},
                                                 {"matrix hierarchy", 12}}));
    EXPECT_EQ(run({"info", "--quiet", "a.vr2", "missing.vr2"}).problems().size(), 1U);
}

TEST_F(ToolTest, pose_tells_where_nodes_stand_at_a_time) {
    VOR2 scene = two_nodes();
    VOR2_RIGID& box = *scene.rigids.emplace_back(make_owned<VOR2_RIGID>());
    box.name = TEXT(u"box");
    box.vertices.emplace_back().position = {1.0F, 2.5F, std::nanf("")};
    save(scene, "a.vr2");
    const Outcome outcome = run({"pose", "a.vr2", "--time", "0.5", "--json"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    const Json pose = Json::parse(outcome.out);
    EXPECT_EQ(pose["time"], 0.5);
    EXPECT_EQ(pose["nodes"][1]["name"], "hips");
    EXPECT_EQ(pose["nodes"][1]["parent"], 0);
    EXPECT_EQ(pose["nodes"][1]["world_matrix"], Json({1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 0}));
    EXPECT_EQ(pose["rigids"].dump(), R"([{"name":"box","positions":[[1,2.5,"nan"]],"normals":[[0,0,0]]}])");
    for (const std::string meshes : {"weighted_meshes", "morph_meshes", "anim_meshes"}) {
        EXPECT_EQ(pose[meshes], Json::array()) << meshes;
    }
    EXPECT_EQ(run({"pose", "a.vr2", "--time", "9"}).out, "0\t0\t0\t\"root\"\n4\t8\t0\t\"hips\"\n");
}

TEST_F(ToolTest, diff_names_record_index_and_field) {
    save(two_nodes(), "a.vr2");
    VOR2 other = two_nodes();
    other.environment.sample_rate = 60;
    VOR2_MATRIX_NODE& hips = other.matrix_hierarchy.nodes[1];
    hips.position_track->key_values()[1].y = 8.25F;
    hips.scale_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    OWNED<VOR2_ANIMATABLE_QUATERNION_LERP> chord = make_owned<VOR2_ANIMATABLE_QUATERNION_LERP>();
    chord->add_key({0.0F, 0.0F, 0.0F, 1.0F}, 5.0F);
    hips.rotation_track = std::move(chord);
    hips.extra_text = TEXT(u"x");
    other.matrix_hierarchy.nodes.emplace_back();
    save(other, "b.vr2");

    EXPECT_EQ(run({"diff", "a.vr2", "a.vr2"}).exit_code, 0);
    const Outcome outcome = run({"diff", "a.vr2", "b.vr2"});
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "environment sample_rate: 30 | 60\n"
                           "matrix_hierarchy nodes: 2 elements | 3 elements\n"
                           "matrix_hierarchy.nodes[1] \"hips\" position_track.key_values[1]: 4 8 0 | 4 8.25 0\n"
                           "matrix_hierarchy.nodes[1] \"hips\" rotation_track: VOR2_ANIMATABLE_QUATERNION_SLERP | "
                           "VOR2_ANIMATABLE_QUATERNION_LERP\n"
                           "matrix_hierarchy.nodes[1] \"hips\" scale_track: absent | VOR2_ANIMATABLE_VECTOR_3_LINEAR\n"
                           "matrix_hierarchy.nodes[1] \"hips\" extra_text: \"\" | \"x\"\n");

    const Outcome lenient = run({"diff", "a.vr2", "b.vr2", "--json", "--tolerance", "0.25", "--ignore",
                                 "rotation_track", "--ignore", "environment.sample_rate", "--ignore", "extra_text"});
    const Json told = Json::parse(lenient.out);
    EXPECT_EQ(told["count"], 2);
    EXPECT_EQ(told["differences"][1]["record"], "matrix_hierarchy.nodes");
    EXPECT_EQ(told["differences"][1]["index"], 1);
    EXPECT_EQ(told["differences"][1]["field"], "scale_track");
    expect_refused({"diff", "a.vr2", "missing.vr2"}, "missing.vr2", "");
}

TEST_F(ToolTest, upgrade_keeps_the_clock_and_settles_after_one_turn) {
    VOR2 scene = two_nodes();
    scene.set_time(0.5F); // the cursors of its tracks are part of the file
    save(scene, "a.vr2");
    ASSERT_EQ(run({"upgrade", "a.vr2", "b.vr2"}).exit_code, 0);
    EXPECT_EQ(read("b.vr2"), read("a.vr2"));
    ASSERT_EQ(run({"upgrade", "b.vr2", "b.vr2"}).exit_code, 0);
    EXPECT_EQ(read("b.vr2"), read("a.vr2"));

    // An older file: the version at offset 12 and no sample rate at the end of chunk 2.
    std::string old = read("a.vr2");
    const float version = 1.15F;
    std::memcpy(old.data() + 12, &version, sizeof version);
    const std::size_t environment = 4 + 40 + 104;
    old.erase(environment + 24, 8);
    old[environment] = 24;
    write("old.vr2", old);
    ASSERT_EQ(run({"upgrade", "old.vr2", "new.vr2"}).exit_code, 0);
    const Outcome diff = run({"diff", "a.vr2", "new.vr2"});
    EXPECT_EQ(diff.out, "environment sample_rate: 30 | 0\n");
}

} // namespace
} // namespace tool_test
