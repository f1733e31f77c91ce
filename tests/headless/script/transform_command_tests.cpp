#include "script_test.h"

namespace headless {
namespace {

TEST_F(ScriptTest, xform_tells_where_a_transform_stands_in_its_own_space_and_the_worlds) {
    mel("createNode transform -n up; setAttr up.t 10 0 0; setAttr up.ry 90; createNode transform -n child -p up;"
        "setAttr child.t 2 0 0; setAttr child.rz 90; setAttr child.s 2 3 4");
    // Rows: what becomes of x, y, z and the origin. The parent turns x to -z and z to x.
    expect_numbers("xform -q -m child", {0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 2, 0, 0, 1});
    expect_numbers("xform -q -ws -m child", {0, 2, 0, 0, 0, 0, 3, 0, 4, 0, 0, 0, 10, 0, -2, 1});
    expect_numbers("xform -q -ro child", {0, 0, 90});
    expect_numbers("xform -q -ws -ro child", {90, 0, 90});
    expect_numbers("xform -q -s child", {2, 3, 4});
    expect_numbers("xform -q -ws -s child", {2, 3, 4});
    EXPECT_EQ(mel("xform -q child"), "error: xform needs a flag that says what is asked");
    EXPECT_EQ(mel("xform -t 1 2 3 perspShape"), "error: 'perspShape' is no transform");
    EXPECT_EQ(mel("xform -s 2 1 3 child; xform -r -s 1 2 0.5 child; getAttr child.s"), "2 2 1.5");
    expect_numbers("xform -ro 10 20 30 child; xform -r -ro 0 -25 1 child; xform -q -ro child", {10, -5, 31});
    mel("xform -s 1 1 1 -ro 0 0 90 child; xform -ws -r -ro 0 90 0 child; xform -ws -r -t 0 0 5 child");
    expect_numbers("xform -q -ws -m child", {0, 1, 0, 0, 1, 0, 0, 0, 0, 0, -1, 0, 10, 0, 3, 1});
    mel("xform -ws -m 0 1 0 0 -1 0 0 0 0 0 1 0 7 8 9 1 child");
    expect_numbers("xform -q -ws -m child", {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1});
    EXPECT_EQ(mel("currentUnit -l m; xform -t 1 0 -0.5 up; currentUnit -l cm; getAttr up.t"), "100 0 -50");
}

TEST_F(ScriptTest, another_rotate_order_turns_as_before_unless_told_otherwise) {
    mel("createNode transform -n a; xform -ro 90 0 90 a");
    const std::vector<double> turned = {0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 1};
    for (const std::string order : {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"}) {
        EXPECT_EQ(mel("xform -roo " + order + " a; xform -q -roo a"), order);
        expect_numbers("xform -q -m a", turned);
    }
    EXPECT_EQ(mel("xform -ro 90 0 90 -roo xyz a; xform -p 0 -roo zxy a; getAttr a.r"), "90 0 90");
    EXPECT_EQ(mel("getAttr a.ro"), "2");
    EXPECT_TRUE(mel("setAttr -l 1 a.rx; xform -roo xyz a").ends_with("cannot be modified"));
    EXPECT_EQ(mel("xform -q -roo a"), "zxy"); // not half of it
    EXPECT_EQ(mel("xform -roo xxz a"), "error: 'xxz' is no rotate order");
}

TEST_F(ScriptTest, pivots_move_without_the_object_unless_told_otherwise) {
    mel("createNode transform -n a; xform -t 1 0 0 -ro 0 0 90 -s 2 1 1 a; createNode transform -n above;"
        "parent -r a above; setAttr above.t 0 0 7");
    const std::vector<double> stands = {0, 2, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, 0, 7, 1};
    mel("xform -rp 1 0 0 a");
    expect_numbers("getAttr a.rpt", {-1, 1, 0});
    expect_numbers("xform -q -ws -rp a",
                   {1, 1, 7}); // a quarter turn takes (1, 0) to (0, 1), then the object stands off
    mel("xform -ws -rp 5 5 7 a");
    expect_numbers("xform -q -rp a", {5, -4, 0});
    mel("xform -ws -sp 1 4 7 a");
    expect_numbers("xform -q -sp a", {2, 0, 0});
    expect_numbers("xform -q -ws -sp a", {1, 4, 7});
    mel("xform -ws -r -rp 0 1 0 a; xform -r -sp 0 1 0 a");
    expect_numbers("xform -q -ws -rp a", {5, 6, 7});
    expect_numbers("xform -q -sp a", {2, 1, 0});
    expect_numbers("xform -q -ws -m a", stands);
    mel("xform -ws -rp 5 5 7 a; xform -p 0 -rp 0 0 0 a"); // (5, -4) without a pivot's turn: off by (-1, 9)
    expect_numbers("xform -q -ws -t a", {0, 9, 7});
    mel("xform -p 0 -ws -rp 3 3 10 a");
    expect_numbers("getAttr a.rp", {3, -6, 3});
    expect_numbers("xform -q -ws -rp a", {3, 3, 10});
    mel("setAttr a.spt 2 0 0; xform -p 0 -ws -sp 3 3 10 a"); // where the rotate pivot is, before turning (3, -6, 3)
    expect_numbers("getAttr a.sp", {1, -6, 3});
    EXPECT_EQ(mel("currentUnit -l m; xform -p 0 -rp 0 0 2 above; currentUnit -l cm; getAttr above.rp"), "0 0 200");
}

TEST_F(ScriptTest, joints_are_made_asked_and_edited) {
    mel("createNode joint -n a; xform -t 10 0 0 -ro 0 0 90 a; joint -n k -p 10 5 0");
    expect_numbers("joint -q -r -p k", {5, 0, 0});
    expect_numbers("joint -q -p k", {10, 5, 0});
    mel("joint -e -o 10 20 30 -rad 2.5 -ssc 0 -s 1 2 3 -p 0 0 0 k");
    expect_numbers("getAttr k.t", {0, 10, 0});
    expect_numbers("joint -q -o k", {10, 20, 30});
    EXPECT_EQ(mel("joint -q -rad k"), "2.5");
    EXPECT_EQ(mel("joint -q -ssc k"), "0");
    EXPECT_EQ(mel("joint -q -s k"), "1 2 3");
    EXPECT_EQ(mel("select a; joint -q -n"), "a");
    EXPECT_EQ(mel("joint -e -r -p 1 1 1 persp"), "error: 'persp' is no joint");
}

TEST_F(ScriptTest, groups_stand_under_what_their_members_share_and_move_nobody) {
    mel("createNode transform -n a; xform -t 10 0 0 -ro 0 0 90 a; createNode transform -n b -p a;"
        "setAttr b.t 1 0 0; createNode transform -n c -p a; createNode transform -n d; setAttr d.t 10 4 0");
    EXPECT_EQ(mel("group -n both b c; listRelatives -p both"), "a");
    EXPECT_EQ(mel("getAttr b.t"), "1 0 0");
    EXPECT_EQ(mel("group -n wide b a; listRelatives -p wide"), "");
    expect_numbers("xform -q -ws -t b", {10, 1, 0});
    mel("group -p a -n near d");
    expect_numbers("getAttr d.t", {4, 0, 0});
    EXPECT_EQ(mel("group -w -r d; listRelatives -p group1"), "");
    expect_numbers("xform -q -ws -t d", {4, 0, 0});
    EXPECT_EQ(mel("group -em -n none; listRelatives none"), "");
    EXPECT_EQ(mel("group -p gone d"), "error: No object matches name: gone");
    EXPECT_EQ(mel("group perspShape"), "error: 'perspShape' can't be grouped");
    EXPECT_EQ(mel("parent lambert1 a"), "error: 'lambert1' and 'a' can't be child and parent");
    EXPECT_EQ(mel("select c a; parent; listRelatives a"), "both near c");
    EXPECT_EQ(mel("parent -w c; select c; parent -w; listRelatives -p c"), "");
}

TEST_F(ScriptTest, constraints_take_offsets_and_leave_out_axes) {
    mel("createNode transform -n to; createNode transform -n a; createNode transform -n b; createNode transform -n c;"
        "setAttr to.t 1 1 1; currentUnit -l m; pointConstraint -o 1 2 3 -sk y to a; currentUnit -l cm");
    EXPECT_EQ(mel("getAttr a.t"), "101 0 301");
    mel("orientConstraint -o 0 0 90 -w 0.5 to b");
    expect_numbers("getAttr b.r", {0, 0, 90});
    mel("parentConstraint -st x -sr y -sr z to c");
    std::string settable;
    for (const std::string name : {"tx", "ty", "tz", "rx", "ry", "rz"}) settable += mel("getAttr -se c." + name);
    EXPECT_EQ(settable, "100011");
    EXPECT_EQ(mel("delete -cn a c; listRelatives a c"), "");
    EXPECT_EQ(mel("getAttr -se c.ty") + mel("listRelatives b"), "1b_orientConstraint1");
    EXPECT_EQ(mel("setAttr -l on c.t; pointConstraint to c"),
              "error: 'c.translate.translateX' is locked or connected and can't be constrained");
}

} // namespace
} // namespace headless
