#include "network.h"

#include "headless/animation/rotation_blend.h"
#include "headless/graph/drivers.h"

#include <algorithm>

namespace headless {
namespace {

/// A leg of 3 and 4 that bends forwards (to +z) under a hip that is moved, turned and scaled; its ankle is an end
/// joint, an effector follows that, and a handle stands in a space of its own.
class IkHandles : public Network {
protected:
    void SetUp() override {
        Node& body = make("transform", "body");
        Node& hip = make("joint", "hip", &body);
        Node& knee = make("joint", "knee", &hip);
        make("joint", "ankle", &knee);
        make("ikEffector", "effector", &knee);
        make("ikHandle", "handle", &make("transform", "control"));
        make("ikRPsolver", "ikRPsolver");
        set("body.t", Vector3{1, 10, -2});
        set("body.r", Vector3{.2, .9, -.1});
        set("body.s", Vector3{1.5, 1.5, 1.5});
        set("hip.t", Vector3{0, -1, 0});
        set("hip.jo", Vector3{0, 0, -90 * degree});
        set("hip.ro", 3);
        set("knee.t", Vector3{3, 0, 0});
        set("knee.pa", Vector3{0, 60 * degree, 0});
        set("knee.ra", Vector3{.3, 0, 0});
        set("ankle.t", Vector3{4, 0, 0});
        for (const char* axis : {"x", "y", "z"})
            connect(std::string("ankle.t") + axis, std::string("effector.t") + axis);
        connect("hip.msg", "handle.hsj");
        connect("effector.hp", "handle.hee");
        connect("ikRPsolver.msg", "handle.hsv");
        set("control.t", Vector3{2, 3, 1});
        set("control.r", Vector3{-.4, .3, .2});
        set("handle.t", Vector3{-.5, .5, 1});
        set("handle.pv", Vector3{2, -1, 4});
    }

    Vector3 place(const char* node) { return world(node).translation(); }
    Vector3 rotate_of(const char* joint) { return vector(std::string(joint) + ".r"); }

