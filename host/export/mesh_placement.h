#pragma once

/// Affine maps in double precision, and nodes that carry them out.

#include "format/scene/matrix_hierarchy.h"

#include <maya/MMatrix.h>

#include <array>
#include <vector>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Columns are the images of the axes, and of the origin.
struct AFFINE {
    using COLUMN = std::array<double, 3>;
    std::array<COLUMN, 4> columns{COLUMN{1, 0, 0}, COLUMN{0, 1, 0}, COLUMN{0, 0, 1}, COLUMN{0, 0, 0}};

    AFFINE() = default;
    explicit AFFINE(const MATRIX_3X4& matrix);
    [[nodiscard]] COLUMN direction(const COLUMN& d) const;
    [[nodiscard]] COLUMN point(const COLUMN& p) const;
    /// The map of normals that goes with it; they keep no length.
    [[nodiscard]] AFFINE of_normals() const;
    [[nodiscard]] bool is_finite() const;
};

/// Applies `b` first.
[[nodiscard]] AFFINE operator*(const AFFINE& a, const AFFINE& b);
/// Not finite for a map that flattens space.
[[nodiscard]] AFFINE inverse(const AFFINE& map);

/// What a host matrix does to points as vertices have them: metres, with z negated.
[[nodiscard]] AFFINE in_vertex_axes(const MMatrix& matrix);

/// The largest of how far the two take the corners of a box apart.
[[nodiscard]] double distance_between(const AFFINE& a, const AFFINE& b, const AFFINE::COLUMN& low,
                                      const AFFINE::COLUMN& high);

/// The same without scale, shear and mirroring, as near as turning its axes square to each other in order gives it. The
/// identity for one that isn't finite or is flat.
[[nodiscard]] AFFINE rigid_part(const AFFINE& map);

/// A map as one or two nodes: the outer has its translation, a rotation, and a scale unless that is 1; the
/// inner, where the map isn't a rotation and a scale alone, a rotation that acts before them. All of it
/// stands still from `time` on. A map that isn't finite leaves the rotation that brings vertices into the
/// axes of nodes.
struct PLACEMENT {
    VECTOR_3 position{0.0F, 0.0F, 0.0F}, scale{1.0F, 1.0F, 1.0F};
    QUATERNION outer = QUATERNION::identity(), inner = QUATERNION::identity();
    bool has_scale = false, has_inner = false;
};
[[nodiscard]] PLACEMENT placement_of(const AFFINE& map);

/// Appends the nodes under a parent; gives the index of the last.
u32 add_nodes(VOR2_MATRIX_HIERARCHY& hierarchy, const PLACEMENT& placement, const TEXT& name, i32 parent, f32 time);
/// The same for a map that moves: `times` and `maps` are as many, ascending. Between two times the nodes go straight
/// from one to the other.
u32 add_moving_nodes(VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<f32>& times, const std::vector<AFFINE>& maps,
                     const TEXT& name, i32 parent);

} // namespace VOR2_EXPORTER_MAYA
