#include "headless/animation/rotation_blend.h"

#include <cmath>

namespace headless {
namespace {

double dot(const Quaternion& a, const Quaternion& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

Quaternion sum(const Quaternion& a, double ka, const Quaternion& b, double kb) {
    return {a.x * ka + b.x * kb, a.y * ka + b.y * kb, a.z * ka + b.z * kb, a.w * ka + b.w * kb};
}

Quaternion normalised(const Quaternion& q) {
    const double size = std::sqrt(dot(q, q));
    return size > 0.0 && std::isfinite(size) ? sum(q, 1.0 / size, {}, 0.0) : Quaternion{};
}

// The row made square to `first` and of length 1; where nothing is left, some direction square to it.
Vector3 square_to(const Vector3& row, const Vector3& first) {
    const Vector3 rest = row - first * dot(row, first);
    const double size = length(rest);
    if (size > 1e-12 * length(row)) return rest * (1.0 / size);
    const Vector3 other = std::abs(first.x) < 0.5 ? Vector3{1, 0, 0} : Vector3{0, 1, 0};
    const Vector3 made = cross(first, other);
    return made * (1.0 / length(made));
}

} // namespace

Matrix rotation_part(const Matrix& matrix) {
    const double sign = determinant(matrix) < 0.0 ? -1.0 : 1.0;
    const Vector3 x = matrix.row(0) * sign, y = matrix.row(1) * sign;
    const double size = length(x);
    const Vector3 first = size > 0.0 && std::isfinite(size) ? x * (1.0 / size) : Vector3{1, 0, 0};
    const Vector3 second = square_to(y, first);
    Matrix out;
    out.set_row(0, first);
    out.set_row(1, second);
    out.set_row(2, cross(first, second));
    return out;
}

Quaternion slerp(const Quaternion& a, const Quaternion& b, double part, ArcChoice arc) {
    double cosine = dot(a, b);
    const bool other_side = (cosine < 0.0) == (arc == ArcChoice::shortest);
    const Quaternion end = other_side ? sum(b, -1.0, {}, 0.0) : b;
    cosine = other_side ? -cosine : cosine;
    if (cosine > 1.0 - 1e-12) return normalised(sum(a, 1.0 - part, end, part));
    const double angle = std::acos(std::fmax(cosine, -1.0)), sine = std::sin(angle);
    // Half a turn of the double cover apart, there is no arc to prefer: the rotations are the same.
    if (sine < 1e-9) return a;
    return normalised(sum(a, std::sin((1.0 - part) * angle) / sine, end, std::sin(part * angle) / sine));
}

Quaternion blend(std::span<const WeightedRotation> rotations, RotationBlend how) {
    if (rotations.empty()) return {};
    Quaternion out = rotations.front().rotation;
    if (how == RotationBlend::shortest || how == RotationBlend::longest) {
        const ArcChoice arc = how == RotationBlend::shortest ? ArcChoice::shortest : ArcChoice::longest;
        double total = rotations.front().weight;
        for (const WeightedRotation& each : rotations.subspan(1)) {
            total += each.weight;
            out = slerp(out, each.rotation, each.weight / total, arc);
        }
        return out;
    }
    out = sum(out, rotations.front().weight, {}, 0.0);
    for (const WeightedRotation& each : rotations.subspan(1))
        out = sum(out, 1.0, each.rotation, dot(out, each.rotation) < 0.0 ? -each.weight : each.weight);
    return normalised(out);
}

} // namespace headless
