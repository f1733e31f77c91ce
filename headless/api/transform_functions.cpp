// MFnTransform and MFnIkJoint.
#include "headless/api/access.h"

#include <maya/MFnIkJoint.h>

using namespace headless;

namespace {

const TransformAttributes& ids() {
    return TransformAttributes::ids();
}

Vector3 triple_of(const MObject& object, AttributeId id) {
    Node* node = Access::node(object);
    return node ? Access::scene().evaluate(node->plug(id)).vector() : Vector3{};
}

MStatus set_triple(const MObject& object, AttributeId id, const Vector3& value) {
    Node* node = Access::node(object);
    if (!node) return MStatus::kFailure;
    return Access::scene().set(node->plug(id), value) ? MStatus::kSuccess : MStatus::kFailure;
}

RotateOrder order_of(const MObject& object) {
    Node* node = Access::node(object);
    return node ? rotate_order(Access::scene().evaluate(node->plug(ids().rotate_order)).integer()) : RotateOrder::xyz;
}

Vector3 angles_for(const Matrix& rotation, const MObject& object) {
    return matrix_to_euler(rotation, order_of(object));
}

// What stands between a joint's own rotation and its parent; the identity for another transform.
Matrix orient_of(const MObject& object) {
    const Node* node = Access::node(object);
    if (!node || !node->type().is_joint()) return {};
    return euler_to_matrix(triple_of(object, ids().joint_orient), RotateOrder::xyz);
}

Matrix axis_of(const MObject& object) {
    return euler_to_matrix(triple_of(object, ids().rotate_axis), RotateOrder::xyz);
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
    Node* node = Access::node(object_);
    if (!node) return fail(status, MTransformationMatrix());
    Session::current().note_asked(*node);
    EvaluationContext context(Access::scene());
    const Matrix& local = context.local_matrix(*node);
    return succeed(status, Access::transformation(local, context.current_values(*node)));
}

MStatus MFnTransform::set(const MTransformationMatrix& transformation) {
    Node* node = Access::node(object_);
    if (!node) return MStatus::kFailure;
    TransformValues values = EvaluationContext(Access::scene()).current_values(*node);
    set_from_matrix(values, matrix(transformation.asMatrix()));
    MStatus status = set_triple(object_, ids().translate, values.translate);
    const auto also = [&](AttributeId id, const Vector3& value) {
        if (const MStatus next = set_triple(object_, id, value); !next) status = next;
    };
    also(ids().rotate, values.rotate);
    also(ids().scale, values.scale);
    if (!values.joint) also(ids().shear, values.shear);
    return status;
}

MVector MFnTransform::getTranslation(MSpace::Space space, MStatus* status) const {
    if (!Access::node(object_)) return fail(status, MVector());
    if (space == MSpace::kWorld) {
        const MMatrix world = dagPath().inclusiveMatrix(status);
        return MVector(world[3]);
    }
    return succeed(status, vector(triple_of(object_, ids().translate)));
}

MStatus MFnTransform::setTranslation(const MVector& translation, MSpace::Space space) {
    Vector3 wanted = vector(translation);
    if (space == MSpace::kWorld) {
        if (!Access::node(object_)) return MStatus::kFailure;
        const Matrix parent = matrix(dagPath().exclusiveMatrix());
        const Matrix local = matrix(transformation().asMatrix());
        // The pivots' share of row 3 stays; translate makes up the rest.
        wanted = transform_point(wanted, inverse(parent)) - local.translation() + triple_of(object_, ids().translate);
    }
    return set_triple(object_, ids().translate, wanted);
}

MStatus MFnTransform::translateBy(const MVector& translation, MSpace::Space space) {
    return setTranslation(getTranslation(space) + translation, space);
}

MStatus MFnTransform::getRotation(MEulerRotation& rotation) const {
    if (!Access::node(object_)) return MStatus::kFailure;
    rotation = MEulerRotation(vector(triple_of(object_, ids().rotate)),
                              static_cast<MEulerRotation::RotationOrder>(order_of(object_)));
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
    const bool same = rotation.order == static_cast<MEulerRotation::RotationOrder>(order_of(object_));
    const Vector3 angles =
        same ? Vector3{rotation.x, rotation.y, rotation.z} : angles_for(matrix(rotation.asMatrix()), object_);
    return set_triple(object_, ids().rotate, angles);
}

MStatus MFnTransform::setRotation(const MQuaternion& rotation, MSpace::Space space) {
    Matrix wanted = to_matrix(quaternion(rotation.normal()));
    if (space == MSpace::kWorld) {
        if (!Access::node(object_)) return MStatus::kFailure;
        const Matrix parent = rotation_part(matrix(dagPath().exclusiveMatrix()));
        wanted = inverse(axis_of(object_)) * wanted * inverse(parent) * inverse(orient_of(object_));
    }
    return set_triple(object_, ids().rotate, angles_for(wanted, object_));
}

MStatus MFnTransform::setRotation(const double angles[3], MTransformationMatrix::RotationOrder order) {
    if (order <= MTransformationMatrix::kInvalid || order >= MTransformationMatrix::kLast)
        return MStatus::kInvalidParameter;
    return setRotation(MEulerRotation(angles, static_cast<MEulerRotation::RotationOrder>(order - 1)));
}

MTransformationMatrix::RotationOrder MFnTransform::rotationOrder(MStatus* status) const {
    if (!Access::node(object_)) return fail(status, MTransformationMatrix::kInvalid);
    return succeed(status, static_cast<MTransformationMatrix::RotationOrder>(static_cast<int>(order_of(object_)) + 1));
}

MStatus MFnTransform::setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder) {
    Node* node = Access::node(object_);
    const bool named = order > MTransformationMatrix::kInvalid && order < MTransformationMatrix::kLast;
    if (!node || !named) return MStatus::kInvalidParameter;
    MEulerRotation rotation;
    getRotation(rotation);
    const int number = order - 1;
    if (!Access::scene().set(node->plug(ids().rotate_order), number)) return MStatus::kFailure;
    return reorder ? setRotation(rotation) : MStatus(MStatus::kSuccess);
}

