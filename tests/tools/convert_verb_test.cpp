#include "tool_test.h"

#include <cstring>

namespace tool_test {
namespace {

Json json_of(const std::string& glb) {
    std::uint32_t length = 0;
    if (glb.size() > 20) std::memcpy(&length, glb.data() + 12, 4);
    return Json::parse(glb.substr(20, length));
}

TEST_F(ToolTest, convert_goes_to_gltf_and_back_and_merges) {
    save(two_nodes(), "walk.vr2");
    save(two_nodes(), "run.vr2");
    EXPECT_EQ(run({"convert", path("walk.vr2"), path("walk.gltf")}).exit_code, 0);
    const Json text = Json::parse(read("walk.gltf"));
    EXPECT_EQ(text["buffers"][0]["uri"], "walk.bin");
    EXPECT_EQ(text["buffers"][0]["byteLength"], read("walk.bin").size());
    const Outcome merged = run({"convert", path("walk.vr2"), path("run.vr2"), path("both.glb"), "--merge"});
    EXPECT_EQ(merged.exit_code, 0) << merged.err;
    const Json both = json_of(read("both.glb"));
    ASSERT_EQ(both["animations"].size(), 2U);
    EXPECT_EQ(both["animations"][1]["name"], "run");

    EXPECT_EQ(run({"convert", path("walk.gltf"), path("back.vr2")}).exit_code, 0);
    std::string pose = run({"pose", path("back.vr2"), "--time", "1"}).out;
    if (const std::size_t at = pose.find("-0.0"); at != std::string::npos) pose.replace(at, 4, "0"); // a mirrored 0
    EXPECT_EQ(pose, run({"pose", path("walk.vr2"), "--time", "1"}).out);
    // One animation of several has to be said.
    expect_refused({"convert", path("both.glb"), path("one.vr2")}, path("both.glb"), "walk, run");
    expect_refused({"convert", path("both.glb"), path("one.vr2"), "--animation", "jump"}, path("both.glb"),
                   "no animation jump");
    EXPECT_FALSE(exists("one.vr2"));
    EXPECT_EQ(run({"convert", path("both.glb"), path("one.vr2"), "--animation", "run"}).exit_code, 0);
    EXPECT_EQ(run({"convert", path("both.glb"), "--output-dir", path(".")}).exit_code, 0);
    EXPECT_TRUE(exists("both_walk.vr2") && exists("both_run.vr2"));
}

TEST_F(ToolTest, convert_refuses_what_would_be_less_than_the_scene) {
    using namespace VOR2_LOADER;
    VOR2_LOADER::VOR2 scene = two_nodes();
    auto material = make_owned<VOR2_STANDARD_MATERIAL>();
    auto map = make_owned<VOR2_BITMAP_MATERIAL_MAP>();
    map->bitmap_params.bitmap_name = TEXT(u"C:\\pictures\\skin.png");
    material->maps.push_back(std::move(map));
    scene.materials.push_back(std::move(material));
    save(scene, "hero.vr2");
    expect_refused({"convert", path("hero.vr2"), path("hero.glb")}, path("hero.vr2"),
                   "skin.png; --textures says where textures are, --leave-out-textures goes on without them");
    EXPECT_FALSE(exists("hero.glb"));
    EXPECT_EQ(run({"convert", path("hero.vr2"), path("hero.glb"), "--leave-out-textures"}).exit_code, 0);
    write("skin.png", std::string("\x89PNG\r\n\x1a\n", 8));
    EXPECT_EQ(run({"convert", path("hero.vr2"), path("hero.glb")}).exit_code, 0);
    EXPECT_EQ(json_of(read("hero.glb"))["images"][0]["mimeType"], "image/png");

    write("bad.glb", "glTF");
    write("bad.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"mesh":3}]})");
    write("bad.fbx", "Kaydara FBX Binary  \x00\x1a\x00 and no more");
    expect_refused({"convert", path("bad.glb"), path("o.vr2")}, path("bad.glb"), "cut off");
    expect_refused({"convert", path("bad.gltf"), path("o.vr2")}, path("bad.gltf"), "mesh 3");
    if (run({"convert", path("bad.fbx"), path("o.vr2")}).exit_code != 2) // 2 where the reader isn't built in
        expect_refused({"convert", path("bad.fbx"), path("o.vr2")}, path("bad.fbx"), "");
    EXPECT_FALSE(exists("o.vr2"));
}

TEST_F(ToolTest, clips_are_the_exports_that_their_ranges_give) {
    const std::string scene = VOR2_SOURCE_DIR "/examples/walking_biped.ma";
    write("clips.json", R"({"step":[1,12],"early":[-2,3]})");
    const Outcome clips =
        run({"export", scene, "--clip", "turn:10-12.5", "--clips", path("clips.json"), "--output-dir", path(".")});
    EXPECT_EQ(clips.exit_code, 0) << clips.err;
    const struct {
        const char *name, *start, *stop;
    } ranges[] = {{"turn", "10", "12.5"}, {"step", "1", "12"}, {"early", "-2", "3"}};
    for (const auto& range : ranges) {
        const std::string alone = std::string(range.name) + "_alone.vr2";
        EXPECT_EQ(run({"export", scene, "-o", path(alone), "--start", range.start, "--stop", range.stop}).exit_code, 0);
        const Outcome same =
            run({"diff", path(alone), path(std::string(range.name) + ".vr2"), "--ignore", "inf.file_info"});
        EXPECT_EQ(same.exit_code, 0) << same.out;
    }
    write("odd.json", R"([{"name":"a","start":5}])");
    expect_refused({"export", scene, "--clips", path("odd.json"), "--output-dir", path(".")}, path("odd.json"),
                   "no list of clips");
    expect_refused({"export", scene, "--scene-clips", "--output-dir", path(".")}, scene, "lists no clips");
    for (const std::string bad : {"walk", "walk:5", "walk:9-3", "a/b:1-2"})
        EXPECT_EQ(run({"export", scene, "--clip", bad, "--output-dir", path(".")}).exit_code, 2) << bad;
    write("game.ma", "//Maya ASCII 2016 scene\ncurrentUnit -t film;\ncreateNode joint -n \"j\";\n"
                     "createNode gameFbxExporter -n \"preset\";\nsetAttr \".ac[0].acn\" -type \"string\" \"run\";\n"
                     "setAttr \".ac[0].acs\" 3;\nsetAttr \".ac[0].ace\" 9;\n");
    EXPECT_EQ(run({"export", path("game.ma"), "--scene-clips", "--output-dir", path(".")}).exit_code, 0);
    EXPECT_TRUE(exists("run.vr2"));
}

TEST_F(ToolTest, a_gltf_opens_in_the_host_like_any_scene) {
    save(two_nodes(), "walk.vr2");
    ASSERT_EQ(run({"convert", path("walk.vr2"), path("walk.glb")}).exit_code, 0);
    const Outcome exported = run({"export", path("walk.glb"), "-o", path("again.vr2")});
    if (exported.err.find("walk.glb") != std::string::npos && exported.exit_code != 0)
        GTEST_SKIP() << "built without that reader";
    // The host's scene goes out under the node that an export inserts.
    const Outcome there = run({"pose", path("again.vr2"), "--time", "1"});
    std::string line = there.out.substr(0, there.out.rfind('\n', there.out.size() - 2));
    double x = 0, y = 0, z = 0;
    std::string last = there.out.substr(line.size());
    ASSERT_EQ(std::sscanf(last.c_str(), " %lf %lf %lf", &x, &y, &z), 3) << there.out;
    EXPECT_NEAR(x, 2, 1e-4);
    EXPECT_NEAR(y, 4, 1e-4);
    EXPECT_NEAR(z, 0, 1e-4);
}

} // namespace
} // namespace tool_test
