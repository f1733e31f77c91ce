#include "headless/graph/scene.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

Node& make(Scene& scene, const char* type, const char* name, Node* parent = nullptr) {
    return **scene.create_node(type, name, parent);
}

std::vector<std::string> names_of(const std::vector<Node*>& nodes) {
    std::vector<std::string> out;
    for (const Node* node : nodes) out.push_back(node->name());
    return out;
}

using Names = std::vector<std::string>;

TEST(Scene, a_new_one_holds_the_default_nodes) {
    Scene scene;
    EXPECT_EQ(names_of(scene.world().children()), (Names{"persp", "top", "front", "side"}));
    EXPECT_TRUE(scene.find_node("|persp|perspShape"));
    for (const char* name : {"time1", "lambert1", "initialShadingGroup", "defaultObjectSet", "renderPartition"})
        EXPECT_TRUE(scene.find_node(name)) << name;
    for (const Node* node : scene.nodes()) EXPECT_TRUE(node->default_node()) << node->name();
    EXPECT_FALSE(scene.modified);
    // They stay what and where they are, whoever else has their names.
    Node& above = make(scene, "transform", "above");
    Node &persp = **scene.find_node("persp"), &same = make(scene, "transform", "persp", &above);
    EXPECT_FALSE(scene.reparent(persp, &above));
    EXPECT_FALSE(scene.rename(persp, "other"));
    EXPECT_FALSE(scene.find_node("persp"));
    EXPECT_EQ(same.name(), "persp");
    EXPECT_EQ(scene.default_node("persp"), &persp);
    EXPECT_EQ(scene.default_node("above"), nullptr);
}

TEST(Scene, shapes_get_a_transform_and_never_stand_under_the_world) {
    Scene scene;
    Node& shape = make(scene, "locator", "spot3");
    EXPECT_EQ(scene.full_name(scene.path_to(shape)), "|spot3|spotShape3");
    EXPECT_FALSE(scene.reparent(shape, nullptr));
    EXPECT_FALSE(scene.create_node("joint", "under", &shape));
    EXPECT_EQ(scene.find_node("under").error().message, "No object matches name: under");
}

TEST(Scene, an_unknown_type_is_taken_in_or_outside_the_dag) {
    Scene scene;
    Node& a = make(scene, "transform", "a");
    Node& odd = make(scene, "someVendorShape", "odd", &a);
    Node& flat = make(scene, "someVendorShape", "flat");
    EXPECT_EQ(odd.parent(), &a);
    EXPECT_FALSE(flat.type().is_dag());
    EXPECT_FALSE(scene.reparent(odd, nullptr)); // where a file couldn't tell that it is one of the DAG
    EXPECT_EQ(odd.type().name(), flat.type().name());
    for (const char* illegal : {"\x17", "a b", "2d", "a:b", ""})
        EXPECT_FALSE(scene.create_node(illegal, "n", &a)) << illegal;
}

TEST(Scene, removing_takes_the_subtree_and_the_curves_that_drive_it_alone) {
    Scene scene;
    Node& a = make(scene, "transform", "a");
    Node& b = make(scene, "joint", "b", &a);
    Node& other = make(scene, "joint", "other");
    Node& own = make(scene, "animCurveTL", "own");
    Node& shared = make(scene, "animCurveTL", "shared");
    ASSERT_TRUE(scene.connect(own.find_plug("o"), b.find_plug("tx")));
    ASSERT_TRUE(scene.connect(shared.find_plug("o"), b.find_plug("ty")));
    ASSERT_TRUE(scene.connect(shared.find_plug("o"), other.find_plug("ty")));
    scene.selection.add(scene.item(b));
    const NodeHandle handles[] = {a.handle(), b.handle(), own.handle()};
    const NodeHandle kept = shared.handle();
    scene.remove_node(a);
    for (const NodeHandle handle : handles) EXPECT_EQ(scene.find(handle), nullptr);
    ASSERT_NE(scene.find(kept), nullptr);
    EXPECT_EQ(scene.find(kept)->outputs().size(), 1u);
    EXPECT_TRUE(scene.selection.items().empty());
    const Node& next = make(scene, "transform", "a");
    EXPECT_NE(next.handle(), handles[0]); // an old handle never comes to mean a new node
}

TEST(Scene, moving_a_node_keeps_its_values_and_makes_its_name_fit) {
    Scene scene;
    Node& a = make(scene, "transform", "a");
    Node& b = make(scene, "transform", "b");
    make(scene, "joint", "c", &a);
    Node& c = make(scene, "joint", "c", &b);
    ASSERT_TRUE(scene.set(c.find_plug("t"), Vector3{1, 2, 3}));
    ASSERT_TRUE(scene.reparent(c, &a, 0));
    EXPECT_EQ(names_of(a.children()), (Names{"c1", "c"}));
    EXPECT_EQ(c.get(c.find_plug("t").key).vector(), (Vector3{1, 2, 3}));
    EXPECT_FALSE(scene.reparent(a, &c)); // into its own subtree
    EXPECT_FALSE(scene.reparent(a, &a));
    ASSERT_TRUE(scene.reparent(c, nullptr));
    EXPECT_EQ(scene.full_name(scene.path_to(c)), "|c1");
}

