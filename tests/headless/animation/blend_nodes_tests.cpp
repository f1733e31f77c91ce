#include "headless/animation/rotation_blend.h"
#include "network.h"

namespace headless {
namespace {

using BlendNodes = Network;

TEST_F(BlendNodes, pair_blend_mixes_by_axis_and_mode) {
    make("pairBlend", "p");
    make("transform", "x");
    make("transform", "y");
    for (const auto& [from, to] : {std::pair{"x.t", "p.it1"}, {"y.t", "p.it2"}, {"x.r", "p.ir1"}, {"y.r", "p.ir2"}})
        connect(from, to);
    set("x.t", Vector3{1, 2, 3});
    set("y.t", Vector3{5, 6, 7});
    set("x.r", Vector3{.1, 0, -.2});
    set("y.r", Vector3{.5, .4, .2});
    set("p.w", .25);
    set("p.tym", 1);
    set("p.tzm", 2);
    expect_near(vector("p.ot"), {2, 2, 7});
    EXPECT_EQ(number("p.otz"), 7);
    expect_near(vector("p.or"), {.2, .1, -.1});
    set("p.rm", 2);
    expect_near(vector("p.or"), {.5, .4, .2});
    set("p.w", 7.0);
    EXPECT_EQ(number("p.otx"), 5);
}

// Flattened axes leave some rotation, and what is left of it holds.
TEST_F(BlendNodes, the_rotation_of_a_flat_matrix_is_still_one) {
    for (const Vector3 along : {Vector3{0, 3, 0}, Vector3{2, 0, 0}, Vector3{0, 0, 0}}) {
        Matrix flat;
        flat.set_row(0, along);
        flat.set_row(1, along * -2);
        const Matrix turned = rotation_part(flat);
        EXPECT_NEAR(determinant(turned), 1.0, 1e-12);
        expect_same_rotation(turned * transposed(turned), Matrix());
        if (length(along) > 0) expect_near(turned.row(0), along * (1 / length(along)));
    }
}

TEST_F(BlendNodes, pair_blend_turns_along_the_arc_when_told_so) {
    make("pairBlend", "p");
    make("transform", "y");
    connect("y.r", "p.ir2");
    make("transform", "x");
    connect("x.r", "p.ir1");
    set("x.r", Vector3{0, 0, 170 * degree});
    set("y.r", Vector3{0, 0, 190 * degree - 2 * std::numbers::pi});
    set("p.w", .25);
    EXPECT_NEAR(number("p.orz"), 170 * degree * .75 - 170 * degree * .25, 1e-12);
    set("p.ri", 1);
    EXPECT_NEAR(number("p.orz"), 175 * degree, 1e-12);
}

// Joints that follow one another through pairs of blends, one of whose inputs is a curve of one axis, and whose
// weights are attributes of the joints: the way files lay out a blend with a character's curve.
TEST_F(BlendNodes, joints_follow_through_chained_blends) {
    make("character", "set");
    for (const char* name : {"j1", "j2"}) make("joint", name);
    connect("set.av[1]", "j1.rz");
    animate("set.av[1]", {0, 1}, {0, .8});
    animate("j1.rx", {0, 1}, {.2, .4});
    for (const char* name : {"p1", "p7"}) make("pairBlend", name);
    for (const char* name : {"blend1", "blend2"}) {
        Attribute weight;
        weight.long_name = name;
        weight.kind = AttributeKind::number;
        ASSERT_TRUE((*scene.find_node("j2"))->add_attribute(weight));
    }
    animate("p1.irz1", {0}, {.1});
    connect("j1.rz", "p1.irz2");
    connect("j2.blend1", "p1.w");
    animate("p7.irz1", {0, 1}, {-.5, -.7});
    connect("p1.orx", "p7.irx2");
    connect("j1.rz", "p7.irz2");
    connect("j2.blend2", "p7.w");
    for (const auto& [from, to] : {std::pair{"p7.orx", "j2.rx"}, {"p7.ory", "j2.ry"}, {"p7.orz", "j2.rz"}})
        connect(from, to);
    set("j2.blend2", .25);
    scene.set_current_time(.5);
    expect_near(vector("j1.r"), {.3, 0, .4});
    expect_near(vector("j2.r"), {0, 0, -.6 * .75 + .4 * .25});
    set("p1.irx2", .2);
    set("j2.blend1", 1.0);
    EXPECT_NEAR(number("j2.rx"), .2 * .25, 1e-12);
    EXPECT_TRUE(scene.take_evaluation_errors().empty());
    EXPECT_TRUE(unevaluated().empty());
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("p7.irz1")));
    EXPECT_NEAR(number("j2.rz"), .4, 1e-12) << "a rotation connected on one side alone passes";
}

