// MFnTransform and MFnIkJoint.
#include "headless/api/access.h"

#include <maya/MEulerRotation.h>
#include <maya/MFnIkJoint.h>
#include <maya/MPoint.h>

using namespace headless;

namespace {

const TransformAttributes& ids() {
    return TransformAttributes::ids();
}

Vector3 triple_of(const MFnBase& functions, AttributeId id) {
    Node* node = Access::node(functions);
    return node ? Access::scene().evaluate(node->plug(id)).vector() : Vector3{};
}

MStatus set_triple(const MFnBase& functions, AttributeId id, const Vector3& value) {
    Node* node = Access::node(functions);
    if (!node) return MStatus::kFailure;
    return Access::scene().set(node->plug(id), value) ? MStatus::kSuccess : MStatus::kFailure;
}

RotateOrder order_of(const MFnBase& functions) {
    Node* node = Access::node(functions);
    return node ? rotate_order(Access::scene().evaluate(node->plug(ids().rotate_order)).integer()) : RotateOrder::xyz;
}

Vector3 angles_for(const Matrix& rotation, const MFnBase& functions) {
    return matrix_to_euler(rotation, order_of(functions));
}

// What stands between a joint's own rotation and its parent; the identity for another transform.
Matrix orient_of(const MFnBase& functions) {
    const Node* node = Access::node(functions);
    if (!node || !node->type().is_joint()) return {};
    return euler_to_matrix(triple_of(functions, ids().joint_orient), RotateOrder::xyz);
}

Matrix axis_of(const MFnBase& functions) {
    return euler_to_matrix(triple_of(functions, ids().rotate_axis), RotateOrder::xyz);
}

// The rotation of a matrix that may scale too.
Matrix rotation_part(Matrix m) {
    TransformValues parts;
    set_from_matrix(parts, m);
    return euler_to_matrix(parts.rotate, RotateOrder::xyz);
}

} // namespace

MObject MFnTransform::create(MObject parent, MStatus* status) {
    return MFnDagNode::create("transform", parent, status);
}

MTransformationMatrix MFnTransform::transformation(MStatus* status) const {
    Node* node = Access::node(*this);
    if (!node) return fail(status, MTransformationMatrix());
    Session::current().note_asked(*node);
    EvaluationContext context(Access::scene());
    const Matrix& local = context.local_matrix(*node);
    return succeed(status, Access::transformation(local, context.current_values(*node)));
}

MStatus MFnTransform::set(const MTransformationMatrix& transformation) {
    Node* node = Access::node(*this);
    if (!node) return MStatus::kFailure;
    TransformValues values = EvaluationContext(Access::scene()).current_values(*node);
    set_from_matrix(values, matrix(transformation.asMatrix()));
    MStatus status = set_triple(*this, ids().translate, values.translate);
    const auto also = [&](AttributeId id, const Vector3& value) {
        if (const MStatus next = set_triple(*this, id, value); !next) status = next;
    };
    also(ids().rotate, values.rotate);
    also(ids().scale, values.scale);
    if (!values.joint) also(ids().shear, values.shear);
    return status;
}

MVector MFnTransform::translation(MSpace::Space space, MStatus* status) const {
    return getTranslation(space, status);
}

MVector MFnTransform::getTranslation(MSpace::Space space, MStatus* status) const {
    if (!Access::node(*this)) return fail(status, MVector());
    if (space == MSpace::kWorld) {
        const MMatrix world = dagPath().inclusiveMatrix(status);
        return MVector(world[3]);
    }
    return succeed(status, vector(triple_of(*this, ids().translate)));
}

MStatus MFnTransform::setTranslation(const MVector& translation, MSpace::Space space) {
    Vector3 wanted = vector(translation);
    if (space == MSpace::kWorld) {
        if (!Access::node(*this)) return MStatus::kFailure;
        const Matrix parent = matrix(dagPath().exclusiveMatrix());
        const Matrix local = matrix(transformation().asMatrix());
        // The pivots' share of row 3 stays; translate makes up the rest.
        wanted = transform_point(wanted, inverse(parent)) - local.translation() + triple_of(*this, ids().translate);
    }
    return set_triple(*this, ids().translate, wanted);
}

MStatus MFnTransform::translateBy(const MVector& translation, MSpace::Space space) {
    return setTranslation(getTranslation(space) + translation, space);
}

MStatus MFnTransform::getRotation(MEulerRotation& rotation) const {
    if (!Access::node(*this)) return MStatus::kFailure;
    rotation = MEulerRotation(vector(triple_of(*this, ids().rotate)),
                              static_cast<MEulerRotation::RotationOrder>(order_of(*this)));
    return MStatus::kSuccess;
}

MStatus MFnTransform::getRotation(MQuaternion& rotation, MSpace::Space space) const {
    MEulerRotation angles;
    const MStatus status = getRotation(angles);
    if (!status) return status;
    rotation = space == MSpace::kWorld ? quaternion(to_quaternion(rotation_part(matrix(dagPath().inclusiveMatrix()))))
                                       : angles.asQuaternion();
    return status;
}

MStatus MFnTransform::getRotation(double angles[3], MTransformationMatrix::RotationOrder& order) const {
    MEulerRotation rotation;
    const MStatus status = getRotation(rotation);
    order = static_cast<MTransformationMatrix::RotationOrder>(rotation.order + 1);
    rotation.asVector().get(angles);
    return status;
}