    void expect_solved() {
        expect_near(place("effector"), place("handle"), 1e-9);
        const Vector3 line = place("handle") - place("hip"), knee = place("knee") - place("hip");
        const Vector3 pole = transform_direction({2, -1, 4}, world("control"));
        EXPECT_NEAR(dot(knee, cross(line, pole)), 0.0, 1e-9);
        EXPECT_GT(dot(cross(line, knee), cross(line, pole)), 0.0);
        EXPECT_EQ(scene.take_evaluation_errors(), std::vector<std::string>());
    }
    void expect_complaint(const std::string& part) {
        rotate_of("hip");
        const auto errors = scene.take_evaluation_errors();
        ASSERT_EQ(errors.size(), 1u) << part;
        EXPECT_NE(errors[0].find(part), std::string::npos) << errors[0];
    }
};

TEST_F(IkHandles, the_effector_lies_on_the_handle_and_the_knee_in_the_plane_of_the_pole_vector) {
    expect_solved();
    animate("handle.tx", {0, 1}, {-.5, 2});
    animate("body.ry", {0, 1}, {.9, -2});
    animate("knee.rz", {0, 1}, {0, 3}); // what the joint has without the handle doesn't matter
    for (const double time : {0.0, .3, .7, 1.0}) {
        scene.set_current_time(time);
        expect_solved();
    }
    // A stretched hip, taken out again by the knee, and a spread of the body that isn't even.
    set("hip.s", Vector3{1.25, .8, 1});
    set("body.s", Vector3{1.5, 1, 2});
    expect_solved();
    set("knee.ssc", false);
    expect_near(place("effector"), place("handle"), 1e-9);
}

// The rotations are what a question for the plug gives too, whoever asks, and what a constraint follows.
TEST_F(IkHandles, a_turned_joint_gives_its_rotation_to_all_that_ask) {
    make("transform", "copy");
    connect("knee.r", "copy.r");
    const Vector3 knee = rotate_of("knee");
    EXPECT_GT(length(knee), .1);
    EXPECT_EQ(vector("copy.r"), knee);
    EXPECT_EQ(number("knee.ry"), knee.y);
    EXPECT_EQ(EvaluationContext(scene).transform_values(**scene.find_node("knee")).rotate, knee);
    // Stored and driven values stay what they are.
    EXPECT_EQ((*scene.find_node("knee"))->get(scene.find_plug("knee.r")->key).vector(), Vector3{});
}

TEST_F(IkHandles, ik_blend_mixes_with_what_the_joint_has_otherwise) {
    const Vector3 solved = rotate_of("knee");
    animate("knee.ry", {0, 1}, {.25, .5});
    set("knee.rx", -.4);
    scene.set_current_time(.5);
    const Vector3 own{-.4, .375, 0};
    set("handle.ikb", 0.0);
    expect_near(rotate_of("knee"), own);
    set("handle.ikb", .25);
    const auto as_quaternion = [](const Vector3& rotate) {
        return to_quaternion(euler_to_matrix(rotate, RotateOrder::xyz));
    };
    const Matrix expected = to_matrix(slerp(as_quaternion(own), as_quaternion(solved), .25));
    expect_same_rotation(euler_to_matrix(rotate_of("knee"), RotateOrder::xyz), expected, 1e-9);
    set("handle.ikb", 1.0);
    expect_solved();
}

TEST_F(IkHandles, a_pole_vector_constraint_points_from_the_start_joint_to_its_targets) {
    Node& constraint = make("poleVectorConstraint", "pole", *scene.find_node("handle"));
    make("transform", "a", *scene.find_node("body"));
    make("transform", "b");
    set("a.t", Vector3{1, -3, 6});
    set("b.t", Vector3{4, 2, 9});
    set("pole.o", Vector3{.5, 0, -.25});
    connect("handle.pim[0]", "pole.cpim");
    connect("hip.pm[0]", "pole.ps");
    connect("hip.t", "pole.crp");
    for (const auto& [target, at, weight] : {std::tuple{"a", "pole.tg[0].", 3.0}, {"b", "pole.tg[1].", 1.0}}) {
        connect(std::string(target) + ".t", std::string(at) + "tt");
        connect(std::string(target) + ".pm[0]", std::string(at) + "tpm");
        set(std::string(at) + "tw", weight);
    }
    for (const char* axis : {"x", "y", "z"}) connect(std::string("pole.ct") + axis, std::string("handle.pv") + axis);
    const Vector3 target = place("a") * .75 + place("b") * .25 + Vector3{.5, 0, -.25};
    expect_near(transform_direction(vector("handle.pv"), world("control")), target - place("hip"), 1e-12);
    const Vector3 line = place("handle") - place("hip");
    EXPECT_NEAR(dot(place("knee") - place("hip"), cross(line, target - place("hip"))), 0.0, 1e-9);
    EXPECT_NEAR(length(place("effector") - place("handle")), 0.0, 1e-9);
    set("pole.tg[0].tw", 0.0);
    set("pole.tg[1].tw", 0.0);
    set("pole.rst", Vector3{1, 2, 3});
    EXPECT_EQ(vector("handle.pv"), Vector3({1, 2, 3}));
    EXPECT_EQ(constraint.type().base()->name(), "pointConstraint");
}

// A foot of one bone under a leg that another handle moves, turned as its own handle is.
TEST_F(IkHandles, a_single_chain_handle_turns_its_joint_as_it_is_turned_itself) {
    Node& ankle = **scene.find_node("ankle");
    make("joint", "ball", &ankle);
    make("ikEffector", "toe", &ankle);
    make("ikHandle", "foot", *scene.find_node("control"));
    make("ikSCsolver", "single");
    set("ball.t", Vector3{2, 0, 0});
    set("toe.t", Vector3{2, 0, 0});
    connect("ankle.msg", "foot.hsj");
    connect("toe.hp", "foot.hee");
    connect("single.msg", "foot.hsv");
    // The goal lies along the handle's own x, so that the joint can turn just as the handle does.
    set("foot.r", Vector3{.7, -.2, .4});
    const Vector3 way = rotation_part(world("foot")).row(0);
    set("foot.t", transform_point(place("ankle") + way * 3.0, inverse(world("control"))));
    expect_near(place("toe"), place("foot"), 1e-9);
    expect_same_rotation(rotation_part(world("ankle")), rotation_part(world("foot")), 1e-9);
    expect_solved();
}

// The handle of a hand over that of an arm: the later one has the joints that both span.
TEST_F(IkHandles, handles_of_one_joint_act_in_order_of_priority) {
    make("ikHandle", "second");
    make("ikEffector", "short", *scene.find_node("hip"));
    connect("knee.t", "short.t");
    connect("hip.msg", "second.hsj");
    connect("short.hp", "second.hee");
    connect("ikRPsolver.msg", "second.hsv");
    set("second.t", Vector3{0, 50, 0});
    const auto knee_of_second = [&] {
        const Vector3 bone = place("knee") - place("hip"), line = place("second") - place("hip");
        return length(cross(bone, line)) < 1e-9 * length(bone) * length(line);
    };
    EXPECT_TRUE(knee_of_second()); // equal rank and place: in order of creation
    set("handle.hpr", 2);
    expect_solved();
    EXPECT_FALSE(knee_of_second());
    set("second.hpr", 3);
    EXPECT_TRUE(knee_of_second());
    scene.remove_node(**scene.find_node("second"));
    expect_solved();
    scene.remove_node(**scene.find_node("handle"));
    EXPECT_EQ(rotate_of("knee"), Vector3{});
}

TEST_F(IkHandles, plain_transforms_and_an_effector_off_the_last_joint_are_part_of_the_bones) {
    Node& spacer = make("transform", "spacer", *scene.find_node("hip"));
    set("spacer.t", Vector3{.25, .5, 0});
    set("spacer.r", Vector3{.1, .2, .3});
    set("spacer.rp", Vector3{1, 0, 0});
    ASSERT_TRUE(scene.reparent(**scene.find_node("knee"), &spacer));
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("effector.ty")));
    set("effector.ty", .75);
    set("handle.rp", Vector3{.1, .2, -.3});
    set("handle.rpt", Vector3{0, .1, 0});
    const Vector3 goal =
        transform_point(Vector3{-.5, .5, 1} + Vector3{.1, .2, -.3} + Vector3{0, .1, 0}, world("control"));
    expect_near(place("effector"), goal, 1e-9);
}

