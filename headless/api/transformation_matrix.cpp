#include "headless/api/access.h"

using headless::Access;
using headless::Matrix;
using headless::put;
using headless::TransformValues;

const MTransformationMatrix MTransformationMatrix::identity;

namespace {

MEulerRotation::RotationOrder euler_order(MTransformationMatrix::RotationOrder order) {
    const bool named = order > MTransformationMatrix::kInvalid && order < MTransformationMatrix::kLast;
    return named ? static_cast<MEulerRotation::RotationOrder>(order - 1) : MEulerRotation::kXYZ;
}

MTransformationMatrix::RotationOrder order_of(const MEulerRotation& rotation) {
    return static_cast<MTransformationMatrix::RotationOrder>(rotation.order + 1);
}

} // namespace

// The parts as transform values; a joint's orient has no place among the parts, so it goes into the rotation.
template<typename Parts>
static TransformValues values_of(const Parts& parts) {
    TransformValues out;
    out.translate = headless::vector(parts.translation);
    out.scale = headless::vector(parts.scale);
    out.shear = headless::vector(parts.shear);
    out.scale_pivot = headless::vector(parts.scale_pivot);
    out.scale_pivot_translate = headless::vector(parts.scale_pivot_translation);
    out.rotate_pivot = headless::vector(parts.rotate_pivot);
    out.rotate_pivot_translate = headless::vector(parts.rotate_pivot_translation);
    out.rotate_axis = headless::matrix_to_euler(headless::to_matrix(headless::quaternion(parts.orientation)),
                                                headless::RotateOrder::xyz);
    out.rotate = {parts.rotation.x, parts.rotation.y, parts.rotation.z};
    out.order = headless::rotate_order(parts.rotation.order);
    return out;
}

MTransformationMatrix headless::Access::transformation(const Matrix& matrix, const TransformValues& values) {
    MTransformationMatrix out(headless::matrix(matrix));
    MTransformationMatrix::Parts& parts = out.parts_;
    parts.rotation.order = static_cast<MEulerRotation::RotationOrder>(values.order);
    if (values.joint) return out;
    parts.scale_pivot = headless::vector(values.scale_pivot);
    parts.scale_pivot_translation = headless::vector(values.scale_pivot_translate);
    parts.rotate_pivot = headless::vector(values.rotate_pivot);
    parts.rotate_pivot_translation = headless::vector(values.rotate_pivot_translate);
    if (values.rotate_axis != Vector3{})
        parts.orientation = quaternion(to_quaternion(euler_to_matrix(values.rotate_axis, RotateOrder::xyz)));
    return out;
}

const MTransformationMatrix::Parts& MTransformationMatrix::parts() const {
    if (parts_known_) return parts_;
    TransformValues values = values_of(parts_);
    headless::set_from_matrix(values, headless::matrix(matrix_));
    parts_.translation = headless::vector(values.translate);
    parts_.scale = headless::vector(values.scale);
    parts_.shear = headless::vector(values.shear);
    parts_.rotation = MEulerRotation(headless::vector(values.rotate), parts_.rotation.order);
    parts_known_ = true;
    return parts_;
}

MTransformationMatrix::Parts& MTransformationMatrix::change() {
    parts();
    matrix_known_ = false;
    return parts_;
}

MMatrix MTransformationMatrix::asMatrix() const {
    if (!matrix_known_) {
        matrix_ = headless::matrix(headless::local_matrix(values_of(parts_)));
        matrix_known_ = true;
    }
    return matrix_;
}

MMatrix MTransformationMatrix::asScaleMatrix() const {
    const MVector& s = parts().scale;
    return headless::matrix(Matrix::scale({s.x, s.y, s.z}));
}

MMatrix MTransformationMatrix::asRotateMatrix() const {
    return parts().orientation.asMatrix() * parts().rotation.asMatrix();
}

MQuaternion MTransformationMatrix::rotation() const {
    return parts().rotation.asQuaternion();
}
MEulerRotation MTransformationMatrix::eulerRotation() const {
    return parts().rotation;
}

MTransformationMatrix::RotationOrder MTransformationMatrix::rotationOrder(MStatus* status) const {
    put(status, MStatus::kSuccess);
    return order_of(parts_.rotation);
}

MStatus MTransformationMatrix::setRotationOrder(RotationOrder order, bool reorder) {
    if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
    Parts& parts = change();
    if (reorder)
        parts.rotation.reorderIt(euler_order(order));
    else
        parts.rotation.order = euler_order(order);
    return MStatus::kSuccess;
}

MQuaternion MTransformationMatrix::rotationOrientation(MStatus* status) const {
    put(status, MStatus::kSuccess);
    return parts_.orientation;
}

