#include "headless/graph/evaluation.h"

#include "headless/graph/drivers.h"
#include "headless/graph/scene.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

int times_computed = 0;

// A stand-in for a curve: its output is the time, in seconds, times its "pre" attribute.
Value ramp(EvaluationContext& context, Node& node, const Plug&) {
    ++times_computed;
    return context.time() * context.number(node.find_plug("pre"));
}

// Passes its input on, one more.
Value one_more(EvaluationContext& context, Node& node, const Plug&) {
    return context.number(node.find_plug("input")) + 1.0;
}

// Where a transform stands along x.
Value place(EvaluationContext& context, Node& node, const Plug&) {
    return context.matrix(node.find_plug("input")).translation().x;
}

class Evaluation : public testing::Test {
protected:
    static void SetUpTestSuite() {
        NodeType& curve = NodeTypes::all().add("testRamp", "animCurveTL", MFn::kAnimCurve);
        curve.compute = ramp;
        for (const auto& [name, compute] :
             {std::pair<const char*, Compute>{"testStep", one_more}, {"testPlace", place}}) {
            NodeType& type = NodeTypes::all().add(name, "node", MFn::kUnitConversion);
            type.add("input", "i", AttributeKind::number);
            type.make_output(type.add("output", "o", AttributeKind::number));
            type.compute = compute;
        }
    }

    Node& make(const char* type, const char* name, Node* parent = nullptr) {
        return **scene.create_node(type, name, parent);
    }
    void connect(const char* from, const char* to) {
        const auto done = scene.connect(*scene.find_plug(from), *scene.find_plug(to));
        ASSERT_TRUE(done) << from << " to " << to;
    }
    void set(const char* plug, const Value& value) { ASSERT_TRUE(scene.set(*scene.find_plug(plug), value)) << plug; }
    double number(const char* plug) { return scene.evaluate(*scene.find_plug(plug)).number(); }
    Node& ramp_node(const char* name, int slope) {
        Node& node = make("testRamp", name);
        node.set(node.find_plug("pre").key, slope);
        return node;
    }

    Scene scene;
};

TEST_F(Evaluation, follows_connections_of_plugs_and_of_the_compounds_around_them) {
    make("joint", "a");
    make("joint", "b");
    make("joint", "c");
    connect("a.t", "b.t");
    connect("b.ty", "c.tx");
    set("a.t", Vector3{1, 2, 3});
    EXPECT_EQ(number("c.tx"), 2.0);
    EXPECT_EQ(scene.evaluate(*scene.find_plug("b.t")).vector(), (Vector3{1, 2, 3}));
    EXPECT_EQ(scene.evaluate(*scene.find_plug("c.t")).vector(), (Vector3{2, 0, 0}));
    EXPECT_EQ(scene.local_matrix(**scene.find_node("c")).translation(), (Vector3{2, 0, 0}));
}

TEST_F(Evaluation, a_node_computes_once_a_time_and_again_when_time_or_an_input_changes) {
    ramp_node("r", 10);
    make("joint", "a");
    connect("r.o", "a.tx");
    connect("r.o", "a.ty");
    Node& a = **scene.find_node("a");
    scene.set_current_time(2.0);
    times_computed = 0;
    EXPECT_EQ(scene.local_matrix(a).translation(), (Vector3{20, 20, 0}));
    EXPECT_EQ(scene.world_matrix(a).translation(), (Vector3{20, 20, 0}));
    EXPECT_EQ(times_computed, 1);
    scene.set_current_time(3.0);
    EXPECT_EQ(scene.world_matrix(a).translation(), (Vector3{30, 30, 0}));
    set("r.pre", 100);
    EXPECT_EQ(scene.world_matrix(a).translation(), (Vector3{300, 300, 0}));
    EXPECT_EQ(number("time1.outTime"), 3.0);
}

TEST_F(Evaluation, a_value_set_on_a_curve_driven_plug_holds_until_the_clock_moves) {
    ramp_node("r", 10);
    Node& a = make("joint", "a");
    connect("r.o", "a.tx");
    scene.set_current_time(1.0);
    set("a.t", Vector3{7, 8, 9});
    EXPECT_EQ(scene.local_matrix(a).translation(), (Vector3{7, 8, 9}));
    EXPECT_EQ(number("a.tx"), 7.0);
    scene.set_current_time(1.0);
    EXPECT_EQ(scene.local_matrix(a).translation(), (Vector3{10, 8, 9}));
    EXPECT_EQ(number("a.tx"), 10.0);
}

