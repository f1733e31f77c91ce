#include "script_test.h"

#include "headless/graph/evaluation.h"
#include "tests/temporary.h"

#include <filesystem>
#include <fstream>

namespace headless {
namespace {

TEST_F(ScriptTest, a_selection_changes_whole_or_not_at_all) {
    mel("createNode joint -n a; createNode transform -n b; createNode joint -n a -p b; createNode joint -n c");
    mel("select -r c");
    EXPECT_EQ(mel("select -r b gone"), "error: No object matches name: gone");
    EXPECT_EQ(mel("select -add b a"), "error: More than one object matches name: a");
    EXPECT_EQ(mel("select"), "error: No valid objects supplied to 'select' command.");
    EXPECT_EQ(mel("ls -sl"), "c");
    mel("select -add \"|a\"; select -add b|a; select -tgl c b");
    EXPECT_EQ(mel("ls -sl -l"), "|a |b|a |b");
    EXPECT_EQ(mel("ls -sl"), "|a b|a b");
    mel("select -d b");
    EXPECT_EQ(mel("ls -sl"), "|a b|a");
    EXPECT_EQ(mel("select -hi b; ls -sl; "), "b b|a");
    EXPECT_EQ(mel("select -cl; size(`ls -sl`)"), "0");
    EXPECT_EQ(mel("select -all; ls -sl"), "|a b c");
    EXPECT_EQ(mel("ls -type joint -l"), "|a |b|a |c");
    EXPECT_EQ(mel("ls \"?\""), "|a b b|a c");
    mel("createNode objectSet -n s; connectAttr -na c.iog[0] s.dsm; select s");
    EXPECT_EQ(mel("ls -sl; "), "c");
    EXPECT_EQ(mel("select -ne s; ls -sl"), "s");
}

TEST_F(ScriptTest, time_and_units) {
    EXPECT_EQ(mel("currentUnit -query  -time"), "film");
    EXPECT_EQ(mel("playbackOptions -min 12 -ast 0 -max 24 -aet 1sec; playbackOptions -q -aet"), "24");
    EXPECT_EQ(mel("currentTime 12; currentUnit -t ntsc; currentTime -q"), "15");
    EXPECT_EQ(mel("playbackOptions -q -min"), "15");
    EXPECT_EQ(mel("currentTime -e 2.5sec"), "75");
    EXPECT_EQ(mel("currentUnit -t film -l parsec"), "error: 'parsec' is no unit");
    EXPECT_EQ(mel("currentUnit -q -t"), "ntsc");
    EXPECT_EQ(mel("currentUnit -l meter -a rad; currentUnit -q -l -f"), "meter");
    EXPECT_EQ(mel("createNode joint -n j; setAttr j.t 1 2 3; setAttr j.rx 0.5; getAttr j.t"), "1 2 3");
    EXPECT_EQ(scene().find_plug("j.tz")->node->get(scene().find_plug("j.tz")->key).number(), 300.0);
    EXPECT_EQ(mel("getAttr j.rx"), "0.5");
}

TEST_F(ScriptTest, attributes_and_connections) {
    mel("createNode transform -n a; createNode transform -n b");
    EXPECT_EQ(mel("addAttr -ln speed -sn spd -at double -dv 2 -k 1 a; getAttr a.spd"), "2");
    EXPECT_EQ(mel("setAttr a.note 1"), "error: The object 'a.note' doesn't exist");
    EXPECT_EQ(mel("setAttr -l 1 a.tx; setAttr a.tx 3"),
              "error: The attribute 'a.translate.translateX' is locked or connected and cannot be modified");
    EXPECT_EQ(mel("setAttr -l 0 a.tx 3; getAttr a.tx"), "3");
    EXPECT_EQ(mel("setAttr a.t -type double3 1 -2 3e1; getAttr a.t"), "1 -2 30");
    mel("connectAttr a.t b.t");
    EXPECT_EQ(mel("getAttr b.ty"), "-2");
    EXPECT_EQ(mel("connectAttr a.s b.t").substr(0, 19), "error: The attribut");
    EXPECT_EQ(mel("listConnections -s 1 -d 0 -p 1 -c 1 b"), "b.translate a.translate");
    EXPECT_EQ(mel("listConnections -d 0 b.tx"), "");
    EXPECT_EQ(mel("disconnectAttr a.t b.t; listConnections b; "), "");
    EXPECT_EQ(mel("getAttr -type a.tx"), "doubleLinear");
    EXPECT_EQ(mel("attributeExists speed a"), "1");
}

TEST_F(ScriptTest, nodes_and_the_dag) {
    EXPECT_EQ(mel("createNode joint -n arm; createNode joint -n arm"), "arm1");
    EXPECT_EQ(mel("parent arm1 arm; listRelatives -p arm1"), "arm");
    EXPECT_EQ(mel("rename arm1 \"fore arm\""), "fore_arm");
    EXPECT_EQ(mel("select -cl; joint -n hand -p 0 5 0"), "hand");
    EXPECT_EQ(mel("listRelatives -ad -f arm"), "|arm|fore_arm");
    EXPECT_EQ(mel("select fore_arm; joint -n wrist; listRelatives -ad arm"), "wrist fore_arm");
    EXPECT_EQ(mel("spaceLocator -n mark; listRelatives -s mark"), "markShape");
    EXPECT_EQ(mel("group -n rig arm mark; listRelatives rig"), "arm mark");
    EXPECT_EQ(mel("objExists arm") + mel("objExists leg"), "10");
    EXPECT_EQ(mel("nodeType arm"), "joint");
    EXPECT_EQ(mel("delete arm; objExists wrist"), "0");
    EXPECT_EQ(mel("delete persp"), "error: 'persp' can't be deleted");
    mel("namespace -add x; createNode joint -n \"x:j\"");
    EXPECT_EQ(mel("namespace -rm x"), "error: The namespace 'x' is not empty");
    EXPECT_EQ(mel("namespace -mnr -rm x; ls -type joint; "), "hand j");
    EXPECT_EQ(mel("namespace -exists x"), "0");
}

TEST_F(ScriptTest, transforms_keep_or_change_their_place) {
    // A quarter turn about y puts the child's x along -z of the world.
    mel("createNode transform -n top; setAttr top.t 10 0 0; setAttr top.ry 90; createNode transform -n child -p top;"
        "setAttr child.tx 2");
    EXPECT_EQ(mel("$p = `xform -q -ws -t child`; ($p[0] - 10) < 1e-9 && ($p[2] + 2) < 1e-9"), "1");
    EXPECT_EQ(mel("xform -q -t child"), "2 0 0");
    mel("parent -w child");
    const Matrix world = scene().world_matrix(**scene().find_node("child"));
    EXPECT_NEAR(world[3][2], -2.0, 1e-12);
    EXPECT_NEAR(world[0][2], -1.0, 1e-12);
    mel("xform -ws -t 1 2 3 child; parent -r child top");
    EXPECT_EQ(mel("getAttr child.t"), "1 2 3");
    mel("setAttr child.rp 0 1 0; setAttr child.rz 90; xform -ws -t 0 7 0 child");
    const Matrix moved = scene().world_matrix(**scene().find_node("child"));
    EXPECT_NEAR(moved[3][0], 0.0, 1e-12);
    EXPECT_NEAR(moved[3][1], 7.0, 1e-12);
    mel("xform -ws -ro 0 0 30 child");
    EXPECT_NEAR(scene().world_matrix(**scene().find_node("child"))[0][1], 0.5, 1e-12);
    EXPECT_EQ(mel("xform -m 1 0 0 0 0 1 0 0 0 0 1 0 4 5 6 1 top; xform -q -ws -t top"), "4 5 6");
}

TEST_F(ScriptTest, keys_at_the_current_time_with_present_values) {
    mel("createNode joint -n j; currentTime 10; setAttr j.tx 5; select -r j");
    EXPECT_EQ(mel("setKeyframe -at translateX -at translateY -at translateZ;"), "3");
    mel("currentTime 20; setAttr j.tx 15; setKeyframe -at translateX -at translateY -at translateZ; select -cl");
    EXPECT_EQ(mel("currentTime 10; getAttr j.tx"), "5");
    EXPECT_EQ(mel("getAttr -t 20 j.tx"), "15");
    EXPECT_EQ(mel("keyframe -q -at tx j; "), "10 20");
    EXPECT_EQ(mel("keyframe -q -vc j.tx"), "5 15");
    EXPECT_EQ(mel("keyframe -q -kc j"), "6");
    EXPECT_EQ(mel("setKeyframe -at rx -t 5 -v 90 j; getAttr -t 5 j.rx"), "90");
    EXPECT_EQ(mel("cutKey -t \"15:\" j; keyframe -q -at tx j"), "10");
    EXPECT_EQ(mel("setKeyframe -at tx"), "error: Nothing to key: no attribute of a named or selected object fits");
}

// The constrained stays where it is when the offset is kept, and follows its target rigidly from there.
TEST_F(ScriptTest, constraints_keep_their_offset_and_follow) {
    for (const std::string kind : {"point", "orient", "parent"}) {
        mel("file -f -new; createNode transform -n up; setAttr up.r 20 30 40; setAttr up.t 1 2 3;"
            "createNode joint -n target -p up; setAttr target.t 5 0 1; setAttr target.jo 10 20 30; setAttr target.ro 3;"
            "createNode transform -n over; setAttr over.r -15 5 70; createNode joint -n held -p over;"
            "setAttr held.t -2 4 0; setAttr held.r 15 25 35; setAttr held.jo 0 40 0; setAttr held.ro 4");
        const auto world = [&](const char* name) { return scene().world_matrix(**scene().find_node(name)); };
        const Matrix held = world("held"), target = world("target");
        EXPECT_EQ(mel(kind + "Constraint -mo target held"), "held_" + kind + "Constraint1");
        EXPECT_EQ(mel("listRelatives held"), "held_" + kind + "Constraint1");
        mel("setAttr target.r 45 -30 60; setAttr target.t 0 3 3");
        const Matrix moved = inverse(target) * world("target");
        Matrix expected = kind == "point" ? held : held * moved;
        if (kind == "point")
            expected.set_row(3, held.translation() + world("target").translation() - target.translation());
        if (kind == "orient") expected.set_row(3, held.translation());
        for (int i = 0; i < 16; ++i)
            EXPECT_NEAR(world("held").m[i / 4][i % 4], expected.m[i / 4][i % 4], 1e-9) << kind << i;
    }
    EXPECT_EQ(mel("parentConstraint target held").substr(0, 6), "error:");
}

TEST_F(ScriptTest, namespaces_move_with_all_that_is_in_them) {
    mel("createNode joint -n \"x:a\"; createNode joint -n \"x:y:b\"; createNode joint -n \"z:a\"");
    EXPECT_EQ(mel("namespace -mv x z; ls -type joint"), "z:a1 z:y:b z:a");
    EXPECT_EQ(mel("namespace -mv \":z:y\" \":\"; ls -type joint"), "z:a1 b z:a");
    EXPECT_EQ(mel("namespace -mv gone z"), "error: The namespace 'gone' does not exist");
    EXPECT_EQ(mel("namespace -ex \":\"") + mel("namespace -ex q"), "10");
    EXPECT_EQ(mel("createNode joint -n \"p:q:c\"; namespace -mnp -rm \"p:q\"; ls -type joint"), "z:a1 b z:a p:c");
    EXPECT_EQ(mel("namespace -add p"), "error: The namespace 'p' already exists");
    EXPECT_EQ(mel("namespace p"), "error: namespace needs -add, -exists, -moveNamespace or -removeNamespace");
}

TEST_F(ScriptTest, types_and_lists_of_nodes) {
    mel("createNode joint -n j; createNode transform -n t; createNode lambert -n skin");
    EXPECT_EQ(mel("nodeType -i j"), "node dagNode transform joint");
    EXPECT_EQ(mel("createNode transform -s -n persp") + mel("createNode camera -n cam -p gone"),
              "persperror: No object matches name: gone");
    EXPECT_EQ(mel("ls -et transform j t") + " " + mel("ls -typ transform j t"), "t j t");
    EXPECT_EQ(mel("ls \"sk*\""), "skin");
    EXPECT_EQ(mel("select t; select -af skin j; ls -sl"), "skin j t");
    EXPECT_EQ(mel("delete; ls j t skin"), "");
    EXPECT_EQ(mel("spaceLocator -n l; listRelatives -ad -typ locator l"), "lShape");
    EXPECT_EQ(mel("currentUnit -q -t -f") + mel("about -v") + mel("about -api") + mel("about -b"), "film20162016101");
}

TEST_F(ScriptTest, scripts_in_files_speak_and_tell_where_they_fail) {
    const std::string path = temporary_folder() + "script test.mel";
    std::ofstream(path)
        << "refresh -f; warning \"careful\\n\";\n  global int $g_read = 7; error \"no\" further; print 1;";
    EXPECT_EQ(mel("source \"" + path + "\""), "error: " + path + ":2:27: no further");
    EXPECT_EQ(messages, std::vector<std::string>{"W: careful"});
    std::ofstream(path) << "print 1;\n  $a = ;";
    EXPECT_EQ(mel("source \"" + path + "\""), "error: " + path + ":2:8: Syntax error: a value is missing at ';'");
    std::ofstream(path) << "global int $g_read; $g_read";
    EXPECT_EQ(mel("source \"" + path + "\""), "7");
    std::filesystem::remove(path);
    EXPECT_TRUE(mel("source \"" + path + "\"").starts_with("error: " + path + ": can't be read: "));
    EXPECT_EQ(mel("source"), "error: source needs a file");
}

TEST_F(ScriptTest, files_open_save_and_ask_before_losing_changes) {
    const std::string path = (std::filesystem::temp_directory_path() / "script test.ma").generic_string();
    mel("createNode joint -n hip; setAttr hip.ty 90");
    EXPECT_EQ(mel("file -new"), "error: Unsaved changes");
    EXPECT_EQ(mel("file -q -modified"), "1");
    EXPECT_EQ(mel("file -es -type nothing \"a.x\"").substr(0, 6), "error:");
    EXPECT_EQ(mel("file -rename \"" + path + "\"; file -q -sceneName"), path);
    EXPECT_EQ(mel("file -save -type \"mayaAscii\""), path);
    EXPECT_EQ(mel("file -f -new; objExists hip"), "0");
    EXPECT_EQ(mel("file -o \"" + path + "\"; getAttr hip.ty"), "90");
    EXPECT_EQ(mel("file -i -namespace \"a:b\" \"" + path + "\"; getAttr a:b:hip.ty"), "90");
    EXPECT_EQ(mel("file -q -ex \"" + path + "\"") + mel("file -q -type") + mel("file -q -l"), "1mayaAscii" + path);
    EXPECT_EQ(mel("file -mf 0; file -q -mf") + mel("file -mf 1; file -q -mf"), "01");
    EXPECT_EQ(mel("file -q -exn \"sub/a.ma\""), (std::filesystem::current_path() / "sub" / "a.ma").generic_string());
    EXPECT_EQ(mel("file -q"), "error: file needs a flag that says what is asked");
    EXPECT_EQ(mel("file -r \"" + path + "\"; objExists \"script_test:hip\""), "1");
    std::filesystem::remove(path);
    EXPECT_EQ(mel("file -f -o \"" + path + ".gone.ma\"").substr(0, 6), "error:");
    EXPECT_EQ(mel("file -f -o"), "error: A file name is needed");
}

} // namespace
} // namespace headless
