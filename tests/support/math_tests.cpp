#include "support/math/quaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace VOR2_LOADER {
namespace {

constexpr f32 QUARTER = std::numbers::pi_v<f32> / 2;

void expect_near(const QUATERNION& q, const QUATERNION& expected) {
    EXPECT_NEAR(q.x, expected.x, 2e-6);
    EXPECT_NEAR(q.y, expected.y, 2e-6);
    EXPECT_NEAR(q.z, expected.z, 2e-6);
    EXPECT_NEAR(q.w, expected.w, 2e-6);
}
void expect_near(const MATRIX_3X4& m, const MATRIX_3X4& expected, f32 tolerance) {
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) EXPECT_NEAR(m.m[r][c], expected.m[r][c], tolerance) << r << ' ' << c;
    }
}

MATRIX_3X4 columns(VECTOR_3 x, VECTOR_3 y, VECTOR_3 z) {
    MATRIX_3X4 m = MATRIX_3X4::identity();
    m.set_x_axis(x);
    m.set_y_axis(y);
    m.set_z_axis(z);
    return m;
}

TEST(quaternion, from_matrix_takes_the_branch_by_the_trace) {
    EXPECT_EQ(QUATERNION(MATRIX_3X4::identity()), QUATERNION::identity());
    expect_near(QUATERNION(columns({0, 1, 0}, {0, 0, 1}, {1, 0, 0})), {0.5F, 0.5F, 0.5F, 0.5F});
    EXPECT_EQ(QUATERNION(columns({1, 0, 0}, {0, -1, 0}, {0, 0, -1})), QUATERNION(1, 0, 0, 0));
    EXPECT_EQ(QUATERNION(columns({-1, 0, 0}, {0, 1, 0}, {0, 0, -1})), QUATERNION(0, 1, 0, 0));
    EXPECT_EQ(QUATERNION(columns({-1, 0, 0}, {0, -1, 0}, {0, 0, 1})), QUATERNION(0, 0, 1, 0));
    expect_near(QUATERNION(columns({1, 0, 0}, {0, 0, -1}, {0, 1, 0})), {-0.70710678F, 0, 0, 0.70710678F});
    EXPECT_EQ(QUATERNION(columns({0, 0, 0}, {0, 0, 0}, {0, 0, 0})), QUATERNION(0, 0, 0, 0.5F));
}

TEST(quaternion, goes_through_its_matrix_and_back) {
    std::mt19937 random(11);
    std::normal_distribution<f32> normal;
    for (int i = 0; i < 500; ++i) {
        QUATERNION q{normal(random), normal(random), normal(random), normal(random)};
        const f32 length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
        q = {q.x / length, q.y / length, q.z / length, q.w / length};
        const QUATERNION back(q.matrix());
        const f32 sign = back.x * q.x + back.y * q.y + back.z * q.z + back.w * q.w < 0 ? -1.0F : 1.0F;
        expect_near({sign * back.x, sign * back.y, sign * back.z, sign * back.w}, q);
    }
}

TEST(quaternion, product_applies_the_right_one_first) {
    const QUATERNION a(QUARTER, 0, 0), b(0, 0, QUARTER);
    expect_near((a * b).matrix(), compose(b.matrix(), a.matrix()), 1e-6F);
    const VECTOR_3 turned = (a * b).matrix().transform_point({1, 0, 0});
    EXPECT_NEAR(turned.z, 1, 1e-6) << "about z first takes x to y, then about x takes y to z";
}

TEST(vectors, work_component_by_component) {
    VECTOR_4 v{1, -2, 3, -4};
    v += {1, 2, 3, 4};
    EXPECT_EQ(v, VECTOR_4(2, 0, 6, 0));
    v -= {0, 1, 2, 3};
    v *= 2;
    EXPECT_EQ(v, VECTOR_4(4, -2, 8, -6));
    EXPECT_EQ(-v, VECTOR_4(-4, 2, -8, 6));
    EXPECT_EQ((v + VECTOR_4(1, 1, 1, 1)) - v * 0.5F, VECTOR_4(3, 0, 5, -2));
    EXPECT_FALSE(v == VECTOR_4(4, -2, 8, 6));
    EXPECT_EQ(-VECTOR_2(1, -2), VECTOR_2(-1, 2));
    EXPECT_EQ(VECTOR_3(0.1, 1.0, 2.0), VECTOR_3(0.1F, 1.0F, 2.0F)) << "a host's numbers are narrowed";
}

TEST(matrix, euler_angles_and_composition) {
    const f32 x = 0.3F, y = -0.7F, z = 1.1F;
    const MATRIX_3X4 rx = MATRIX_3X4::from_euler(x, 0, 0), ry = MATRIX_3X4::from_euler(0, y, 0),
                     rz = MATRIX_3X4::from_euler(0, 0, z);
    expect_near(MATRIX_3X4::from_euler(x, y, z), compose(rz, compose(ry, rx)), 1e-6F);
    MATRIX_3X4 shift = MATRIX_3X4::identity();
    shift.set_translation({1, 0, 0});
    const VECTOR_3 place = compose(shift, MATRIX_3X4::from_euler(0, 0, QUARTER)).transform_point({0, 0, 0});
    EXPECT_NEAR(place.x, 0, 1e-6);
    EXPECT_NEAR(place.y, 1, 1e-6);
}

TEST(matrix, inverse_of_scaled_and_sheared_maps) {
    const MATRIX_3X4 m(2, 0.5F, 0, 0.25F, 3, 1, -1, 0, 0.5F, 7, -8, 9);
    MATRIX_3X4 inverse = m;
    inverse.invert();
    expect_near(compose(m, inverse), MATRIX_3X4::identity(), 1e-5F);
    inverse.invert();
    expect_near(inverse, m, 1e-4F);
    MATRIX_3X4 flat = columns({1, 0, 0}, {1, 0, 0}, {0, 0, 1});
    flat.invert();
    EXPECT_FALSE(std::isfinite(flat.m[0][0]));
    EXPECT_TRUE(std::isnan(VECTOR_3(0, 0, 0).normalised().x));
}

} // namespace
} // namespace VOR2_LOADER
