#include "headless/animation/curve_node.h"
#include "headless/files/ma_reader.h"
#include "headless/files/ma_writer.h"
#include "headless/session.h"
#include "tests/temporary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

namespace headless {
namespace {

namespace fs = std::filesystem;

// What a scene holds, a line each, so that two scenes are compared and a difference is read.
std::set<std::string> told(Scene& scene) {
    std::set<std::string> out;
    for (const Node* node : scene.nodes()) {
        const std::string name = scene.unique_name_of(*node);
        out.insert(name + " is a " + node->type().name() + " " + node->uuid);
        for (std::size_t i = 0; i < node->children().size(); ++i)
            out.insert(name + " child " + std::to_string(i) + " " + node->children()[i]->name());
        for (const Node* parent : node->parents()) out.insert(name + " under " + parent->name());
        for (const auto& [key, source] : node->inputs())
            out.insert(name + Plug{const_cast<Node*>(node), key}.path() + " from " +
                       scene.unique_name_of(*source.node) + source.path());
        for (AttributeId id = 0; id < node->attribute_count(); ++id) {
            const Attribute& at = node->attribute(id);
            const AttributeFlags flags = node->flags(id);
            if (at.dynamic && !at.raw)
                out.insert(name + "." + at.long_name + " declared " + at.short_name + " " + at.data_type + " " +
                           std::to_string(int(at.kind)) + " " + std::to_string(at.default_value.number()) + " " +
                           std::to_string(at.enum_names.size()) + " " + std::to_string(at.array));
            if (flags.locked || flags.keyable || flags.channel_box)
                out.insert(name + "." + at.long_name + " marked " + std::to_string(flags.locked) +
                           std::to_string(flags.keyable.value_or(true)) +
                           std::to_string(flags.channel_box.value_or(true)));
        }
    }
    return out;
}

std::vector<std::string> without(const std::set<std::string>& all, const std::set<std::string>& those) {
    std::vector<std::string> out;
    std::ranges::set_difference(all, those, std::back_inserter(out));
    return out;
}

bool nearly_equal(double a, double b) {
    return a == b || std::nextafter(a, b) == b;
}

// Angles may differ in their last bit: degrees are coarser than radians in places.
bool same_value(const Value& a, const Value& b) {
    if (a.is_number() && b.is_number()) return nearly_equal(a.number(), b.number());
    return a == b;
}

void expect_same_values(Scene& a, Scene& b) {
    for (Node* node : a.nodes()) {
        const auto found = b.find_node(a.unique_name_of(*node));
        ASSERT_TRUE(found) << node->name();
        Node& other = **found;
        const auto mine = node->stored();
        for (const PlugKey& key : mine) {
            const Plug plug{node, key}, same = other.find_plug(plug.path());
            ASSERT_TRUE(same) << plug.name();
            if (node->type().name() != "script") {
                EXPECT_TRUE(same_value(node->get(key), other.get(same.key))) << plug.name();
            }
        }
        const CurveData* keys = CurveData::of(*node);
        if (!keys) continue;
        const CurveData* other_keys = CurveData::of(other);
        ASSERT_EQ(keys->keys().size(), other_keys->keys().size());
        EXPECT_EQ(keys->keys().tangent(), other_keys->keys().tangent()) << node->name();
        EXPECT_EQ(keys->keys().weighted(), other_keys->keys().weighted()) << node->name();
        EXPECT_EQ(keys->keys().before, other_keys->keys().before) << node->name();
        EXPECT_EQ(keys->keys().behind, other_keys->keys().behind) << node->name();
        for (std::size_t i = 0; i < keys->keys().size(); ++i) {
            CurveKey wanted = keys->keys().key(i), key = other_keys->keys().key(i);
            EXPECT_TRUE(nearly_equal(wanted.time, key.time) && nearly_equal(wanted.value, key.value)) << node->name();
            wanted.time = key.time, wanted.value = key.value;
            EXPECT_EQ(wanted, key) << node->name() << " key " << i;
        }
    }
}

void expect_same_poses(Scene& a, Scene& b, double from, double to) {
    for (int i = 0; i <= 20; ++i) {
        for (Scene* scene : {&a, &b}) scene->set_current_time(from + (to - from) * i / 20);
        for (Node* node : a.nodes()) {
            if (!node->type().is_dag()) continue;
            const Matrix mine = a.world_matrix(*node), theirs = b.world_matrix(**b.find_node(a.unique_name_of(*node)));
            for (int r = 0; r < 4; ++r)
                for (int c = 0; c < 4; ++c)
                    EXPECT_NEAR(mine[r][c], theirs[r][c], 1e-12 * std::max(1.0, std::abs(mine[r][c]))) << node->name();
        }
    }
}

class MaWriterTest : public testing::Test {
protected:
    MaWriterTest() {
        fs::create_directories(folder);
        Session::current().set_message_sink([](MessageKind, const std::string&) {});
    }
    ~MaWriterTest() override {
        Session::current().set_message_sink(nullptr);
        fs::remove_all(folder);
    }
    static std::string text_of(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // Writes a scene, reads it back, and expects the same; what was written.
    std::string round_trip(Scene& scene) {
        const std::string path = folder + "/a.ma";
        const auto written = write_maya_ascii(scene, path);
        EXPECT_TRUE(written) << written.error().text();
        Scene again;
        const auto read = read_maya_ascii(again, path);
        EXPECT_TRUE(read) << read.error().text();
        std::set<std::string> wanted = told(scene), found = told(again);
        for (const std::string name : {"sceneConfigurationScriptNode", "sceneConfigurationScriptNode1"})
            if (!scene.find_node(name)) found.erase(name + " is a script ");
        EXPECT_EQ(without(wanted, found), std::vector<std::string>{}) << "lost";
        EXPECT_EQ(without(found, wanted), std::vector<std::string>{}) << "added";
        expect_same_values(scene, again);
        EXPECT_EQ(again.time_unit, scene.time_unit);
        EXPECT_EQ(again.linear_unit, scene.linear_unit);
        EXPECT_EQ(again.angle_unit, scene.angle_unit);
        EXPECT_EQ(again.current_time(), scene.current_time());
        EXPECT_EQ(again.playback.min, scene.playback.min);
        EXPECT_EQ(again.playback.animation_end, scene.playback.animation_end);
        EXPECT_TRUE(write_maya_ascii(again, folder + "/b.ma"));
        std::string text = text_of(path);
        EXPECT_EQ(text, text_of(folder + "/b.ma"));
        expect_same_poses(scene, again, scene.playback.min - 0.5, scene.playback.max + 0.5);
        return text;
    }

    const std::string folder = temporary_name("vor2_ma_writer");
};

TEST_F(MaWriterTest, a_scene_with_values_of_every_kind_reads_back_the_same) {
    Scene scene;
    const auto read = read_maya_ascii_text(scene, R"(
currentUnit -l m -a deg -t 29.97fps;
createNode transform -n "a:root"; rename -uid "12-AB";
  addAttr -ci true -sn "sw" -ln "switch" -min 0 -max 2 -dv 1 -at "enum" -en "off:on:both";
  addAttr -sn "sp" -ln "spare" -at "enum" -en ":on::"; addAttr -sn "no" -ln "none" -at "enum" -en "";
  addAttr -ci true -sn "len" -ln "length" -dv 2.5 -at "doubleLinear";
  addAttr -ci true -sn "vc" -ln "vec" -at "double3" -nc 3;
  addAttr -ci true -sn "vx" -ln "vecX" -at "double" -p "vec";
  addAttr -ci true -sn "vy" -ln "vecY" -at "double" -p "vec";
  addAttr -ci true -sn "vz" -ln "vecZ" -at "double" -p "vec";
  addAttr -ci true -sn "txt" -ln "remark" -dt "string";
  addAttr -ci true -sn "mul" -ln "many" -m -at "long";
  setAttr ".t" -type "double3" 0.1 -2e-9 12345678901 ;
  setAttr ".r" -type "double3" 33.1 89.999999999 -7e-15 ;
  setAttr -l on -k off -cb on ".tx"; setAttr ".sw" 2; setAttr ".len" 0.3; setAttr ".vc" -type "double3" 1 2 3.5;
  setAttr ".txt" -type "string" "quote \" back\\slash\n\ttab ä\r end";
  setAttr -s 3 ".mul"; setAttr ".mul[2:3]" 5 6; setAttr ".mul[7]" -1;
  setAttr ".odd" yes; setAttr ".nil" -0.0; setAttr ".two" -type "double2" 1 2.5; setAttr ".bare" someWord;
  setAttr -s 2 ".pts[0:1]" -type "float3" 0 1 2 3 4 5; setAttr ".ten[4].in[2].x" 2.25;
  setAttr ".cmp" -type "componentList" 2 "vtx[0:7]" "f[*]";
  setAttr ".xf" -type "matrix" "xform" 1 1 1 0 yes; setAttr ".mm" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 0.1 2 3 1;
  setAttr ".als" -type "attributeAlias" {"one","w[0]","two"
     ,"w[1]"} ;
createNode joint -n "hand" -p "a:root"; setAttr ".jo" -type "double3" 10 20 30; setAttr ".ro" 3; setAttr ".ssc" no;
createNode transform -n "b"; createNode joint -n "hand" -p "b";
createNode mesh -n "shape" -p "|a:root|hand"; setAttr -s 2 ".fc[0:1]" -type "polyFaces" f 3 0 1 -2 mu 0 3 0 1 2 f 3 2 1 0;
parent -s -nc -r -add "|a:root|hand|shape" "|b|hand";
createNode transform -n "back" -p "|b|hand"; parent -add "back" "a:root";
parent -s -w -add "|a:root|hand";
createNode skinCluster -n "skin"; setAttr -s 3 ".wl"; setAttr ".wl[0:2].w" 2 0 0.75 3 0.25 0 1 7 1; setAttr ".own[1:2].part" 1 4 -1 0;
createNode lambert -n "red"; setAttr ".c" -type "float3" 1 0 0;
createNode animCurveTA -n "turn"; setAttr ".tan" 9; setAttr ".wgt" yes;
  setAttr ".pst" 4; setAttr ".pre" 3;
  setAttr -s 4 ".ktv[0:3]" 1 0.1 2.5 -90 4 33.3 8 1e-7; setAttr ".kit[1:2]" 1 3; setAttr ".kot[1]" 5;
  setAttr -s 4 ".kix[0:3]" 1 0.5 0.3 1; setAttr -s 4 ".kiy[0:3]" 0 0.1 -0.2 0; setAttr ".ktl[2]" no; setAttr ".kbd[3]" yes;
connectAttr "turn.o" "|b|hand.ry"; connectAttr "a:root.s" "|a:root|hand.is"; connectAttr "red.oc" "b.some[3].in";
connectAttr "b.iog" ":initialShadingGroup.dsm" -na;
select -ne :time1; setAttr ".o" 3.5;
createNode script -n "sceneConfigurationScriptNode"; setAttr ".b" -type "string" "playbackOptions -min 2 -max 9 -ast 0 -aet 20"; setAttr ".st" 6;
)",
                                           "all.ma");
    ASSERT_TRUE(read) << read.error().text();
    const std::string text = round_trip(scene);
    EXPECT_TRUE(text.starts_with("//Maya ASCII 2016 scene\n")) << text;
    for (const char* line :
         {"currentUnit -l m -a deg -t 29.97fps;", "setAttr \".t\" -type \"double3\" 0.1 -2e-09 12345678901;",
          "setAttr \".r\" -type \"double3\" 33.1 89.999999999 -7e-15;", "setAttr -s 2 \".mul[2:3]\" 5 6;",
          "setAttr -l on -k off -cb on \".tx\";", "1 0.1 2.5 -90 4 33.3 8 1e-07;",
          "parent -s -nc -r -add \"|a:root|hand|shape\" \"b|hand\";", "parent -s -nc -r -w -add \"|a:root|hand\";",
          "setAttr \".o\" 3.5;", "\".wl[0].w[0]\" 0.75;", "\".wl[0].w[3]\" 0.25;", "\".wl[2].w[7]\" 1;",
          "\".own[1].part[4]\" -1;", "-min 2 -max 9 -ast 0 -aet 20"})
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
}

TEST_F(MaWriterTest, values_that_scripts_and_plug_ins_make_read_back_too) {
    Scene scene;
    scene.playback = {0.25, 2, 0.125, 3};
    Node& node = **scene.create_node("transform", "made");
    Attribute list;
    list.long_name = "list";
    list.data_type = "doubleArray";
    ASSERT_TRUE(node.add_attribute(list));
    for (const auto& [name, value] : {std::pair<const char*, Value>{"i", Value::Integers{1, -2, 3}},
                                      {"t", Value::Texts{"a \"b\"", ""}},
                                      {"list", Value::Doubles{0.1, 2, 3, 4, 5}}})
        ASSERT_TRUE(node.set(node.find_or_add_plug(std::string("x_") + name).key, value));
    const std::string long_text(2500, 'x');
    ASSERT_TRUE(node.set(node.find_or_add_plug("note").key, long_text + "\n\"" + long_text));
    ASSERT_TRUE(scene.create_node("animCurve", "keyless")); // the type that all curves derive from
    ASSERT_TRUE(write_maya_ascii(scene, folder + "/a.ma"));
    const std::string text = text_of(folder + "/a.ma");
    EXPECT_NE(text.find("\".x_i\" -type \"Int32Array\" 3 1 -2 3;"), std::string::npos) << text;
    EXPECT_NE(text.find("\".x_t\" -type \"stringArray\" 2 \"a \\\"b\\\"\" \"\";"), std::string::npos) << text;
    EXPECT_NE(text.find("\".x_list\" -type \"doubleArray\" 5 0.1 2 3 4 5;"), std::string::npos) << text;
    EXPECT_NE(text.find("playbackOptions -min 6 -max 48 -ast 3 -aet 72 "), std::string::npos) << text;
    Scene again;
    ASSERT_TRUE(read_maya_ascii(again, folder + "/a.ma"));
    EXPECT_EQ(again.find_plug("made.note")->node->get(again.find_plug("made.note")->key).text(),
              long_text + "\n\"" + long_text);
    EXPECT_EQ(again.playback.animation_end, 3.0);
    EXPECT_TRUE(again.find_node("keyless"));
    again.playback.animation_end = 5; // the script that was read says otherwise
    ASSERT_TRUE(write_maya_ascii(again, folder + "/b.ma"));
    EXPECT_NE(text_of(folder + "/b.ma").find("-ast 3 -aet 120 "), std::string::npos);
    Scene third;
    ASSERT_TRUE(read_maya_ascii(third, folder + "/b.ma"));
    EXPECT_EQ(third.playback.animation_end, 5.0);
}

// Each attribute's name leads to it alone, in whatever order values, marks and connections are read.
TEST_F(MaWriterTest, attributes_that_are_undeclared_or_oddly_declared_read_back_the_same) {
    for (const char* text : {
             R"(createNode odd -n x; setAttr -k on ".b"; setAttr ".a.b" 1; setAttr ".c.d" 2; setAttr -l on ".d";)",
             R"(createNode odd -n w; setAttr ".b" 1; connectAttr "w.o" "w.b"; setAttr "w.a.b" 1; setAttr "w.b" 3;)",
             R"(createNode odd -n w; setAttr ".p[2].q" 7; connectAttr "w.p[2].q" "w.p[5].q"; setAttr ".p[9].q[4]" 2;
connectAttr "w.o" "w.a"; connectAttr "w.o" "w.a[3]"; setAttr -l on "w.a[3].e"; setAttr -k on ".z[3]";
connectAttr "w.m" "w.a[1]"; connectAttr "w.m[1]" "w.a[2]"; connectAttr "w.m" "w.a[4]";)",
             R"(createNode joint -n persp -p persp; connectAttr "persp.v" ":time1.ac"; createNode transform -n b;
connectAttr ":renderPartition.c" ":renderPartition.c[1]"; createNode animCurve -n base;
setAttr ".k.m[2].n[2]" 7; setAttr ".k.m[2].o[2]" 7;)",
             R"(createNode transform -n y; setAttr ".a" 1; addAttr -sn q -ln qq -at double -p a; setAttr ".q" 5;)",
             R"(createNode transform -n y; addAttr -ln d -at double; setAttr ".d" 5; addAttr -ln e -at double -p d;
addAttr -ln pair -sn p -at double2; addAttr -ln px -at double -p pair; addAttr -ln py -at double -p pair;
setAttr ".p" -type double2 1 2; setAttr ".p.odd" 4; setAttr ".t.f" 3; setAttr ".e" 6;)",
             R"(createNode transform -n y; addAttr -ln x -dt "double"; setAttr ".x" -type "string" "hi";
addAttr -ln z -at int -dv 5; addAttr -ln v -at ""; addAttr -ln w -at double4; setAttr ".w" -type double4 1 2 3 4;
addAttr -ln u -dt double3; setAttr ".u" -type double3 1 2 3; addAttr -ln g -at generic; addAttr -ln f -dt fltMatrix;)",
             R"(createNode odd -n y; setAttr ".a[2]" mu nu; setAttr ".a[1]" -type "some" pi; setAttr ".a[3]" 5;
setAttr ".a[4]" -type "other" x; setAttr ".a[5]" y;)",
         }) {
        SCOPED_TRACE(text);
        Scene scene;
        ASSERT_TRUE(read_maya_ascii_text(scene, text, folder + "/odd.ma"));
        round_trip(scene);
    }
    Scene scene;
    ASSERT_TRUE(read_maya_ascii_text(scene,
                                     "createNode odd -n w; setAttr \".a\" 7; setAttr \".a[2]\" 8; setAttr \".b[2]\" 5;"
                                     "setAttr \".b\" 6;",
                                     "a.ma"));
    for (const auto& [element, value] : {std::pair{"w.a[0]", 7}, {"w.b[0]", 6}}) // what had no index is the first
        EXPECT_EQ(scene.evaluate(*scene.find_plug(element)).number(), value);

    // What a save adds takes no other node's name.
    Scene taken;
    ASSERT_TRUE(read_maya_ascii_text(taken, "createNode odd -n sceneConfigurationScriptNode;", "a.ma"));
    EXPECT_NE(round_trip(taken).find("createNode script -n \"sceneConfigurationScriptNode1\";"), std::string::npos);
    // A list of numbers comes back as words of its type, which break the line where the numbers did.
    const std::string first = folder + "/a.ma", second = folder + "/b.ma";
    Scene numbers, words;
    ASSERT_TRUE(read_maya_ascii_text(
        numbers, "createNode odd -n w; setAttr \"." + std::string(90, 'a') + "\" 0 0 1 1 1;", "a.ma"));
    ASSERT_TRUE(write_maya_ascii(numbers, first) && read_maya_ascii(words, first) && write_maya_ascii(words, second));
    EXPECT_EQ(text_of(first), text_of(second));
}

