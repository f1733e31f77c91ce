#include "headless/graph/transform.h"

#include "headless/graph/scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace headless {
namespace {

constexpr double degree = std::numbers::pi / 180.0;

// Elementary matrices by what they do to the axes, multiplied by a plain triple loop: nothing is shared with the
// code under test but the type that carries the numbers.
Matrix product(std::initializer_list<Matrix> factors) {
    Matrix out;
    for (const Matrix& factor : factors) {
        Matrix next;
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                next.m[r][c] = 0.0;
                for (int k = 0; k < 4; ++k) next.m[r][c] += out.m[r][k] * factor.m[k][c];
            }
        }
        out = next;
    }
    return out;
}

Matrix turn(char axis, double radians) {
    const int a = (axis - 'x' + 1) % 3, b = (axis - 'x' + 2) % 3; // axis a turns toward axis b
    Matrix out;
    out.m[a][a] = out.m[b][b] = std::cos(radians);
    out.m[a][b] = std::sin(radians);
    out.m[b][a] = -std::sin(radians);
    return out;
}

Matrix turns(const char* order, const Vector3& radians) {
    Matrix out;
    for (const char* axis = order; *axis; ++axis) out = product({out, turn(*axis, radians[*axis - 'x'])});
    return out;
}

Matrix moved(const Vector3& by) {
    Matrix out;
    for (int i = 0; i < 3; ++i) out.m[3][i] = by[i];
    return out;
}

Matrix scaled(const Vector3& by) {
    Matrix out;
    for (int i = 0; i < 3; ++i) out.m[i][i] = by[i];
    return out;
}

Matrix sheared(double xy, double xz, double yz) {
    Matrix out;
    out.m[1][0] = xy;
    out.m[2][0] = xz;
    out.m[2][1] = yz;
    return out;
}

void expect_near(const Matrix& got, const Matrix& wanted, double tolerance, const std::string& where) {
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(got.m[i / 4][i % 4], wanted.m[i / 4][i % 4], tolerance) << where << ", element " << i;
}

