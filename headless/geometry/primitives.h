#pragma once

#include "headless/geometry/mesh.h"

namespace headless {

/// The shapes that creation nodes make, about the origin with their axis along y. Points, faces and the UVs of a cube's
/// and a plane's points are numbered as the host numbers them. Subdivisions below the least that a shape needs count
/// as that; a shape with more points than `MeshLimits` allows has none, and says so in its notes. UVs are in one set,
/// "map1", empty unless asked for.
struct CubeShape {
    double width = 1.0, height = 1.0, depth = 1.0; ///< along x, y and z
    std::int64_t across = 1, up = 1, along = 1;    ///< subdivisions of each
};
Mesh make_cube(const CubeShape& shape, bool uvs);
Mesh make_plane(double width, double height, std::int64_t across, std::int64_t along, bool uvs);
Mesh make_sphere(double radius, std::int64_t around, std::int64_t up, bool uvs);

/// Caps of 0 subdivisions are one face each; otherwise triangles about a middle point, with rings between.
struct RoundShape {
    double radius = 1.0, height = 2.0;
    std::int64_t around = 20, up = 1, caps = 0;
};
Mesh make_cylinder(const RoundShape& shape, bool uvs);
Mesh make_cone(const RoundShape& shape, bool uvs);

/// Turns a shape so that its axis, y until now, points along another; one without a direction leaves it.
void turn_axis(Mesh& mesh, const Vector3& axis);

} // namespace headless