TEST_F(Evaluation, a_plug_that_is_locked_or_driven_by_another_node_is_not_set) {
    make("joint", "a");
    make("joint", "b");
    connect("a.tx", "b.tx");
    EXPECT_FALSE(scene.set(*scene.find_plug("b.tx"), 1.0));
    EXPECT_FALSE(scene.set(*scene.find_plug("b.t"), Vector3{1, 1, 1}));
    const auto locked = scene.find_plug("a.t");
    locked->node->set_flags(locked->key.attribute, {true, {}, {}});
    const auto refused = scene.set(*scene.find_plug("a.ty"), 1.0);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message,
              "The attribute 'a.translate.translateY' is locked or connected and cannot be modified");
    EXPECT_FALSE(scene.set(*scene.find_plug("a.wm"), Matrix()));
    set("time1.outTime", 4.0);
    EXPECT_EQ(scene.current_time(), 4.0);
}

TEST_F(Evaluation, cycles_are_reported_once_and_answered_with_what_is_stored) {
    make("joint", "a");
    make("joint", "b");
    connect("a.tx", "b.tx");
    connect("b.tx", "a.tx");
    EXPECT_EQ(number("a.tx"), 0.0);
    EXPECT_EQ(scene.local_matrix(**scene.find_node("a")), Matrix());
    make("testStep", "s");
    make("testStep", "t");
    connect("s.o", "t.i");
    connect("t.o", "s.i");
    EXPECT_EQ(number("s.o"), 2.0); // the innermost question is answered with the stored 0
    const auto errors = scene.take_evaluation_errors();
    EXPECT_GE(errors.size(), 2u);
    EXPECT_EQ(number("s.o"), 2.0);
    EXPECT_TRUE(scene.take_evaluation_errors().empty());
}

TEST_F(Evaluation, a_chain_beyond_the_limit_is_reported_and_ends) {
    const auto step = [](int i) { return "s" + std::to_string(i); };
    const int count = 3 * max_evaluation_depth;
    for (int i = 0; i < count; ++i) {
        make("testStep", step(i).c_str());
        if (i > 0) connect((step(i - 1) + ".o").c_str(), (step(i) + ".i").c_str());
    }
    EXPECT_EQ(number((step(max_evaluation_depth - 1) + ".o").c_str()), max_evaluation_depth);
    EXPECT_TRUE(scene.take_evaluation_errors().empty());
    scene.touch();
    number((step(count - 1) + ".o").c_str());
    EXPECT_EQ(scene.take_evaluation_errors().size(), 1u);
}

TEST_F(Evaluation, world_matrices_compose_and_can_refuse_to_inherit) {
    Node& a = make("transform", "a");
    Node& b = make("joint", "b", &a);
    Node& shape = make("locator", "shape", &b);
    set("a.t", Vector3{1, 0, 0});
    set("a.s", Vector3{2, 2, 2});
    set("b.t", Vector3{0, 5, 0});
    EXPECT_EQ(scene.world_matrix(b).translation(), (Vector3{1, 10, 0}));
    EXPECT_EQ(scene.world_matrix(shape), scene.world_matrix(b));
    EXPECT_EQ(scene.evaluate(b.find_plug("pm")).matrix(), scene.world_matrix(a));
    EXPECT_EQ(scene.evaluate(b.find_plug("wim[0]")).matrix(), inverse(scene.world_matrix(b)));
    set("b.it", false);
    EXPECT_EQ(scene.world_matrix(b).translation(), (Vector3{0, 5, 0}));
    EXPECT_EQ(scene.evaluate(b.find_plug("pim[0]")).matrix(), Matrix());
}

TEST_F(Evaluation, order_inheritance_and_compensation_can_be_driven) {
    Node& a = make("joint", "a");
    Node& b = make("joint", "b", &a);
    ramp_node("r", 1);
    set("a.s", Vector3{2, 2, 2});
    set("b.r", Vector3{1, 2, 3});
    for (const char* plug : {"b.ro", "b.ssc", "b.it"}) connect("r.o", plug);
    for (const auto& [time, order] :
         {std::pair{5.0, RotateOrder::zyx}, {1.0, RotateOrder::yzx}, {6.0, RotateOrder::xyz}}) {
        scene.set_current_time(time);
        const Matrix turned = euler_to_matrix({1, 2, 3}, order), local = scene.local_matrix(b);
        for (int i = 0; i < 3; ++i) EXPECT_LT(length(local.row(i) * 2.0 - turned.row(i)), 1e-12) << time;
        EXPECT_EQ(scene.world_matrix(b), local * scene.world_matrix(a)) << time;
    }
    scene.set_current_time(0.0);
    const Matrix turned = euler_to_matrix({1, 2, 3}, RotateOrder::xyz), alone = scene.world_matrix(b);
    for (int i = 0; i < 3; ++i) EXPECT_LT(length(alone.row(i) - turned.row(i)), 1e-12);
}

