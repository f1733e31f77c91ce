#include "tests/headless/api/api_test.h"

#include <maya/MPlug.h>

#include <cmath>

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
    ASSERT_TRUE(node.setRotation(q * 2.0, MSpace::kTransform)); // its length doesn't matter
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

} // namespace