MStatus MFnTransform::setRotation(const MEulerRotation& rotation) {
    const bool same = rotation.order == static_cast<MEulerRotation::RotationOrder>(order_of(*this));
    const Vector3 angles =
        same ? Vector3{rotation.x, rotation.y, rotation.z} : angles_for(matrix(rotation.asMatrix()), *this);
    return set_triple(*this, ids().rotate, angles);
}

MStatus MFnTransform::setRotation(const MQuaternion& rotation, MSpace::Space space) {
    Matrix wanted = to_matrix(quaternion(rotation.normal()));
    if (space == MSpace::kWorld) {
        if (!Access::node(*this)) return MStatus::kFailure;
        const Matrix parent = rotation_part(matrix(dagPath().exclusiveMatrix()));
        wanted = inverse(axis_of(*this)) * wanted * inverse(parent) * inverse(orient_of(*this));
    }
    return set_triple(*this, ids().rotate, angles_for(wanted, *this));
}

MStatus MFnTransform::setRotation(const double angles[3], MTransformationMatrix::RotationOrder order) {
    if (order <= MTransformationMatrix::kInvalid || order >= MTransformationMatrix::kLast)
        return MStatus::kInvalidParameter;
    return setRotation(MEulerRotation(MVector(angles), static_cast<MEulerRotation::RotationOrder>(order - 1)));
}

MTransformationMatrix::RotationOrder MFnTransform::rotationOrder(MStatus* status) const {
    if (!Access::node(*this)) return fail(status, MTransformationMatrix::kInvalid);
    return succeed(status, static_cast<MTransformationMatrix::RotationOrder>(static_cast<int>(order_of(*this)) + 1));
}

MStatus MFnTransform::setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder) {
    Node* node = Access::node(*this);
    const bool named = order > MTransformationMatrix::kInvalid && order < MTransformationMatrix::kLast;
    if (!node || !named) return MStatus::kInvalidParameter;
    MEulerRotation rotation;
    getRotation(rotation);
    const int number = order - 1;
    if (!Access::scene().set(node->plug(ids().rotate_order), number)) return MStatus::kFailure;
    return reorder ? setRotation(rotation) : MStatus(MStatus::kSuccess);
}

MStatus MFnTransform::getScale(double scale[3]) const {
    vector(triple_of(*this, ids().scale)).get(scale);
    return Access::node(*this) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnTransform::setScale(const double scale[3]) {
    return set_triple(*this, ids().scale, {scale[0], scale[1], scale[2]});
}

MStatus MFnTransform::getShear(double shear[3]) const {
    vector(triple_of(*this, ids().shear)).get(shear);
    return Access::node(*this) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnTransform::setShear(const double shear[3]) {
    return set_triple(*this, ids().shear, {shear[0], shear[1], shear[2]});
}

// In the world: where the point stands that turning leaves alone. Its own scale comes before it, so it doesn't count.
MPoint MFnTransform::rotatePivot(MSpace::Space space, MStatus* status) const {
    if (!Access::node(*this)) return fail(status, MPoint());
    const Vector3 pivot = triple_of(*this, ids().rotate_pivot);
    if (space != MSpace::kWorld) return succeed(status, MPoint(vector(pivot)));
    const Vector3 moves = triple_of(*this, ids().rotate_pivot_translate) + triple_of(*this, ids().translate);
    return succeed(status, MPoint(vector(pivot + moves)) * dagPath().exclusiveMatrix());
}

// In the world: the point that scaling leaves alone goes through the matrix like any other.
MPoint MFnTransform::scalePivot(MSpace::Space space, MStatus* status) const {
    if (!Access::node(*this)) return fail(status, MPoint());
    const MPoint pivot(vector(triple_of(*this, ids().scale_pivot)));
    return succeed(status, space == MSpace::kWorld ? pivot * dagPath().inclusiveMatrix() : pivot);
}

MObject MFnIkJoint::create(MObject parent, MStatus* status) {
    MFnDagNode::create("joint", parent, status);
    Node* node = Access::node(*this);
    if (!node) return fail(status, MObject());
    Scene& scene = Access::scene();
    scene.selection.clear();
    scene.selection.add(scene.item(*node));
    return Access::object(*this);
}

MStatus MFnIkJoint::getOrientation(MEulerRotation& orientation) const {
    orientation = MEulerRotation(vector(triple_of(*this, ids().joint_orient)));
    return Access::node(*this) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnIkJoint::getOrientation(MQuaternion& orientation) const {
    orientation = quaternion(to_quaternion(orient_of(*this)));
    return Access::node(*this) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnIkJoint::setOrientation(const MQuaternion& orientation) {
    const Matrix rotation = to_matrix(quaternion(orientation.normal()));
    return set_triple(*this, ids().joint_orient, matrix_to_euler(rotation, RotateOrder::xyz));
}

MStatus MFnIkJoint::setOrientation(const MEulerRotation& orientation) {
    const MEulerRotation xyz = orientation.reorder(MEulerRotation::kXYZ);
    return set_triple(*this, ids().joint_orient, {xyz.x, xyz.y, xyz.z});
}

MStatus MFnIkJoint::getSegmentScale(double scale[3]) const {
    Node* node = Access::node(*this);
    if (!node) return MStatus::kFailure;
    vector(EvaluationContext(Access::scene()).transform_values(*node).parent_scale).get(scale);
    return MStatus::kSuccess;
}
