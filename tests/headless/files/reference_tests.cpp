#include "headless/files/file_search.h"
#include "headless/files/ma_reader.h"
#include "headless/files/ma_writer.h"
#include "headless/files/reference_edits.h"
#include "headless/session.h"
#include "tests/temporary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace headless {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

// A folder of scenes and what a session makes of them.
class References : public testing::Test {
protected:
    References() {
        fs::create_directories(folder);
        session.new_scene();
        session.file_search = {};
        session.set_message_sink([this](MessageKind, const std::string& text) { messages.push_back(text); });
    }
    ~References() override {
        session.set_message_sink(nullptr);
        session.file_search = {};
        fs::remove_all(folder);
    }

    std::string put(const std::string& name, const std::string& text) {
        const fs::path path = fs::path(folder) / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
        return path.string();
    }
    static std::string text_of(const std::string& path) {
        std::ostringstream out;
        out << std::ifstream(path).rdbuf();
        return out.str();
    }
    Scene& scene() { return session.scene(); }
    bool has(const std::string& name) { return scene().resolve(name) && !scene().resolve(name)->empty(); }
    double number(const std::string& plug) {
        const Result<Plug> found = scene().find_plug(plug);
        EXPECT_TRUE(found) << plug;
        return found ? scene().evaluate(*found).number() : 0.0;
    }
    std::string source(const std::string& plug) {
        const Result<Plug> found = scene().find_plug(plug);
        EXPECT_TRUE(found) << plug;
        const Plug from = found ? found->node->source_of(found->key) : Plug();
        return from ? from.node->name() + "." + from.attribute().short_name : "";
    }
    std::string path_of(const std::string& name) {
        return scene().full_name(scene().path_to(**scene().find_node(name)));
    }

    const std::string folder = temporary_name("references ");
    Session& session = Session::current();
    Lines messages;
};

const char* const rig = R"(currentUnit -l meter;
createNode transform -n "rig"; createNode joint -n "hip" -p "rig"; createNode joint -n "knee" -p "|rig|hip";
setAttr ".tx" 2; setAttr -l on ".tz" 3; createNode transform -n "ctrl" -p "rig"; addAttr -ln "bend" -at double;
createNode joint -n "hip" -p "|rig|ctrl"; createNode multiplyDivide -n "md"; connectAttr "md.ox" "ctrl.sx";
connectAttr "ctrl.ty" "|rig|hip.ty";
)";

// A reference node with edits in front of what the file has behind it.
std::string shot(const std::string& name_space, const std::string& edits, int count, const std::string& rest = "") {
    const std::string node = name_space + "RN";
    return "file -rdi 1 -ns \"" + name_space + "\" -rfn \"" + node + "\" -typ \"mayaAscii\" \"rig.ma\";\n" +
           "file -r -ns \"" + name_space + "\" -dr 1 -rfn \"" + node + "\" -typ \"mayaAscii\" \"rig.ma\";\n" +
           "createNode reference -n \"" + node + "\"; setAttr -s 9 \".phl\"; setAttr \".phl[1]\" 0;\n" +
           "setAttr \".ed\" -type \"dataReferenceEdits\" \"" + node + "\" \"" + node + "\" 0 \"" + node + "\" " +
           std::to_string(count) + "\n" + edits + ";\nlockNode -l 1 ;\n" + rest;
}

