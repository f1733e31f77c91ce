#include "headless/graph/math.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace headless {
namespace {

struct Axes {
    int first, middle, last;
    bool even; // a cyclic order of x, y, z
};

Axes axes_of(RotateOrder order) {
    static constexpr Axes table[] = {{0, 1, 2, true},  {1, 2, 0, true},  {2, 0, 1, true},
                                     {0, 2, 1, false}, {1, 0, 2, false}, {2, 1, 0, false}};
    return table[static_cast<int>(order)];
}

} // namespace

Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double length(const Vector3& a) {
    return std::sqrt(dot(a, a));
}

void Matrix::set_row(int r, const Vector3& v) {
    m[r][0] = v.x;
    m[r][1] = v.y;
    m[r][2] = v.z;
}

bool Matrix::operator==(const Matrix& other) const {
    return std::equal(&m[0][0], &m[0][0] + 16, &other.m[0][0]);
}

Matrix Matrix::translate(const Vector3& by) {
    Matrix out;
    out.set_row(3, by);
    return out;
}

Matrix Matrix::scale(const Vector3& by) {
    Matrix out;
    for (int i = 0; i < 3; ++i) out.m[i][i] = by[i];
    return out;
}

Matrix operator*(const Matrix& a, const Matrix& b) {
    Matrix out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c)
            out.m[r][c] = a.m[r][0] * b.m[0][c] + a.m[r][1] * b.m[1][c] + a.m[r][2] * b.m[2][c] + a.m[r][3] * b.m[3][c];
    }
    return out;
}

namespace {

// The six 2 by 2 minors of two rows, from which both determinant and inverse follow.
struct Minors {
    double s[6];
    Minors(const double* p, const double* q) {
        s[0] = p[0] * q[1] - p[1] * q[0];
        s[1] = p[0] * q[2] - p[2] * q[0];
        s[2] = p[0] * q[3] - p[3] * q[0];
        s[3] = p[1] * q[2] - p[2] * q[1];
        s[4] = p[1] * q[3] - p[3] * q[1];
        s[5] = p[2] * q[3] - p[3] * q[2];
    }
};

double combine(const Minors& s, const Minors& c) {
    return s.s[0] * c.s[5] - s.s[1] * c.s[4] + s.s[2] * c.s[3] + s.s[3] * c.s[2] - s.s[4] * c.s[1] + s.s[5] * c.s[0];
}

} // namespace

Matrix transposed(const Matrix& a) {
    Matrix out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) out.m[r][c] = a.m[c][r];
    }
    return out;
}

double determinant(const Matrix& a) {
    return combine(Minors(a.m[0], a.m[1]), Minors(a.m[2], a.m[3]));
}

Matrix inverse(const Matrix& a) {
    const auto& m = a.m;
    const Minors top(m[0], m[1]), bottom(m[2], m[3]);
    const double det = combine(top, bottom);
    if (det == 0.0 || !std::isfinite(det)) return {};
    const double k = 1.0 / det;
    const double* s = top.s;
    const double* c = bottom.s;
    Matrix out;
    out.m[0][0] = (m[1][1] * c[5] - m[1][2] * c[4] + m[1][3] * c[3]) * k;
    out.m[0][1] = (-m[0][1] * c[5] + m[0][2] * c[4] - m[0][3] * c[3]) * k;
    out.m[0][2] = (m[3][1] * s[5] - m[3][2] * s[4] + m[3][3] * s[3]) * k;
    out.m[0][3] = (-m[2][1] * s[5] + m[2][2] * s[4] - m[2][3] * s[3]) * k;
    out.m[1][0] = (-m[1][0] * c[5] + m[1][2] * c[2] - m[1][3] * c[1]) * k;
    out.m[1][1] = (m[0][0] * c[5] - m[0][2] * c[2] + m[0][3] * c[1]) * k;
    out.m[1][2] = (-m[3][0] * s[5] + m[3][2] * s[2] - m[3][3] * s[1]) * k;
    out.m[1][3] = (m[2][0] * s[5] - m[2][2] * s[2] + m[2][3] * s[1]) * k;
    out.m[2][0] = (m[1][0] * c[4] - m[1][1] * c[2] + m[1][3] * c[0]) * k;
    out.m[2][1] = (-m[0][0] * c[4] + m[0][1] * c[2] - m[0][3] * c[0]) * k;
    out.m[2][2] = (m[3][0] * s[4] - m[3][1] * s[2] + m[3][3] * s[0]) * k;
    out.m[2][3] = (-m[2][0] * s[4] + m[2][1] * s[2] - m[2][3] * s[0]) * k;
    out.m[3][0] = (-m[1][0] * c[3] + m[1][1] * c[1] - m[1][2] * c[0]) * k;
    out.m[3][1] = (m[0][0] * c[3] - m[0][1] * c[1] + m[0][2] * c[0]) * k;
    out.m[3][2] = (-m[3][0] * s[3] + m[3][1] * s[1] - m[3][2] * s[0]) * k;
    out.m[3][3] = (m[2][0] * s[3] - m[2][1] * s[1] + m[2][2] * s[0]) * k;
    return out;
}

