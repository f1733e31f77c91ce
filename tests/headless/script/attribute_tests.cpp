#include "script_test.h"

namespace headless {
namespace {

TEST_F(ScriptTest, attributes_tell_their_type_size_and_state) {
    mel("createNode joint -n n; createNode mesh -n m -p n");
    for (const std::string type : {"bool", "long", "short", "enum", "float", "double", "doubleLinear", "doubleAngle",
                                   "time", "message", "float3", "matrix"}) {
        EXPECT_EQ(mel("addAttr -ln a_" + type + " -at \"" + type + "\" n; getAttr -type n.a_" + type), type);
    }
    for (const auto& [plug, type] : {std::pair{"n.v", "bool"},
                                     {"n.ro", "enum"},
                                     {"n.tx", "doubleLinear"},
                                     {"n.rx", "doubleAngle"},
                                     {"n.radi", "double"},
                                     {"n.t", "double3"},
                                     {"n.wm", "matrix"},
                                     {"n.msg", "message"},
                                     {"m.uvst[0].uvsn", "string"},
                                     {"time1.o", "time"}})
        EXPECT_EQ(mel(std::string("getAttr -type ") + plug), type) << plug;
    EXPECT_EQ(mel("addAttr -ln four -at compound -nc 4 n; getAttr -type n.four"), "TdataCompound");
    EXPECT_EQ(mel("addAttr -ln plain -dv 1.5 n; getAttr -type n.plain"), "double");
    EXPECT_EQ(mel("getAttr n.plain"), "1.5");
    EXPECT_EQ(mel("addAttr -ln text -dt \"string\" n; getAttr -type n.text"), "string");
    EXPECT_EQ(mel("addAttr -ln at -at time -dv 12 n; addAttr -ln turn -at doubleAngle -dv 90 n; getAttr n.turn"), "90");
    EXPECT_EQ(mel("currentUnit -t ntsc; getAttr n.at"), "15"); // half a second
    EXPECT_EQ(mel("addAttr -m -ln many -at long n; setAttr n.many[7] 5; setAttr n.many[2] 6; getAttr -s n.many"), "2");
    EXPECT_EQ(mel("getAttr -mi n.many"), "2 7");
    EXPECT_EQ(mel("getAttr -size n.tx"), "1");
    const std::string rows = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16";
    EXPECT_EQ(mel("setAttr n.a_matrix -type \"matrix\" " + rows + "; getAttr n.a_matrix"), rows);
    const auto state = [&](const std::string& of) {
        return mel("getAttr -l " + of) + mel("getAttr -k " + of) + mel("getAttr -cb " + of) + mel("getAttr -se " + of);
    };
    EXPECT_EQ(state("n.ty"), "0101");
    mel("setAttr -l 1 -k 0 -cb 1 n.ty; setAttr -l 1 n.r");
    EXPECT_EQ(state("n.ty"), "1010");
    EXPECT_EQ(state("n.rx"), "0100"); // by what holds it
}

TEST_F(ScriptTest, what_is_wrong_with_attributes_and_connections_is_said) {
    mel("createNode transform -n a; createNode transform -n b; addAttr -m -ln many -at double b");
    for (const auto& [line, why] :
         {std::pair{"getAttr b.many", "'b.many' is a whole array; name one of its elements"},
          {"getAttr a.msg", "Message attributes have no data values."},
          {"getAttr a", "No attribute was specified or found: 'a'"},
          {"getAttr a.tx a.ty", "getAttr needs one attribute"},
          {"getAttr -t soon a.tx", "'soon' is no time"},
          {"setAttr -foo 1 a.tx", "Invalid flag '-foo'"},
          {"addAttr -foo 1 a", "Invalid flag '-foo'"},
          {"addAttr -at double a", "New attribute needs either a long or a short name"},
          {"addAttr -ln x -p nowhere a", "No attribute 'nowhere' on node 'a'"},
          {"addAttr -ln x.y a", "'x.y' can't be the name of an attribute"},
          {"addAttr -ln x -p t a", "The parent of attribute 'x' is no compound that was added"},
          {"addAttr -ln x -at doubleAngle -dv 1e999 a", "'1e999' can't be a default value"},
          {"connectAttr a.tx b.many", "'b.many' is a whole array; name an element or give -nextAvailable"},
          {"connectAttr a.tx", "A source and a destination are needed"},
          {"disconnectAttr a.tx b.tx",
           "There is no connection from 'a.translate.translateX' to 'b.translate.translateX' to disconnect"}})
        EXPECT_EQ(mel(line), std::string("error: ") + why);
    mel("connectAttr -na a.tx b.many; connectAttr -na a.ty b.many; connectAttr a.rx b.rx");
    EXPECT_EQ(mel("listConnections -s 0 -p 1 a.t"), "b.many[0] b.many[1]");
    EXPECT_EQ(mel("select b; listConnections -d 0 -type joint") + mel("listConnections -d 0 -p 1 b.many"),
              "a.translate.translateX a.translate.translateY");
    EXPECT_EQ(mel("disconnectAttr a.tx b.many[0]; listConnections -s 0 -p 1 a"), "b.many[1] b.rotate.rotateX");
}

TEST_F(ScriptTest, keys_of_whole_objects_in_the_units_of_the_scene) {
    mel("createNode joint -n j");
    EXPECT_EQ(mel("setKeyframe j; keyframe -q -kc j"), "10"); // visibility, translate, rotate, scale
    EXPECT_EQ(mel("nodeType (`keyframe -q -n j.rx`)"), "animCurveTA");
    mel("file -f -new; createNode joint -n j; addAttr -k 1 -ln when -at time j; addAttr -ln unkeyed -at double j");
    EXPECT_EQ(mel("setAttr -l 1 j.t; setAttr -l 1 j.rx; setAttr -k 0 j.v; setKeyframe -t 3 -t 4 j"), "12");
    EXPECT_EQ(mel("keyframe -q -at rx -at tx -at v -at unkeyed j"), "");
    EXPECT_EQ(mel("setAttr -l 0 j.t; currentUnit -l m; setKeyframe -at t -v 2 -t 5 j; currentUnit -l cm"), "");
    EXPECT_EQ(mel("keyframe -q -vc j.tz"), "200");
    EXPECT_EQ(mel("setKeyframe -at when -v 12 -t 4 j; keyframe -q -vc j.when"), "0 12");
    EXPECT_EQ(mel("nodeType (`keyframe -q -n j.when`)"), "animCurveTT");
    EXPECT_EQ(mel("cutKey j.when; keyframe -q -kc -t \"4:\" j.sx"), "1");
    EXPECT_EQ(mel("setKeyframe -t never j"), "error: 'never' is no time");
    EXPECT_EQ(mel("keyframe j"), "error: keyframe answers questions (-query); keys are set by setKeyframe");
}

TEST_F(ScriptTest, keys_take_the_tangents_that_are_told) {
    mel("createNode joint -n j; setKeyframe -at tx -t 0 -v 0 -ott linear j;"
        "setKeyframe -at tx -t 10 -v 10 -itt linear -ott step j; setKeyframe -at tx -t 20 -v 0 j");
    expect_numbers("getAttr -t 2.5 j.tx", {2.5}); // at rest on both ends it would be 1.5625
    expect_numbers("getAttr -t 19 j.tx", {10});
    mel("currentTime 20; setKeyframe -at tx -itt flat j");
    EXPECT_EQ(mel("getAttr j.tx"), "0");
    EXPECT_EQ(mel("setKeyframe -at tx -itt wavy j"), "error: 'wavy' is no type of tangent");
}

} // namespace
} // namespace headless
