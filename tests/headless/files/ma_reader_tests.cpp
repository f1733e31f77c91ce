#include "headless/files/ma_reader.h"
#include "headless/session.h"
#include "tests/temporary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <numbers>

namespace headless {
namespace {

constexpr double degree = std::numbers::pi / 180.0;

class MaReaderTest : public testing::Test {
protected:
    MaReaderTest() {
        session.new_scene();
        session.set_message_sink([this](MessageKind kind, const std::string& text) {
            messages.push_back("IWER"[int(kind)] + (": " + text));
        });
    }
    ~MaReaderTest() override { session.set_message_sink(nullptr); }

    Scene& scene() { return session.scene(); }
    Result<void> read(std::string_view text, const MaReadOptions& options = {}) {
        return read_maya_ascii_text(scene(), text, "a.ma", options);
    }
    Node& node(std::string_view name) {
        const auto found = scene().find_node(name);
        EXPECT_TRUE(found) << name;
        return found ? **found : scene().world();
    }
    Value value(std::string_view plug) {
        const auto found = scene().find_plug(plug);
        EXPECT_TRUE(found) << plug;
        return found ? found->node->get(found->key) : Value();
    }
    std::string error_of(std::string_view text) {
        const auto done = read(text);
        return done ? "" : done.error().text();
    }

    Session& session = Session::current();
    std::vector<std::string> messages;
};

void expect_near(const Matrix& a, const Matrix& b, double tolerance, const std::string& what) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) EXPECT_NEAR(a[r][c], b[r][c], tolerance) << what << " " << r << "," << c;
    }
}

