#include "host/export/transform_conversion.h"

#include <maya/MFnTransform.h>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr f32 METRES_PER_CENTIMETRE = 0.01F;
constexpr f32 EXTRA_SCALE = 2.54F;

MMatrix make_vr2_mat() {
    MMatrix swap;
    swap(1, 1) = 0.0;
    swap(1, 2) = 1.0;
    swap(2, 1) = 1.0;
    swap(2, 2) = 0.0;
    return swap;
}

f32 metres(double centimetres) {
    return static_cast<f32>(centimetres) * METRES_PER_CENTIMETRE;
}

void turn(VOR2_MATRIX_NODE& node, VECTOR_3 right, VECTOR_3 up, VECTOR_3 at) {
    MATRIX_3X4 rot_mat = MATRIX_3X4::identity();
    rot_mat.set_x_axis(right);
    rot_mat.set_y_axis(up);
    rot_mat.set_z_axis(at);
    const QUATERNION rot_quat(rot_mat);
    for (QUATERNION& key : node.rotation_track->key_values()) key = rot_quat * key;
}

} // namespace

const MMatrix& vr2_mat() {
    static const MMatrix swap = make_vr2_mat();
    return swap;
}

const MMatrix& vr2_mat_inverse() {
    static const MMatrix inverse = vr2_mat().inverse();
    return inverse;
}

MATRIX_3X4 normalised_axes(const MMatrix& matrix) {
    MATRIX_3X4 axes = MATRIX_3X4::identity();
    for (int r = 0; r < 3; ++r) {
        const double* row = matrix.matrix[r];
        axes.set_column(r, VECTOR_3(row[0], row[1], row[2]).normalised());
    }
    return axes;
}

MMatrix host_matrix(const MDagPath& path) {
    return MFnTransform(path).transformation().asMatrix();
}

MATRIX_3X4 to_file_matrix(const MMatrix& orj_mat) {
    const MMatrix mb_world_mat = vr2_mat() * orj_mat * vr2_mat_inverse();
    MATRIX_3X4 world_mat = normalised_axes(mb_world_mat);
    const double* translation = mb_world_mat.matrix[3];
    world_mat.set_translation({metres(translation[0]), metres(translation[1]), metres(translation[2])});
    return world_mat;
}

MATRIX_3X4 to_file_matrix_scaled(const MMatrix& orj_mat) {
    MATRIX_3X4 world_mat = to_file_matrix(orj_mat);
    world_mat.set_translation(world_mat.translation() * EXTRA_SCALE);
    return world_mat;
}

MATRIX_3X4 local_matrix(const MDagPath& path) {
    return to_file_matrix(host_matrix(path));
}
MATRIX_3X4 local_matrix_scaled(const MDagPath& path) {
    return to_file_matrix_scaled(host_matrix(path));
}
VECTOR_3 local_position(const MDagPath& path) {
    return local_matrix(path).translation();
}
VECTOR_3 local_position_scaled(const MDagPath& path) {
    return local_matrix_scaled(path).translation();
}
QUATERNION local_rotation(const MDagPath& path) {
    return QUATERNION(local_matrix(path));
}
QUATERNION local_rotation_scaled(const MDagPath& path) {
    return QUATERNION(local_matrix_scaled(path));
}

VECTOR_3 origin_offset(const MDagPath& path) {
    return local_matrix(path).invert().translation();
}

void offset_positions(VOR2& root, u32 index, VECTOR_3 offset) {
    root.matrix_hierarchy.nodes[index].position_track->add(offset);
}

void axis_pass(VOR2& root, u32 index) {
    VOR2_MATRIX_NODE& node = root.matrix_hierarchy.nodes[index];
    for (VECTOR_3& key : node.position_track->key_values()) key = {key.x, key.z, -key.y};
    turn(node, {1.0F, 0.0F, 0.0F}, {0.0F, 0.0F, -1.0F}, {0.0F, 1.0F, 0.0F});
}

void rotate_180_pass(VOR2& root, u32 index) {
    VOR2_MATRIX_NODE& node = root.matrix_hierarchy.nodes[index];
    for (VECTOR_3& key : node.position_track->key_values()) key = {-key.x, key.y, -key.z};
    turn(node, {-1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}, {0.0F, 0.0F, -1.0F});
}

} // namespace VOR2_EXPORTER_MAYA
