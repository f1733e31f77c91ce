#include "tests/headless/api/api_test.h"

#include <maya/MArgList.h>
#include <maya/MEulerRotation.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MStringArray.h>
#include <maya/MTransformationMatrix.h>

#include <numbers>

namespace {

constexpr double quarter = std::numbers::pi / 2;

TEST(Strings, behave_like_the_hosts) {
    MString text("ab:cd:e");
    EXPECT_EQ(text.length(), 7u);
    EXPECT_EQ(text.index(':'), 2);
    EXPECT_EQ(text.rindex(':'), 5);
    EXPECT_EQ(text.rindex('x'), -1);
    EXPECT_EQ(text.substring(3, 4), "cd"); // both ends belong to it
    EXPECT_EQ(text.substring(-5, 100), text);
    EXPECT_EQ(text.substring(4, 2), "");
    MStringArray pieces;
    MString("::a::b:").split(':', pieces);
    ASSERT_EQ(pieces.length(), 2u);
    EXPECT_EQ(pieces[1], "b");
    EXPECT_EQ("x" + MString("y") + 1 + 0.5, "xy10.5");
    EXPECT_EQ(MString("2016").asFloat(), 2016.0f);
    EXPECT_EQ(MString(" -1.5e3 frames").asDouble(), -1500.0);
    EXPECT_EQ(MString("9e99").asInt(), 2147483647);
    EXPECT_TRUE(MString("-12").isInt());
    EXPECT_FALSE(MString("12x").isDouble());
    EXPECT_EQ(MString(static_cast<const char*>(nullptr)), "");
    EXPECT_EQ(MString(L"\u00e4\u20ac").length(), 5u); // two and three bytes of UTF-8
    EXPECT_EQ(MString(L"\u00e4\u20ac").numChars(), 2u);
}

TEST(Arrays, stay_safe_past_their_ends) {
    MIntArray list(2, 7);
    list.append(8);
    EXPECT_EQ(list[2], 8);
    list[100] = 5;
    EXPECT_EQ(list[100], 0);
    EXPECT_EQ(list.length(), 3u);
    EXPECT_TRUE(list.insert(1, 0));
    EXPECT_TRUE(list.insert(9, 4));
    EXPECT_EQ(list[4], 9);
    EXPECT_FALSE(list.insert(1, 6));
    EXPECT_FALSE(list.remove(5));
    EXPECT_FALSE(list.set(1, 5));
}

TEST(Status, is_true_for_success_and_says_why_otherwise) {
    EXPECT_TRUE(MStatus());
    EXPECT_FALSE(MStatus(MStatus::kFailure));
    EXPECT_EQ(static_cast<int>(MStatus::kInvalidParameter), 3);
    EXPECT_EQ(MStatus(MStatus::kFailure).errorString(), "(kFailure): Unexpected Internal Failure");
}

TEST(Matrices, act_on_rows_from_the_left_and_convert_to_single_precision) {
    MMatrix move, turn;
    move[3][0] = 5;
    turn = MQuaternion(quarter, MVector::kZaxis).asMatrix(); // x to y
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
    const MQuaternion q = MQuaternion(quarter, MVector::kXaxis) * MQuaternion(quarter, MVector::kYaxis);
    const MEulerRotation e(quarter, quarter, 0);
    EXPECT_TRUE(q.asMatrix().isEquivalent(e.asMatrix(), 1e-15));
    EXPECT_TRUE(e.reorder(MEulerRotation::kZXY).asMatrix().isEquivalent(e.asMatrix(), 1e-15));
    EXPECT_TRUE(MVector::yAxis.rotateBy(q).isEquivalent(MVector::xAxis, 1e-15)); // y to z to x
    const MQuaternion opposite(MVector::xAxis, MVector::xNegAxis);
    EXPECT_TRUE(MVector::xAxis.rotateBy(opposite).isEquivalent(MVector::xNegAxis, 1e-15));
    const MQuaternion half = slerp(MQuaternion(), -MQuaternion(1.0, MVector::kZaxis), 0.5);
    EXPECT_TRUE(half.isEquivalent(MQuaternion(0.5, MVector::kZaxis), 1e-15));
    EXPECT_NEAR(MVector(1, 0, 0).angle(MVector(1, 1e-9, 0)), 1e-9, 1e-20);
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
    EXPECT_TRUE(u.rotation().asMatrix().isEquivalent(MEulerRotation(angles, MEulerRotation::kZYX).asMatrix(), 1e-14));
    EXPECT_EQ(u.getTranslation(MSpace::kTransform), MVector(1, 2, 3));
    u.setRotatePivot({5, 6, 7}, MSpace::kTransform, true);
    u.setScalePivot({-1, 0, 2}, MSpace::kTransform, true);
    EXPECT_TRUE(u.asMatrix().isEquivalent(whole, 1e-12));
    u.setRotatePivot({0, 0, 0}, MSpace::kTransform, false);
    EXPECT_FALSE(u.asMatrix().isEquivalent(whole, 1e-3));
}

class Times : public ApiTest {};

TEST_F(Times, count_in_the_scenes_unit_unless_told_otherwise) {
    EXPECT_EQ(MTime().unit(), MTime::kFilm);
    EXPECT_EQ(MTime(48).as(MTime::kSeconds), 2.0);
    EXPECT_EQ(MTime(1, MTime::kSeconds).as(MTime::kNTSCField), 60.0);
    EXPECT_EQ(MTime(0.4).as(MTime::kFilm), 0.4);
    EXPECT_EQ(static_cast<int>(MTime::kFilm), 6);
    EXPECT_EQ(static_cast<int>(MTime::k2FPS), 12);
    MTime::setUIUnit(MTime::k240FPS);
    EXPECT_EQ(scene().time_unit.name, "240fps");
    EXPECT_EQ(MTime().unit(), MTime::k240FPS);
    EXPECT_EQ(MTime(2, MTime::kHours).as(MTime::kMinutes), 120.0);
    EXPECT_EQ(MTime(1, MTime::k6000FPS).as(MTime::kMilliseconds), 1.0 / 6);
    scene().time_unit = *headless::TimeUnit::by_name("29.97fps");
    EXPECT_EQ(MTime::uiUnit(), MTime::kUserDef);
    EXPECT_NEAR(MTime(30000, MTime::kUserDef).as(MTime::kSeconds), 1001.0, 1e-9);
    EXPECT_TRUE(MTime(1, MTime::kSeconds) == MTime(24, MTime::kFilm));
    EXPECT_TRUE(MTime(1, MTime::kSeconds) > MTime(23, MTime::kFilm));
}

} // namespace
