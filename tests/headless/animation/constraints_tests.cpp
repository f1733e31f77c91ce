#include "network.h"

namespace headless {
namespace {

class Constraints : public Network {
protected:
    // Two targets under a turned and evenly scaled parent, and a constrained joint under another one.
    void SetUp() override {
        Node& left = make("transform", "left");
        make("joint", "a", &left);
        make("transform", "b", &left);
        make("joint", "c", &make("transform", "right"));
        set("left.t", Vector3{3, -1, 2});
        set("left.r", Vector3{.3, .7, -.4});
        set("left.s", Vector3{2, 2, 2});
        set("a.t", Vector3{1, 2, 3});
        set("a.r", Vector3{.5, -.2, 1.1});
        set("a.ro", 2);
        set("a.jo", Vector3{.2, .4, .6});
        set("b.t", Vector3{-4, 0, 5});
        set("b.r", Vector3{-.6, .3, .2});
        set("b.rp", Vector3{.5, .25, -.75});
        set("b.rpt", Vector3{0, 1, 0});
        set("right.t", Vector3{-7, 0, 1});
        set("right.r", Vector3{.1, -1.2, .9});
        set("c.ro", 4);
        set("c.jo", Vector3{-.3, .8, .1});
    }

    void constrain(const char* type) {
        Node& node = make(type, "con", *scene.find_node("c"));
        connect("c.pim[0]", "con.cpim");
        for (const auto& [from, to] : {std::pair{"rp", "crp"}, {"rpt", "crt"}, {"ro", "cro"}, {"jo", "cjo"}})
            join("c", from, to);
        for (const auto& [from, to] :
             {std::pair{"ctx", "tx"}, {"cty", "ty"}, {"ctz", "tz"}, {"crx", "rx"}, {"cry", "ry"}, {"crz", "rz"}}) {
            const AttributeId id = node.find_attribute(from);
            if (id != no_attribute && node.attribute(id).output)
                connect(std::string("con.") + from, std::string("c.") + to);
        }
    }

    void add_target(const char* name, int index, double weight) {
        const std::string at = "tg[" + std::to_string(index) + "].";
        for (const auto& [from, to] : {std::pair{"t", "tt"},
                                       {"rp", "trp"},
                                       {"rpt", "trt"},
                                       {"r", "tr"},
                                       {"ro", "tro"},
                                       {"jo", "tjo"},
                                       {"s", "ts"}})
            join(name, from, at + to);
        connect(std::string(name) + ".pm[0]", "con." + at + "tpm");
        set("con." + at + "tw", weight);
    }

    // Connects where both nodes have the attribute.
    void join(const char* node, const char* from, const std::string& to) {
        const Result<Plug> source = scene.find_plug(std::string(node) + "." + from);
        const Result<Plug> destination = scene.find_plug("con." + to);
        if (!source || !destination) return;
        ASSERT_TRUE(scene.connect(*source, *destination));
    }

    // Where a node's rotate pivot stands in the world: turning doesn't move it.
    Vector3 pivot(const char* name, const char* parent) {
        const std::string node = name;
        return transform_point(vector(node + ".t") + vector(node + ".rp") + vector(node + ".rpt"), world(parent));
    }

    // What is left of a world matrix without the even scale of the parent.
    Matrix turned(const char* node, double scale) {
        return Matrix::scale({1 / scale, 1 / scale, 1 / scale}) * world(node);
    }