TEST_F(MaWriterTest, a_file_is_whole_or_not_there_and_a_bad_target_or_value_is_one_clear_error) {
    Scene scene;
    Node& node = **scene.create_node("transform", "a");
    EXPECT_EQ(write_maya_ascii(scene, folder).error().text(), folder + ": can't be written: it is a folder");
    EXPECT_EQ(write_maya_ascii(scene, folder + "/no/a.ma").error().text(),
              folder + "/no/a.ma: can't be written: No such file or directory");
    if (fs::exists("/dev/full")) {
        EXPECT_EQ(write_maya_ascii(scene, "/dev/full").error().text(),
                  "/dev/full: can't be written: No space left on device");
    }
    const std::string path = folder + "/a.ma";
    std::ofstream(path) << "before";
    node.set(node.find_plug("ty").key, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(write_maya_ascii(scene, path).error().text(),
              path + ": 'a.ty' holds a number that isn't finite and can't be saved");
    EXPECT_EQ(text_of(path), "before");
    node.set(node.find_plug("ty").key, 0.0);
    ASSERT_TRUE(write_maya_ascii(scene, path));
    EXPECT_TRUE(text_of(path).ends_with("// End of scene\n"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST_F(MaWriterTest, shared_scenes_read_back_the_same) {
    if (!fs::exists(VOR2_SHARED_DATA)) GTEST_SKIP();
    for (const auto& entry : fs::directory_iterator(VOR2_SHARED_DATA)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".ma" && extension != ".bvh") continue;
        SCOPED_TRACE(entry.path().filename());
        Session& session = Session::current();
        ASSERT_TRUE(session.open_file(entry.path().string()));
        round_trip(session.scene());
        session.new_scene();
    }
}

} // namespace
} // namespace headless
