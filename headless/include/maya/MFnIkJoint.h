#pragma once

#include <maya/MFnTransform.h>
#include <maya/MObject.h>
#include <maya/MTransformationMatrix.h>

/// Operations on a joint.
class MFnIkJoint : public MFnTransform {
public:
    MFnIkJoint() {}
    MFnIkJoint(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnIkJoint(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnIkJoint(const MDagPath& path, MStatus* status = nullptr) { attach(path, status); }
    MFn::Type type() const override { return MFn::kJoint; }

    /// Makes a joint under a parent, or under the world, and selects it alone.
    MObject create(MObject parent = MObject::kNullObj, MStatus* status = nullptr);
    MStatus getOrientation(MQuaternion& orientation) const;
    MStatus setOrientation(const MQuaternion& orientation);
    MStatus getOrientation(MEulerRotation& orientation) const;
    MStatus setOrientation(const MEulerRotation& orientation);
    /// What it makes up for of its parent's scale; 1 where it makes up for none.
    MStatus getSegmentScale(double scale[3]) const;

private:
    MFnIkJoint(const MFnIkJoint&);
    MFnIkJoint& operator=(const MFnIkJoint&);
    MFnIkJoint* operator&() const;
};
