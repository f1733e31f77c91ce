#include "tool_test.h"

namespace tool_test {
namespace {

using Names = std::vector<std::string>;
namespace fs = std::filesystem;

/// "hips" under a namespace moves along x from 0 to 24 centimetres in frames 0 to 24; "knee" stands 10 centimetres
/// above it, and "lamp" is a transform with no joints.
const std::string walk = R"(//Maya ASCII 2016 scene
requires maya "2016";
currentUnit -l centimeter -a degree -t film;
createNode joint -n "biped:hips";
createNode joint -n "biped:knee" -p "biped:hips";
    setAttr ".t" -type "double3" 0 10 0;
createNode transform -n "lamp";
    setAttr ".t" -type "double3" 0 0 5;
createNode animCurveTL -n "hips_translateX";
    setAttr ".tan" 2;
    setAttr -s 2 ".ktv[0:1]"  0 0 24 24;
connectAttr "hips_translateX.o" "biped:hips.tx";
createNode script -n "sceneConfigurationScriptNode";
    setAttr ".b" -type "string" "playbackOptions -min 0 -max 24 -ast 0 -aet 24 ";
    setAttr ".st" 6;
)";

class HostVerbs : public ToolTest {
protected:
    HostVerbs() { write("walk.ma", walk); }
    Json pose(const std::string& file, const std::string& time) {
        return Json::parse(run({"pose", file, "--time", time, "--json"}).out);
    }
    Names node_names(const std::string& file) {
        Names names;
        const Json info = Json::parse(run({"info", "--json", file}).out);
        for (const Json& node : info["nodes"]) names.push_back(node["name"]);
        return names;
    }
};

TEST_F(HostVerbs, export_takes_the_joints_and_its_options_reach_the_command) {
    Outcome outcome = run({"export", "walk.ma", "-o", "a.vr2"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(node_names("a.vr2"), (Names{"Exporter Inserted Root", "hips", "knee"}));
    // At half a second the hips have gone 12 centimetres; the knee stands 0.1 metres along what was y.
    const Json half = pose("a.vr2", "0.5")["nodes"];
    EXPECT_NEAR(std::abs(half[1]["world_matrix"][3].get<double>()), 0.12, 1e-6);
    const Json info = Json::parse(run({"info", "--json", "a.vr2"}).out);
    EXPECT_EQ(info["sample_rate"], 60);
    EXPECT_EQ(info["time_range"], Json({0, 1}));
    EXPECT_EQ(info["source"], path("walk.ma"));

    outcome = run({"export", "walk.ma", "-o", "b.vr2", "--node", "lamp", "--node", "biped:hips", "--start", "6",
                   "--stop", "12", "--sample-at", "24", "--strip-namespace", "off"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(node_names("b.vr2"), (Names{"Exporter Inserted Root", "lamp", "biped:hips", "biped:knee"}));
    const Json second = Json::parse(run({"info", "--json", "b.vr2"}).out);
    EXPECT_EQ(second["sample_rate"], 24);
    EXPECT_EQ(second["time_range"], Json({0.25, 0.5}));
}

TEST_F(HostVerbs, export_takes_meshes_along_only_where_it_is_asked_to) {
    write("box.ma", walk + R"(createNode transform -n "box"; setAttr ".t" -type "double3" 0 0 500;
createNode mesh -n "boxShape" -p "box";
createNode polyCube -n "cube"; setAttr ".w" 200; connectAttr "cube.out" "boxShape.i";
connectAttr "boxShape.iog" ":initialShadingGroup.dsm" -na;
)");
    ASSERT_EQ(run({"export", "box.ma", "-o", "a.vr2"}).exit_code, 0);
    EXPECT_TRUE(pose("a.vr2", "0")["rigids"].empty());
    const Outcome outcome = run({"export", "box.ma", "-o", "a.vr2", "--meshes"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(node_names("a.vr2"), (Names{"Exporter Inserted Root", "hips", "knee", "box", "boxShape"}));
    const Json still = pose("a.vr2", "0");
    ASSERT_EQ(still["rigids"].size(), 1U);
    EXPECT_EQ(still["rigids"][0]["name"], "boxShape");
    EXPECT_EQ(still["rigids"][0]["positions"].size(), 24U);
    // Under a node that turns them from the axes of the box to the world's, in which they are stated.
    const Json& matrix = still["nodes"][4]["world_matrix"];
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(matrix[r * 4 + c].get<double>(), r == c ? 1.0 : 0.0, 1e-6);
    }
    EXPECT_NEAR(matrix[11].get<double>(), -5.0, 1e-6);
    const Json whole = Json::parse(run({"dump", "--json", "a.vr2"}).out);
    EXPECT_NE(whole.dump().find("lambert1"), std::string::npos);
}

TEST_F(HostVerbs, an_export_that_finds_problems_is_cancelled_or_forced) {
    // A U that single precision can't hold.
    write("broken.ma", walk + R"(createNode transform -n "t"; createNode mesh -n "sheet" -p "t";
setAttr ".uvst[0].uvsn" -type "string" "map1";
setAttr -s 3 ".uvst[0].uvsp[0:2]" -type "float2" 1e39 0 1 0 1 1;
setAttr -s 3 ".vt[0:2]" 0 0 0 1 0 0 1 1 0;
setAttr -s 3 ".ed[0:2]" 0 1 0 1 2 0 2 0 0;
setAttr -s 1 ".fc[0]" -type "polyFaces" f 3 0 1 2 mu 0 3 0 1 2;
)");
    write("a.vr2", "the last export");
    const std::vector<std::string> words{"export", "broken.ma", "-o", "a.vr2", "--meshes"};
    expect_refused(words, "broken.ma", "cancelled: problems were found, see a.txt");
    EXPECT_EQ(read("a.vr2"), "the last export");
    EXPECT_NE(read("a.txt").find("Max mapping channel: 1. BAD U! , Good V , Good W."), std::string::npos);

    const auto with = [&words](std::string answer, std::string output) {
        std::vector<std::string> all = words;
        all[3] = std::move(output);
        all.insert(all.end(), {"--on-problems", std::move(answer)});
        return all;
    };
    const Outcome forced = run(with("force", "b.vr2"));
    EXPECT_EQ(forced.exit_code, 0);
    EXPECT_EQ(forced.err, "vor2: broken.ma: warning: exported in spite of problems, see b.txt\n");
    EXPECT_EQ(run({"check", "b.vr2", "--strict"}).exit_code, 0) << "the numbers were replaced";
    EXPECT_NE(run({"dump", "--json", "b.vr2"}).out.find("FORCED EXPORT WITH ERRORS!!"), std::string::npos);

    // A report that can't be written doesn't pass for one that was.
    std::filesystem::create_directory(place("c.txt"));
    expect_refused(with("cancel", "c.vr2"), path("c.txt"), "is a folder");
    expect_refused(with("force", "c.vr2"), path("c.txt"), "is a folder");
    EXPECT_EQ(listing(), (Names{"a.txt", "a.vr2", "b.txt", "b.vr2", "broken.ma", "c.txt", "walk.ma"}));
}

TEST_F(HostVerbs, what_moves_joints_and_is_not_evaluated_refuses_the_export) {
    const std::string clips = walk + R"(createNode clipScheduler -n "clips";
createNode clamp -n "held";
connectAttr "clips.out" "held.ipr";
createNode vendorCamera -n "bystander";
connectAttr "held.opr" "biped:knee.)";
    write("clips.ma", clips + "rx\";\n");
    write("out.vr2", "the last export");
    const std::string line = "The clipScheduler 'clips' isn't evaluated (its clips aren't), and moves 'biped:knee'";
    expect_refused({"export", "clips.ma", "-o", "out.vr2"}, "clips.ma", line + "; --allow-unevaluated");
    EXPECT_EQ(read("out.vr2"), "the last export");
    const Outcome told = run({"export", "clips.ma", "-o", "out.vr2", "--json"});
    EXPECT_EQ(told.exit_code, 1);
    const Json report = Json::parse(told.out);
    EXPECT_FALSE(report["exported"].get<bool>());
    EXPECT_EQ(report["unevaluated"], Json::parse(R"([{"node": "clips", "kind": "clipScheduler",
                                                      "why": "its clips aren't", "moves": ["biped:knee"]}])"));

    const Outcome allowed = run({"export", "clips.ma", "-o", "out.vr2", "--allow-unevaluated"});
    EXPECT_EQ(allowed.exit_code, 0);
    EXPECT_NE(allowed.err.find("vor2: clips.ma: warning: " + line + "\n"), std::string::npos) << allowed.err;
    const Outcome by_hand = run({"host", "clips.ma", "-c", "VOR2Export -f \"by_hand.vr2\" -enl \"biped:hips\""});
    EXPECT_EQ(by_hand.exit_code, 0);
    EXPECT_NE(by_hand.err.find(line), std::string::npos) << by_hand.err;
    // What only a radius hangs on moves nothing.
    write("clips.ma", clips + "radi\";\n");
    const Outcome still = run({"export", "clips.ma", "-o", "out.vr2"});
    EXPECT_EQ(still.exit_code, 0) << still.err;
    EXPECT_EQ(still.err.find("isn't evaluated"), std::string::npos) << still.err;
}

TEST_F(HostVerbs, an_export_can_be_repeated_to_the_byte) {
    const Names line{"export", "walk.ma", "-o", "a.vr2", "--user", "anna"};
    Names stamped = line;
    stamped.insert(stamped.end(), {"--timestamp", "2016-03-02T04:05:06Z"});
    ASSERT_EQ(run(stamped).exit_code, 0);
    const std::string bytes = read("a.vr2");
    EXPECT_EQ(Json::parse(run({"info", "--json", "a.vr2"}).out)["exported_at"], "02/03/2016,04:05:06");
    ASSERT_EQ(run(line, {"SOURCE_DATE_EPOCH=1456891506"}).exit_code, 0);
    EXPECT_EQ(read("a.vr2"), bytes);
    ASSERT_EQ(run({"upgrade", "a.vr2", "b.vr2"}).exit_code, 0);
    EXPECT_EQ(read("b.vr2"), bytes);
    EXPECT_EQ(run({"export", "walk.ma", "-o", "a.vr2", "--timestamp", "2016-13-02T04:05:06Z"}).exit_code, 2);
    EXPECT_EQ(run(line, {"SOURCE_DATE_EPOCH=soon"}).exit_code, 2);
}

TEST_F(HostVerbs, what_goes_out_comes_back_as_joints) {
    ASSERT_EQ(run({"export", "walk.ma", "-o", "a.vr2"}).exit_code, 0);
    Outcome outcome = run({"import", "a.vr2", "-o", "back.ma", "--time-unit", "ntsc"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    outcome = run(
        {"host", "back.ma", "-c", "currentUnit -q -t", "-c", "ls -type \"joint\"", "-c", "playbackOptions -q -max"});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("ntsc"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("knee"), std::string::npos) << outcome.out;
    ASSERT_EQ(run({"export", "back.ma", "-o", "again.vr2", "--node", "hips"}).exit_code, 0);
    // A child stands in its parent as it did.
    const auto knee = [this](const std::string& file) {
        return Json::parse(run({"dump", "--json", file}).out)["matrix_hierarchy"]["nodes"][2];
    };
    const Json first = knee("a.vr2"), second = knee("again.vr2");
    EXPECT_EQ(second["name"], "knee");
    for (int i = 0; i < 3; ++i) {
        const double there = first["position_track"]["key_values"][0][i],
                     back = second["position_track"]["key_values"][0][i];
        EXPECT_NEAR(there, back, 1e-6) << i;
    }
}

TEST_F(HostVerbs, host_runs_lines_in_order_and_stops_at_the_first_that_fails) {
    Outcome outcome =
        run({"host", "walk.ma", "-c", "VOR2Export -f \"out.vr2\" -sAt 30 -enl \"biped:hips\" -enl \"lamp\""});
    ASSERT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(node_names("out.vr2"), (Names{"Exporter Inserted Root", "hips", "knee", "lamp"}));

    write("move.mel", "setAttr \"lamp.tx\" 7;\nsetAttr \"lamp.ty\" 8;\n");
    outcome = run({"host", "walk.ma", "-c", "setAttr \"lamp.tx\" 1", "--script", "move.mel", "-c",
                   "getAttr \"lamp.tx\"", "--save", "moved.ma"});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_NE(outcome.out.find('7'), std::string::npos) << outcome.out;
    EXPECT_TRUE(exists("moved.ma"));

    outcome = run({"host", "walk.ma", "-c", "currentTime 3", "-c", "nonsense", "-c",
                   "VOR2Export -f \"no.vr2\" -enl lamp", "--save", "no.ma"});
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_EQ(outcome.problems().size(), 1U) << outcome.err;
    EXPECT_TRUE(outcome.err.starts_with("vor2: line 2: ")) << outcome.err;
    write("bad.mel", "setAttr \"lamp.tx\" 7;\nsetAttr \"lantern.tx\" 7;\n");
    outcome = run({"host", "walk.ma", "--script", "bad.mel"});
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_TRUE(outcome.err.starts_with("vor2: bad.mel: line 2")) << outcome.err;
    // The command reports success whatever became of the file; what it showed tells.
    EXPECT_EQ(run({"host", "walk.ma", "-c", "VOR2Export -f \"none/out.vr2\" -enl lamp"}).exit_code, 1);
    EXPECT_EQ(run({"host", "walk.ma", "-c", "VOR2Export -f \"nothing.vr2\""}).exit_code, 1);
    EXPECT_EQ(listing(), (Names{"bad.mel", "move.mel", "moved.ma", "out.vr2", "walk.ma"}));
}

TEST_F(HostVerbs, a_bad_scene_is_one_line_and_leaves_nothing) {
    write("syntax.ma", "//Maya ASCII 2016 scene\ncreateNode joint -n \"a;\n");
    write("empty.ma", "//Maya ASCII 2016 scene\nrequires maya \"2016\";\n");
    write("frames.bvh",
          "HIERARCHY ROOT a { OFFSET 0 0 0 CHANNELS 1 Xposition End Site { OFFSET 0 1 0 } } MOTION Frames: 2 "
          "Frame Time: 0.1\n");
    write("kept.vr2", "kept");
    const Names before = listing();
    expect_refused({"export", "missing.ma", "-o", "kept.vr2"}, "missing.ma", "");
    expect_refused({"export", "syntax.ma", "-o", "kept.vr2"}, "syntax.ma", "line 2, column ");
    expect_refused({"export", "empty.ma", "-o", "kept.vr2"}, "empty.ma", "nothing to export");
    expect_refused({"export", "frames.bvh", "-o", "kept.vr2"}, "frames.bvh", "line ");
    expect_refused({"export", "walk.ma", "-o", "kept.vr2", "--node", "tail"}, "walk.ma", "tail");
    expect_refused({"export", "walk.ma", "-o", "none/out.vr2"}, "none/out.vr2", "doesn't exist");
    expect_refused({"export", "walk.ma", "-o", "a.vr2", "--time-unit", "moons"}, "walk.ma", "moons");
    expect_refused({"import", "kept.vr2", "-o", "out.ma"}, "kept.vr2", "");
    expect_refused({"import", "missing.vr2", "-o", "out.ma"}, "missing.vr2", "");
    EXPECT_EQ(listing(), before);
    EXPECT_EQ(read("kept.vr2"), "kept");
    for (const Names& usage :
         {Names{"export", "walk.ma"}, Names{"export", "walk.ma", "-o", "a.ma"},
          Names{"export", "walk.ma", "walk.ma", "-o", "a.vr2"}, Names{"export", "walk.ma", "sub/walk.bvh", "-d", "."},
          Names{"export", "walk.ma", "-o", "a.vr2", "--rotate-180", "maybe"}}) {
        EXPECT_EQ(run(usage).exit_code, 2) << usage.back();
    }
}

TEST_F(HostVerbs, a_scene_comes_with_what_it_refers_to_or_is_refused) {
    fs::create_directories(place("job/rigs"));
    fs::create_directories(place("shots"));
    fs::rename(place("walk.ma"), place("job/rigs/walk.ma"));
    write("job/workspace.mel", "workspace -fr \"scene\" \"scenes\";\n");
    write("shots/shot.ma", R"(createNode joint -n "own";
file -rdi 1 -ns "w" -rfn "wRN" "P:/job//rigs/walk.ma"; file -r -ns "w" -dr 1 -rfn "wRN" "P:/job//rigs/walk.ma";)");
    const std::string shot = "shots/shot.ma";
    expect_refused({"export", shot, "-o", "a.vr2"}, shot, "; --project and --map say where files are");
    expect_refused({"export", shot, "-o", "a.vr2", "--project", "shots"}, shot, "looked for it at P:/job");
    EXPECT_EQ(run({"export", shot, "-o", "a.vr2", "--project", "none"}).exit_code, 2);
    EXPECT_EQ(run({"export", shot, "-o", "a.vr2", "--map", "P:"}).exit_code, 2);
    const Names whole{"Exporter Inserted Root", "own", "hips", "knee"};
    for (const Names& where : {Names{"--project", "job"}, Names{"--map", "p:/=" + path("")}}) {
        Names arguments{"export", shot, "-o", "a.vr2"};
        arguments.insert(arguments.end(), where.begin(), where.end());
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(node_names("a.vr2"), whole);
    }
    fs::rename(place(shot), place("job/shot.ma"));
    EXPECT_EQ(run({"export", "job/shot.ma", "-o", "b.vr2"}).exit_code, 0);
    EXPECT_EQ(node_names("b.vr2"), whole);
    fs::rename(place("job/shot.ma"), place(shot));
    const Outcome alone = run({"export", shot, "-o", "c.vr2", "--allow-missing-references"});
    EXPECT_EQ(alone.exit_code, 0);
    EXPECT_EQ(alone.problems().size(), 1U) << alone.err;
    EXPECT_EQ(node_names("c.vr2"), (Names{"Exporter Inserted Root", "own"}));
}

TEST_F(HostVerbs, many_scenes_go_out_at_once_past_a_bad_one) {
    for (const std::string name : {"b", "c", "d"}) write(name + ".ma", walk);
    write("c.ma", "createNode ;;; {");
    const Outcome outcome = run({"export", "-j", "2", "b.ma", "c.ma", "d.ma", "--output-dir", "deep/out"});
    EXPECT_EQ(outcome.exit_code, 1);
    ASSERT_EQ(outcome.problems().size(), 2U) << outcome.err;
    EXPECT_TRUE(outcome.problems()[0].starts_with("vor2: c.ma: ")) << outcome.err;
    EXPECT_EQ(outcome.problems()[1], "vor2: 3 files, 1 failed");
    EXPECT_TRUE(exists("deep/out/b.vr2") && exists("deep/out/d.vr2") && !exists("deep/out/c.vr2"));
}

TEST_F(HostVerbs, real_scenes_go_the_whole_way) {
    std::error_code ignored;
    const std::string alone = "--allow-missing-references"; // some refer to models that nobody has
    int scenes = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(VOR2_SHARED_DATA, ignored)) {
        const std::string ending = entry.path().extension().string();
        if (ending != ".ma" && ending != ".bvh") continue;
        ++scenes;
        const std::string scene = entry.path().string();
        SCOPED_TRACE(scene);
        const Outcome whole = run({"export", scene, "-o", "m.vr2", "--meshes", alone});
        EXPECT_EQ(whole.exit_code, 0);
        const bool sheared = whole.err.find("Shear leaves this node a rotation") != std::string::npos;
        EXPECT_EQ(run({"check", "m.vr2", "--strict"}).exit_code, sheared ? 1 : 0);
        EXPECT_EQ(whole.err.find("of its size away from where the host has it"), std::string::npos) << whole.err;
        EXPECT_EQ(run({"upgrade", "m.vr2", "n.vr2"}).exit_code, 0);
        EXPECT_EQ(read("m.vr2"), read("n.vr2"));
        const Outcome exported = run({"export", scene, "-o", "a.vr2", "--quiet", alone});
        ASSERT_EQ(exported.exit_code, 0) << exported.err;
        EXPECT_EQ(run({"info", "a.vr2"}).exit_code, 0);
        EXPECT_EQ(run({"import", "a.vr2", "-o", "back.ma", "--quiet"}).exit_code, 0);
        EXPECT_EQ(run({"host", "back.ma", "-c", "ls -type joint"}).exit_code, 0);
        ASSERT_EQ(run({"upgrade", "a.vr2", "b.vr2"}).exit_code, 0);
        EXPECT_EQ(read("b.vr2"), read("a.vr2"));
        EXPECT_TRUE(Json::accept(run({"dump", "--json", "a.vr2"}).out));
    }
    if (scenes == 0) GTEST_SKIP() << "no scenes in " VOR2_SHARED_DATA;
}

} // namespace
} // namespace tool_test