TEST_F(IkHandles, limits_hold_joints_and_plain_transforms) {
    set("knee.mrye", true);
    set("knee.mnrl", Vector3{0, 80 * degree, 0});
    EXPECT_NEAR(rotate_of("knee").y, 80 * degree, 1e-12);
    EXPECT_GT(length(place("effector") - place("handle")), .1);

    make("transform", "slider");
    animate("slider.tx", {0, 1}, {-10, 10});
    animate("slider.sy", {0, 1}, {-10, 10});
    for (const auto& [plug, value] : {std::pair{"slider.mxtl", Vector3{4, 5, 6}},
                                      {"slider.mntl", Vector3{-2, -2, -2}},
                                      {"slider.mnsl", Vector3{.5, .5, .5}}})
        set(plug, value);
    set("slider.tz", 7.0);
    set("slider.xtze", true);
    set("slider.msye", true);
    const auto at = [&](double time) {
        scene.set_current_time(time);
        return world("slider");
    };
    expect_near(at(0).translation(), {-10, 0, 6});
    EXPECT_EQ(at(0)[1][1], .5);
    EXPECT_EQ(at(1)[1][1], 10);
    set("slider.xtxe", true);
    // Something may switch a limit, and move it.
    make("transform", "switch");
    animate("switch.v", {0, 1}, {0, 1});
    connect("switch.v", "slider.mtxe");
    expect_near(at(0).translation(), {-10, 0, 6});
    expect_near(at(1).translation(), {4, 0, 6});
    set("slider.tx", 0.0);
    connect("switch.tx", "slider.xtzl");
    set("switch.tx", 1.5);
    EXPECT_EQ(at(1).translation().z, 1.5);
    set("switch.tx", 9.0);
    EXPECT_EQ(at(1).translation().z, 7);
}

