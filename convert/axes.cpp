#include "convert/axes.h"

#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

/// The rotation that is left when a mirroring of `outer` meets one of `inner`: a quarter turn about x where they
/// differ.
Quat turn_between(Axes outer, Axes inner) {
    if (outer == inner) return {0, 0, 0, 1};
    const double half = std::sqrt(0.5);
    return {outer == Axes::mirrored ? -half : half, 0, 0, half};
}

/// The same rotation seen through the mirroring, which turns its axis over as it does every axis of rotation.
Quat conjugated(const Quat& q, Axes axes) {
    const Vec3 axis = converted({q[0], q[1], q[2]}, axes);
    return {-axis[0], -axis[1], -axis[2], q[3]};
}

template<class OBJECTS>
void mark(const OBJECTS& objects, Axes as, std::vector<Axes>& axes) {
    for (const auto& object : objects) {
        if (object && object->matrix_index < axes.size()) axes[object->matrix_index] = as;
    }
}

} // namespace

Vec3 converted(const Vec3& v, Axes axes) {
    return axes == Axes::mirrored ? Vec3{v[0], v[1], -v[2]} : Vec3{v[0], v[2], v[1]};
}

Vec3 converted_scale(const Vec3& scale, Axes axes) {
    return axes == Axes::mirrored ? scale : Vec3{scale[0], scale[2], scale[1]};
}

Vec3 position_across(const Vec3& position, Axes parent) {
    return converted(position, parent);
}

Quat rotation_to_gltf(const Quat& rotation, Axes parent, Axes own) {
    return conjugated(rotation, parent) * turn_between(parent, own);
}

Quat rotation_from_gltf(const Quat& rotation, Axes parent, Axes own) {
    const Quat turn = turn_between(parent, own);
    return conjugated(rotation * Quat{-turn[0], -turn[1], -turn[2], turn[3]}, parent);
}

Affine matrix_across(const Affine& matrix, Axes outer, Axes inner) {
    Affine out;
    for (int c = 0; c < 4; ++c) {
        const Vec3 unit{c == 0 ? 1.0 : 0.0, c == 1 ? 1.0 : 0.0, c == 2 ? 1.0 : 0.0};
        const Vec3 column = converted(c == 3 ? matrix.column(3) : matrix.direction(converted(unit, inner)), outer);
        for (std::size_t r = 0; r < 3; ++r) out.m[r][c] = column[r];
    }
    return out;
}

int parent_of(const VOR2_MATRIX_HIERARCHY& hierarchy, std::size_t index) {
    const i32 parent = hierarchy.nodes[index].parent_index;
    return parent >= 0 && static_cast<std::size_t>(parent) < index ? parent : -1;
}

std::vector<Axes> axes_of_nodes(const VOR2& scene) {
    const VOR2_MATRIX_HIERARCHY& hierarchy = scene.matrix_hierarchy;
    std::vector<Axes> axes(hierarchy.nodes.size(), Axes::swapped);
    for (std::size_t i = 0; i < axes.size(); ++i) {
        if (parent_of(hierarchy, i) < 0) axes[i] = Axes::mirrored;
    }
    mark(scene.lights, Axes::swapped, axes);
    mark(scene.cameras, Axes::swapped, axes);
    mark(scene.rigids, Axes::mirrored, axes);
    mark(scene.morph_meshes, Axes::mirrored, axes);
    mark(scene.anim_meshes, Axes::mirrored, axes);
    mark(scene.bezier_spline_objects, Axes::mirrored, axes);
    mark(scene.rigid_instances, Axes::mirrored, axes);
    mark(scene.morph_mesh_instances, Axes::mirrored, axes);
    mark(scene.anim_mesh_instances, Axes::mirrored, axes);
    mark(scene.bezier_spline_instances, Axes::mirrored, axes);
    return axes;
}

QUATERNION narrowed(const Quat& q) {
    return {static_cast<f32>(q[0]), static_cast<f32>(q[1]), static_cast<f32>(q[2]), static_cast<f32>(q[3])};
}

Affine widened(const MATRIX_3X4& matrix) {
    Affine out;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) out.m[r][c] = static_cast<double>(matrix.m[r][c]);
    }
    return out;
}

} // namespace vor2::convert
