#include "tests/headless/api/api_test.h"

#include <maya/MEulerRotation.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnTransform.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <cmath>
#include <numbers>

namespace {

class TransformFunctions : public ApiTest {
protected:
    void set(const MObject& object, const char* plug, double value) {
        MPlug found = MFnDependencyNode(object).findPlug(plug);
        ASSERT_TRUE(found.setValue(value)) << plug;
    }
};

TEST_F(TransformFunctions, a_set_transformation_is_given_back_whatever_orients_and_pivots_there_are) {
    const MMatrix turn = MEulerRotation(0.4, -1.2, 2.5).asMatrix();
    MMatrix target = turn;
    for (int c = 0; c < 3; ++c) target[1][c] *= 3.0;
    target[3][0] = 10;
    target[3][2] = -4;
    for (const char* type : {"transform", "joint"}) {
        for (int order = 0; order < 6; ++order) {
            const MObject made = make(type, "node");
            for (const char* plug : {"rax", "ray", "rpx", "rptz", "spy", "sptx"}) set(made, plug, 0.7);
            if (made.hasFn(MFn::kJoint)) set(made, "joy", 0.9);
            set(made, "ro", order);
            MFnTransform node(made);
            ASSERT_TRUE(node.set(MTransformationMatrix(target)));
            EXPECT_TRUE(node.transformation().asMatrix().isEquivalent(target, 1e-12)) << type << order;
            EXPECT_EQ(node.findPlug("rpx").asDouble(), 0.7);
        }
    }
}

TEST_F(TransformFunctions, set_rotation_writes_angles_in_the_nodes_rotate_order) {
    MFnTransform node(make("joint", "j"));
    set(node.object(), "ro", 2);
    const MQuaternion q = MEulerRotation(0.3, 0.5, -0.8, MEulerRotation::kZXY).asQuaternion();
    ASSERT_TRUE(node.setRotation(2.0 * q, MSpace::kTransform)); // its length doesn't matter
    EXPECT_NEAR(node.findPlug("rx").asDouble(), 0.3, 1e-14);
    EXPECT_NEAR(node.findPlug("ry").asDouble(), 0.5, 1e-14);
    EXPECT_NEAR(node.findPlug("rz").asDouble(), -0.8, 1e-14);
    MQuaternion back;
    node.getRotation(back);
    EXPECT_TRUE(back.asMatrix().isEquivalent(q.asMatrix(), 1e-14));
    ASSERT_TRUE(node.setRotationOrder(MTransformationMatrix::kXYZ, true));
    EXPECT_TRUE(node.transformation().asMatrix().isEquivalent(q.asMatrix(), 1e-14));
}

TEST_F(TransformFunctions, world_space_works_through_parents_orients_and_pivots) {
    MFnTransform parent(make("joint", "p"));
    parent.setRotation(MEulerRotation(0.2, 0.3, 0.4));
    parent.setTranslation({1, 2, 3}, MSpace::kTransform);
    const double twice[3] = {2, 2, 2};
    parent.setScale(twice);
    for (const char* type : {"transform", "joint"}) {
        MFnTransform child(make(type, type, parent.object()));
        set(child.object(), "rax", 0.5);
        set(child.object(), "rpy", 2);
        if (child.object().hasFn(MFn::kJoint)) set(child.object(), "joz", 1);
        const MQuaternion wanted(1.1, MVector(1, 2, 3));
        ASSERT_TRUE(child.setRotation(wanted, MSpace::kWorld));
        ASSERT_TRUE(child.setTranslation({7, 8, 9}, MSpace::kWorld));
        MQuaternion got;
        child.getRotation(got, MSpace::kWorld);
        EXPECT_TRUE(got.asMatrix().isEquivalent(wanted.asMatrix(), 1e-13)) << type;
        EXPECT_TRUE(child.getTranslation(MSpace::kWorld).isEquivalent({7, 8, 9}, 1e-13)) << type;
    }
}

TEST_F(TransformFunctions, the_local_matrix_of_a_plain_scale_is_exact) {
    const MObject made = make("transform", "t");
    for (const char* plug : {"sx", "sy", "sz"}) set(made, plug, 2.54);
    const MMatrix m = MFnTransform(made).transformation().asMatrix();
    EXPECT_EQ(m(0, 0), 2.54);
}

TEST_F(TransformFunctions, parts_of_a_transformation_are_the_nodes_own_values) {
    MFnTransform node(make("transform", "t"));
    for (const char* plug : {"rpx", "spz", "rptx", "shxy"}) set(node.object(), plug, 1.5);
    node.setTranslation({1, 2, 3}, MSpace::kTransform);
    node.setRotation(MEulerRotation(0.1, 0.2, 0.3));
    const MTransformationMatrix t = node.transformation();
    double shear[3];
    t.getShear(shear, MSpace::kTransform);
    EXPECT_NEAR(shear[0], 1.5, 1e-14);
    EXPECT_TRUE(t.getTranslation(MSpace::kTransform).isEquivalent({1, 2, 3}, 1e-14));
    EXPECT_EQ(t.rotatePivot(MSpace::kTransform).x, 1.5);
    EXPECT_TRUE(t.eulerRotation().isEquivalent(MEulerRotation(0.1, 0.2, 0.3), 1e-14));
}

TEST_F(TransformFunctions, refuse_a_plug_that_another_node_drives) {
    make("joint", "a");
    const MObject b = make("joint", "b");
    ASSERT_TRUE(scene().connect(*scene().find_plug("a.ry"), *scene().find_plug("b.ry")));
    EXPECT_FALSE(MFnTransform(b).setRotation(MEulerRotation(1, 1, 1)));
    EXPECT_TRUE(MFnTransform(b).setTranslation({1, 1, 1}, MSpace::kTransform));
}

TEST_F(TransformFunctions, single_values_go_in_and_out_as_they_are) {
    MFnTransform parent, node;
    parent.create();
    parent.setRotation(MEulerRotation(0, 0, std::numbers::pi / 2)); // its x is the world's y, its y the world's -x
    parent.setTranslation({0, 0, 7}, MSpace::kTransform);
    const MObject made = node.create(parent.object());
    EXPECT_EQ(node.fullPathName(), "|transform1|transform2");
    EXPECT_TRUE(node.translateBy({1, 2, 3}, MSpace::kTransform));
    EXPECT_TRUE(node.translateBy({1, 0, 0}, MSpace::kWorld));
    EXPECT_TRUE(node.getTranslation(MSpace::kTransform).isEquivalent({1, 1, 3}, 1e-14));
    set(made, "ro", 5);
    EXPECT_EQ(node.rotationOrder(), MTransformationMatrix::kZYX);
    const double angles[3] = {0.3, -0.4, 0.5}, shear[3] = {2, 3, 4}, scale[3] = {5, 6, -7};
    EXPECT_TRUE(node.setRotation(angles, MTransformationMatrix::kYXZ));
    double got[3];
    MTransformationMatrix::RotationOrder order = MTransformationMatrix::kInvalid;
    EXPECT_TRUE(node.getRotation(got, order));
    EXPECT_EQ(order, MTransformationMatrix::kZYX);
    EXPECT_TRUE(MEulerRotation(got, MEulerRotation::kZYX)
                    .asMatrix()
                    .isEquivalent(MEulerRotation(angles, MEulerRotation::kYXZ).asMatrix(), 1e-14));
    EXPECT_EQ(node.setRotation(angles, MTransformationMatrix::kLast), MStatus::kInvalidParameter);
    EXPECT_TRUE(node.setShear(shear) && node.setScale(scale));
    EXPECT_EQ(node.findPlug("shxz").asDouble(), 3.0);
    EXPECT_EQ(node.findPlug("sz").asDouble(), -7.0);
    EXPECT_TRUE(node.getShear(got));
    EXPECT_EQ(MVector(got), MVector(shear));
    EXPECT_TRUE(node.getScale(got));
    EXPECT_EQ(MVector(got), MVector(scale));
}

TEST_F(TransformFunctions, pivots_stand_still_in_the_world_while_their_values_change) {
    MFnTransform parent(make("transform", "p"));
    parent.setRotation(MEulerRotation(0, 0, std::numbers::pi / 2));
    MFnTransform node(make("transform", "t", parent.object()));
    for (const char* plug : {"rpx", "spy", "rptz", "sptx"}) set(node.object(), plug, 2);
    EXPECT_EQ(node.rotatePivot(MSpace::kTransform), MPoint(2, 0, 0));
    EXPECT_EQ(node.scalePivot(MSpace::kTransform), MPoint(0, 2, 0));
    const double triple[3] = {3, 3, 3};
    node.setTranslation({1, 0, 0}, MSpace::kTransform);
    node.setScale(triple);
    // (2, 0, 0) and the translations (0, 0, 2) and (1, 0, 0), turned by the parent
    EXPECT_TRUE(node.rotatePivot(MSpace::kWorld).isEquivalent({0, 3, 2}, 1e-14));
    const MPoint scaled = node.scalePivot(MSpace::kWorld);
    EXPECT_TRUE(scaled.isEquivalent({-2, 3, 2}, 1e-14)); // (0, 2, 0) + (2, 0, 0) + (0, 0, 2) + (1, 0, 0), turned
    const double once[3] = {1, 1, 1};
    node.setScale(once);
    EXPECT_TRUE(node.scalePivot(MSpace::kWorld).isEquivalent(scaled, 1e-14));
    node.setRotation(MEulerRotation(1, 2, 3));
    EXPECT_TRUE(node.rotatePivot(MSpace::kWorld).isEquivalent({0, 3, 2}, 1e-14));
}

TEST_F(TransformFunctions, joints_have_an_orientation_and_make_up_for_their_parents_scale) {
    MFnIkJoint parent(make("joint", "p"));
    const double scale[3] = {2, 3, 4};
    parent.setScale(scale);
    MFnIkJoint joint(make("joint", "j", parent.object()));
    const MEulerRotation zyx(0.3, -0.4, 0.5, MEulerRotation::kZYX);
    MQuaternion q;
    MEulerRotation e;
    EXPECT_TRUE(joint.setOrientation(zyx));
    EXPECT_TRUE(joint.getOrientation(q));
    EXPECT_TRUE(q.asMatrix().isEquivalent(zyx.asMatrix(), 1e-14));
    EXPECT_TRUE(joint.setOrientation(2.0 * MEulerRotation(0.1, 0.2, 0.3).asQuaternion())); // of any length
    EXPECT_TRUE(joint.getOrientation(e));
    EXPECT_TRUE(e.isEquivalent({0.1, 0.2, 0.3}, 1e-14));
    EXPECT_NEAR(joint.findPlug("joz").asDouble(), 0.3, 1e-14);
    double got[3];
    EXPECT_TRUE(joint.getSegmentScale(got));
    EXPECT_EQ(MVector(got), MVector(scale));
    EXPECT_TRUE(parent.getSegmentScale(got));
    EXPECT_EQ(MVector(got), MVector::one);
}

TEST_F(TransformFunctions, fail_on_a_node_that_is_gone) {
    MFnIkJoint joint(make("joint", "gone"));
    session.new_scene();
    double three[3] = {1, 1, 1};
    MTransformationMatrix::RotationOrder order = MTransformationMatrix::kXYZ;
    MQuaternion q;
    MEulerRotation e;
    EXPECT_FALSE(joint.getScale(three) || joint.setScale(three) || joint.getShear(three) || joint.setShear(three));
    EXPECT_FALSE(joint.getRotation(three, order) || joint.getRotation(q) || joint.setRotation(three, order));
    EXPECT_FALSE(joint.getOrientation(q) || joint.getOrientation(e) || joint.getSegmentScale(three));
    EXPECT_FALSE(joint.setOrientation(MQuaternion()) || joint.setOrientation(MEulerRotation()));
    EXPECT_FALSE(joint.translateBy({1, 0, 0}, MSpace::kWorld));
    MStatus status;
    EXPECT_EQ(joint.rotationOrder(&status), MTransformationMatrix::kInvalid);
    EXPECT_FALSE(status);
    joint.rotatePivot(MSpace::kWorld, &status);
    EXPECT_FALSE(status);
    status = MStatus();
    joint.scalePivot(MSpace::kTransform, &status);
    EXPECT_FALSE(status);
}

} // namespace