TEST_F(MaReaderTest, values_come_in_the_units_of_the_file) {
    ASSERT_TRUE(read(R"(//Maya ASCII 2016 scene
requires maya "2016"; currentUnit -l meter -a radian -t ntsc;
createNode joint -n "ns:hip"; rename -uid "AB-1";
  setAttr -l on ".tx" 2; setAttr ".r" -type "double3" 0.5 0 -1e-1 ;
  setAttr -k off -cb on ".ssc" no; setAttr ".ro" 5;
createNode animCurveTL -n "c"; setAttr ".wgt" no;
select -ne :time1; setAttr -k on ".o" 15;
createNode script -n "range"; setAttr ".b" -type "string" "playbackOptions -min 0 -max 60 -ast -30 -aet 90 ";
)"));
    EXPECT_EQ(value("ns:hip.t").vector(), (Vector3{200, 0, 0}));
    EXPECT_EQ(value("ns:hip.r").vector(), (Vector3{0.5, 0, -0.1}));
    EXPECT_FALSE(value("ns:hip.segmentScaleCompensate").boolean());
    EXPECT_EQ(value("ns:hip.rotateOrder").integer(), 5);
    EXPECT_EQ(node("ns:hip").uuid, "AB-1");
    const Plug tx = *scene().find_plug("ns:hip.tx"), ssc = *scene().find_plug("ns:hip.ssc");
    EXPECT_TRUE(tx.node->flags(tx.key.attribute).locked);
    EXPECT_EQ(ssc.node->flags(ssc.key.attribute).keyable, false);
    EXPECT_EQ(ssc.node->flags(ssc.key.attribute).channel_box, true);
    EXPECT_EQ(scene().time_unit.name, "ntsc");
    EXPECT_DOUBLE_EQ(scene().current_time(), 0.5);
    EXPECT_DOUBLE_EQ(scene().playback.max, 2.0);
    EXPECT_DOUBLE_EQ(scene().playback.animation_start, -1.0);
    EXPECT_EQ(messages, std::vector<std::string>{});
}

TEST_F(MaReaderTest, ranges_and_typed_values_are_kept_whole) {
    ASSERT_TRUE(read(R"(
createNode transform -n "cube"; createNode mesh -n "cubeShape" -p "cube";
 setAttr -s 3 ".vt[0:2]"  -0.5 0 1
   2 3 4 5 6 7 ;
 setAttr -s 2 ".ed[5:6]"  0 1 0 1 2 1;
 setAttr ".uvst[0].uvsn" -type "string" ( "map" + "1\t\"x\"\\" );
 setAttr -s 2 ".uvst[0].uvsp[0:1]" -type "float2" 0.25 0 1 0.75 ;
 setAttr -s 2 -ch 7 ".fc[0:1]" -type "polyFaces"
   f 4 0 1 -2 3 mu 0 4 0 1 3 2
   f 3 0 1 2;
 setAttr ".a" -type "doubleArray" 2 1.5 2 ; setAttr ".vir" yes; setAttr ".bck" 7;
 setAttr ".al" -type "attributeAlias" {"left","weight[0]"} ;
)"));
    EXPECT_EQ(value("cubeShape.vt[2]").vector(), (Vector3{5, 6, 7}));
    EXPECT_EQ(value("cubeShape.ed[6]").vector(), (Vector3{1, 2, 1}));
    EXPECT_EQ(value("cubeShape.uvst[0].uvsn").text(), "map1\t\"x\"\\");
    EXPECT_EQ(value("cubeShape.uvst[0].uvsp[1]"), Value(Value::Doubles{1, 0.75}));
    EXPECT_EQ(value("cubeShape.fc[0]"),
              Value(RawTokens{"polyFaces", {"f", "4", "0", "1", "-2", "3", "mu", "0", "4", "0", "1", "3", "2"}}));
    EXPECT_EQ(value("cubeShape.fc[1]"), Value(RawTokens{"polyFaces", {"f", "3", "0", "1", "2"}}));
    EXPECT_EQ(value("cubeShape.a"), Value(RawTokens{"doubleArray", {"2", "1.5", "2"}}));
    EXPECT_EQ(value("cubeShape.vir"), Value(true));
    EXPECT_EQ(value("cubeShape.bck"), Value(7));
    ASSERT_NE(value("cubeShape.al").get_if<RawTokens>(), nullptr);
}

TEST_F(MaReaderTest, declared_attributes_hold_what_they_declare) {
    ASSERT_TRUE(read(R"(
createNode transform -n "a";
 addAttr -ci true -sn "spd" -ln "speed" -min 0 -max 1 -dv 90 -at "doubleAngle";
 addAttr -ci true -sn "md" -ln "mode" -en "off:on" -at "enum";
 addAttr -ci true -sn "pv" -ln "pivot" -at "double3" -nc 3;
 addAttr -sn "px" -ln "pivotX" -at "doubleLinear" -p "pivot"; addAttr -sn "py" -ln "pivotY" -at "double" -p "pivot";
 addAttr -sn "pz" -ln "pivotZ" -at "double" -p "pivot";
 addAttr -ci true -m -sn "w" -ln "weights" -at "double"; addAttr -sn "nt" -ln "notes" -dt "string";
 setAttr ".pv" -type "double3" 1 2 3 ; setAttr -k on ".w[4]" 0.5; setAttr ".nt" -type "string" "-s";
addAttr -sn ".s" -ln "dotted" -dt "string";
)"));
    EXPECT_EQ(messages, (std::vector<std::string>{"W: a.ma:10:1: '.s' can't be the name of an attribute"}));
    EXPECT_DOUBLE_EQ(value("a.speed").number(), 90 * degree);
    EXPECT_EQ(value("a.pivot").vector(), (Vector3{1, 2, 3}));
    EXPECT_EQ(value("a.weights[4]").number(), 0.5);
    EXPECT_EQ(value("a.notes").text(), "-s");
    EXPECT_EQ(node("a").attribute(node("a").find_attribute("mode")).enum_names,
              (std::vector<std::string>{"off", "on"}));
}

TEST_F(MaReaderTest, names_in_a_file_mean_its_own_nodes) {
    ASSERT_TRUE(scene().create_node("joint", "hip"));
    ASSERT_TRUE(read(R"(
createNode joint -n "hip"; createNode joint -n "knee" -p "hip"; createNode transform -n "b";
createNode joint -n "knee" -p "|b"; setAttr ".tx" 4;
createNode animCurveTL -n "hip_tx";
connectAttr "hip_tx.o" "|hip|knee.tx"; connectAttr "|b|knee.t" "hip.s";
createNode transform -n "shapes"; createNode mesh -n "m" -p "shapes";
parent -s -nc -r -add "|shapes|m" "b";
createNode transform -s -n "persp"; setAttr ".tx" 7;
)"));
    EXPECT_EQ(scene().full_name(scene().path_to(*node("hip1").children()[0])), "|hip1|knee");
    EXPECT_EQ(node("|hip1|knee").source_of(node("|hip1|knee").find_plug("tx").key).node, &node("hip_tx"));
    EXPECT_EQ(node("hip1").source_of(node("hip1").find_plug("s").key).node, &node("|b|knee"));
    EXPECT_EQ(node("m").parents().size(), 2u);
    // A file that is added to a scene leaves what every scene has as it is.
    EXPECT_EQ(value("persp.tx").number(), 28.0);
    EXPECT_EQ(messages, std::vector<std::string>{});
}

TEST_F(MaReaderTest, paths_lead_to_one_of_many_with_a_name_wherever_the_file_hangs_it) {
    ASSERT_TRUE(read(R"(createNode transform -n g; createNode transform -n h; createNode transform -n k -p g;
createNode transform -n k -p h; setAttr "|g|k.tx" 1; setAttr "h|k.tx" 2; parent "|g|k" "|h|k"; setAttr "|h|k|k.ty" 3;
setAttr "|g|k.tz" 4; parent -add "|h|k|k" g; setAttr "|g|k.sx" 5; parent -w "|h|k"; setAttr "|k.sy" 6; setAttr "|h|k.sz" 7;
)"));
    EXPECT_EQ(value("|k.tx"), Value(2.0));
    EXPECT_EQ(value("|k.sy"), Value(6.0));
    for (const auto& [attribute, number] : {std::pair{"tx", 1.0}, {"ty", 3.0}, {"sx", 5.0}})
        EXPECT_EQ(value(std::string("|g|k.") + attribute), Value(number));
    EXPECT_EQ(messages,
              (std::vector<std::string>{"W: a.ma:3:1: No object matches name: |g|k (and 1 more passed over)"}));
}

TEST_F(MaReaderTest, next_available_counts_on_and_world_arrays_need_no_index) {
    ASSERT_TRUE(read(R"(
createNode objectSet -n "s"; createNode joint -n "a"; createNode joint -n "b"; createNode strange -n "x";
connectAttr "a.iog" "s.dsm" -na; connectAttr "b.iog" ":s.dsm" -na; connectAttr "a.msg" "x.in" -na;
connectAttr "b.msg" "x.in" -na; connectAttr "a.wm" "x.matrix[3]";
)"));
    EXPECT_EQ(node("s").source_of(node("s").find_plug("dsm[1]").key).node, &node("b"));
    EXPECT_EQ(node("x").source_of(node("x").find_plug("in[1]").key).node, &node("b"));
    EXPECT_EQ(node("x").source_of(node("x").find_plug("matrix[3]").key).path(true), ".wm[0]");
}

TEST_F(MaReaderTest, what_is_unknown_is_kept_in_silence_and_what_fails_costs_one_warning) {
    ASSERT_TRUE(read(R"(createNode strange -n "x"; setAttr ".any[2].thing" 1;
createNode joint -n "j"; setAttr ".mnrl" -type "double3" -360 -360 -360; setAttr ".tx" "left";
  setAttr ".t" -type "double3" 1 2; setAttr "gone.tx" 1; blowUp; setAttr ".ty" 3;
)"));
    EXPECT_EQ(value("j.ty").number(), 3.0);
    EXPECT_EQ(value("x.any[2].thing").number(), 1.0);
    EXPECT_EQ(messages,
              (std::vector<std::string>{
                  "W: a.ma:2:74: 'left' can't be a value of 'j.translate.translateX' (and 3 more passed over)"}));
}

TEST_F(MaReaderTest, a_list_that_is_told_in_blocks_goes_on_with_the_type_of_the_first) {
    for (const int count : {499, 500, 501, 1499}) {
        session.new_scene();
        std::string text = "createNode mesh -n \"m\"; setAttr -s 4 \".vt[0:3]\" 0 0 0 1 0 0 1 1 0 0 1 0;\n";
        for (int first = 0; first < count; first += 500) {
            const int last = std::min(first + 500, count) - 1;
            text += "setAttr " + std::string(first == 0 ? "-s " + std::to_string(count) + " " : "") + "\".fc[" +
                    std::to_string(first) + (last == first ? "" : ":" + std::to_string(last)) + "]\"" +
                    (first == 0 ? " -type \"polyFaces\"" : "");
            for (int i = first; i <= last; ++i) text += i % 2 ? " f 3 0 1 2\n" : " f 4 0 1 2 3 mu 0 4 0 1 2 3\n";
            text += ";\n";
        }
        ASSERT_TRUE(read(text + "createNode odd -n \"o\"; setAttr \".a[0]\" -type \"string\" \"f\"; setAttr \".a[1]\" "
                                "\"g\"; setAttr \".b[1]\" 7;"));
        EXPECT_EQ(node("mShape").existing_indices(node("mShape").find_plug("fc").key).size(), count);
        const Value last = value("mShape.fc[" + std::to_string(count - 1) + "]");
        ASSERT_TRUE(last.get_if<RawTokens>());
        EXPECT_EQ(last.get_if<RawTokens>()->tokens.size(), count % 2 ? 13u : 5u);
        EXPECT_EQ(value("o.a[1]").text(), "g");
        EXPECT_EQ(value("o.b[1]"), Value(7));
    }
    EXPECT_EQ(messages, std::vector<std::string>{});
}

TEST_F(MaReaderTest, no_element_stands_behind_the_last_that_an_index_can_name) {
    ASSERT_TRUE(
        read("createNode mesh -n m; setAttr \".fc[2147483646]\" -type \"polyFaces\" f 3 0 1 2 f 3 0 1 2;"
             "createNode odd -n o; setAttr \"o.a[2147483646]\" 1; connectAttr \"o.a[2147483646]\" \"o.a\" -na;"));
    EXPECT_EQ(messages.back(),
              "W: a.ma:1:23: Behind 'mShape.face[2147483646]' there is no element (and 1 more passed over)");
}

TEST_F(MaReaderTest, lists_within_a_range_that_are_no_lists_are_passed_over) {
    for (const char* wrong : {".wl[0:1].w\" 1 0 1", ".wl[0:1].w\" 1 0 1 2 0 1 5", ".wl[0:1].w\" 0 0 7",
                              ".wl[0:1].w\" -1 0", ".wl[0:1].w\" 4294967295 0 1", ".wl[0:1].w\" 1 -1 1 0",
                              ".wl[0:1].w\" 1 0 x 0", ".wl[2147483647:2147483648].w\" 0 0",
                              ".wl[0:1].w\" 1 2147483647 5 0", ".tx[0:1].w\" 0 0", ".wl[1:0].w\" 1 0 1"}) {
        messages.clear();
        session.new_scene();
        ASSERT_TRUE(
            read(std::string("createNode skinCluster -n s; setAttr \"") + wrong + "; setAttr \".wl[3].w[0]\" 0.5;"));
        EXPECT_EQ(messages.size(), 1U) << wrong;
        EXPECT_EQ(value("s.wl[3].w[0]").number(), 0.5);
    }
    ASSERT_TRUE(session.run_mel("createNode skinCluster -n t; setAttr t.wl[4:5].w 1 0 0.5 2 0 0.25 1 0.75;"
                                "setAttr t.wl[6:6].w 1 2 0.125"));
    EXPECT_EQ(value("t.wl[4].w[0]").number() + value("t.wl[5].w[1]").number(), 1.25);
    EXPECT_EQ(value("t.wl[6].w[2]").number(), 0.125);
}

TEST_F(MaReaderTest, connections_can_be_taken_back_and_lines_for_others_pass_in_silence) {
    ASSERT_TRUE(read(R"(requires -nodeType "x" "some" "1.0"; fileInfo "a" "b"; dataStructure -fmt "raw" -as "name=x";
createNode joint -n "a"; createNode joint -n "b"; relationship "link" ":lightLinker1" "x"; lockNode -l 1;
connectAttr -l on "a.tx" "b.tx"; connectAttr "a.ty" "b.ty"; connectAttr -f "a.tz" "b.ty" -rd "q";
disconnectAttr -na "a.tx" "b.tx"; disconnectAttr "a.r" "b.rz"; disconnectAttr "a.r" "b.gone";
disconnectAttr "a.r" "gone.r"; connectAttr "a.r"; createNode animCurveTL -n "c"; setAttr ".ktv[0]" 1;
)"));
    EXPECT_FALSE(node("b").source_of(node("b").find_plug("tx").key));
    EXPECT_EQ(node("b").source_of(node("b").find_plug("ty").key), node("a").find_plug("tz"));
    EXPECT_EQ(messages, std::vector<std::string>{"W: a.ma:5:1: No object matches name: gone (and 2 more passed over)"});
}

TEST_F(MaReaderTest, an_error_names_its_place_and_takes_the_nodes_back) {
    ASSERT_TRUE(scene().create_node("joint", "mine"));
    const std::size_t before = scene().node_count();
    EXPECT_EQ(error_of("createNode joint -n \"a\";\n  setAttr \".t\" -type \"string\" \"abc;\n"),
              "a.ma:2:31: Syntax error: a string has no end");
    EXPECT_EQ(error_of("createNode joint;\n\n createNode joint -p \"joint1\""),
              "a.ma:3:2: Syntax error: the statement isn't ended by ';'");
    EXPECT_EQ(error_of("createNode joint;\n\x01\x02;"),
              "a.ma:2:1: Syntax error: a statement can't begin with byte 0x01");
    EXPECT_EQ(error_of("createNode joint -n \xff;"), "a.ma:1:21: Syntax error: unexpected byte 0xff");
    EXPECT_EQ(error_of("createNode mesh;r"), "a.ma:1:17: Syntax error: the statement isn't ended by ';'");
    EXPECT_EQ(error_of("/* on and on"), "a.ma:1:1: Syntax error: a comment has no end");
    EXPECT_EQ(error_of("setAttr \".b\" (\"a\" + 3);"), "a.ma:1:21: Syntax error: unexpected '3'");
    EXPECT_EQ(error_of("// nothing\n"), "a.ma: The file holds no scene");
    EXPECT_EQ(scene().node_count(), before);
    EXPECT_FALSE(session.open_file("/no/such.ma"));
    EXPECT_EQ(scene().node_count(), before);
}

TEST_F(MaReaderTest, references_are_read_into_their_namespaces) {
    const auto folder = std::filesystem::temp_directory_path() / temporary_name("ma reader ä");
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "prop.ma") << "createNode joint -n \"root\"; createNode joint -n \"tip\" -p \"root\";"
                                         "file -r -ns \"self\" \"shot.ma\";";
    std::ofstream(folder / "shot.ma")
        << "file -rdi 1 -ns \"p\" \"prop.ma\";\n"
           "file -r -ns \"p\" -typ \"mayaAscii\" \"C:/scenes/prop.ma\";"
           "file -r -ns \"q\" \"missing.ma\";"
           "createNode transform -n \"hat\" -p \"|p:root|p:tip\"; setAttr \"p:root.tx\" 3;";
    ASSERT_TRUE(session.open_file((folder / "shot.ma").string()));
    EXPECT_EQ(scene().full_name(scene().path_to(node("hat"))), "|p:root|p:tip|hat");
    EXPECT_EQ(value("p:root.tx").number(), 3.0);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_TRUE(messages[0].ends_with("The referenced file 'shot.ma' refers back to itself")) << messages[0];
    EXPECT_NE(messages[1].find("The referenced file 'missing.ma' isn't there; looked"), std::string::npos)
        << messages[1];
    std::filesystem::remove_all(folder);
}

TEST_F(MaReaderTest, references_that_multiply_are_cut_short) {
    const auto folder = std::filesystem::temp_directory_path() / temporary_name("ma reader crowd");
    std::filesystem::create_directories(folder);
    for (int i = 0; i < 20; ++i) {
        const std::string next = std::to_string(i + 1) + ".ma\";";
        std::ofstream(folder / (std::to_string(i) + ".ma"))
            << "createNode joint -n \"j\"; file -r -ns \"a\" \"" << next << "file -r -ns \"b\" \"" << next;
    }
    ASSERT_TRUE(session.open_file((folder / "0.ma").string()));
    EXPECT_LE(scene().node_count(), max_references + 100U) << "and not a million";
    EXPECT_TRUE(std::ranges::any_of(
        messages, [](const std::string& text) { return text.ends_with("More files are referred to than are read"); }));
    std::filesystem::remove_all(folder);
}

TEST_F(MaReaderTest, a_name_space_takes_the_file_in) {
    ASSERT_TRUE(read("createNode joint -n \"a\"; createNode joint -n \"b\" -p \"a\"; setAttr \"|a|b.tx\" 2;", {"x:y"}));
    EXPECT_EQ(value("|x:y:a|x:y:b.tx").number(), 2.0);
    EXPECT_TRUE(scene().namespaces().contains("x"));
}

struct SharedFile {
    const char* name;
    int joints, transforms, curves;
    double end_frame;
    bool bind_pose_at_rest; // every joint stands as it was bound when nothing drives it

    friend void PrintTo(const SharedFile& file, std::ostream* out) { *out << file.name; }
};

class SharedFiles : public MaReaderTest, public testing::WithParamInterface<SharedFile> {};

// Counts by `grep -c '^createNode joint'` and the like; transforms without the four of the default cameras.
TEST_P(SharedFiles, open_with_all_their_nodes) {
    const SharedFile& file = GetParam();
    const std::string path = std::string(VOR2_SHARED_DATA) + "/" + file.name;
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "no shared scenes here";
    ASSERT_TRUE(session.open_file(path));
    int joints = 0, transforms = 0, curves = 0;
    for (Node* node : scene().nodes()) {
        if (node->default_node()) continue;
        joints += node->type().is_joint();
        transforms += node->type().name() == "transform";
        curves += node->type().derives_from("animCurve");
        if (!node->type().is_joint() || !file.bind_pose_at_rest) continue;
        const Value bound = node->get(node->find_plug("bindPose").key);
        if (bound.get_if<Matrix>()) expect_near(scene().world_matrix(*node), bound.matrix(), 1e-9, node->name());
    }
    EXPECT_EQ(joints, file.joints);
    EXPECT_EQ(transforms, file.transforms);
    EXPECT_EQ(curves, file.curves);
    EXPECT_DOUBLE_EQ(scene().playback.max * scene().time_unit.per_second, file.end_frame);
    for (const std::string& message : messages) EXPECT_EQ(message.find("passed over"), std::string::npos) << message;
}

INSTANTIATE_TEST_SUITE_P(, SharedFiles,
                         testing::Values(SharedFile{"ComplexAnim1.ma", 5, 5, 34, 40, true},
                                         SharedFile{"CubeWithoutUVs.ma", 0, 1, 0, 120, false},
                                         SharedFile{"FiveJointsFourInfluencesAnim.ma", 5, 2, 29, 20, false},
                                         SharedFile{"GroupedFingersPivotAnim1.ma", 0, 11, 27, 60, false},
                                         SharedFile{"SegmentScaleCompensationTest1.ma", 3, 7, 18, 120, false},
                                         SharedFile{"SkewedCubeAnim1.ma", 0, 2, 3, 40, false},
                                         SharedFile{"StepScalingTest.ma", 0, 1, 1, 10, false},
                                         SharedFile{"TranparentCube1.ma", 0, 3, 0, 120, false},
                                         SharedFile{"TwoJointsLogicalParentAnim.ma", 2, 3, 32, 60, false},
                                         SharedFile{"ZeroParentScaleTestAnim.ma", 3, 1, 30, 120, true}));

} // namespace
} // namespace headless