TEST_F(Evaluation, an_instance_that_refuses_to_inherit_does_so_on_every_way) {
    Node& a = make("transform", "a");
    Node& b = make("transform", "b");
    Node& c = make("transform", "c", &a);
    ASSERT_TRUE(scene.add_parent(c, b));
    set("a.tx", 1.0);
    set("b.ty", 5.0);
    set("c.tz", 2.0);
    const auto at = [&](const char* plug) { return scene.evaluate(c.find_plug(plug)).matrix().translation(); };
    EXPECT_EQ(at("wm[0]"), (Vector3{1, 0, 2}));
    EXPECT_EQ(at("wm[1]"), (Vector3{0, 5, 2}));
    EXPECT_EQ(at("pm[1]"), (Vector3{0, 5, 0}));
    set("c.it", false);
    for (const char* plug : {"wm[0]", "wm[1]"}) EXPECT_EQ(at(plug), (Vector3{0, 0, 2})) << plug;
    EXPECT_EQ(at("pm[1]"), Vector3{});
    ASSERT_TRUE(scene.remove_parent(c, a));
    EXPECT_FALSE(scene.remove_parent(c, b));
    EXPECT_EQ(c.parent(), &b);
}

TEST_F(Evaluation, a_transform_that_follows_its_own_place_is_a_cycle) {
    Node& a = make("transform", "a");
    make("testPlace", "p");
    connect("a.wm", "p.i");
    connect("p.o", "a.tx");
    set("a.ty", 3.0);
    EXPECT_EQ(scene.world_matrix(a).translation().y, 3.0);
    const auto errors = scene.take_evaluation_errors();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_TRUE(errors[0].starts_with("Cycle at")) << errors[0];
}

TEST_F(Evaluation, a_joint_takes_out_its_parent_joints_scale_with_or_without_the_connection) {
    Node& a = make("joint", "a");
    Node& b = make("joint", "b", &a);
    Node& group = make("transform", "g");
    ramp_node("r", 1);
    connect("r.o", "a.sx");
    scene.set_current_time(4.0);
    set("a.sy", 2.0);
    const auto scale_of = [&](Node& joint) {
        const Matrix m = scene.local_matrix(joint);
        return Vector3{m.m[0][0], m.m[1][1], m.m[2][2]};
    };
    EXPECT_EQ(scale_of(b), (Vector3{0.25, 0.5, 1}));
    connect("a.s", "b.is");
    EXPECT_EQ(scale_of(b), (Vector3{0.25, 0.5, 1}));
    scene.set_current_time(8.0);
    EXPECT_EQ(scale_of(b), (Vector3{0.125, 0.5, 1}));
    set("b.ssc", false);
    EXPECT_EQ(scale_of(b), (Vector3{1, 1, 1}));
    set("b.ssc", true);
    scene.disconnect(*scene.find_plug("b.is"));
    ASSERT_TRUE(scene.reparent(b, &group));
    EXPECT_EQ(scale_of(b), (Vector3{1, 1, 1}));
}

TEST_F(Evaluation, what_moves_a_transform_unevaluated_is_named) {
    Node& a = make("joint", "a");
    Node& below = make("joint", "below", &a);
    Node& b = make("joint", "b");
    const auto solver = [this](const char* name) { make("vendorSolver", name).find_or_add_plug("out"); };
    for (const char* name : {"v", "bystander", "member", "behind", "unseen"}) solver(name);
    make("clipScheduler", "clips").find_or_add_plug("out");
    make("unitConversion", "u");
    make("clamp", "held");
    connect("clips.out", "u.i");
    connect("u.o", "a.rx");
    connect("v.out", "held.ipr");
    connect("unseen.out", "held.ipg"); // of no use to the component that is taken
    connect("held.opr", "b.tx");
    connect("bystander.out", "b.radi");
    make("transform", "aim");
    connect("v.out", "aim.tx");
    connect("aim.tx", "a.ty");
    make("character", "set");
    connect("set.av[1]", "b.ry");
    connect("member.out", "set.av[2]"); // into a value that b.ry doesn't pass through
    connect("behind.out", "set.av[1]");
    make("multMatrix", "product");
    make("decomposeMatrix", "parts");
    connect("b.wm", "product.i[0]"); // where a node stands counts with all that places it
    connect("product.o", "parts.imat");
    connect("parts.otx", "below.tx");
    const std::vector<Node*> moving{&a, &below, &b};
    std::vector<std::string> lines;
    for (const Unevaluated& found : find_unevaluated(scene, moving)) lines.push_back(told(found));
    EXPECT_EQ(lines,
              (std::vector<std::string>{
                  "The vendorSolver 'v' isn't evaluated (nodes of its kind aren't), and moves 'a', 'below' and 'b'",
                  "The vendorSolver 'behind' isn't evaluated (nodes of its kind aren't), and moves 'below' and 'b'",
                  "The clipScheduler 'clips' isn't evaluated (its clips aren't), and moves 'a' and 'below'"}));
    EXPECT_TRUE(find_unevaluated(scene, {}).empty());
}

} // namespace
} // namespace headless
