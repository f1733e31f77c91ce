#pragma once

#include "headless/graph/math.h"
#include "headless/graph/node.h"

namespace headless {

/// All that a transform's or a joint's local matrix follows from, in the order in which the attributes stand in
/// the table of types. Angles are radians.
struct TransformValues {
    Vector3 translate, rotate, scale{1, 1, 1}, shear; ///< shear as (xy, xz, yz)
    Vector3 rotate_pivot, rotate_pivot_translate, scale_pivot, scale_pivot_translate;
    Vector3 rotate_axis;           ///< always in the order xyz
    Vector3 joint_orient;          ///< of joints only; always in the order xyz
    Vector3 parent_scale{1, 1, 1}; ///< of joints only: the scale that compensation takes out
    RotateOrder order = RotateOrder::xyz;
    bool joint = false;
    bool compensate_scale = true; ///< of joints only
};

/// Row vectors, leftmost first. A transform: inv(SP) S SH SP ST inv(RP) RA R RP RT T. A joint: S RA R JO IS T,
/// where IS undoes `parent_scale` (an axis of scale 0 is left alone).
Matrix local_matrix(const TransformValues& values);

/// A joint's local matrix is `before` R `orient` `place`, R the rotation that its rotate values make.
struct JointFactors {
    Matrix before; ///< scale and rotate axis
    Matrix orient;
    Matrix place; ///< compensation and translation
};
JointFactors joint_factors(const TransformValues& joint);
/// Where a transform's rotate pivot is, in its parent's space.
Vector3 pivot_in_parent(const TransformValues& values);

/// Changes translate, rotate, scale and shear so that `local_matrix` gives `matrix`; pivots, rotate axis, joint
/// orient and rotate order stay. A joint has no shear: what the matrix, freed of the compensation, shears is lost
/// there. A mirroring matrix gets three negative scales. A row of zeros gets scale 0 along an axis that completes the
/// others.
void set_from_matrix(TransformValues& values, const Matrix& matrix);

/// The ids, common to all transforms, of the attributes behind `TransformValues`.
struct TransformAttributes {
    AttributeId translate, rotate, scale, shear;
    AttributeId rotate_pivot, rotate_pivot_translate, scale_pivot, scale_pivot_translate;
    AttributeId rotate_axis, rotate_order, inherits_transform;
    AttributeId joint_orient, inverse_scale, segment_scale_compensate; ///< of joints
    AttributeId matrix, inverse_matrix, world_matrix, world_inverse_matrix, parent_matrix, parent_inverse_matrix;

    static const TransformAttributes& ids();
};

} // namespace headless
