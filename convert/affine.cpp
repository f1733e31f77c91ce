#include "convert/affine.h"

#include <algorithm>
#include <cmath>

namespace vor2::convert {

Quat operator*(const Quat& a, const Quat& b) {
    return {
        a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1], a[3] * b[1] + a[1] * b[3] + a[2] * b[0] - a[0] * b[2],
        a[3] * b[2] + a[2] * b[3] + a[0] * b[1] - a[1] * b[0], a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2]};
}

double dot(const Quat& a, const Quat& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

Quat normalised(const Quat& q) {
    const double size = std::sqrt(dot(q, q));
    if (!(size > 0) || !std::isfinite(size)) return {0, 0, 0, 1};
    return {q[0] / size, q[1] / size, q[2] / size, q[3] / size};
}

Quat shortest_slerp(const Quat& a, const Quat& b, double t) {
    const double sign = dot(a, b) < 0 ? -1 : 1;
    const double angle = std::acos(std::clamp(sign * dot(a, b), -1.0, 1.0));
    double from = 1 - t, to = t;
    if (angle > 1e-6) {
        from = std::sin((1 - t) * angle) / std::sin(angle);
        to = std::sin(t * angle) / std::sin(angle);
    }
    Quat out;
    for (std::size_t i = 0; i < 4; ++i) out[i] = from * a[i] + to * sign * b[i];
    return normalised(out);
}

double angle_between(const Quat& a, const Quat& b) {
    const Quat turn = Quat{-a[0], -a[1], -a[2], a[3]} * b;
    return 2 * std::atan2(std::hypot(turn[0], turn[1], turn[2]), std::abs(turn[3]));
}

double dot(const Vec3& a, const Vec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vec3 operator*(const Vec3& a, double s) {
    return {a[0] * s, a[1] * s, a[2] * s};
}

double length(const Vec3& v) {
    return std::sqrt(dot(v, v));
}

Affine::Affine(const Placement& placement) {
    const auto [x, y, z, w] = placement.rotation;
    const double rotation[3][3] = {{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)},
                                   {2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)},
                                   {2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)}};
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) m[r][c] = rotation[r][c] * placement.scale[c];
        m[r][3] = placement.translation[r];
    }
}

Vec3 Affine::point(const Vec3& p) const {
    return direction(p) + column(3);
}

Vec3 Affine::direction(const Vec3& d) const {
    return {m[0][0] * d[0] + m[0][1] * d[1] + m[0][2] * d[2], m[1][0] * d[0] + m[1][1] * d[1] + m[1][2] * d[2],
            m[2][0] * d[0] + m[2][1] * d[1] + m[2][2] * d[2]};
}

double Affine::determinant() const {
    return dot(column(0), cross(column(1), column(2)));
}

Affine Affine::inverse() const {
    const Vec3 rows[3] = {cross(column(1), column(2)), cross(column(2), column(0)), cross(column(0), column(1))};
    const double factor = 1 / determinant();
    Affine out;
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) out.m[r][c] = rows[r][c] * factor;
        out.m[r][3] = -dot(rows[r], column(3)) * factor;
    }
    return out;
}

Affine Affine::for_normals() const {
    const Affine back = inverse();
    Affine out;
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) out.m[r][c] = back.m[c][r];
    }
    return out;
}

bool Affine::is_finite() const {
    return std::all_of(&m[0][0], &m[0][0] + 12, [](double number) { return std::isfinite(number); });
}

Placement Affine::placement() const {
    Placement out;
    out.translation = column(3);
    Vec3 axes[3];
    for (int c = 0; c < 3; ++c) {
        const double size = length(column(c));
        out.scale[static_cast<std::size_t>(c)] = size;
        axes[c] = size > 0 ? column(c) * (1 / size) : Vec3{c == 0 ? 1.0 : 0.0, c == 1 ? 1.0 : 0.0, c == 2 ? 1.0 : 0.0};
    }
    if (determinant() < 0) {
        out.scale[0] = -out.scale[0];
        axes[0] = axes[0] * -1;
    }
    // The nearest rotation, by Gram and Schmidt from z on, for axes that aren't square.
    axes[1] = axes[1] - axes[2] * dot(axes[1], axes[2]);
    if (length(axes[1]) > 0) axes[1] = axes[1] * (1 / length(axes[1]));
    axes[0] = cross(axes[1], axes[2]);
    // By the largest component of the four (Shepperd 1978).
    const double xx = axes[0][0], yy = axes[1][1], zz = axes[2][2];
    const double yz = axes[1][2] - axes[2][1], zx = axes[2][0] - axes[0][2], xy = axes[0][1] - axes[1][0];
    const double squares[4] = {1 + xx - yy - zz, 1 - xx + yy - zz, 1 - xx - yy + zz, 1 + xx + yy + zz};
    const double sum_xy = axes[0][1] + axes[1][0], sum_zx = axes[2][0] + axes[0][2], sum_yz = axes[1][2] + axes[2][1];
    const Quat candidates[4] = {{squares[0], sum_xy, sum_zx, yz},
                                {sum_xy, squares[1], sum_yz, zx},
                                {sum_zx, sum_yz, squares[2], xy},
                                {yz, zx, xy, squares[3]}};
    out.rotation = normalised(candidates[std::max_element(squares, squares + 4) - squares]);
    return out;
}

Affine operator*(const Affine& a, const Affine& b) {
    Affine out;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c)
            out.m[r][c] =
                a.m[r][0] * b.m[0][c] + a.m[r][1] * b.m[1][c] + a.m[r][2] * b.m[2][c] + (c == 3 ? a.m[r][3] : 0);
    }
    return out;
}

Affine blend(const Affine& a, const Affine& b, double t) {
    Affine out;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) out.m[r][c] = a.m[r][c] + (b.m[r][c] - a.m[r][c]) * t;
    }
    return out;
}

double difference(const Affine& a, const Affine& b, double translation_weight) {
    double most = 0;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c)
            most = std::max(most, std::abs(a.m[r][c] - b.m[r][c]) * (c == 3 ? translation_weight : 1));
    }
    return most;
}

} // namespace vor2::convert
