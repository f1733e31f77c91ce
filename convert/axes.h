#pragma once

/// Between the file's space and that of glTF.
///
/// The file's world is the host's with z mirrored: y is up and lengths are metres in both, and what glTF calls
/// right-handed is the host's own. So a world point (x, y, z) of the file is (x, y, -z) in glTF, and everything faces
/// as in the host. Between the two worlds a triangle keeps the order of its corners.
///
/// What a node's own axes are is a choice for each node, since only products of matrices are seen. The choice is the
/// one that gives back what the host has:
/// - A joint's axes in the file are the host's with y and z swapped, and are swapped back (`swapped`).
/// - Vertices in the file have z mirrored, as the world has, and so do the axes of a node that a mesh stands on, and
///   those of a node without parent, which an export inserts (`mirrored`).
/// - A light or a camera looks along the negative y axis of its node in the file, with z up, which is where glTF has it
///   in a node with swapped axes.
/// So a scene exported from the host has its joints turned in glTF as in the host, and its meshes their host
/// coordinates.

#include "convert/affine.h"
#include "format/vor2.h"

#include <vector>

namespace vor2::convert {

enum class Axes { mirrored, swapped };

/// Either way its own inverse.
[[nodiscard]] Vec3 converted(const Vec3& v, Axes axes);
/// The scale along axes that are so converted.
[[nodiscard]] Vec3 converted_scale(const Vec3& scale, Axes axes);

/// What a node's placement in its parent is on the other side, given the axes of both; the world's are `mirrored`.
/// Signs of quaternions are kept, so that a track keeps its way.
[[nodiscard]] Vec3 position_across(const Vec3& position, Axes parent);
[[nodiscard]] Quat rotation_to_gltf(const Quat& rotation, Axes parent, Axes own);
[[nodiscard]] Quat rotation_from_gltf(const Quat& rotation, Axes parent, Axes own);

/// A matrix whose two sides have the given axes.
[[nodiscard]] Affine matrix_across(const Affine& matrix, Axes outer, Axes inner);

/// The axes of each node of the hierarchy.
[[nodiscard]] std::vector<Axes> axes_of_nodes(const VOR2_LOADER::VOR2& scene);

/// The parent's index, or -1 for a node that the library treats as a root.
[[nodiscard]] int parent_of(const VOR2_LOADER::VOR2_MATRIX_HIERARCHY& hierarchy, std::size_t index);

[[nodiscard]] inline Vec3 widened(const VOR2_LOADER::VECTOR_3& v) {
    return {v.x, v.y, v.z};
}
[[nodiscard]] inline VOR2_LOADER::VECTOR_3 narrowed(const Vec3& v) {
    return {v[0], v[1], v[2]};
}
[[nodiscard]] inline Quat widened(const VOR2_LOADER::QUATERNION& q) {
    return {q.x, q.y, q.z, q.w};
}
[[nodiscard]] VOR2_LOADER::QUATERNION narrowed(const Quat& q);
[[nodiscard]] Affine widened(const VOR2_LOADER::MATRIX_3X4& matrix);

} // namespace vor2::convert
