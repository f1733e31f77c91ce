#pragma once

/// Poses of a hierarchy in double precision from the values that its tracks give, and how far two of them are apart.

#include "format/scene/matrix_hierarchy.h"

#include <array>
#include <cmath>

namespace vor2::optimise {

/// The images of the three axes, and of the origin.
struct Affine {
    double x[3], y[3], z[3], origin[3];
};
Affine affine(const VOR2_LOADER::MATRIX_3X4& matrix);

/// Applies `local` first.
inline Affine compose(const Affine& local, const Affine& parent) {
    Affine out;
    for (int r = 0; r < 3; ++r) {
        const double px = parent.x[r], py = parent.y[r], pz = parent.z[r];
        out.x[r] = px * local.x[0] + py * local.x[1] + pz * local.x[2];
        out.y[r] = px * local.y[0] + py * local.y[1] + pz * local.y[2];
        out.z[r] = px * local.z[0] + py * local.z[1] + pz * local.z[2];
        out.origin[r] = px * local.origin[0] + py * local.origin[1] + pz * local.origin[2] + parent.origin[r];
    }
    return out;
}

/// What a node's tracks give at a time, with the library's values for those that aren't there.
struct LocalValues {
    VOR2_LOADER::VECTOR_3 position{0.0F, 0.0F, 0.0F};
    VOR2_LOADER::QUATERNION rotation = VOR2_LOADER::QUATERNION::identity();
    VOR2_LOADER::VECTOR_3 scale{1.0F, 1.0F, 1.0F};
};
/// Moves the cursors of the node's tracks.
LocalValues values_at(VOR2_LOADER::VOR2_MATRIX_NODE& node, VOR2_LOADER::f32 time);
/// The node's matrix in its parent's space, as the library makes it: the rotation isn't normalised.
Affine local_matrix(const LocalValues& values);

/// How far two matrices are apart.
struct Difference {
    Difference(const Affine& a, const Affine& b);

    [[nodiscard]] double origin() const { return std::sqrt(origin_squared_); }
    /// The spectral norm of the difference of the 3 by 3 parts: how far apart they take a unit vector at most.
    [[nodiscard]] double turn() const;
    /// No less than `turn`, and at most 1.74 times as much, for much less work.
    [[nodiscard]] double turn_bound() const { return std::sqrt(squares_); }
    [[nodiscard]] double point(double distance) const { return distance > 0 ? origin() + distance * turn() : origin(); }
    [[nodiscard]] double point_bound(double distance) const { return origin() + distance * turn_bound(); }
    /// Whether points up to `distance` away from the origin are at most `most` apart. False for NaNs.
    [[nodiscard]] bool is_within(double distance, double most) const;

private:
    std::array<std::array<double, 3>, 3> axes_; ///< the differences of the images of the axes
    double origin_squared_, squares_;
};

/// The angle, in radians, that a `Difference::turn` makes of the axes of `original`: exact for rotations and scales
/// alike in all directions, and no less than the angle of any direction otherwise.
double angle_of(double turn, const Affine& original);
bool is_finite(const Affine& matrix);

} // namespace vor2::optimise