Vector3 transform_point(const Vector3& p, const Matrix& a) {
    return transform_direction(p, a) + a.translation();
}

Vector3 transform_direction(const Vector3& d, const Matrix& a) {
    return a.row(0) * d.x + a.row(1) * d.y + a.row(2) * d.z;
}

Quaternion operator*(const Quaternion& a, const Quaternion& b) {
    return {b.w * a.x + b.x * a.w + b.y * a.z - b.z * a.y, b.w * a.y + b.y * a.w + b.z * a.x - b.x * a.z,
            b.w * a.z + b.z * a.w + b.x * a.y - b.y * a.x, b.w * a.w - b.x * a.x - b.y * a.y - b.z * a.z};
}

Matrix to_matrix(const Quaternion& q) {
    Matrix out;
    out.set_row(0, {1 - 2 * (q.y * q.y + q.z * q.z), 2 * (q.x * q.y + q.z * q.w), 2 * (q.x * q.z - q.y * q.w)});
    out.set_row(1, {2 * (q.x * q.y - q.z * q.w), 1 - 2 * (q.x * q.x + q.z * q.z), 2 * (q.y * q.z + q.x * q.w)});
    out.set_row(2, {2 * (q.x * q.z + q.y * q.w), 2 * (q.y * q.z - q.x * q.w), 1 - 2 * (q.x * q.x + q.y * q.y)});
    return out;
}

Quaternion to_quaternion(const Matrix& a) {
    const auto& m = a.m;
    const double trace = m[0][0] + m[1][1] + m[2][2];
    if (trace > 0.0) {
        const double s = 2.0 * std::sqrt(trace + 1.0);
        return {(m[1][2] - m[2][1]) / s, (m[2][0] - m[0][2]) / s, (m[0][1] - m[1][0]) / s, s / 4.0};
    }
    // The greatest of the diagonal keeps the root, and so the divisions, away from zero.
    int i = m[1][1] > m[0][0] ? 1 : 0;
    if (m[2][2] > m[i][i]) i = 2;
    const int j = (i + 1) % 3, k = (i + 2) % 3;
    const double s = 2.0 * std::sqrt(std::max(0.0, 1.0 + m[i][i] - m[j][j] - m[k][k]));
    if (s == 0.0) return {};
    double q[4];
    q[i] = s / 4.0;
    q[j] = (m[i][j] + m[j][i]) / s;
    q[k] = (m[i][k] + m[k][i]) / s;
    q[3] = (m[j][k] - m[k][j]) / s;
    return {q[0], q[1], q[2], q[3]};
}

RotateOrder rotate_order(std::int64_t number) {
    return number >= 0 && number <= 5 ? static_cast<RotateOrder>(number) : RotateOrder::xyz;
}

Matrix euler_to_matrix(const Vector3& radians, RotateOrder order) {
    const Axes at = axes_of(order);
    const int i = at.first, j = at.middle, k = at.last;
    const double sign = at.even ? 1.0 : -1.0;
    const double ca = std::cos(radians[i]), sa = sign * std::sin(radians[i]);
    const double cb = std::cos(radians[j]), sb = sign * std::sin(radians[j]);
    const double cc = std::cos(radians[k]), sc = sign * std::sin(radians[k]);
    Matrix out;
    out.m[i][i] = cb * cc;
    out.m[i][j] = cb * sc;
    out.m[i][k] = -sb;
    out.m[j][i] = sa * sb * cc - ca * sc;
    out.m[j][j] = sa * sb * sc + ca * cc;
    out.m[j][k] = sa * cb;
    out.m[k][i] = ca * sb * cc + sa * sc;
    out.m[k][j] = ca * sb * sc - sa * cc;
    out.m[k][k] = ca * cb;
    return out;
}

Vector3 matrix_to_euler(const Matrix& a, RotateOrder order) {
    const Axes at = axes_of(order);
    const int i = at.first, j = at.middle, k = at.last;
    const double sign = at.even ? 1.0 : -1.0;
    const auto& m = a.m;
    const double cos_middle = std::hypot(m[i][i], m[i][j]);
    Vector3 out;
    out[j] = sign * std::atan2(-m[i][k], cos_middle);
    if (cos_middle > 1e-12) {
        out[i] = sign * std::atan2(m[j][k], m[k][k]);
        out[k] = sign * std::atan2(m[i][j], m[i][i]);
    } else {
        out[i] = sign * std::atan2(-m[k][j], m[j][j]);
    }
    return out;
}

} // namespace headless