TEST_F(BlendNodes, a_conversion_takes_a_triple_as_a_whole) {
    make("blendColors", "mix");
    make("unitConversion", "degrees");
    make("joint", "turned");
    make("transform", "follower");
    set("mix.c1", Vector3{10, 20, 30});
    set("mix.c2", Vector3{30, 60, 90});
    set("mix.b", .5);
    set("degrees.cf", degree);
    connect("mix.op", "degrees.i");
    connect("degrees.o", "turned.r");
    connect("turned.ry", "follower.tx");
    const Vector3 expected = Vector3{20, 40, 60} * degree;
    expect_near(vector("turned.r"), expected);
    EXPECT_NEAR(number("turned.rz"), expected.z, 1e-12);
    EXPECT_NEAR(number("follower.tx"), expected.y, 1e-12);
    expect_same_rotation(world("turned"), euler_to_matrix(expected, RotateOrder::xyz));
}

TEST_F(BlendNodes, conversions_scale_and_count_time_in_ticks) {
    make("unitConversion", "u");
    set("u.i", 3.0);
    set("u.cf", -2.0);
    EXPECT_EQ(number("u.o"), -6);
    make("timeToUnitConversion", "frames");
    set("frames.cf", .004);
    connect("time1.o", "frames.i");
    scene.set_current_time(2.5);
    EXPECT_NEAR(number("frames.o"), 60, 1e-12);
    make("unitToTimeConversion", "seconds");
    connect("frames.o", "seconds.i");
    set("seconds.cf", 250.0);
    EXPECT_NEAR(number("seconds.o"), 2.5, 1e-12);
}

TEST_F(BlendNodes, arithmetic_follows_the_operation) {
    make("addDoubleLinear", "add");
    make("multDoubleLinear", "mult");
    for (const char* node : {"add", "mult"}) {
        set(std::string(node) + ".i1", 3.0);
        set(std::string(node) + ".i2", 4.0);
    }
    EXPECT_EQ(number("add.o"), 7);
    EXPECT_EQ(number("mult.o"), 12);
    make("multiplyDivide", "m");
    set("m.i1", Vector3{8, -2, 1});
    set("m.i2", Vector3{2, .5, 0});
    const Vector3 products[] = {{8, -2, 1}, {16, -1, 0}, {4, -4, 0}, {64, 0, 1}};
    for (int operation = 0; operation < 4; ++operation) {
        set("m.op", operation);
        expect_near(vector("m.o"), products[operation]);
        EXPECT_EQ(number("m.oy"), products[operation].y);
    }
    make("plusMinusAverage", "s");
    for (const int i : {0, 2, 9}) {
        set("s.i1[" + std::to_string(i) + "]", 1.0 + i);
        set("s.i3[" + std::to_string(i) + "]", Vector3{1.0 + i, 0, 2});
    }
    const double sums[] = {1, 14, -12, 14. / 3};
    for (int operation = 0; operation < 4; ++operation) {
        set("s.op", operation);
        EXPECT_DOUBLE_EQ(number("s.o1"), sums[operation]);
        EXPECT_DOUBLE_EQ(number("s.o3x"), sums[operation]);
    }
    expect_near(vector("s.o3"), {14. / 3, 0, 2});
    make("blendWeighted", "w");
    set("w.i[0]", 3.0);
    set("w.i[4]", 5.0);
    set("w.w[4]", .5);
    EXPECT_EQ(number("w.o"), 5.5);
}

} // namespace
} // namespace headless
