#include "headless/animation/curve_node.h"
#include "headless/graph/scene.h"

#include <gtest/gtest.h>

#include <cmath>

namespace headless {
namespace {

class CurveNode : public testing::Test {
protected:
    Scene scene;
    Node& curve = **scene.create_node("animCurveTL", "c");

    bool set(const char* path, const Value& value) { return curve.set(curve.find_plug(path).key, value); }
    double get(const char* path) { return curve.get(curve.find_plug(path).key).number(); }
    std::vector<int> indices(const char* path) { return curve.existing_indices(curve.find_plug(path).key); }
    double at(double time) {
        scene.set_current_time(time);
        return scene.evaluate(curve.find_plug(".o")).number();
    }
};

TEST_F(CurveNode, attributes_of_files_are_taken_and_given_back) {
    for (const auto& [path, value] : {std::pair{".tan", 9}, {".wgt", 1}, {".pre", 3}, {".pst", 77}}) {
        EXPECT_TRUE(set(path, value)) << path;
        EXPECT_EQ(get(path), value) << path;
    }
    EXPECT_TRUE(set(".ktv[0]", Value::Doubles{0.5, 7}));
    EXPECT_TRUE(set(".ktv[1].kt", 1.5));
    EXPECT_TRUE(set(".ktv[1].kv", 8.0));
    for (const auto& [path, value] : {std::pair{".kit[1]", 1.},
                                      {".kot[0]", 5.},
                                      {".kix[1]", .6},
                                      {".kiy[1]", .8},
                                      {".kox[0]", 2.},
                                      {".koy[0]", -1.},
                                      {".ktl[1]", 0.},
                                      {".kwl[0]", 0.},
                                      {".kbd[1]", 1.},
                                      {".ktv[0].kt", .5},
                                      {".ktv[0].kv", 7.}}) {
        EXPECT_TRUE(set(path, value)) << path;
        EXPECT_EQ(get(path), value) << path;
    }
    EXPECT_EQ(get(".kit[0]"), 9) << "an element that nobody set says what counts";
    EXPECT_EQ(indices(".ktv"), (std::vector<int>{0, 1}));
    EXPECT_EQ(indices(".kit"), std::vector<int>{1});
    EXPECT_EQ(indices(".kot"), std::vector<int>{0});
    EXPECT_EQ(indices(".kix"), (std::vector<int>{0, 1}));
    EXPECT_EQ(indices(".ktl"), std::vector<int>{1});
    EXPECT_EQ(indices(".kwl"), std::vector<int>{0});
    EXPECT_EQ(indices(".kbd"), (std::vector<int>{0, 1}));
    EXPECT_EQ(curve.get(curve.find_plug(".ktv[0]").key), Value(Value::Doubles{0.5, 7}));
    EXPECT_FALSE(set(".pre", "cycle"));
    EXPECT_FALSE(set(".ktv[0]", Value::Doubles{1, 2, 3}));
    EXPECT_FALSE(set(".ktv[0].kv", "no"));
    const AnimCurve& keys = CurveData::of(curve)->keys();
    EXPECT_EQ(keys.key(1), (CurveKey{1.5, 8, Tangent::fixed, Tangent::by_default, {.6, .8}, {}, false, true, true}));
}

TEST_F(CurveNode, sparse_and_unordered_indices_keep_their_names) {
    set(".tan", 2);
    set(".kit[7]", 2); // no key yet
    set(".ktv[900000000]", Value::Doubles{1, 10});
    set(".ktv[4]", Value::Doubles{2, 20});
    set(".ktv[0]", Value::Doubles{0, 5});
    EXPECT_EQ(indices(".ktv"), (std::vector<int>{0, 4, 900000000}));
    EXPECT_EQ(get(".ktv[4].kv"), 20);
    EXPECT_EQ(get(".ktv[900000000].kt"), 1);
    for (const auto& [time, value] : {std::pair{0., 5.}, {.5, 7.5}, {1., 10.}, {1.5, 15.}, {3., 20.}})
        EXPECT_DOUBLE_EQ(at(time), value) << time;
    set(".ktv[0].kv", 6.0);
    EXPECT_EQ(at(0), 6) << "an edit is seen at once";
    set(".ktv[5]", Value::Doubles{2, 50});
    set(".ktv[3]", Value::Doubles{2, 30});
    EXPECT_EQ(at(2), 50) << "of two keys at one time the higher index counts, whichever came first";
    EXPECT_EQ(indices(".ktv"), (std::vector<int>{0, 3, 4, 5, 900000000}));
    CurveData::of(curve)->edit();
    EXPECT_EQ(indices(".ktv"), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(get(".ktv[2].kv"), 50);
}

TEST_F(CurveNode, input_is_the_clock_unless_something_is_connected) {
    set(".tan", 2);
    set(".ktv[0]", Value::Doubles{0, 0});
    set(".ktv[1]", Value::Doubles{10, 100});
    Node& driven = **scene.create_node("animCurveUL", "u");
    driven.set(driven.find_plug(".tan").key, 2);
    driven.set(driven.find_plug(".ktv[0]").key, Value::Doubles{0, 1});
    driven.set(driven.find_plug(".ktv[1]").key, Value::Doubles{100, 2});
    const auto driven_at = [&](double time) {
        scene.set_current_time(time);
        return scene.evaluate(driven.find_plug(".o")).number();
    };
    EXPECT_DOUBLE_EQ(at(5), 50);
    EXPECT_EQ(driven_at(5), 1) << "an unconnected driver is its stored value";
    ASSERT_TRUE(scene.connect(curve.find_plug(".o"), driven.find_plug(".i")));
    EXPECT_DOUBLE_EQ(driven_at(5), 1.5);
    ASSERT_TRUE(scene.connect(scene.time_node().find_plug(".o"), curve.find_plug(".i")));
    EXPECT_DOUBLE_EQ(driven_at(7), 1.7);
}

} // namespace
} // namespace headless
