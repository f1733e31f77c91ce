#include "headless/graph/transform.h"

#include <cmath>

namespace headless {
namespace {

Matrix shear_matrix(const Vector3& shear) {
    Matrix out;
    out.m[1][0] = shear.x;
    out.m[2][0] = shear.y;
    out.m[2][1] = shear.z;
    return out;
}

// Scale rows first, which is what a scale matrix on the left does.
void scale_rows(Matrix& a, const Vector3& by) {
    for (int r = 0; r < 3; ++r) a.set_row(r, a.row(r) * by[r]);
}

Matrix rotation_of(const TransformValues& v) {
    Matrix out = euler_to_matrix(v.rotate, v.order);
    if (v.rotate_axis != Vector3{}) out = euler_to_matrix(v.rotate_axis, RotateOrder::xyz) * out;
    if (v.joint && v.joint_orient != Vector3{}) out = out * euler_to_matrix(v.joint_orient, RotateOrder::xyz);
    return out;
}

Vector3 compensation_of(const TransformValues& v) {
    Vector3 out{1, 1, 1};
    if (!v.joint || !v.compensate_scale) return out;
    for (int i = 0; i < 3; ++i) {
        if (v.parent_scale[i] != 0.0) out[i] = 1.0 / v.parent_scale[i];
    }
    return out;
}

// inv(SP) S SH SP ST inv(RP) RA R RP RT as an affine map; what it does to the origin, before T.
Vector3 offset_by_pivots(const TransformValues& v, const Matrix& scale_shear, const Matrix& rotation) {
    const Vector3 scaled = transform_direction(-v.scale_pivot, scale_shear) + v.scale_pivot + v.scale_pivot_translate;
    return transform_direction(scaled - v.rotate_pivot, rotation) + v.rotate_pivot + v.rotate_pivot_translate;
}

Matrix scale_shear_of(const TransformValues& v) {
    Matrix out = shear_matrix(v.shear);
    scale_rows(out, v.scale);
    return out;
}

Matrix joint_matrix(const TransformValues& v) {
    Matrix out = rotation_of(v);
    scale_rows(out, v.scale);
    const Vector3 compensation = compensation_of(v);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) out.m[r][c] *= compensation[c];
    }
    out.set_row(3, v.translate);
    return out;
}

} // namespace

Matrix local_matrix(const TransformValues& v) {
    if (v.joint) return joint_matrix(v);
    const Matrix scale_shear = scale_shear_of(v);
    const Matrix rotation = rotation_of(v);
    Matrix out = scale_shear * rotation;
    out.set_row(3, offset_by_pivots(v, scale_shear, rotation) + v.translate);
    return out;
}

JointFactors joint_factors(const TransformValues& v) {
    JointFactors out{{}, {}, Matrix::scale(compensation_of(v))};
    if (v.rotate_axis != Vector3{}) out.before = euler_to_matrix(v.rotate_axis, RotateOrder::xyz);
    if (v.joint_orient != Vector3{}) out.orient = euler_to_matrix(v.joint_orient, RotateOrder::xyz);
    scale_rows(out.before, v.scale);
    out.place.set_row(3, v.translate);
    return out;
}

Vector3 pivot_in_parent(const TransformValues& v) {
    return v.joint ? v.translate : v.translate + v.rotate_pivot + v.rotate_pivot_translate;
}