TEST_F(References, what_a_scene_changes_in_a_referenced_file_arrives) {
    put("rig.ma", rig);
    const std::string edits = R"(
1 |r:rig|r:ctrl "fly" "fl" " -ci 1 -k 1 -dv 4 -at \"double\""
2 "|r:rig|r:ctrl" "fly" " -av -k 1 5"
2 "|r:rig|r:hip" "translate" " -type \"double3\" 1 2 3"
2 "|r:rig|r:ctrl|r:hip" "rotateX" " -k 0 -cb 1"
2 "|r:rig|r:gone" "translateX" " 7"
2 "|r:rig|r:knee" "translateX" " 7"
3 "r:md.outputX" "|r:rig|r:ctrl.scaleX" ""
3 "r:md.outputY" "|r:rig|r:hip.translateY" ""
0 "|rRNfosterParent1|hat" "|r:rig|r:hip" "-s -r "
0 "|r:rig|r:ctrl|r:hip" "|r:rig" "-s -r "
5 4 "rRN" "|r:rig|r:ctrl.bend" "rRN.placeHolderList[1]" ""
5 3 "rRN" "|r:rig|r:hip.translateX" "rRN.placeHolderList[2]" "r:md.ix"
5 0 "rRN" "|r:rig|r:ctrl.translateX" "r:md.input1X" "rRN.placeHolderList[3]" "rRN.placeHolderList[4]" ""
5 4 "rRN" "|r:rig|r:gone.translateX" "rRN.placeHolderList[5]" ""
5 3 "rRN" "|r:rig|r:gone.translateX" "rRN.placeHolderList[6]" ""
7 "ignore" ":lightLinker1" 2 "|r:rig.message" ":x.message" 0
8 "|r:rig|r:hip" "rotateY"
9 "|r:rig|r:hip|r:knee" "translateZ"
4 "|r:rig|r:hip" "nothing" "")";
    const std::string path = put("shot.ma", shot("r", edits, 19, R"(
createNode fosterParent -n "rRNfosterParent1"; createNode transform -n "hat" -p "rRNfosterParent1";
createNode animCurveTU -n "keys"; setAttr ".ktv[0]" 1 9; createNode transform -n "left"; setAttr ".ty" 6;
connectAttr "keys.o" "rRN.phl[1]"; connectAttr "rRN.phl[2]" "left.tx"; connectAttr "rRN.phl[3]" "rRN.phl[4]";
connectAttr "keys.o" "rRN.phl[5]"; connectAttr "rRN.phl[6]" "left.ty";
connectAttr "rRNfosterParent1.msg" "rRN.fp";)"));
    ASSERT_TRUE(session.open_file(path));
    EXPECT_EQ(messages, Lines());
    EXPECT_EQ(number("r:ctrl.fl"), 5);
    EXPECT_EQ(number("|r:rig|r:hip.tz"), 3) << "in the units of the file that makes the change";
    EXPECT_EQ(number("r:knee.tx"), 200);
    EXPECT_EQ(source("r:ctrl.sx"), "");
    EXPECT_EQ(source("|r:rig|r:hip.ty"), "r:ctrl.ty") << "which came from elsewhere";
    EXPECT_EQ(source("r:ctrl.bend"), "keys.o");
    EXPECT_EQ(source("left.tx"), "r:hip.tx");
    EXPECT_EQ(source("left.ty"), "");
    EXPECT_EQ(number("left.ty"), 6);
    EXPECT_EQ(source("r:md.i1x"), "r:ctrl.tx");
    EXPECT_EQ(path_of("hat"), "|r:rig|r:hip|hat");
    EXPECT_TRUE(has("|r:rig|r:hip1")) << "beside the one of that name";
    const Plug turned = *scene().find_plug("|r:rig|r:hip.ry"), moved = *scene().find_plug("r:knee.tz");
    EXPECT_TRUE(turned.is_locked());
    EXPECT_FALSE(moved.is_locked());
    EXPECT_FALSE(has("rRN"));
    EXPECT_FALSE(has("rRNfosterParent1"));
    EXPECT_TRUE(scene().references.empty());
}

TEST_F(References, what_is_not_loaded_stays_a_reference_and_is_written_as_one) {
    put("rig.ma", rig);
    put("model.ma", shot("r", R"(2 "|r:rig|r:ctrl" "translateX" " 4"
0 "|r:rig" "|group" "-s -r "
5 4 "rRN" "|r:rig|r:ctrl.ty" "rRN.placeHolderList[1]" "")",
                         3,
                         "createNode transform -n \"group\"; createNode animCurveTL -n \"in\";"
                         "connectAttr \"in.o\" \"rRN.phl[1]\";"));
    const std::string path = put("top.ma", R"(file -rdi 1 -ns "m" -rfn "mRN" "model.ma";
file -rdi 2 -ns "r" -dr 1 -rfn "m:rRN" -op "v=0;" "C:/elsewhere/rig.ma";
file -r -ns "m" -dr 1 -rfn "mRN" "model.ma";
createNode reference -n "mRN"; setAttr ".ed" -type "dataReferenceEdits" "mRN" "m:rRN" 1
5 4 "mRN" "|m:group|m:r:rig|m:r:ctrl.rx" "mRN.placeHolderList[7]" ""
"mRN" 1 2 "|m:group" "visibility" " 0";
createNode animCurveTA -n "out"; connectAttr "out.o" "mRN.phl[7]";)");
    ASSERT_TRUE(session.open_file(path));
    EXPECT_EQ(messages, Lines());
    EXPECT_FALSE(has("m:r:rig"));
    EXPECT_EQ(number("m:group.v"), 0);
    EXPECT_EQ(source("m:rRN.phl[1]"), "m:in.o");
    EXPECT_EQ(source("m:rRN.phl[2]"), "out.o");
    EXPECT_FALSE(has("mRN"));
    const std::string saved = folder + "/saved.ma", again = folder + "/again.ma";
    ASSERT_TRUE(session.save_as(saved));
    const std::string text = text_of(saved);
    std::string words = text;
    for (std::size_t at = 0; (at = words.find("\n\t\t", at)) != std::string::npos;) words.replace(at, 3, " ");
    for (const char* line :
         {"file -rdi 1 -ns \"m:r\" -dr 1 -rfn \"m:rRN\" -op \"v=0;\" -typ \"mayaAscii\" \"C:/elsewhere/rig.ma\";\n",
          "file -r -ns \"m:r\" -dr 1 -rfn \"m:rRN\" -op \"v=0;\" -typ \"mayaAscii\" \"C:/elsewhere/rig.ma\";\n",
          R"("m:rRN" 3 2 "|m:r:rig|m:r:ctrl" "translateX" " 4")", R"(0 "|m:r:rig" "|m:group" "-s -r ")",
          R"(5 4 "m:rRN" "|m:group|m:r:rig|m:r:ctrl.rx" "m:rRN.placeHolderList[2]" "")"})
        EXPECT_NE(words.find(line), std::string::npos) << line << "\n" << words;
    ASSERT_TRUE(session.open_file(saved));
    ASSERT_TRUE(session.save_as(again));
    EXPECT_EQ(text_of(again), text);

    // Told to be loaded, it is what it would have been.
    std::string loaded = text;
    loaded.replace(loaded.find(" -dr 1"), 6, "");
    ASSERT_TRUE(session.open_file(put("loaded.ma", loaded)));
    EXPECT_EQ(messages, Lines());
    EXPECT_EQ(source("m:r:ctrl.rx"), "out.o");
    EXPECT_EQ(path_of("m:r:ctrl"), "|m:group|m:r:rig|m:r:ctrl");
    EXPECT_EQ(number("m:r:ctrl.tx"), 4);
}

