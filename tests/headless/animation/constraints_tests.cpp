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
            if (node.find_attribute(from) != no_attribute) connect(std::string("con.") + from, std::string("c.") + to);
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
    add_target("a", 1, 3);
    const Vector3 at_b = transform_direction(Vector3{2, -8, 3}, b) + pivot("b", "left");
    expect_near(world("c").translation(), at_b * .25 + pivot("a", "left") * .75);
    set("con.tg[0].tw", 0.0);
    expect_same_rotation(world("c"), turned("a", 2));
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
    EXPECT_TRUE(scene.unevaluated_drivers().empty());
    Node& aim = make("aimConstraint", "aim");
    Attribute output;
    output.long_name = "constraintRotateX";
    ASSERT_TRUE(aim.add_attribute(output));
    connect("aim.constraintRotateX", "b.rx");
    EXPECT_EQ(scene.unevaluated_drivers(), std::vector<Node*>{&aim});
}

} // namespace
} // namespace headless
