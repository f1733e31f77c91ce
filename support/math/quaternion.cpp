#include "support/math/quaternion.h"

#include <cmath>

namespace VOR2_LOADER {

QUATERNION::QUATERNION(const MATRIX_3X4& rotation) noexcept {
    const auto& m = rotation.m;
    const f32 s = m[0][0] + m[1][1] + m[2][2] + 1.0F;
    if (s >= 1.0F) {
        const f32 r = 2.0F * std::sqrt(s);
        const f32 i = 1.0F / r;
        *this = {(m[2][1] - m[1][2]) * i, (m[0][2] - m[2][0]) * i, (m[1][0] - m[0][1]) * i, 0.25F * r};
        return;
    }
    int a = 0;
    if (m[1][1] > m[0][0]) a = 1;
    if (m[2][2] > m[a][a]) a = 2;
    const int b = (a + 1) % 3;
    const int c = (b + 1) % 3;
    const f32 r = std::sqrt(m[a][a] - m[b][b] - m[c][c] + 1.0F);
    const f32 i = 0.5F / r;
    f32 q[3];
    q[a] = 0.5F * r;
    q[b] = (m[b][a] + m[a][b]) * i;
    q[c] = (m[c][a] + m[a][c]) * i;
    *this = {q[0], q[1], q[2], (m[c][b] - m[b][c]) * i};
}

} // namespace VOR2_LOADER