TEST_F(References, of_two_that_name_one_node_each_keeps_its_file) {
    ASSERT_TRUE(
        session.open_file(put("top.ma", R"(file -rdi 1 -rfn "rN" -dr 1 "a.ma"; file -rdi 1 -rfn "rN" -dr 1 "b.ma";
file -r -rfn "rN" -dr 1 "a.ma"; file -r -rfn "rN" -dr 1 "b.ma";)")));
    const std::string saved = folder + "/saved.ma";
    ASSERT_TRUE(session.save_as(saved));
    const std::string text = text_of(saved);
    EXPECT_NE(text.find("file -r -dr 1 -rfn \"rN\" \"a.ma\";"), std::string::npos) << text;
    EXPECT_NE(text.find("file -r -dr 1 \"b.ma\";"), std::string::npos) << text;
}

TEST_F(References, prefixes_and_shared_nodes_stand_where_the_host_has_them) {
    put("rig.ma", std::string(rig) + "createNode odd -s -n \"options\"; createNode odd -n \"o\"; connectAttr "
                                     "\":options.a\" \"o.b\";");
    const std::string path = put("shot.ma", "file -r -rpr \"x\" \"rig.ma\"; file -r -ns \":\" \"rig.ma\";"
                                            "createNode odd -s -n \"options\"; setAttr \"|x_rig.tx\" 3;");
    ASSERT_TRUE(session.open_file(path));
    EXPECT_EQ(messages, Lines());
    EXPECT_EQ(number("|x_rig.tx"), 3);
    EXPECT_TRUE(has("|rig|ctrl"));
    EXPECT_EQ(source("x_o.b"), "options.a");
    EXPECT_FALSE(has("x_options") || has("options1"));
}

TEST_F(References, files_are_found_by_maps_in_the_project_and_beside_the_scene) {
    const std::string scene = put("job/scenes/shots/a.ma", "");
    put("job/workspace.mel", "//Maya 2025 Project Definition\nworkspace -fr \"scene\" \"scenes\";\n"
                             "workspace -fr \"FBX\" \"data\";\n");
    const auto at = [this](const std::string& name) { return fs::canonical(put(name, "")).string(); };
    const std::string rooted = at("job/assets/rig.ma"), other = at("other/assets/rig.ma"),
                      beside = at("job/scenes/shots/prop.ma"), ruled = at("job/scenes/hat.ma"),
                      fbx = at("job/data/model.fbx"), farm = at("studio/Show/rig.ma");
    FileSearch search{"", {{"P:/Show", folder + "/studio/Show"}, {"q:\\", folder + "/other"}}, false};
    for (const auto& [stated, sort, found] :
         std::initializer_list<std::array<std::string, 3>>{{"C:/Users/who/job//assets/rig.ma", "mayaAscii", rooted},
                                                           {"assets\\rig.ma", "mayaAscii", rooted},
                                                           {"/gone/prop.ma", "mayaAscii", beside},
                                                           {"C:/x/hat.ma", "mayaAscii", ruled},
                                                           {"C:/x/model.fbx", "FBX", fbx},
                                                           {"p:/show/rig.ma", "mayaAscii", farm},
                                                           {"P:/Shows/rig.ma", "mayaAscii", ""},
                                                           {"Q:/assets/rig.ma", "mayaAscii", other},
                                                           {beside, "", beside}})
        EXPECT_EQ(FileFinder(search, scene).find(stated, sort, scene).path, found) << stated;
    search.project = folder + "/other";
    EXPECT_EQ(FileFinder(search, scene).find("C:/job//assets/rig.ma", "", scene).path, other);
    const auto nowhere = FileFinder({}, scene).find("D:/job//assets/none.ma", "", scene).looked;
    EXPECT_EQ(nowhere, (Lines{"D:/job//assets/none.ma", folder + "/job/assets/none.ma",
                              folder + "/job/scenes/shots/none.ma", folder + "/job/scenes/none.ma"}));
}

TEST_F(References, one_line_tells_why_a_reference_is_not_there_or_the_scene_is_refused) {
    put("rig.ma", rig);
    put("a.ma", "createNode joint -n \"a\"; file -r -ns \"b\" \"b.ma\"; file -r -ns \"c\" \"b.ma\";");
    put("b.ma", "createNode joint -n \"b\"; file -r -ns \"a\" \"a.ma\"; file -r -ns \"d\" \"b.ma\";");
    const std::string set = R"(2 "|r:rig" "tx" " 3")";
    const std::pair<std::string, std::string> cases[] = {
        {"file -r -ns \"r\" -rfn \"rRN\" \"gone.ma\"; createNode joint;", "isn't there; looked for it at "},
        {"file -r -ns \"r\" -rfn \"rRN\" -typ \"FBX\" \"rig.fbx\"; createNode joint;", "isn't Maya ASCII"},
        {"file -r -ns \"r\" \"a.ma\";", "refers back to itself"},
        {shot("r", set, 2), "Fewer edits are there than are counted"},
        {shot("r", set + set, 1), "More edits follow than are counted"},
        {shot("r", "2 \"|r:rig\"", 1), "An edit ends before its last word"},
        {shot("r", "5 9 \"rRN\" \"a\" \"b\" \"c\"", 1), "An edit ends before its last word"},
        {shot("r", "7 \"link\" \"x\" 2000000000 \"a\"", 1), "An edit ends before its last word"},
        {shot("r", "77 \"x\"", 1), "There is no kind of edit '77'"},
        {shot("r", "up \"x\"", 1), "There is no kind of edit 'up'"},
        {shot("r", set, -1), "aren't counted"}};
    put("rig.fbx", "");
    for (const auto& [text, why] : cases) {
        const std::string path = put("bad.ma", text);
        messages.clear();
        session.file_search.missing_is_refused = false;
        EXPECT_TRUE(session.open_file(path)) << why;
        const auto told =
            std::ranges::count_if(messages, [&](const auto& line) { return line.find(why) != line.npos; });
        EXPECT_GE(told, 1) << why << (messages.empty() ? "" : messages.front());
        EXPECT_LE(messages.size(), 2u) << why; // a and b refer back to themselves
        session.file_search.missing_is_refused = true;
        const Result<void> done = session.open_file(path);
        ASSERT_FALSE(done) << why;
        EXPECT_NE(done.error().message.find(why), std::string::npos) << done.error().message;
        EXPECT_FALSE(has("*:*")) << "nothing is left";
    }
}

// The animator's keys are in the edits alone.
TEST_F(References, production_scenes_have_their_keys_on_the_rig) {
    const std::string scenes = std::string(VOR2_SHARED_DATA) + "/production/scenes/";
    if (!fs::exists(scenes)) GTEST_SKIP() << "no shared scenes here";
    for (const auto& [name, count] : {std::pair("Walk_Cycle_1.ma", 21), {"Walk_Cycle_2.ma", 33}}) {
        ASSERT_TRUE(session.open_file(scenes + name));
        int keyed = 0;
        for (const Node* node : scene().nodes()) {
            for (const auto& [key, from] : node->inputs())
                keyed += node->type().is_transform() && from.node->type().derives_from("animCurve") &&
                         from.node->name().find(':') == std::string::npos;
        }
        EXPECT_EQ(keyed, count) << name;
    }
    EXPECT_EQ(std::ranges::count_if(messages, [](const auto& line) { return line.find("evaluated") == line.npos; }), 0);
}

} // namespace
} // namespace headless
