#include "support/math/matrix.h"

#include <cmath>

namespace VOR2_LOADER {

MATRIX_3X4 MATRIX_3X4::from_euler(f32 x, f32 y, f32 z) noexcept {
    const f32 sx = std::sin(x), cx = std::cos(x);
    const f32 sy = std::sin(y), cy = std::cos(y);
    const f32 sz = std::sin(z), cz = std::cos(z);
    MATRIX_3X4 r;
    r.set_x_axis({cz * cy, sz * cx + cz * sy * sx, sz * sx - cz * sy * cx});
    r.set_y_axis({-sz * cy, cz * cx - sz * sy * sx, cz * sx + sz * sy * cx});
    r.set_z_axis({sy, -cy * sx, cy * cx});
    r.set_translation({0.0F, 0.0F, 0.0F});
    return r;
}

MATRIX_3X4& MATRIX_3X4::invert() noexcept {
    const auto minor = [this](int r0, int r1, int c0, int c1) { return m[r0][c0] * m[r1][c1] - m[r0][c1] * m[r1][c0]; };
    const f32 c00 = minor(1, 2, 1, 2), c01 = minor(1, 2, 2, 0), c02 = minor(1, 2, 0, 1);
    const f32 determinant = m[0][0] * c00 + m[0][1] * c01 + m[0][2] * c02;
    const f32 i = 1.0F / determinant;
    MATRIX_3X4 inverse;
    inverse.set_x_axis({c00 * i, c01 * i, c02 * i});
    inverse.set_y_axis({minor(0, 2, 2, 1) * i, minor(0, 2, 0, 2) * i, minor(0, 2, 1, 0) * i});
    inverse.set_z_axis({minor(0, 1, 1, 2) * i, minor(0, 1, 2, 0) * i, minor(0, 1, 0, 1) * i});
    inverse.set_translation(-inverse.transform_direction(translation()));
    return *this = inverse;
}

} // namespace VOR2_LOADER
