#include "tests/headless/api/api_test.h"

#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnTransform.h>
#include <maya/MItDag.h>
#include <maya/MItSelectionList.h>
#include <maya/MMatrix.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

namespace {

class Dag : public ApiTest {
protected:
    Names walk(MItDag& it) {
        Names out;
        for (; !it.isDone(); it.next()) out.push_back(it.fullPathName().asChar());
        return out;
    }
};

TEST_F(Dag, a_walk_goes_depth_first_from_the_world_over_all_nodes) {
    const MObject a = make("joint", "a");
    make("joint", "a2", make("joint", "a1", a));
    make("locator", "shape", a);
    make("joint", "b");
    MItDag it;
    EXPECT_TRUE(it.currentItem().hasFn(MFn::kWorld));
    EXPECT_EQ(walk(it),
              (Names{"", "|persp", "|persp|perspShape", "|top", "|top|topShape", "|front", "|front|frontShape", "|side",
                     "|side|sideShape", "|a", "|a|a1", "|a|a1|a2", "|a|shape", "|b"}));
    MItDag joints(MItDag::kBreadthFirst, MFn::kJoint);
    EXPECT_EQ(walk(joints), (Names{"|a", "|b", "|a|a1", "|a|a1|a2"}));
    MItDag below;
    below.reset(a);
    below.next();
    EXPECT_EQ(below.depth(), 1u);
    below.prune();
    EXPECT_EQ(walk(below), (Names{"|a|a1", "|a|shape"}));
}

TEST_F(Dag, a_walk_visits_each_way_of_an_instance_and_survives_removal) {
    const MObject a = make("transform", "a"), b = make("transform", "b");
    MObject shared = make("transform", "s", a);
    make("joint", "leaf", shared);
    ASSERT_TRUE(MFnDagNode(b).addChild(shared, MFnDagNode::kNextPos, true));
    MItDag it(MItDag::kDepthFirst, MFn::kJoint);
    EXPECT_EQ(walk(it), (Names{"|a|s|leaf", "|b|s|leaf"}));
    it.reset();
    MDagPath second;
    it.next();
    it.getPath(second);
    EXPECT_EQ(second.instanceNumber(), 1u);
    second.pop();
    EXPECT_EQ(second.fullPathName(), "|b|s");
    it.reset();
    scene().remove_node(**scene().find_node("leaf"));
    it.next();
    EXPECT_TRUE(it.isDone());
    EXPECT_FALSE(it.next());
}

TEST_F(Dag, a_handle_is_null_once_its_node_or_scene_is_gone) {
    const MObject a = make("joint", "a");
    MDagPath path;
    MFnDagNode(a).getPath(path);
    const MPlug plug = MFnDagNode(a).findPlug("tx");
    MFnTransform joint(a);
    session.new_scene();
    const MObject fresh = make("joint", "fresh");
    EXPECT_TRUE(a.isNull());
    EXPECT_FALSE(a == fresh);
    EXPECT_FALSE(a.hasFn(MFn::kJoint));
    EXPECT_EQ(a.apiType(), MFn::kInvalid);
    EXPECT_FALSE(path.isValid());
    EXPECT_EQ(path.fullPathName(), "");
    EXPECT_TRUE(plug.isNull());
    MStatus status;
    EXPECT_EQ(plug.asDouble(MDGContext::fsNormal, &status), 0.0);
    EXPECT_FALSE(status);
    EXPECT_EQ(joint.name(&status), "");
    EXPECT_FALSE(status);
    EXPECT_FALSE(joint.setTranslation({1, 2, 3}, MSpace::kTransform));
    EXPECT_FALSE(joint.set(MTransformationMatrix()));
    EXPECT_EQ(joint.transformation(&status).asMatrix(), MMatrix());
}

TEST_F(Dag, kinds_are_told_by_the_hosts_numbers) {
    EXPECT_EQ(MFn::kJoint, 121);
    EXPECT_EQ(MFn::kTransform, 110);
    EXPECT_EQ(make("joint", "j").apiType(), MFn::kJoint);
    const std::pair<const char*, int> constraints[] = {
        {"orientConstraint", 239}, {"pointConstraint", 240}, {"parentConstraint", 242}};
    for (const auto& [type, number] : constraints) {
        const MObject made = make(type, type);
        EXPECT_EQ(made.apiType(), number);
        EXPECT_TRUE(made.hasFn(MFn::kTransform));
        EXPECT_FALSE(made.hasFn(MFn::kJoint));
    }
    EXPECT_FALSE(node("perspShape").hasFn(MFn::kTransform));
    EXPECT_TRUE(node("lambert1").hasFn(static_cast<MFn::Type>(382)));
    MStatus status;
    MFnIkJoint wrong(node("persp"), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_EQ(wrong.name(), "");
}

TEST_F(Dag, parents_count_the_world) {
    const MObject a = make("joint", "a"), b = make("joint", "b", a);
    EXPECT_EQ(MFnDagNode(a).parentCount(), 1u);
    EXPECT_EQ(MFnDagNode(a).parent(0).apiType(), MFn::kWorld);
    MDagPath world, parent;
    EXPECT_TRUE(MFnDagNode(MFnDagNode(a).parent(0)).getPath(world));
    EXPECT_EQ(world.fullPathName(), "");
    MFnDagNode(MFnDagNode(b).parent(0)).getPath(parent);
    EXPECT_TRUE(parent == path("a"));
    MStatus status;
    EXPECT_TRUE(MFnDagNode(a).parent(1, &status).isNull());
    EXPECT_FALSE(status);
}

TEST_F(Dag, adding_a_child_moves_it_with_its_own_values_and_paths_follow) {
    MFnIkJoint first, second;
    const MObject a = first.create();
    MObject b = second.create();
    EXPECT_EQ(first.name(), "joint1");
    EXPECT_EQ(second.name(), "joint2");
    MSelectionList selected;
    MGlobal::getActiveSelectionList(selected);
    EXPECT_EQ(names(selected), Names{"|joint2"});
    first.setTranslation({10, 0, 0}, MSpace::kTransform);
    second.setTranslation({0, 5, 0}, MSpace::kTransform);
    MDagPath kept;
    second.getPath(kept);
    MDagPathArray paths;
    paths.append(kept);
    ASSERT_TRUE(MFnDagNode(a).addChild(b, MFnDagNode::kNextPos, false));
    EXPECT_EQ(paths[0].fullPathName(), "|joint1|joint2");
    EXPECT_EQ(second.getTranslation(MSpace::kTransform), MVector(0, 5, 0));
    EXPECT_EQ(second.getTranslation(MSpace::kWorld), MVector(10, 5, 0));
    EXPECT_TRUE(paths[0].exclusiveMatrix() == path("joint1").inclusiveMatrix());
    MObject top = a;
    EXPECT_FALSE(MFnDagNode(b).addChild(top));     // into its own subtree
    EXPECT_EQ(second.setName("joint1"), "joint1"); // free under its parent
    EXPECT_EQ(second.setName("Exporter Inserted Root"), "Exporter_Inserted_Root");
    MStatus status;
    EXPECT_EQ(second.setName("", &status), "Exporter_Inserted_Root");
    EXPECT_FALSE(status);
}

TEST_F(Dag, merging_lists_appends_what_is_new_and_keeps_the_order) {
    for (const char* name : {"a", "b", "c"}) make("joint", name);
    MSelectionList list, other;
    for (const char* name : {"c", "a"}) list.add(name);
    for (const char* name : {"b", "a", "time1"}) other.add(name);
    EXPECT_TRUE(list.merge(other));
    EXPECT_EQ(names(list), (Names{"|c", "|a", "|b", "time1"}));
    EXPECT_TRUE(list.merge(list));
    EXPECT_EQ(list.length(), 4u);
    MSelectionList flipped = list;
    other.add("front");
    flipped.merge(other, MSelectionList::kXORWithList);
    EXPECT_EQ(names(flipped), (Names{"|c", "|front"}));
    list.merge(other, MSelectionList::kRemoveFromList);
    EXPECT_EQ(names(list), (Names{"|c"}));
    EXPECT_FALSE(list.add("nobody"));
    MDagPath unused;
    EXPECT_FALSE(list.getDagPath(1, unused));
    EXPECT_FALSE(other.getDagPath(2, unused)); // time1 has no path
}

TEST_F(Dag, a_selection_walk_filters_by_kind) {
    make("joint", "a");
    MSelectionList list;
    for (const char* name : {"persp", "a", "time1", "lambert1"}) list.add(name);
    Names found;
    for (MItSelectionList it(list, MFn::kTransform); !it.isDone(); it.next()) {
        MDagPath at;
        ASSERT_TRUE(it.getDagPath(at));
        found.push_back(at.partialPathName().asChar());
    }
    EXPECT_EQ(found, (Names{"persp", "a"}));
}

} // namespace