    void TearDown() override { EXPECT_EQ(scene.take_evaluation_errors(), std::vector<std::string>{}); }
};

TEST_F(Constraints, point_puts_the_pivot_on_the_weighted_mean_of_the_targets_pivots) {
    set("c.rp", Vector3{1, 1, 0});
    constrain("pointConstraint");
    add_target("a", 0, 1);
    expect_near(pivot("c", "right"), pivot("a", "left"));
    add_target("b", 5, 3);
    add_target("b", 6, -1);
    const Vector3 mean = pivot("a", "left") * .25 + pivot("b", "left") * .75;
    expect_near(pivot("c", "right"), mean);
    set("con.o", Vector3{1, 2, 3});
    expect_near(pivot("c", "right"), mean + Vector3{1, 2, 3});
    set("con.cop", true);
    expect_near(pivot("c", "right"), mean - Vector3{1, 2, 3});
}

TEST_F(Constraints, orient_turns_as_its_target_behind_an_offset) {
    constrain("orientConstraint");
    add_target("a", 0, 1);
    expect_same_rotation(world("c"), turned("a", 2));
    set("con.o", Vector3{.4, .5, -.6});
    const Matrix offset = euler_to_matrix({.4, .5, -.6}, RotateOrder::yxz);
    expect_same_rotation(world("c"), offset * turned("a", 2));
}

TEST_F(Constraints, orient_blends_by_its_interpolation_type) {
    for (const char* node : {"left", "right", "a", "b"}) set(std::string(node) + ".r", Vector3{});
    set("a.jo", Vector3{});
    set("b.r", Vector3{0, 0, 80 * degree});
    constrain("orientConstraint");
    add_target("a", 0, 1);
    add_target("b", 1, 3);
    const double half = std::atan2(3 * std::sin(40 * degree), 1 + 3 * std::cos(40 * degree)) / degree;
    for (const auto& [type, degrees] : {std::pair{0, 2 * half}, {1, 2 * half}, {2, 60.}, {3, .75 * (80 - 360)}}) {
        set("con.int", type);
        expect_same_rotation(world("c"), euler_to_matrix({0, 0, degrees * degree}, RotateOrder::xyz));
    }
}

TEST_F(Constraints, parent_carries_the_offset_in_the_targets_space) {
    constrain("parentConstraint");
    add_target("b", 0, 1);
    set("b.s", Vector3{1, 2, 3});
    set("con.tg[0].tot", Vector3{1, -2, .5});
    set("con.tg[0].tor", Vector3{.3, -.1, .7});
    const Matrix offset = euler_to_matrix({.3, -.1, .7}, RotateOrder::xyz);
    const Matrix b = Matrix::scale({.5, .25, 1. / 6}) * world("b");
    expect_same_rotation(world("c"), offset * b);
    expect_near(world("c").translation(), pivot("b", "left") + transform_direction(Vector3{2 * 1, 4 * -2, 6 * .5}, b));
    set("con.tg[0].tis", Vector3{2, 2, 4});
    set("con.tg[0].tsc", true);
    const Matrix own = euler_to_matrix(vector("b.r"), RotateOrder::xyz);
    const Vector3 carried = transform_direction(Vector3{1, -4, 1.5}, own);
    expect_near(world("c").translation(),
                pivot("b", "left") + transform_direction({carried.x / 2, carried.y / 2, carried.z / 4}, world("left")));
    set("con.tg[0].tsc", false);
    add_target("a", 1, 3);
    const Vector3 at_b = transform_direction(Vector3{2, -8, 3}, b) + pivot("b", "left");
    expect_near(world("c").translation(), at_b * .25 + pivot("a", "left") * .75);
    set("con.tg[0].tw", 0.0);
    expect_same_rotation(world("c"), turned("a", 2));
}

// How a direction of the node stands in the world, freed of even scale.
Vector3 direction_of(const Matrix& world, const Vector3& axis) {
    const Vector3 out = transform_direction(axis, world);
    return out * (1 / length(out));
}

TEST_F(Constraints, aim_points_its_axis_and_leans_its_up_axis) {
    set("c.rp", Vector3{1, 0, 2});
    set("c.t", Vector3{4, 5, 6});
    constrain("aimConstraint");
    connect("c.t", "con.ct");
    add_target("a", 0, 1);
    add_target("b", 1, 1);
    set("con.a", Vector3{0, 2, 0});
    set("con.u", Vector3{0, 0, -1});
    connect("left.wm[0]", "con.wum");
    const Vector3 from = pivot("c", "right"), to = (pivot("a", "left") + pivot("b", "left")) * .5;
    const Vector3 aim = (to - from) * (1 / length(to - from));
    set("con.wu", Vector3{1, 1, 0});
    const Vector3 ups[] = {
        {0, 1, 0}, world("left").translation() - from, transform_direction(Vector3{1, 1, 0}, world("left")), {1, 1, 0}};
    for (int type = 0; type < 4; ++type) {
        set("con.wut", type);
        expect_near(direction_of(world("c"), {0, 1, 0}), aim);
        const Vector3 square = ups[type] - aim * dot(ups[type], aim);
        expect_near(direction_of(world("c"), {0, 0, -1}), square * (1 / length(square)));
    }
    set("con.wut", 4);
    const Vector3 fixed = cross({0, 1, 0}, aim);
    expect_near(direction_of(world("c"), {0, 1, 0}), aim);
    expect_near(transform_direction(fixed, world("c")), fixed);
    set("con.wut", 3);
    set("con.o", Vector3{0, .7, 0});
    expect_near(direction_of(world("c"), {0, 1, 0}), aim);
}

TEST_F(Constraints, scale_takes_the_parents_out_of_the_mean) {
    set("right.s", Vector3{4, 5, 2});
    constrain("scaleConstraint");
    connect("con.cs", "c.s");
    for (const auto& [name, index, weight] : {std::tuple{"a", 0, 1.}, {"b", 1, 3.}}) add_target(name, index, weight);
    set("a.s", Vector3{1, 1, 1});
    set("b.s", Vector3{3, 5, 1});
    set("con.o", Vector3{1, 1, 10});
    expect_near(vector("c.s"), {2 * 2.5 / 4, 2 * 4. / 5, 2 * 1. * 10 / 2});
}

TEST_F(Constraints, without_weight_rest_or_stay) {
    set("c.t", Vector3{7, 8, 9});
    constrain("parentConstraint");
    add_target("a", 0, 0);
    set("con.rst", Vector3{1, 2, 3});
    set("con.rsrr", Vector3{.1, .2, .3});
    expect_near(vector("c.t"), {1, 2, 3});
    expect_near(vector("c.r"), {.1, .2, .3});
    set("con.erp", false);
    expect_near(vector("c.t"), {7, 8, 9});
    expect_near(vector("c.r"), {0, 0, 0});
    make("pointConstraint", "whole");
    make("joint", "held");
    set("held.t", Vector3{4, 5, 6});
    set("whole.erp", false);
    EXPECT_EQ(vector("whole.ct"), Vector3{}); // nothing is behind it yet
    connect("whole.ct", "held.t");
    expect_near(vector("held.t"), {4, 5, 6});
    EXPECT_EQ(number("held.ty"), 5);
}

TEST_F(Constraints, weights_and_targets_move_with_the_clock) {
    constrain("pointConstraint");
    add_target("a", 0, 1);
    add_target("b", 1, 0);
    animate("con.tg[1].tw", {0, 1}, {0, 1});
    animate("a.tx", {0, 2}, {0, 10});
    for (const double time : {0., .5, 1., 2.}) {
        scene.set_current_time(time);
        const double w = std::min(time, 1.);
        expect_near(pivot("c", "right"), (pivot("a", "left") + pivot("b", "left") * w) * (1 / (1 + w)));
    }
}

TEST_F(Constraints, kinds_without_evaluation_are_named) {
    constrain("pointConstraint");
    EXPECT_TRUE(unevaluated().empty());
    make("normalConstraint", "normal").find_or_add_plug("constraintRotateX");
    connect("normal.constraintRotateX", "b.rx");
    EXPECT_EQ(unevaluated(), std::vector<std::string>{"normal"});
}

} // namespace
} // namespace headless