TEST_F(IkHandles, a_handle_that_can_move_nothing_says_so_in_one_line) {
    make("ikEffector", "stray");
    ASSERT_TRUE(scene.connect(*scene.find_plug("stray.hp"), *scene.find_plug("handle.hee"), true));
    expect_complaint("'stray' doesn't stand under its start joint 'hip'");
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("handle.hee")));
    expect_complaint("no end effector");
    connect("effector.hp", "handle.hee");
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("handle.hsv")));
    expect_complaint("no solver");
    connect("ikRPsolver.msg", "handle.hsv");
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("handle.hsj")));
    expect_complaint("no start joint");
    connect("hip.msg", "handle.hsj");
    set("knee.t", Vector3{});
    set("ankle.t", Vector3{});
    expect_complaint("no length");
    EXPECT_EQ(rotate_of("hip"), Vector3{});
}

TEST_F(IkHandles, goals_that_hang_on_their_own_joints_end_with_a_line) {
    ASSERT_TRUE(scene.reparent(**scene.find_node("handle"), *scene.find_node("ankle")));
    place("knee");
    const auto errors = scene.take_evaluation_errors();
    ASSERT_FALSE(errors.empty());
    EXPECT_NE(errors[0].find("Cycle at 'hip"), std::string::npos) << errors[0];
    ASSERT_TRUE(scene.reparent(**scene.find_node("handle"), *scene.find_node("control")));
    expect_solved();
}

// Each chain hangs under the one before it and its handle follows a constraint to that one's end.
TEST_F(IkHandles, long_rows_of_chains_are_solved_or_refused_and_never_overrun) {
    Node* above = *scene.find_node("ankle");
    for (int i = 0; i < 300; ++i) {
        const std::string n = std::to_string(i);
        Node& joint = make("joint", ("j" + n).c_str(), above);
        make("ikEffector", ("e" + n).c_str(), &joint);
        make("ikHandle", ("h" + n).c_str());
        make("pointConstraint", ("c" + n).c_str());
        set("e" + n + ".tx", 1.0);
        set("j" + n + ".tx", 1.0);
        connect("j" + n + ".msg", "h" + n + ".hsj");
        connect("e" + n + ".hp", "h" + n + ".hee");
        connect("ikRPsolver.msg", "h" + n + ".hsv");
        connect((i ? "e" + std::to_string(i - 1) : std::string("ankle")) + ".wm[0]", "c" + n + ".tg[0].tpm");
        connect("c" + n + ".ct", "h" + n + ".t");
        above = &joint;
    }
    place("e299");
    EXPECT_LT(scene.take_evaluation_errors().size(), 1000u);
    expect_near(place("effector"), place("handle"), 1e-9);
}

TEST_F(IkHandles, what_a_chain_hangs_on_is_followed_through_its_handle) {
    Node* moving[] = {*scene.find_node("ankle")};
    EXPECT_TRUE(find_unevaluated(scene, moving).empty());
    make("mystery", "box");
    connect("box.msg", "handle.twi");
    auto found = find_unevaluated(scene, moving);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].node->name(), "box");
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("handle.twi")));
    connect("box.msg", "control.tx");
    EXPECT_EQ(find_unevaluated(scene, moving).size(), 1u);
    ASSERT_TRUE(scene.disconnect(*scene.find_plug("control.tx")));
    make("ikSplineSolver", "spline");
    ASSERT_TRUE(scene.connect(*scene.find_plug("spline.msg"), *scene.find_plug("handle.hsv"), true));
    found = find_unevaluated(scene, moving);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].node->name(), "handle");
    EXPECT_EQ(rotate_of("knee"), Vector3{});
}

} // namespace
} // namespace headless
