#include "headless/api/access.h"

#include <maya/MEulerRotation.h>
#include <maya/MPoint.h>

#include <algorithm>

using headless::Access;
using headless::Matrix;
using headless::put;
using headless::TransformValues;

const MTransformationMatrix MTransformationMatrix::identity;

MTransformationMatrix::MTransformationMatrix() : MTransformationMatrix(MMatrix::identity) {
    parts_known_ = true;
}

MTransformationMatrix::MTransformationMatrix(const MMatrix& matrix) : parts_known_(false) {
    matrix.get(matrix_);
}

MTransformationMatrix& MTransformationMatrix::operator=(const MMatrix& matrix) {
    return *this = MTransformationMatrix(matrix);
}

namespace {

MEulerRotation::RotationOrder euler_order(MTransformationMatrix::RotationOrder order) {
    const bool named = order > MTransformationMatrix::kInvalid && order < MTransformationMatrix::kLast;
    return named ? static_cast<MEulerRotation::RotationOrder>(order - 1) : MEulerRotation::kXYZ;
}

template<typename Parts>
MEulerRotation rotation_of(const Parts& parts) {
    return {parts.angles[0], parts.angles[1], parts.angles[2], euler_order(parts.order)};
}

template<typename Parts>
void set_rotation(Parts& parts, const MEulerRotation& rotation) {
    rotation.asVector().get(parts.angles);
    parts.order = static_cast<MTransformationMatrix::RotationOrder>(rotation.order + 1);
}

void store(const headless::Vector3& from, double to[3]) {
    headless::vector(from).get(to);
}

headless::Vector3 triple(const double from[3]) {
    return {from[0], from[1], from[2]};
}

} // namespace

// The parts as transform values; a joint's orient has no place among the parts, so it goes into the rotation.
template<typename Parts>
static TransformValues values_of(const Parts& parts) {
    TransformValues out;
    out.translate = triple(parts.translation);
    out.scale = triple(parts.scale);
    out.shear = triple(parts.shear);
    out.scale_pivot = triple(parts.scale_pivot);
    out.scale_pivot_translate = triple(parts.scale_pivot_translation);
    out.rotate_pivot = triple(parts.rotate_pivot);
    out.rotate_pivot_translate = triple(parts.rotate_pivot_translation);
    out.rotate_axis = headless::matrix_to_euler(
        headless::to_matrix(headless::quaternion(MQuaternion(parts.orientation))), headless::RotateOrder::xyz);
    out.rotate = triple(parts.angles);
    out.order = headless::rotate_order(euler_order(parts.order));
    return out;
}

MTransformationMatrix headless::Access::transformation(const Matrix& matrix, const TransformValues& values) {
    MTransformationMatrix out(headless::matrix(matrix));
    MTransformationMatrix::Parts& parts = out.parts_;
    parts.order = static_cast<MTransformationMatrix::RotationOrder>(static_cast<int>(values.order) + 1);
    if (values.joint) return out;
    store(values.scale_pivot, parts.scale_pivot);
    store(values.scale_pivot_translate, parts.scale_pivot_translation);
    store(values.rotate_pivot, parts.rotate_pivot);
    store(values.rotate_pivot_translate, parts.rotate_pivot_translation);
    if (values.rotate_axis != Vector3{})
        quaternion(to_quaternion(euler_to_matrix(values.rotate_axis, RotateOrder::xyz))).get(parts.orientation);
    return out;
}

const MTransformationMatrix::Parts& MTransformationMatrix::parts() const {
    if (parts_known_) return parts_;
    TransformValues values = values_of(parts_);
    headless::set_from_matrix(values, headless::matrix(MMatrix(matrix_)));
    store(values.translate, parts_.translation);
    store(values.scale, parts_.scale);
    store(values.shear, parts_.shear);
    store(values.rotate, parts_.angles);
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
        headless::matrix(headless::local_matrix(values_of(parts_))).get(matrix_);
        matrix_known_ = true;
    }
    return MMatrix(matrix_);
}

MMatrix MTransformationMatrix::asMatrixInverse() const {
    return asMatrix().inverse();
}

MMatrix MTransformationMatrix::asScaleMatrix() const {
    return headless::matrix(Matrix::scale(triple(parts().scale)));
}

MMatrix MTransformationMatrix::asRotateMatrix() const {
    return MQuaternion(parts().orientation).asMatrix() * eulerRotation().asMatrix();
}

MQuaternion MTransformationMatrix::rotation() const {
    return eulerRotation().asQuaternion();
}
MEulerRotation MTransformationMatrix::eulerRotation() const {
    return rotation_of(parts());
}

MTransformationMatrix::RotationOrder MTransformationMatrix::rotationOrder(MStatus* status) const {
    headless::put(status, MStatus::kSuccess);
    return parts_.order;
}

MStatus MTransformationMatrix::reorderRotation(const RotationOrder& order) {
    if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
    Parts& parts = change();
    set_rotation(parts, rotation_of(parts).reorder(euler_order(order)));
    return MStatus::kSuccess;
}

MQuaternion MTransformationMatrix::rotationOrientation() const {
    return MQuaternion(parts_.orientation);
}

MTransformationMatrix& MTransformationMatrix::setRotationOrientation(const MQuaternion& orientation) {
    orientation.get(change().orientation);
    return *this;
}

MStatus MTransformationMatrix::getRotation(double angles[3], RotationOrder& order, MSpace::Space) const {
    return getRotation(angles, order);
}

