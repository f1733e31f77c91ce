#include "tests/headless/api/api_test.h"

#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDag.h>
#include <maya/MMatrix.h>

namespace {

class NodeFunctions : public ApiTest {
protected:
    /// A node `s` under both `a` and `b`, with a joint `leaf` below it.
    void make_instance() {
        a = make("transform", "a");
        b = make("transform", "b");
        s = make("transform", "s", a);
        leaf = make("joint", "leaf", s);
        ASSERT_TRUE(MFnDagNode(b).addChild(s, MFnDagNode::kNextPos, true));
    }
    static Names names(const MDagPathArray& paths) {
        Names out;
        for (unsigned int i = 0; i < paths.length(); ++i) out.push_back(paths[i].fullPathName().asChar());
        return out;
    }

    MObject a, b, s, leaf;
};

TEST_F(NodeFunctions, make_nodes_and_tell_what_they_are) {
    MFnDependencyNode fn;
    MStatus status;
    const MObject made = fn.create("lambert", "shade", &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(fn.typeName(), "lambert");
    EXPECT_EQ(MFnDependencyNode(MFnDependencyNode().create("lambert", "shade")).name(), "shade1");
    EXPECT_TRUE(MFnDependencyNode().create("no type!", "x", &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_FALSE(fn.isDefaultNode());
    EXPECT_TRUE(MFnDependencyNode(node("lambert1")).isDefaultNode());
    EXPECT_FALSE(fn.isFromReferencedFile(&status));
    EXPECT_TRUE(status);
    EXPECT_TRUE(fn.hasAttribute("diffuse"));
    EXPECT_TRUE(fn.hasAttribute("dc")); // its short name
    EXPECT_FALSE(fn.hasAttribute("translate"));
    EXPECT_STREQ(made.apiTypeStr(), "kLambert");
    EXPECT_STREQ(node("time1").apiTypeStr(), "kTime");
    EXPECT_STREQ(MFnDependencyNode().create("animCurveTA", "c").apiTypeStr(), "kAnimCurveTimeToAngular");
    EXPECT_TRUE(MFnDagNode().create("animCurveTA", "stray", MObject::kNullObj, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(node("stray").isNull()); // and nothing is left behind
    EXPECT_STREQ(MObject().apiTypeStr(), "kInvalid");
    EXPECT_EQ(fn.findPlug("diffuse", false, &status).name(), "shade.diffuse");

    const MObject whole = make("joint", "whole"), one = make("joint", "same", whole);
    make("joint", "same");
    EXPECT_FALSE(MFnDependencyNode(one).hasUniqueName());
    EXPECT_TRUE(MFnDependencyNode(whole).hasUniqueName());
    headless::Attribute extra;
    extra.long_name = extra.short_name = "extra";
    const unsigned int before = MFnDependencyNode(whole).attributeCount();
    ASSERT_TRUE((*scene().find_node("whole"))->add_attribute(extra));
    EXPECT_EQ(MFnDependencyNode(whole).attributeCount(), before + 1);
    EXPECT_TRUE(MFnDependencyNode(whole).findPlug("extra").isDynamic());
    EXPECT_FALSE(MFnDependencyNode(whole).findPlug("tx").isDynamic());
}

TEST_F(NodeFunctions, walk_and_change_the_families_of_nodes) {
    make_instance();
    MFnDagNode fn(a);
    EXPECT_EQ(fn.childCount(), 1u);
    EXPECT_EQ(fn.child(0), s);
    MStatus status;
    EXPECT_TRUE(fn.child(1, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(fn.hasChild(s));
    EXPECT_FALSE(fn.hasChild(leaf)); // a grandchild
    EXPECT_TRUE(MFnDagNode(s).hasParent(b));
    EXPECT_FALSE(MFnDagNode(leaf).hasParent(a));
    EXPECT_FALSE(MFnDagNode(s).hasParent(MObject()));
    EXPECT_EQ(fn.dagRoot().apiType(), MFn::kWorld);
    EXPECT_EQ(fn.removeChild(leaf), MStatus::kInvalidParameter);
    EXPECT_TRUE(fn.removeChild(s));
    EXPECT_EQ(MFnDagNode(s).fullPathName(), "|b|s");
    EXPECT_TRUE(MFnDagNode(b).removeChild(s));
    EXPECT_EQ(MFnDagNode(s).fullPathName(), "|s");
    EXPECT_EQ(MFnDagNode(leaf).fullPathName(), "|s|leaf");
    MObject no_dag_node = node("time1");
    EXPECT_TRUE(MFnDagNode().create("joint", "lost", no_dag_node, &status).isNull());
    EXPECT_FALSE(status);
    MFnDagNode gone(make("joint", "gone"));
    MObject lost = gone.object();
    scene().remove_node(**scene().find_node("gone"));
    EXPECT_TRUE(MFnDagNode().create("joint", "x", lost, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
}

TEST_F(NodeFunctions, count_instances_directly_and_by_way_of_their_parents) {
    make_instance();
    const MFnDagNode fn(leaf), shared(s);
    EXPECT_EQ(fn.instanceCount(false), 1u);
    EXPECT_EQ(fn.instanceCount(true), 2u);
    EXPECT_TRUE(fn.isInstanced());
    EXPECT_FALSE(fn.isInstanced(false));
    EXPECT_TRUE(shared.isInstanced(false));
    EXPECT_EQ(MFnDagNode(a).instanceCount(true), 1u);
    const Names ways{"|a|s|leaf", "|b|s|leaf"};
    MDagPathArray paths;
    ASSERT_TRUE(fn.getAllPaths(paths));
    EXPECT_EQ(names(paths), ways);
    EXPECT_TRUE(paths[1].isInstanced());
    EXPECT_FALSE(path("a").isInstanced());
    EXPECT_EQ(MDagPath::getAllPathsTo(node("time1"), paths), MStatus::kInvalidParameter);
    EXPECT_EQ(MFnDagNode(paths[1]).partialPathName(), "b|s|leaf");
    MItDag it(MItDag::kDepthFirst, MFn::kJoint);
    EXPECT_EQ(it.partialPathName(), "a|s|leaf");
    EXPECT_EQ(it.instanceCount(true), 2u);
    EXPECT_EQ(it.instanceCount(false), 1u);
    EXPECT_TRUE(it.isInstanced(true));
    EXPECT_FALSE(it.isInstanced(false));
    paths.clear();
    ASSERT_TRUE(it.getAllPaths(paths));
    EXPECT_EQ(names(paths), ways);
    it.next();
    it.next();
    MStatus status;
    EXPECT_EQ(it.instanceCount(true, &status), 0u);
    EXPECT_FALSE(status);
    EXPECT_FALSE(it.getAllPaths(paths));
}

TEST_F(NodeFunctions, paths_reach_shapes_and_transforms) {
    const MObject two = make("transform", "two");
    make("joint", "child", two);
    make("locator", "first", two);
    const MObject second = make("locator", "second", two);
    MDagPath way = path("two"), shape = way, lone = path("persp");
    unsigned int count = 0;
    EXPECT_TRUE(way.numberOfShapesDirectlyBelow(count));
    EXPECT_EQ(count, 2u);
    EXPECT_FALSE(way.extendToShape()); // which of them?
    EXPECT_TRUE(shape.extendToShapeDirectlyBelow(1));
    EXPECT_EQ(shape.fullPathName(), "|two|second");
    EXPECT_EQ(shape.transform(), two);
    EXPECT_EQ(shape.apiType(), MFn::kLocator);
    EXPECT_TRUE(shape.extendToShape()); // it is one
    EXPECT_EQ(shape.node(), second);
    EXPECT_EQ(way.extendToShapeDirectlyBelow(2), MStatus::kInvalidParameter);
    EXPECT_TRUE(lone.extendToShape());
    EXPECT_EQ(lone.fullPathName(), "|persp|perspShape");
    EXPECT_EQ(lone.push(second), MStatus::kInvalidParameter); // another's child
    EXPECT_EQ(lone.pop(3), MStatus::kInvalidParameter);
    EXPECT_TRUE(lone.pop(2));
    EXPECT_EQ(lone.node().apiType(), MFn::kWorld);
    MStatus status;
    EXPECT_TRUE(lone.transform(&status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(lone.set(shape));
    EXPECT_EQ(lone, shape);
    MDagPath none;
    EXPECT_FALSE(none.numberOfShapesDirectlyBelow(count));
    EXPECT_FALSE(none.isVisible(&status));
    EXPECT_FALSE(status);
    EXPECT_FALSE(none.isInstanced(&status));
    EXPECT_FALSE(status);
}

TEST_F(NodeFunctions, a_path_is_seen_when_all_on_it_is) {
    make_instance();
    make("locator", "mark", s);
    const MDagPath by_a = path("|a|s|mark"), by_b = path("|b|s|mark");
    EXPECT_TRUE(by_a.isVisible());
    MFnDagNode(a).findPlug("visibility").setValue(false);
    EXPECT_FALSE(by_a.isVisible());
    EXPECT_TRUE(by_b.isVisible());
    MFnDagNode(by_b).findPlug("intermediateObject").setValue(true);
    EXPECT_FALSE(by_b.isVisible());
}

TEST_F(NodeFunctions, fail_on_a_node_that_is_gone) {
    MFnDagNode fn(make("joint", "gone"));
    session.new_scene();
    const auto fails = [](const auto& call) {
        MStatus status;
        call(&status);
        return !status;
    };
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_EQ(fn.typeName(status), ""); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_FALSE(fn.hasUniqueName(status)); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_FALSE(fn.isDefaultNode(status)); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_FALSE(fn.isFromReferencedFile(status)); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_FALSE(fn.hasAttribute("tx", status)); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_EQ(fn.attributeCount(status), 0u); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_EQ(fn.childCount(status), 0u); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_FALSE(fn.hasChild(MObject(), status)); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_FALSE(fn.hasParent(MObject(), status)); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_EQ(fn.instanceCount(true, status), 0u); }));
    EXPECT_TRUE(fails([&](MStatus* status) { EXPECT_EQ(fn.transformationMatrix(status), MMatrix()); }));
}

} // namespace
