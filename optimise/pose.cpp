#include "optimise/pose.h"

#include <algorithm>
#include <numbers>

namespace vor2::optimise {

using namespace VOR2_LOADER;

Affine affine(const MATRIX_3X4& matrix) {
    Affine out;
    for (int r = 0; r < 3; ++r) {
        out.x[r] = matrix.m[r][0];
        out.y[r] = matrix.m[r][1];
        out.z[r] = matrix.m[r][2];
        out.origin[r] = matrix.m[r][3];
    }
    return out;
}

LocalValues values_at(VOR2_MATRIX_NODE& node, f32 time) {
    LocalValues values;
    if (node.position_track) {
        node.position_track->set_time(time);
        node.position_track->value(values.position);
    }
    if (node.rotation_track) {
        node.rotation_track->set_time(time);
        node.rotation_track->value(values.rotation);
    }
    if (node.scale_track) {
        node.scale_track->set_time(time);
        node.scale_track->value(values.scale);
    }
    return values;
}

Affine local_matrix(const LocalValues& values) {
    const double x = values.rotation.x, y = values.rotation.y, z = values.rotation.z, w = values.rotation.w;
    const double sx = values.scale.x, sy = values.scale.y, sz = values.scale.z;
    return {{(1 - 2 * (y * y + z * z)) * sx, 2 * (x * y + w * z) * sx, 2 * (x * z - w * y) * sx},
            {2 * (x * y - w * z) * sy, (1 - 2 * (x * x + z * z)) * sy, 2 * (y * z + w * x) * sy},
            {2 * (x * z + w * y) * sz, 2 * (y * z - w * x) * sz, (1 - 2 * (x * x + y * y)) * sz},
            {values.position.x, values.position.y, values.position.z}};
}

Difference::Difference(const Affine& a, const Affine& b) : origin_squared_(0), squares_(0) {
    for (std::size_t r = 0; r < 3; ++r) {
        const double d[4] = {a.x[r] - b.x[r], a.y[r] - b.y[r], a.z[r] - b.z[r], a.origin[r] - b.origin[r]};
        for (std::size_t c = 0; c < 3; ++c) {
            axes_[c][r] = d[c];
            squares_ += d[c] * d[c];
        }
        origin_squared_ += d[3] * d[3];
    }
}

// The root of the greatest eigenvalue of the symmetric matrix of the axes' products (Smith, "Eigenvalues of a symmetric
// 3 x 3 matrix", 1961).
double Difference::turn() const {
    const auto dot = [this](std::size_t a, std::size_t b) {
        return axes_[a][0] * axes_[b][0] + axes_[a][1] * axes_[b][1] + axes_[a][2] * axes_[b][2];
    };
    const double mean = squares_ / 3;
    const double d0 = dot(0, 0) - mean, d1 = dot(1, 1) - mean, d2 = dot(2, 2) - mean;
    const double s01 = dot(0, 1), s02 = dot(0, 2), s12 = dot(1, 2);
    const double p = std::sqrt((d0 * d0 + d1 * d1 + d2 * d2 + 2 * (s01 * s01 + s02 * s02 + s12 * s12)) / 6);
    if (p == 0) return std::sqrt(mean);
    const double determinant = d0 * (d1 * d2 - s12 * s12) - s01 * (s01 * d2 - s12 * s02) + s02 * (s01 * s12 - d1 * s02);
    const double angle = std::acos(std::clamp(determinant / (2 * p * p * p), -1.0, 1.0)) / 3;
    return std::sqrt(mean + 2 * p * std::cos(angle));
}

bool Difference::is_within(double distance, double most) const {
    const double from_origin = origin();
    const double from_turn = distance * turn_bound();
    if (from_origin + from_turn <= most) return true;
    if (!(from_origin + from_turn / std::numbers::sqrt3 <= most)) return false;
    return from_origin + distance * turn() <= most;
}

double angle_of(double turn, const Affine& original) {
    double shortest = 1e300;
    for (const double* axis : {original.x, original.y, original.z})
        shortest = std::min(shortest, std::hypot(axis[0], axis[1], axis[2]));
    if (turn == 0) return 0;
    return 2 * std::asin(std::min(1.0, turn / (2 * shortest)));
}

bool is_finite(const Affine& matrix) {
    double sum = 0;
    for (const double* column : {matrix.x, matrix.y, matrix.z, matrix.origin})
        sum += column[0] * 0 + column[1] * 0 + column[2] * 0;
    return sum == 0;
}

} // namespace vor2::optimise