MStatus MTransformationMatrix::getRotation(double angles[3], RotationOrder& order) const {
    order = parts().order;
    std::copy_n(parts().angles, 3, angles);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setRotation(const double angles[3], RotationOrder order, MSpace::Space) {
    return setRotation(angles, order);
}

MStatus MTransformationMatrix::setRotation(const double angles[3], RotationOrder order) {
    if (order <= kInvalid || order >= kLast) return MStatus::kInvalidParameter;
    Parts& parts = change();
    std::copy_n(angles, 3, parts.angles);
    parts.order = order;
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space) const {
    return getRotationQuaternion(x, y, z, w);
}

MStatus MTransformationMatrix::getRotationQuaternion(double& x, double& y, double& z, double& w) const {
    const MQuaternion q = rotation();
    x = q.x;
    y = q.y;
    z = q.z;
    w = q.w;
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setRotationQuaternion(double x, double y, double z, double w, MSpace::Space) {
    return setRotationQuaternion(x, y, z, w);
}

MStatus MTransformationMatrix::setRotationQuaternion(double x, double y, double z, double w) {
    rotateTo(MQuaternion(x, y, z, w));
    return MStatus::kSuccess;
}

MTransformationMatrix& MTransformationMatrix::rotateTo(const MQuaternion& rotation) {
    Parts& parts = change();
    MEulerRotation turned = rotation_of(parts); // in the order that is set
    turned = rotation.normal();
    set_rotation(parts, turned);
    return *this;
}

MTransformationMatrix& MTransformationMatrix::rotateTo(const MEulerRotation& rotation) {
    set_rotation(change(), rotation);
    return *this;
}

MTransformationMatrix& MTransformationMatrix::rotateBy(const MQuaternion& by, MSpace::Space space, MStatus* status) {
    const bool before = space == MSpace::kPreTransform || space == MSpace::kTransform;
    headless::put(status, MStatus::kSuccess);
    return rotateTo(before ? by * rotation() : rotation() * by);
}

MStatus MTransformationMatrix::getScale(double scale[3], MSpace::Space) const {
    std::copy_n(parts().scale, 3, scale);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setScale(const double scale[3], MSpace::Space) {
    std::copy_n(scale, 3, change().scale);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::getShear(double shear[3], MSpace::Space) const {
    std::copy_n(parts().shear, 3, shear);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::setShear(const double shear[3], MSpace::Space) {
    std::copy_n(shear, 3, change().shear);
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::getTranslation(MSpace::Space, MStatus* status) const {
    headless::put(status, MStatus::kSuccess);
    return MVector(parts().translation);
}

MStatus MTransformationMatrix::setTranslation(const MVector& translation, MSpace::Space) {
    translation.get(change().translation);
    return MStatus::kSuccess;
}

MStatus MTransformationMatrix::addTranslation(const MVector& translation, MSpace::Space) {
    (getTranslation(MSpace::kTransform) + translation).get(change().translation);
    return MStatus::kSuccess;
}

MPoint MTransformationMatrix::rotatePivot(MSpace::Space, MStatus* status) const {
    headless::put(status, MStatus::kSuccess);
    return MPoint(MVector(parts_.rotate_pivot));
}

// Balanced, the pivot moves and the matrix stays: the pivot's translation takes up the difference.
MStatus MTransformationMatrix::setRotatePivot(const MPoint& pivot, MSpace::Space, bool balance) {
    const MMatrix before = asMatrix();
    MVector(pivot).get(change().rotate_pivot);
    if (balance) {
        const MMatrix after = asMatrix();
        const MVector apart(before(3, 0) - after(3, 0), before(3, 1) - after(3, 1), before(3, 2) - after(3, 2));
        (MVector(parts_.rotate_pivot_translation) + apart).get(change().rotate_pivot_translation);
    }
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::rotatePivotTranslation(MSpace::Space, MStatus* status) const {
    headless::put(status, MStatus::kSuccess);
    return MVector(parts_.rotate_pivot_translation);
}

MStatus MTransformationMatrix::setRotatePivotTranslation(const MVector& translation, MSpace::Space) {
    translation.get(change().rotate_pivot_translation);
    return MStatus::kSuccess;
}

MPoint MTransformationMatrix::scalePivot(MSpace::Space, MStatus* status) const {
    headless::put(status, MStatus::kSuccess);
    return MPoint(MVector(parts_.scale_pivot));
}

MStatus MTransformationMatrix::setScalePivot(const MPoint& pivot, MSpace::Space, bool balance) {
    const MMatrix before = asMatrix();
    MVector(pivot).get(change().scale_pivot);
    if (balance) {
        const MMatrix after = asMatrix();
        const MVector apart(before(3, 0) - after(3, 0), before(3, 1) - after(3, 1), before(3, 2) - after(3, 2));
        // The scale pivot's translation is turned before it reaches row 3.
        const MVector turned = apart * asRotateMatrix().inverse();
        (MVector(parts_.scale_pivot_translation) + turned).get(change().scale_pivot_translation);
    }
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::scalePivotTranslation(MSpace::Space, MStatus* status) const {
    headless::put(status, MStatus::kSuccess);
    return MVector(parts_.scale_pivot_translation);
}

MStatus MTransformationMatrix::setScalePivotTranslation(const MVector& translation, MSpace::Space) {
    translation.get(change().scale_pivot_translation);
    return MStatus::kSuccess;
}

MVector MTransformationMatrix::translation(MSpace::Space space, MStatus* status) const {
    return getTranslation(space, status);
}

bool MTransformationMatrix::operator==(const MTransformationMatrix& other) const {
    return asMatrix() == other.asMatrix();
}

bool MTransformationMatrix::isEquivalent(const MTransformationMatrix& other, double tolerance) const {
    return asMatrix().isEquivalent(other.asMatrix(), tolerance);
}
