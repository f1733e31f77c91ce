#pragma once

/// `QUATERNION` in single precision, Hamilton convention, scalar last.

#include "support/math/matrix.h"

namespace VOR2_LOADER {

/// (u sin(a / 2), cos(a / 2)) is the rotation by `a` radians about the unit axis u; a positive angle
/// about +Z takes +X towards +Y. Nothing keeps it normalised. A default-constructed one is not
/// initialised.
struct QUATERNION {
    f32 x, y, z, w;

    QUATERNION() noexcept = default;
    constexpr QUATERNION(f32 x_value, f32 y_value, f32 z_value, f32 w_value) noexcept
        : x(x_value), y(y_value), z(z_value), w(w_value) {}
    /// Reads the 3 by 3 part of a rotation: by the trace where that is not negative, otherwise by
    /// the largest diagonal element (Shepperd 1978). The result isn't normalised; a matrix that is
    /// no rotation gives what the arithmetic gives.
    explicit QUATERNION(const MATRIX_3X4& rotation) noexcept;
    /// From the angles of `MATRIX_3X4::from_euler`.
    QUATERNION(f32 x_angle, f32 y_angle, f32 z_angle)
    noexcept : QUATERNION(MATRIX_3X4::from_euler(x_angle, y_angle, z_angle)) {}

    [[nodiscard]] static constexpr QUATERNION identity() noexcept { return {0.0F, 0.0F, 0.0F, 1.0F}; }

    /// The Hamilton product: applies `b` first and then `a`.
    friend constexpr QUATERNION operator*(QUATERNION a, QUATERNION b) noexcept {
        return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y + a.y * b.w + a.z * b.x - a.x * b.z,
                a.w * b.z + a.z * b.w + a.x * b.y - a.y * b.x, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
    }
    friend constexpr QUATERNION operator-(QUATERNION q) noexcept { return {-q.x, -q.y, -q.z, -q.w}; }
    friend constexpr bool operator==(QUATERNION a, QUATERNION b) noexcept = default;

    /// The rotation matrix, with no normalisation first; translation zero.
    [[nodiscard]] constexpr MATRIX_3X4 matrix() const noexcept {
        MATRIX_3X4 r = MATRIX_3X4::identity();
        r.set_x_axis({1 - 2 * y * y - 2 * z * z, 2 * x * y + 2 * w * z, 2 * x * z - 2 * w * y});
        r.set_y_axis({2 * x * y - 2 * w * z, 1 - 2 * x * x - 2 * z * z, 2 * y * z + 2 * w * x});
        r.set_z_axis({2 * x * z + 2 * w * y, 2 * y * z - 2 * w * x, 1 - 2 * x * x - 2 * y * y});
        return r;
    }
};

} // namespace VOR2_LOADER
