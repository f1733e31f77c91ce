#pragma once

/// `MATRIX_3X4`, an affine map in single precision.

#include "support/math/lanes.h"
#include "support/math/vector.h"

namespace VOR2_LOADER {

/// Three rows of four numbers. A point is a column: output component r is
/// m[r][0] x + m[r][1] y + m[r][2] z + m[r][3]. Columns 0, 1, 2 are the images of the three axes,
/// column 3 is the translation, and the implied fourth row is (0, 0, 0, 1). Nothing keeps it
/// orthogonal. A default-constructed one is not initialised.
struct MATRIX_3X4 {
    f32 m[3][4];

    MATRIX_3X4() noexcept = default;
    /// The arguments run down the columns: m[0][0], m[1][0], m[2][0], m[0][1], ...
    constexpr MATRIX_3X4(f32 m00, f32 m10, f32 m20, f32 m01, f32 m11, f32 m21, f32 m02, f32 m12, f32 m22, f32 m03,
                         f32 m13, f32 m23) noexcept
        : m{{m00, m01, m02, m03}, {m10, m11, m12, m13}, {m20, m21, m22, m23}} {}

    [[nodiscard]] static constexpr MATRIX_3X4 identity() noexcept { return {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}; }
    /// Rx(x) Ry(y) Rz(z) in column form, angles in radians: the rotation about z acts first.
    [[nodiscard]] static MATRIX_3X4 from_euler(f32 x, f32 y, f32 z) noexcept;

    constexpr void set_x_axis(VECTOR_3 axis) noexcept { set_column(0, axis); }
    constexpr void set_y_axis(VECTOR_3 axis) noexcept { set_column(1, axis); }
    constexpr void set_z_axis(VECTOR_3 axis) noexcept { set_column(2, axis); }
    constexpr void set_translation(VECTOR_3 offset) noexcept { set_column(3, offset); }
    constexpr void set_column(int c, VECTOR_3 v) noexcept {
        m[0][c] = v.x;
        m[1][c] = v.y;
        m[2][c] = v.z;
    }
    [[nodiscard]] constexpr VECTOR_3 column(int c) const noexcept { return {m[0][c], m[1][c], m[2][c]}; }
    [[nodiscard]] constexpr VECTOR_3 translation() const noexcept { return column(3); }

    [[nodiscard]] constexpr VECTOR_3 transform_point(VECTOR_3 p) const noexcept {
        return {m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + m[0][3],
                m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + m[1][3],
                m[2][0] * p.x + m[2][1] * p.y + m[2][2] * p.z + m[2][3]};
    }
    /// By the 3 by 3 part alone.
    [[nodiscard]] constexpr VECTOR_3 transform_direction(VECTOR_3 d) const noexcept {
        return {m[0][0] * d.x + m[0][1] * d.y + m[0][2] * d.z, m[1][0] * d.x + m[1][1] * d.y + m[1][2] * d.z,
                m[2][0] * d.x + m[2][1] * d.y + m[2][2] * d.z};
    }

    /// Replaces the matrix by the exact inverse of the affine map (cofactors over the determinant),
    /// scaled and sheared ones too. A determinant of 0 gives infinities and NaNs.
    MATRIX_3X4& invert() noexcept;

    friend constexpr bool operator==(const MATRIX_3X4&, const MATRIX_3X4&) noexcept = default;
};

/// The matrix that applies `a` first and then `b`: b x a in column form.
[[nodiscard]] inline MATRIX_3X4 compose(const MATRIX_3X4& a, const MATRIX_3X4& b) noexcept {
    const LANES_4 a0 = load_lanes(a.m[0]), a1 = load_lanes(a.m[1]), a2 = load_lanes(a.m[2]);
    MATRIX_3X4 product;
    for (int r = 0; r < 3; ++r) {
        // A negative zero, added, leaves every number as it is.
        const LANES_4 translation{-0.0F, -0.0F, -0.0F, b.m[r][3]};
        store_lanes(product.m[r], a0 * b.m[r][0] + a1 * b.m[r][1] + a2 * b.m[r][2] + translation);
    }
    return product;
}

} // namespace VOR2_LOADER