MTransformationMatrix& MTransformationMatrix::setRotationOrientation(const MQuaternion& orientation) {
    change().orientation = orientation;
    return *this;
}

MStatus MTransformationMatrix::getRotation(double angles[3], RotationOrder& order, MSpace::Space) const {
    order = order_of(parts().rotation);
    return parts().rotation.asVector().get(angles);
}

MStatus MTransformationMatrix::setRotation(const double angles[3], RotationOrder order, MSpace::Space) {
    if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
    change().rotation = MEulerRotation(angles, euler_order(order));
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space) const {
    const MQuaternion q = rotation();
    x = q.x;
    y = q.y;
    z = q.z;
    w = q.w;
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setRotationQuaternion(double x, double y, double z, double w, MSpace::Space) {
    rotateTo(MQuaternion(x, y, z, w));
    return MStatus::kSuccess;
}

MTransformationMatrix& MTransformationMatrix::rotateTo(const MQuaternion& rotation) {
    change().rotation = rotation.normal();
    return *this;
}

MTransformationMatrix& MTransformationMatrix::rotateTo(const MEulerRotation& rotation) {
    change().rotation = rotation;
    return *this;
}

MTransformationMatrix& MTransformationMatrix::rotateBy(const MQuaternion& by, MSpace::Space space, MStatus* status) {
    const bool before = space == MSpace::kPreTransform || space == MSpace::kTransform;
    put(status, MStatus::kSuccess);
    return rotateTo(before ? by * rotation() : rotation() * by);
}

MStatus MTransformationMatrix::getScale(double scale[3], MSpace::Space) const {
    return parts().scale.get(scale);
}

MStatus MTransformationMatrix::setScale(const double scale[3], MSpace::Space) {
    change().scale = MVector(scale);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getShear(double shear[3], MSpace::Space) const {
    return parts().shear.get(shear);
}

MStatus MTransformationMatrix::setShear(const double shear[3], MSpace::Space) {
    change().shear = MVector(shear);
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::getTranslation(MSpace::Space, MStatus* status) const {
    put(status, MStatus::kSuccess);
    return parts().translation;
}

MStatus MTransformationMatrix::setTranslation(const MVector& translation, MSpace::Space) {
    change().translation = translation;
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::addTranslation(const MVector& translation, MSpace::Space) {
    change().translation += translation;
    return MStatus::kSuccess;
}

MPoint MTransformationMatrix::rotatePivot(MSpace::Space, MStatus* status) const {
    put(status, MStatus::kSuccess);
    return parts_.rotate_pivot;
}

// Balanced, the pivot moves and the matrix stays: the pivot's translation takes up the difference.
MStatus MTransformationMatrix::setRotatePivot(const MPoint& pivot, MSpace::Space, bool balance) {
    const MMatrix before = asMatrix();
    change().rotate_pivot = MVector(pivot);
    if (balance) {
        const MMatrix after = asMatrix();
        change().rotate_pivot_translation +=
            MVector(before(3, 0) - after(3, 0), before(3, 1) - after(3, 1), before(3, 2) - after(3, 2));
    }
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::rotatePivotTranslation(MSpace::Space, MStatus* status) const {
    put(status, MStatus::kSuccess);
    return parts_.rotate_pivot_translation;
}

MStatus MTransformationMatrix::setRotatePivotTranslation(const MVector& translation, MSpace::Space) {
    change().rotate_pivot_translation = translation;
    return MStatus::kSuccess;
}

MPoint MTransformationMatrix::scalePivot(MSpace::Space, MStatus* status) const {
    put(status, MStatus::kSuccess);
    return parts_.scale_pivot;
}

MStatus MTransformationMatrix::setScalePivot(const MPoint& pivot, MSpace::Space, bool balance) {
    const MMatrix before = asMatrix();
    change().scale_pivot = MVector(pivot);
    if (balance) {
        const MMatrix after = asMatrix();
        const MVector apart(before(3, 0) - after(3, 0), before(3, 1) - after(3, 1), before(3, 2) - after(3, 2));
        // The scale pivot's translation is turned before it reaches row 3.
        change().scale_pivot_translation += apart * asRotateMatrix().inverse();
    }
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::scalePivotTranslation(MSpace::Space, MStatus* status) const {
    put(status, MStatus::kSuccess);
    return parts_.scale_pivot_translation;
}

MStatus MTransformationMatrix::setScalePivotTranslation(const MVector& translation, MSpace::Space) {
    change().scale_pivot_translation = translation;
    return MStatus::kSuccess;
}

bool MTransformationMatrix::isEquivalent(const MTransformationMatrix& other, double tolerance) const {
    return asMatrix().isEquivalent(other.asMatrix(), tolerance);
}