TEST(Scene, parenting_beyond_the_depth_limit_is_refused) {
    Scene scene;
    Node* tip = nullptr;
    for (int i = 0; i < max_dag_depth; ++i) {
        const auto made = scene.create_node("joint", "j", tip);
        ASSERT_TRUE(made) << i;
        tip = *made;
    }
    const auto over = scene.create_node("joint", "over", tip);
    ASSERT_FALSE(over);
    EXPECT_NE(over.error().message.find("4096"), std::string::npos);
    Node& branch = make(scene, "joint", "branch");
    make(scene, "joint", "twig", &branch);
    EXPECT_FALSE(scene.reparent(branch, tip->parent()));
    EXPECT_TRUE(scene.reparent(branch, tip->parent()->parent()));
    ASSERT_TRUE(scene.set((*scene.find_node("|j"))->find_plug("tx"), 1.0));
    EXPECT_EQ(scene.world_matrix(*tip).translation().x, 1.0);
}

TEST(Instances, give_a_node_a_path_for_each_parent) {
    Scene scene;
    Node& a = make(scene, "transform", "a");
    Node& b = make(scene, "transform", "b");
    Node& shape = make(scene, "locator", "s", &a);
    ASSERT_TRUE(scene.set(b.find_plug("ty"), 5.0));
    ASSERT_TRUE(scene.add_parent(shape, b));
    Names paths;
    for (const DagPath& path : scene.paths_to(shape)) paths.push_back(scene.full_name(path));
    EXPECT_EQ(paths, (Names{"|a|s", "|b|s"}));
    const DagPath second = *scene.find_path("b|s");
    EXPECT_EQ(scene.instance_number(second), 1);
    EXPECT_EQ(EvaluationContext(scene).world_matrix(second).translation(), (Vector3{0, 5, 0}));
    EXPECT_EQ(scene.evaluate(shape.find_plug("wm[1]")).matrix().translation(), (Vector3{0, 5, 0}));
    EXPECT_EQ(scene.evaluate(shape.find_plug("wm[7]")).matrix(), Matrix());
    EXPECT_EQ(scene.partial_name(second), "b|s");
    scene.remove_node(a);
    EXPECT_EQ(scene.full_name(scene.path_to(shape)), "|b|s");
    EXPECT_FALSE(scene.remove_parent(shape, b));
    EXPECT_FALSE(scene.has_instances());
}

TEST(Instances, that_would_multiply_without_end_are_refused) {
    Scene scene;
    Node* below = &make(scene, "transform", "n");
    bool refused = false;
    for (int level = 0; level < 40 && !refused; ++level) {
        Node &left = make(scene, "transform", "l"), &right = make(scene, "transform", "r");
        Node& top = make(scene, "transform", "t");
        refused = !scene.reparent(*below, &left) || !scene.add_parent(*below, right) || !scene.reparent(left, &top) ||
                  !scene.reparent(right, &top);
        below = &top;
    }
    EXPECT_TRUE(refused);
}

TEST(Instances, count_what_is_made_under_them) {
    Scene scene;
    Node* tip = &make(scene, "transform", "tip");
    for (int level = 0; level < 17; ++level) {
        Node &left = make(scene, "transform", "l", tip), &right = make(scene, "transform", "r", tip);
        tip = &make(scene, "transform", "tip", &left);
        ASSERT_TRUE(scene.add_parent(*tip, right));
    }
    std::vector<Node*> made; // on 131,072 paths each, where 524,285 are taken
    while (const Result<Node*> node = scene.create_node("joint", "j", made.size() < 100 ? tip : nullptr))
        made.push_back(*node);
    EXPECT_EQ(made.size(), 3U);
    scene.remove_node(*made.back());
    EXPECT_TRUE(scene.create_node("joint", "k", tip));
    EXPECT_FALSE(scene.create_node("joint", "l", tip));
    EXPECT_TRUE(scene.create_node("joint", "beside")) << "one path";
}

TEST(Selection, keeps_its_order_and_holds_each_entry_once) {
    Scene scene;
    const SelectionItem a = scene.item(make(scene, "joint", "a"));
    const SelectionItem b = scene.item(make(scene, "joint", "b"));
    SelectionItem plug = a;
    plug.plug = scene.find(a.node)->find_plug("tx").key;
    SelectionList list;
    EXPECT_TRUE(list.add(b));
    EXPECT_TRUE(list.add(a));
    EXPECT_FALSE(list.add(b));
    EXPECT_TRUE(list.add(plug));
    EXPECT_EQ(list.items(), (std::vector{b, a, plug}));
    EXPECT_TRUE(list.remove(a));
    EXPECT_FALSE(list.remove(a));
    EXPECT_TRUE(list.contains(plug));
    list.remove_node(a.node);
    EXPECT_EQ(list.items(), std::vector{b});
}

} // namespace
} // namespace headless