MStatus MFnTransform::getScale(double scale[3]) const {
    vector(triple_of(object_, ids().scale)).get(scale);
    return Access::node(object_) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnTransform::setScale(const double scale[3]) {
    return set_triple(object_, ids().scale, {scale[0], scale[1], scale[2]});
}

MStatus MFnTransform::getShear(double shear[3]) const {
    vector(triple_of(object_, ids().shear)).get(shear);
    return Access::node(object_) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnTransform::setShear(const double shear[3]) {
    return set_triple(object_, ids().shear, {shear[0], shear[1], shear[2]});
}

// In the world: where the point stands that turning leaves alone. Its own scale comes before it, so it doesn't count.
MPoint MFnTransform::rotatePivot(MSpace::Space space, MStatus* status) const {
    if (!Access::node(object_)) return fail(status, MPoint());
    const Vector3 pivot = triple_of(object_, ids().rotate_pivot);
    if (space != MSpace::kWorld) return succeed(status, MPoint(vector(pivot)));
    const Vector3 moves = triple_of(object_, ids().rotate_pivot_translate) + triple_of(object_, ids().translate);
    return succeed(status, MPoint(vector(pivot + moves)) * dagPath().exclusiveMatrix());
}

// In the world: the point that scaling leaves alone goes through the matrix like any other.
MPoint MFnTransform::scalePivot(MSpace::Space space, MStatus* status) const {
    if (!Access::node(object_)) return fail(status, MPoint());
    const MPoint pivot(vector(triple_of(object_, ids().scale_pivot)));
    return succeed(status, space == MSpace::kWorld ? pivot * dagPath().inclusiveMatrix() : pivot);
}

MObject MFnIkJoint::create(MObject parent, MStatus* status) {
    MFnDagNode::create("joint", parent, status);
    Node* node = Access::node(object_);
    if (!node) return fail(status, MObject());
    Scene& scene = Access::scene();
    scene.selection.clear();
    scene.selection.add(scene.item(*node));
    return object_;
}

MStatus MFnIkJoint::getOrientation(MEulerRotation& orientation) const {
    orientation = MEulerRotation(vector(triple_of(object_, ids().joint_orient)));
    return Access::node(object_) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnIkJoint::getOrientation(MQuaternion& orientation) const {
    orientation = quaternion(to_quaternion(orient_of(object_)));
    return Access::node(object_) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnIkJoint::setOrientation(const MQuaternion& orientation) {
    const Matrix rotation = to_matrix(quaternion(orientation.normal()));
    return set_triple(object_, ids().joint_orient, matrix_to_euler(rotation, RotateOrder::xyz));
}

MStatus MFnIkJoint::setOrientation(const MEulerRotation& orientation) {
    const MEulerRotation xyz = orientation.reorder(MEulerRotation::kXYZ);
    return set_triple(object_, ids().joint_orient, {xyz.x, xyz.y, xyz.z});
}

MStatus MFnIkJoint::getSegmentScale(double scale[3]) const {
    Node* node = Access::node(object_);
    if (!node) return MStatus::kFailure;
    vector(EvaluationContext(Access::scene()).transform_values(*node).parent_scale).get(scale);
    return MStatus::kSuccess;
}