namespace {

Vector3 unit_or(const Vector3& v, double size, const Vector3& otherwise) {
    return size > 0.0 ? v * (1.0 / size) : otherwise;
}

// A direction at right angles to a unit vector.
Vector3 any_perpendicular(const Vector3& v) {
    const Vector3 axis = std::abs(v.x) < 0.9 ? Vector3{1, 0, 0} : Vector3{0, 1, 0};
    const Vector3 out = cross(v, axis);
    return out * (1.0 / length(out));
}

// A direction at right angles to both, as far as they are directions at all.
Vector3 across(const Vector3& a, const Vector3& b) {
    const Vector3 normal = cross(a, b);
    if (const double size = length(normal); size > 0.0) return normal * (1.0 / size);
    const Vector3& longer = length(a) > 0.0 ? a : b;
    const double size = length(longer);
    return size > 0.0 ? any_perpendicular(longer * (1.0 / size)) : Vector3{1, 0, 0};
}

// Splits the upper block of `a` into scale, shear and an orthonormal right-handed rotation by taking from each
// row what lies along the rows before it. A row with nothing left gets an axis that completes the frame.
struct Factors {
    Vector3 scale, shear;
    Matrix rotation;
};

Factors factor(const Matrix& a) {
    Factors out;
    const Vector3 r0 = a.row(0), r1 = a.row(1), r2 = a.row(2);
    out.scale.x = length(r0);
    const Vector3 fallback = across(r1, r2);
    const Vector3 q0 = unit_or(r0, out.scale.x, fallback);

    const double along01 = dot(r1, q0);
    const Vector3 rest1 = r1 - q0 * along01;
    out.scale.y = length(rest1);
    // Rounding alone can leave a sliver; it is no axis.
    if (out.scale.y <= 1e-14 * length(r1)) out.scale.y = 0.0;
    const double along02 = dot(r2, q0);
    const Vector3 rest2 = r2 - q0 * along02;
    const double size2 = length(rest2);
    const Vector3 fallback1 = size2 > 1e-14 * length(r2) ? cross(rest2 * (1.0 / size2), q0) : any_perpendicular(q0);
    const Vector3 q1 = unit_or(rest1, out.scale.y, fallback1);

    const double along12 = dot(rest2, q1);
    const Vector3 q2 = cross(q0, q1);
    out.scale.z = dot(rest2 - q1 * along12, q2);
    if (out.scale.y != 0.0) out.shear.x = along01 / out.scale.y;
    if (out.scale.z != 0.0) out.shear.y = along02 / out.scale.z;
    if (out.scale.z != 0.0) out.shear.z = along12 / out.scale.z;

    // A mirror turns the first two axes about as well, so that the frame stays right-handed.
    const double sign = out.scale.z < 0.0 ? -1.0 : 1.0;
    out.scale = {out.scale.x * sign, out.scale.y * sign, out.scale.z};
    out.shear = {out.shear.x, out.shear.y * sign, out.shear.z * sign};
    out.rotation.set_row(0, q0 * sign);
    out.rotation.set_row(1, q1 * sign);
    out.rotation.set_row(2, q2);
    return out;
}

// The rotate values that, between rotate axis and joint orient, turn as `rotation` does.
Vector3 rotate_for(const TransformValues& v, Matrix rotation) {
    rotation = inverse(euler_to_matrix(v.rotate_axis, RotateOrder::xyz)) * rotation;
    if (v.joint) rotation = rotation * inverse(euler_to_matrix(v.joint_orient, RotateOrder::xyz));
    return matrix_to_euler(rotation, v.order);
}

} // namespace

void set_from_matrix(TransformValues& v, const Matrix& matrix) {
    Matrix linear = matrix;
    const Vector3 compensation = compensation_of(v);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) linear.m[r][c] /= compensation[c];
    }
    const Factors parts = factor(linear);
    v.scale = parts.scale;
    v.shear = v.joint ? Vector3{} : parts.shear;
    v.rotate = rotate_for(v, parts.rotation);
    v.translate = matrix.translation();
    if (!v.joint) v.translate = v.translate - offset_by_pivots(v, scale_shear_of(v), rotation_of(v));
}

const TransformAttributes& TransformAttributes::ids() {
    static const TransformAttributes made = [] {
        const NodeType& t = *NodeTypes::all().find("joint");
        return TransformAttributes{t.find("translate"),
                                   t.find("rotate"),
                                   t.find("scale"),
                                   t.find("shear"),
                                   t.find("rotatePivot"),
                                   t.find("rotatePivotTranslate"),
                                   t.find("scalePivot"),
                                   t.find("scalePivotTranslate"),
                                   t.find("rotateAxis"),
                                   t.find("rotateOrder"),
                                   t.find("inheritsTransform"),
                                   t.find("jointOrient"),
                                   t.find("inverseScale"),
                                   t.find("segmentScaleCompensate"),
                                   t.find("matrix"),
                                   t.find("inverseMatrix"),
                                   t.find("worldMatrix"),
                                   t.find("worldInverseMatrix"),
                                   t.find("parentMatrix"),
                                   t.find("parentInverseMatrix")};
    }();
    return made;
}

} // namespace headless