constexpr const char* orders[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

TransformValues everything(int order, bool joint) {
    TransformValues v;
    v.translate = {3, -5, 7};
    v.rotate = {0.3, -1.1, 2.0};
    v.scale = {2, 0.5, -3};
    v.shear = {0.2, -0.4, 0.7};
    v.rotate_pivot = {1, 2, 3};
    v.rotate_pivot_translate = {-0.5, 0.25, 4};
    v.scale_pivot = {-2, 6, 1};
    v.scale_pivot_translate = {0.1, 0.2, 0.3};
    v.rotate_axis = {-0.7, 0.4, 1.3};
    v.joint_orient = {1.0, 0.2, -0.6};
    v.parent_scale = {2, 4, 0.5};
    v.order = static_cast<RotateOrder>(order);
    v.joint = joint;
    return v;
}

TEST(LocalMatrix, a_transform_is_the_product_of_its_parts_in_every_rotate_order) {
    for (int order = 0; order < 6; ++order) {
        const TransformValues v = everything(order, false);
        const Matrix wanted = product({moved({2, -6, -1}), scaled(v.scale), sheared(0.2, -0.4, 0.7),
                                       moved(v.scale_pivot), moved(v.scale_pivot_translate), moved({-1, -2, -3}),
                                       turns("xyz", v.rotate_axis), turns(orders[order], v.rotate),
                                       moved(v.rotate_pivot), moved(v.rotate_pivot_translate), moved(v.translate)});
        expect_near(local_matrix(v), wanted, 1e-12, orders[order]);
    }
}

TEST(LocalMatrix, a_joint_has_orient_and_compensation_and_neither_pivots_nor_shear) {
    for (int order = 0; order < 6; ++order) {
        TransformValues v = everything(order, true);
        const auto wanted = [&](const Vector3& compensation) {
            return product({scaled(v.scale), turns("xyz", v.rotate_axis), turns(orders[order], v.rotate),
                            turns("xyz", v.joint_orient), scaled(compensation), moved(v.translate)});
        };
        expect_near(local_matrix(v), wanted({0.5, 0.25, 2}), 1e-12, orders[order]);
        v.compensate_scale = false;
        expect_near(local_matrix(v), wanted({1, 1, 1}), 1e-12, orders[order]);
    }
}

TEST(LocalMatrix, x_turns_first_in_order_xyz) {
    TransformValues v;
    v.rotate = {90 * degree, 90 * degree, 0};
    // y goes to z by x, then z to x by y.
    const Vector3 y = transform_direction({0, 1, 0}, local_matrix(v));
    EXPECT_NEAR(y.x, 1, 1e-15);
    v.order = RotateOrder::zyx;
    // y first: it leaves y alone; then x takes y to z.
    EXPECT_NEAR(transform_direction({0, 1, 0}, local_matrix(v)).z, 1, 1e-15);
}

TEST(LocalMatrix, an_axis_of_parent_scale_zero_is_not_compensated) {
    TransformValues v;
    v.joint = true;
    v.parent_scale = {0, 2, 1};
    expect_near(local_matrix(v), scaled({1, 0.5, 1}), 0.0, "");
}

TEST(LocalMatrix, values_without_rotation_come_through_exactly) {
    TransformValues v;
    v.scale = {2.54, 2.54, 2.54};
    v.translate = {0.1, 0.2, 0.3};
    EXPECT_EQ(local_matrix(v), product({scaled({2.54, 2.54, 2.54}), moved({0.1, 0.2, 0.3})}));
}

TEST(SetFromMatrix, gives_the_matrix_back_and_leaves_orients_and_pivots) {
    const Matrix targets[] = {
        product({scaled({2, 3, 0.5}), turns("xyz", {0.4, 1.2, -2.5}), moved({10, 20, 30})}),
        product({scaled({-2, 3, 0.5}), turns("zyx", {3.0, -0.2, 0.9}), moved({1, 0, -1})}), // mirrors
        product({turns("xyz", {0.3, std::numbers::pi / 2, 0.8}), moved({0, 0, 5})}),        // middle angle at its end
        product({turns("xyz", {0.3, -std::numbers::pi / 2, 0.8})}),
        product({scaled({1e-3, 1e4, 1}), turns("yzx", {1, 1, 1})}),
        scaled({0, 2, 3}),
        scaled({1, 0, 3}),
        scaled({0, 0, 0}),
    };
    for (const Matrix& target : targets) {
        for (int order = 0; order < 12; ++order) {
            TransformValues v = everything(order % 6, order >= 6);
            v.parent_scale = {4, 4, 4}; // an uneven one would shear what is left to the joint
            set_from_matrix(v, target);
            expect_near(local_matrix(v), target, 1e-9, orders[order % 6]);
            EXPECT_EQ(v.rotate_pivot, (Vector3{1, 2, 3}));
            EXPECT_EQ(v.joint_orient, (Vector3{1.0, 0.2, -0.6}));
        }
    }
}

TEST(SetFromMatrix, a_transform_keeps_shear_and_a_joint_drops_it) {
    const Matrix target = product({scaled({2, 3, 4}), sheared(0.5, -0.3, 0.2), turns("xyz", {0.1, 0.2, 0.3})});
    TransformValues v;
    set_from_matrix(v, target);
    EXPECT_NEAR(v.shear.x, 0.5, 1e-12);
    EXPECT_NEAR(v.shear.y, -0.3, 1e-12);
    EXPECT_NEAR(v.shear.z, 0.2, 1e-12);
    v = {};
    v.joint = true;
    set_from_matrix(v, target);
    EXPECT_EQ(v.shear, Vector3{});
    EXPECT_NEAR(v.scale.x, 2, 1e-12);
    EXPECT_NEAR(v.rotate.z, 0.3, 1e-12);
}

TEST(Rotations, angles_quaternions_and_matrices_agree) {
    for (int order = 0; order < 6; ++order) {
        for (const Vector3& angles : {Vector3{0.5, 0.6, -0.7}, Vector3{-2.9, 1.4, 3.0}, Vector3{3.1, 0, 0},
                                      Vector3{0, 3.1, 0}, Vector3{0, 0, 3.1}}) {
            const Matrix wanted = turns(orders[order], angles);
            const RotateOrder as = static_cast<RotateOrder>(order);
            expect_near(euler_to_matrix(matrix_to_euler(wanted, as), as), wanted, 1e-12, orders[order]);
            expect_near(to_matrix(to_quaternion(wanted)), wanted, 1e-12, orders[order]);
        }
    }
    const Quaternion x{std::sqrt(0.5), 0, 0, std::sqrt(0.5)}, y{0, std::sqrt(0.5), 0, std::sqrt(0.5)};
    expect_near(to_matrix(x * y), turns("xy", {90 * degree, 90 * degree, 0}), 1e-15, "left first");
}

TEST(Inverse, undoes_any_regular_matrix_and_answers_a_singular_one_with_the_identity) {
    Matrix full = product({scaled({2, -3, 0.1}), sheared(1, 2, 3), turns("xyz", {1, 2, 3}), moved({4, 5, 6})});
    full.m[0][3] = 0.25; // a projection, too
    expect_near(product({full, inverse(full)}), Matrix(), 1e-12, "");
    EXPECT_EQ(inverse(scaled({1, 0, 1})), Matrix());
}

} // namespace
} // namespace headless
