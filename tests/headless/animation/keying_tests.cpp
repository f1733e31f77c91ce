#include "headless/animation/keying.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace headless {
namespace {

class Keying : public testing::Test {
protected:
    Scene scene;
    Node& joint = **scene.create_node("joint", "ns:hip");

    Plug plug(const char* path) { return joint.find_plug(path); }
    double now(const char* path) { return scene.evaluate(plug(path)).number(); }
    void key(const char* path, double time, double value) {
        ASSERT_TRUE(key_plug_with(scene, plug(path), time, value));
    }
};

TEST_F(Keying, makes_a_curve_by_the_kind_of_the_plug) {
    for (const auto& [path, type, name] : {std::tuple{".tx", "animCurveTL", "hip_translateX"},
                                           {".ry", "animCurveTA", "hip_rotateY"},
                                           {".sz", "animCurveTU", "hip_scaleZ"},
                                           {".v", "animCurveTU", "hip_visibility"}}) {
        ASSERT_TRUE(key_plug(scene, plug(path), 1)) << path;
        const Node* curve = curve_of(plug(path));
        ASSERT_NE(curve, nullptr);
        EXPECT_EQ(curve->type().name(), type);
        EXPECT_EQ(curve->name(), name);
        const bool holds = path[1] == 'v';
        EXPECT_EQ(keys_of(plug(path))->out_type(0), holds ? Tangent::step : Tangent::automatic);
    }
    EXPECT_EQ(keyed_plugs(joint).size(), 4u);
}

TEST_F(Keying, keys_what_was_set_at_the_clock_as_an_import_does) {
    const std::array plugs = {plug(".tx"), plug(".ty"), plug(".tz")};
    for (int frame = 0; frame < 50; ++frame) {
        for (int pass = 0; pass < 2; ++pass) {
            scene.set_current_time(frame / 24.0);
            ASSERT_TRUE(scene.set(plug(".t"), Vector3{frame * 1.0, frame * 2.0, -1.0}));
            ASSERT_TRUE(key_plugs(scene, plugs, scene.current_time()));
        }
    }
    const AnimCurve& x = *keys_of(plugs[0]);
    ASSERT_EQ(x.size(), 50u);
    EXPECT_TRUE(x.times().shares_with(keys_of(plugs[2])->times()));
    scene.set_current_time(30 / 24.0);
    EXPECT_EQ(scene.evaluate(plug(".t")).vector(), (Vector3{30, 60, -1}));
}

TEST_F(Keying, a_key_near_a_key_replaces_its_value_and_keeps_its_tangents) {
    key(".tx", 1, 5);
    key(".tx", 2, 6);
    CurveData::of(*curve_of(plug(".tx")))->edit().set_types(0, Tangent::flat, Tangent::linear);
    key(".tx", 1 + .9 * same_key_time, 7);
    key(".tx", 2 - 2 * same_key_time, 8);
    const AnimCurve& keys = *keys_of(plug(".tx"));
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_EQ(keys.key(0), (CurveKey{1, 7, Tangent::flat, Tangent::linear, {}, {}, true, true, false}));
    EXPECT_EQ(keys.values()[1], 8);
}

TEST_F(Keying, keys_in_any_order_stand_in_order_of_time) {
    std::vector<int> frames(300);
    for (int i = 0; i < 300; ++i) frames[i] = i;
    std::shuffle(frames.begin(), frames.end(), std::mt19937(7));
    key(".rx", 1000, 0);
    for (const int frame : frames) ASSERT_TRUE(key_plug_with(scene, plug(".rx"), frame, frame * 10.0));
    const AnimCurve& keys = *keys_of(plug(".rx"));
    ASSERT_TRUE(keys.ordered());
    ASSERT_EQ(keys.size(), 301u);
    for (int i = 0; i < 300; ++i) EXPECT_EQ(keys.values()[i], i * 10.0);
}

TEST_F(Keying, all_keys_at_once_read_back_and_can_be_cut) {
    const KeyTimes times({0, 1, 2, 3});
    ASSERT_TRUE(set_keys(scene, plug(".tx"), times, {1, 2, 4, 8}, Tangent::linear));
    ASSERT_TRUE(set_keys(scene, plug(".ty"), times, {0, 0, 0, 6}, Tangent::linear));
    ASSERT_TRUE(set_keys(scene, plug(".tz"), KeyTimes({2, 0, 2, NAN}), {5, 3, 7, 1}, Tangent::linear));
    EXPECT_TRUE(keys_of(plug(".tx"))->times().shares_with(keys_of(plug(".ty"))->times()));
    EXPECT_EQ(keys_of(plug(".tz"))->size(), 2u);
    scene.set_current_time(1.5);
    EXPECT_EQ(scene.evaluate(plug(".t")).vector(), (Vector3{3, 0, 6}));
    EXPECT_EQ(cut_keys(scene, plug(".tx"), 1, 2), 2u);
    EXPECT_EQ(now(".tx"), 4.5);
    EXPECT_EQ(now(".ty"), 0);
    EXPECT_EQ(cut_keys(scene, plug(".tx"), -9, 9), 2u);
    EXPECT_EQ(curve_of(plug(".tx")), nullptr);
    EXPECT_EQ(now(".tx"), 4.5) << "the plug keeps the value it had";
    EXPECT_EQ(cut_keys(scene, plug(".tx"), -9, 9), 0u);
}

TEST_F(Keying, what_cannot_be_keyed_is_refused_and_nothing_is_made) {
    Node& driver = **scene.create_node("unitConversion", "conversion");
    ASSERT_TRUE(scene.connect(driver.find_plug(".o"), plug(".ry")));
    Node& driven = **scene.create_node("animCurveUA", "driven");
    ASSERT_TRUE(scene.connect(driven.find_plug(".o"), plug(".rz")));
    joint.set_flags(joint.find_attribute("sx"), {true, {}, {}});
    Node& curve = **scene.create_node("animCurveTL");
    const std::size_t before = scene.node_count();
    for (const char* path : {".ry", ".rz", ".sx", ".wm[0]", ".wm"}) {
        const std::array both = {plug(".tx"), plug(path)};
        EXPECT_FALSE(key_plugs(scene, both, 1)) << path;
    }
    EXPECT_FALSE(key_plug(scene, curve.find_plug("ktv"), 1)); // a part of no element
    EXPECT_TRUE(curve.inputs().empty());
    EXPECT_FALSE(key_plug(scene, Plug{}, 1));
    EXPECT_FALSE(key_plug(scene, plug(".tx"), NAN));
    EXPECT_FALSE(key_plug_with(scene, plug(".tx"), 1, INFINITY));
    EXPECT_EQ(scene.node_count(), before);
}

TEST_F(Keying, a_plug_behind_a_plain_connection_is_keyed_where_the_curve_is) {
    Node& set = **scene.create_node("character", "set");
    ASSERT_TRUE(scene.connect(set.find_plug(".av[3]"), plug(".rz")));
    key(".rz", 0, 1);
    key(".rz", 1, 2);
    EXPECT_EQ(set.source_of(set.find_plug(".av[3]").key).node, curve_of(plug(".rz")));
    scene.set_current_time(1);
    EXPECT_EQ(now(".rz"), 2);
    Node& leader = **scene.create_node("joint", "leader");
    ASSERT_TRUE(scene.connect(leader.find_plug(".t"), plug(".t")));
    ASSERT_TRUE(key_plug(scene, plug(".t"), 1));
    for (const char* path : {".tx", ".ty", ".tz"})
        EXPECT_EQ(leader.source_of(leader.find_plug(path).key).node, curve_of(plug(path))) << path;
    key(".ty", 1, 6);
    EXPECT_EQ(scene.evaluate(plug(".t")).vector(), (Vector3{0, 6, 0}));
}

} // namespace
} // namespace headless
