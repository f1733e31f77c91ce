#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MObject.h>
#include <maya/MTransformationMatrix.h>

class MEulerRotation;
class MPoint;
class MQuaternion;
class MVector;

/// Operations on a transform's own values, as they are at the current time. A value set on an attribute that a
/// curve drives holds until the clock moves; on one that is locked or driven otherwise, setting fails. Of the
/// spaces, `kWorld` needs a function set made from a path or a node with a single one; all others state the
/// node's own values.
class MFnTransform : public MFnDagNode {
public:
    MFnTransform() {}
    MFnTransform(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnTransform(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnTransform(const MDagPath& path, MStatus* status = nullptr) { attach(path, status); }
    MFn::Type type() const override { return MFn::kTransform; }

    MObject create(MObject parent = MObject::kNullObj, MStatus* status = nullptr);

    /// The local matrix: of a joint with its orient and the compensation of its parent's scale.
    MTransformationMatrix transformation(MStatus* status = nullptr) const;
    /// Sets translate, rotate, scale and shear so that `transformation` gives this matrix back. Pivots, rotate
    /// axis, rotate order and joint orient stay the node's own. A joint has no shear.
    MStatus set(const MTransformationMatrix& transformation);

    MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MVector translation(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setTranslation(const MVector& translation, MSpace::Space space);
    MStatus translateBy(const MVector& translation, MSpace::Space space);

    MStatus getRotation(MEulerRotation& rotation) const;
    MStatus getRotation(MQuaternion& rotation, MSpace::Space space = MSpace::kTransform) const;
    MStatus getRotation(double angles[3], MTransformationMatrix::RotationOrder& order) const;
    MStatus setRotation(const MEulerRotation& rotation);
    MStatus setRotation(const MQuaternion& rotation, MSpace::Space space = MSpace::kTransform);
    MStatus setRotation(const double angles[3], MTransformationMatrix::RotationOrder order);
    MTransformationMatrix::RotationOrder rotationOrder(MStatus* status = nullptr) const;
    MStatus setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder);

    MStatus getScale(double scale[3]) const;
    MStatus setScale(const double scale[3]);
    MStatus getShear(double shear[3]) const;
    MStatus setShear(const double shear[3]);
    MPoint rotatePivot(MSpace::Space space, MStatus* status = nullptr) const;
    MPoint scalePivot(MSpace::Space space, MStatus* status = nullptr) const;

private:
    MFnTransform(const MFnTransform&);
    MFnTransform& operator=(const MFnTransform&);
    MFnTransform* operator&() const;
};
