#pragma once

/// Transforms in double precision, in which formats are converted; only results are rounded to the file's numbers.

#include <array>
#include <cstddef>
#include <vector>

namespace vor2::convert {

using Vec3 = std::array<double, 3>;
/// x, y, z, w with the scalar last.
using Quat = std::array<double, 4>;

/// The Hamilton product: applies `b` first and then `a`.
Quat operator*(const Quat& a, const Quat& b);
/// Of unit length; the identity for one that has no direction.
Quat normalised(const Quat& q);
double dot(const Quat& a, const Quat& b);
/// On the arc between unit quaternions, the shorter one, as glTF moves between two keys.
Quat shortest_slerp(const Quat& a, const Quat& b, double t);
/// The angle in radians between the rotations of two unit quaternions.
double angle_between(const Quat& a, const Quat& b);

double dot(const Vec3& a, const Vec3& b);
Vec3 cross(const Vec3& a, const Vec3& b);
Vec3 operator+(const Vec3& a, const Vec3& b);
Vec3 operator-(const Vec3& a, const Vec3& b);
Vec3 operator*(const Vec3& a, double s);
double length(const Vec3& v);
/// The vector that stands at a place of a list of x, y, z, x, y, z and so on.
inline Vec3 triple(const std::vector<float>& numbers, std::size_t index) {
    return {numbers[3 * index], numbers[3 * index + 1], numbers[3 * index + 2]};
}

struct Placement {
    Vec3 translation{0, 0, 0};
    Quat rotation{0, 0, 0, 1};
    Vec3 scale{1, 1, 1};
};

/// Three rows of four numbers; a point is a column, and column 3 is the translation.
struct Affine {
    double m[3][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};

    Affine() = default;
    explicit Affine(const Placement& placement);

    [[nodiscard]] Vec3 point(const Vec3& p) const;
    [[nodiscard]] Vec3 direction(const Vec3& d) const;
    [[nodiscard]] Vec3 column(int c) const { return {m[0][c], m[1][c], m[2][c]}; }
    [[nodiscard]] double determinant() const;
    /// Not finite where the determinant is 0.
    [[nodiscard]] Affine inverse() const;
    /// The transposed inverse of the 3 by 3 part, by which normals go.
    [[nodiscard]] Affine for_normals() const;
    [[nodiscard]] bool is_finite() const;
    /// Position, rotation and scale. Shear, which they can't say, is lost; a mirrored matrix gets a negative x scale.
    [[nodiscard]] Placement placement() const;
};

/// Applies `b` first and then `a`.
Affine operator*(const Affine& a, const Affine& b);
Affine blend(const Affine& a, const Affine& b, double t);
/// The largest difference of two numbers at the same place, those of the translation taken times `translation_weight`.
double difference(const Affine& a, const Affine& b, double translation_weight = 1);

} // namespace vor2::convert
