#include "tests/headless/api/api_test.h"

#include <maya/MEulerRotation.h>
#include <maya/MFloatVector.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <cmath>
#include <numbers>
#include <sstream>

namespace {

constexpr double quarter = std::numbers::pi / 2;

template<typename T>
std::string shown(const T& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

MMatrix moving(double x, double y, double z) {
    MMatrix out;
    out[3][0] = x;
    out[3][1] = y;
    out[3][2] = z;
    return out;
}

TEST(Vectors, go_through_matrices_as_directions_and_points_as_places) {
    const MMatrix turn = MQuaternion(quarter, MVector::zAxis).asMatrix(); // x to y, y to -x
    MVector v(1, 2, 3);
    v *= turn * moving(5, 0, 0);
    EXPECT_TRUE(v.isEquivalent({-2, 1, 3}, 1e-15));
    MPoint p(1, 2, 3);
    p *= turn * moving(5, 0, 0);
    EXPECT_TRUE(p.isEquivalent({3, 1, 3}, 1e-15));
    EXPECT_FALSE(p.isEquivalent({3, 1, 3, 2}, 1e-15));
    EXPECT_EQ(MPoint(2, 4, 6, 2).cartesianize(), MPoint(1, 2, 3));
    EXPECT_EQ(MPoint(2, 4, 6, 0).cartesianize(), MPoint(2, 4, 6, 0));
    EXPECT_EQ(MPoint(5, 7, 9) - MPoint(1, 2, 3), MVector(4, 5, 6));
    double four[4];
    ASSERT_TRUE(MPoint(1, 2, 3, 4).get(four));
    EXPECT_EQ(MPoint(four), MPoint(1, 2, 3, 4));
    EXPECT_TRUE(MVector(1, 2, 3).isParallel({2, 4, 6}));
    EXPECT_FALSE(MVector(1, 2, 3).isParallel({1, 2, 3.1}));
    EXPECT_TRUE(MVector(1, 2, 3).isParallel({1, 2, 3.1}, 0.1));
    EXPECT_EQ(MFloatVector(MVector(0.1, 0.2, 0.3)).z, 0.3f);
    EXPECT_TRUE(MVector::yAxis.rotateBy(MEulerRotation(quarter, quarter, 0)).isEquivalent(MVector::xAxis, 1e-15));
    EXPECT_TRUE(MVector::yAxis.rotateBy(MEulerRotation(quarter, quarter, 0, MEulerRotation::kYXZ))
                    .isEquivalent(MVector::zAxis, 1e-15)); // about y first, which leaves it
}

TEST(Matrices, add_multiply_and_know_their_volume) {
    const float numbers[4][4] = {{0, 1, 0, 0}, {2, 0, 0, 0}, {0, 0, 3, 0}, {0, 0, 0, 4}};
    const MMatrix m(numbers);
    EXPECT_EQ(m(1, 0), 2.0);
    EXPECT_EQ(m.det4x4(), -24.0); // two rows of a diagonal exchanged
    EXPECT_EQ(m.det3x3(), -6.0);
    EXPECT_FALSE(m.isSingular());
    MMatrix flat = m;
    flat[2][2] = 0;
    EXPECT_TRUE(flat.isSingular());
    EXPECT_EQ(flat.inverse(), MMatrix::identity);
    EXPECT_EQ((m + flat)(2, 2), 3.0);
    EXPECT_EQ((m - flat)(2, 2), 3.0);
    EXPECT_EQ((m - flat)(1, 0), 0.0);
    MMatrix product;
    product.setToProduct(moving(5, 0, 0), m); // moved first, then (5, 0, 0) goes through the matrix
    EXPECT_EQ(product(3, 1), 5.0);
    double copy[4][4];
    ASSERT_TRUE(product.get(copy));
    EXPECT_EQ(MMatrix(copy), product);
    EXPECT_EQ(shown(m), "[[0, 1, 0, 0], [2, 0, 0, 0], [0, 0, 3, 0], [0, 0, 0, 4]]");
}

TEST(Matrices, act_on_rows_from_the_left_and_convert_to_single_precision) {
    MMatrix move, turn;
    move[3][0] = 5;
    turn = MQuaternion(quarter, MVector::zAxis).asMatrix(); // x to y
    const MPoint moved_then_turned = MPoint(0, 0, 0) * (move * turn);
    EXPECT_NEAR(moved_then_turned.y, 5, 1e-15);
    EXPECT_EQ(MVector(1, 2, 3) * move, MVector(1, 2, 3));
    float single[4][4];
    turn.get(single);
    EXPECT_EQ(single[0][1], 1.0f);
    EXPECT_TRUE((move * move.inverse()).isEquivalent(MMatrix::identity));
    EXPECT_EQ(turn.transpose()(1, 0), turn(0, 1));
    EXPECT_NEAR((turn * 2.0).det3x3(), 8.0, 1e-14);
}

TEST(Rotations, quaternions_and_angles_agree) {
    const MQuaternion q = MQuaternion(quarter, MVector::xAxis) * MQuaternion(quarter, MVector::yAxis);
    const MEulerRotation e(quarter, quarter, 0);
    EXPECT_TRUE(q.asMatrix().isEquivalent(e.asMatrix(), 1e-15));
    EXPECT_TRUE(e.reorder(MEulerRotation::kZXY).asMatrix().isEquivalent(e.asMatrix(), 1e-15));
    EXPECT_TRUE(MVector::yAxis.rotateBy(q).isEquivalent(MVector::xAxis, 1e-15)); // y to z to x
    const MQuaternion opposite(MVector::xAxis, MVector::xNegAxis);
    EXPECT_TRUE(MVector::xAxis.rotateBy(opposite).isEquivalent(MVector::xNegAxis, 1e-15));
    const MQuaternion half = slerp(MQuaternion(), -MQuaternion(1.0, MVector::zAxis), 0.5);
    EXPECT_TRUE(half.isEquivalent(MQuaternion(0.5, MVector::zAxis), 1e-15));
    EXPECT_NEAR(MVector(1, 0, 0).angle(MVector(1, 1e-9, 0)), 1e-9, 1e-20);
}

TEST(Rotations, of_quaternions_are_undone_named_and_read_off) {
    const MQuaternion q(1, 2, 3, 4); // of length square 30
    EXPECT_TRUE(q.inverse().isEquivalent({-1 / 30.0, -2 / 30.0, -3 / 30.0, 4 / 30.0}, 1e-15));
    EXPECT_TRUE((q * q.inverse()).isEquivalent(MQuaternion::identity, 1e-15));
    EXPECT_EQ(q.conjugate(), MQuaternion(-1, -2, -3, 4));
    EXPECT_EQ(MQuaternion(0, 0, 0, 0).inverse(), MQuaternion(0, 0, 0, 0));
    MQuaternion turn;
    EXPECT_TRUE(MVector::yAxis.rotateBy(turn.setToXAxis(quarter)).isEquivalent(MVector::zAxis, 1e-15));
    EXPECT_TRUE(MVector::zAxis.rotateBy(turn.setToYAxis(quarter)).isEquivalent(MVector::xAxis, 1e-15));
    EXPECT_TRUE(MVector::xAxis.rotateBy(turn.setToZAxis(quarter)).isEquivalent(MVector::yAxis, 1e-15));
    EXPECT_TRUE(MVector::xAxis.rotateBy(MQuaternion(MVector::xAxis, {3, 0, 4})).isEquivalent({0.6, 0, 0.8}, 1e-15));
    MVector axis;
    double angle = 0.0;
    EXPECT_TRUE(MQuaternion(1.25, MVector(0, 3, 4)).getAxisAngle(axis, angle));
    EXPECT_TRUE(axis.isEquivalent({0, 0.6, 0.8}, 1e-15));
    EXPECT_NEAR(angle, 1.25, 1e-15);
    EXPECT_FALSE(MQuaternion::identity.getAxisAngle(axis, angle)); // about any axis
    EXPECT_EQ(angle, 0.0);
    double four[4];
    ASSERT_TRUE(q.get(four));
    EXPECT_EQ(MQuaternion(four), q);
    EXPECT_EQ(shown(q), "[1, 2, 3, 4]");
}

TEST(Rotations, keep_the_order_of_the_angles_they_are_given_to) {
    const MEulerRotation zyx(0.3, -0.4, 0.5, MEulerRotation::kZYX);
    MQuaternion q;
    q = zyx;
    EXPECT_TRUE(q.asMatrix().isEquivalent(zyx.asMatrix(), 1e-15));
    MEulerRotation e(9, 9, 9, MEulerRotation::kZYX);
    e = q;
    EXPECT_TRUE(e.isEquivalent(zyx, 1e-14));
    e = MEulerRotation(0.1, 0.2, 0.3).asQuaternion().asEulerRotation();
    EXPECT_TRUE(e.isEquivalent({0.1, 0.2, 0.3}, 1e-14));
    e = zyx;
    e.reorderIt(MEulerRotation::kYZX);
    EXPECT_EQ(e.order, MEulerRotation::kYZX);
    EXPECT_GT(std::abs(e.x - zyx.x), 0.01);
    EXPECT_TRUE(e.asMatrix().isEquivalent(zyx.asMatrix(), 1e-14));
    EXPECT_EQ(shown(MEulerRotation(1, 2, 3, MEulerRotation::kZXY)), "[1, 2, 3] order 2");
    EXPECT_EQ(shown(MPoint(1, 2, 3)), "[1, 2, 3, 1]");
}

TEST(Transformations, made_from_a_matrix_give_it_back_bit_by_bit) {
    MMatrix m = MEulerRotation(0.1, 0.2, 0.3).asMatrix();
    m[0][0] = 2.54;
    m[3][1] = 0.1;
    EXPECT_EQ(MTransformationMatrix(m).asMatrix(), m);
}

TEST(Transformations, come_apart_and_change_by_part) {
    MTransformationMatrix t;
    const double scale[3] = {2, 3, 4}, angles[3] = {0.5, -0.25, 1};
    t.setScale(scale, MSpace::kTransform);
    t.setRotation(angles, MTransformationMatrix::kZYX);
    t.setTranslation({1, 2, 3}, MSpace::kTransform);
    const MMatrix whole = t.asMatrix();
    MTransformationMatrix u(whole);
    double got[3];
    u.getScale(got, MSpace::kTransform);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(got[i], scale[i], 1e-14);
    EXPECT_TRUE(
        u.rotation().asMatrix().isEquivalent(MEulerRotation(MVector(angles), MEulerRotation::kZYX).asMatrix(), 1e-14));
    EXPECT_EQ(u.getTranslation(MSpace::kTransform), MVector(1, 2, 3));
    u.setRotatePivot({5, 6, 7}, MSpace::kTransform, true);
    u.setScalePivot({-1, 0, 2}, MSpace::kTransform, true);
    EXPECT_TRUE(u.asMatrix().isEquivalent(whole, 1e-12));
    u.setRotatePivot({0, 0, 0}, MSpace::kTransform, false);
    EXPECT_FALSE(u.asMatrix().isEquivalent(whole, 1e-3));
}

TEST(Transformations, state_their_rotation_in_any_order) {
    using T = MTransformationMatrix;
    const double angles[3] = {0.3, -0.4, 0.5};
    T t;
    ASSERT_TRUE(t.setRotation(angles, T::kYZX));
    const MMatrix turned = t.asMatrix();
    EXPECT_EQ(t.rotationOrder(), T::kYZX);
    ASSERT_TRUE(t.reorderRotation(T::kZYX));
    EXPECT_TRUE(t.asMatrix().isEquivalent(turned, 1e-14));
    ASSERT_TRUE(t.setRotation(angles, T::kZYX));
    double got[3];
    T::RotationOrder order = T::kInvalid;
    ASSERT_TRUE(t.getRotation(got, order));
    EXPECT_EQ(order, T::kZYX);
    EXPECT_EQ(MVector(got), MVector(angles));
    EXPECT_TRUE(t.asMatrix().isEquivalent(MEulerRotation(MVector(angles), MEulerRotation::kZYX).asMatrix(), 1e-14));
    for (const T::RotationOrder none : {T::kInvalid, T::kLast}) {
        EXPECT_EQ(t.reorderRotation(none), MStatus::kInvalidParameter);
        EXPECT_EQ(t.setRotation(angles, none), MStatus::kInvalidParameter);
    }
    t.rotateTo(MEulerRotation(0.1, 0.2, 0.3, MEulerRotation::kXZY));
    EXPECT_EQ(t.eulerRotation(), MEulerRotation(0.1, 0.2, 0.3, MEulerRotation::kXZY));
}

TEST(Transformations, turn_further_before_or_after_what_they_have) {
    const MQuaternion about_x(quarter, MVector::xAxis), about_y(quarter, MVector::yAxis);
    MTransformationMatrix t;
    t.rotateTo(3.0 * about_x); // its length doesn't matter
    t.rotateBy(about_y, MSpace::kPreTransform);
    EXPECT_TRUE((MVector::zAxis * t.asMatrix()).isEquivalent(MVector::xAxis, 1e-15)); // z to x, which stays
    t.setRotationQuaternion(2 * about_x.x, 0, 0, 2 * about_x.w);
    double x, y, z, w;
    ASSERT_TRUE(t.getRotationQuaternion(x, y, z, w));
    EXPECT_TRUE(MQuaternion(x, y, z, w).isEquivalent(about_x, 1e-15));
    t.rotateBy(about_y, MSpace::kPostTransform);
    EXPECT_TRUE((MVector::zAxis * t.asMatrix()).isEquivalent(MVector::yNegAxis, 1e-15)); // z to -y, which stays
    t.rotateTo(about_x);
    t.setRotationOrientation(MQuaternion(quarter, MVector::zAxis)); // ahead of the rotation: x to y to z
    EXPECT_TRUE((MVector::xAxis * t.asMatrix()).isEquivalent(MVector::zAxis, 1e-15));
    EXPECT_TRUE(t.rotation().isEquivalent(about_x, 1e-15));
    EXPECT_TRUE(t.rotationOrientation().isEquivalent(MQuaternion(quarter, MVector::zAxis), 1e-15));
}

TEST(Transformations, put_their_parts_together_in_the_hosts_order) {
    MTransformationMatrix t;
    const double shear[3] = {2, 3, 4}, twice[3] = {2, 2, 2};
    t.setShear(shear, MSpace::kTransform);
    const double sheared[4][4] = {{1, 0, 0, 0}, {2, 1, 0, 0}, {3, 4, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ(t.asMatrix(), MMatrix(sheared));

    // The origin: by the scale about (1, 0, 0) to -1, by its pivot's move to (-1, 1), less the rotate pivot (0, 1) and
    // turned to (0, -1), back by the pivot to (0, 0), and on by its move and the translation.
    t = MTransformationMatrix();
    t.setScale(twice, MSpace::kTransform);
    t.setScalePivot({1, 0, 0}, MSpace::kTransform, false);
    t.setScalePivotTranslation({0, 1, 0}, MSpace::kTransform);
    t.setRotatePivot({0, 1, 0}, MSpace::kTransform, false);
    t.rotateTo(MQuaternion(quarter, MVector::zAxis));
    t.setRotatePivotTranslation({0, 0, 5}, MSpace::kTransform);
    t.setTranslation({9, 0, 0}, MSpace::kTransform);
    t.addTranslation({1, -2, 0}, MSpace::kTransform);
    EXPECT_TRUE((MPoint() * t.asMatrix()).isEquivalent({10, -2, 5}, 1e-14));
    EXPECT_EQ(t.asScaleMatrix()(1, 1), 2.0);
    EXPECT_EQ(t.asScaleMatrix()(3, 0), 0.0);
    EXPECT_EQ(t.scalePivot(MSpace::kTransform), MPoint(1, 0, 0));
    EXPECT_EQ(t.scalePivotTranslation(MSpace::kTransform), MVector(0, 1, 0));
    EXPECT_EQ(t.rotatePivotTranslation(MSpace::kTransform), MVector(0, 0, 5));
    MTransformationMatrix moved = t;
    moved.addTranslation({1e-6, 0, 0}, MSpace::kTransform);
    EXPECT_TRUE(moved.isEquivalent(t, 1e-5));
    EXPECT_FALSE(moved.isEquivalent(t));
}

} // namespace
