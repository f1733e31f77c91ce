#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MEulerRotation;
class MMatrix;
class MPoint;
class MQuaternion;
class MVector;

/// A transformation that can be asked for its parts: inv(SP) S SH SP ST inv(RP) RO R RP RT T, leftmost first.
/// Made from a matrix it gives that very matrix back, whatever the parts round to.
class MTransformationMatrix {
public:
    enum RotationOrder { kInvalid, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };

    MTransformationMatrix();
    MTransformationMatrix(const MMatrix& matrix);
    MTransformationMatrix& operator=(const MMatrix& matrix);

    MMatrix asMatrix() const;
    MMatrix asMatrixInverse() const;
    MMatrix asScaleMatrix() const;
    MMatrix asRotateMatrix() const;

    MQuaternion rotation() const;
    MEulerRotation eulerRotation() const;
    RotationOrder rotationOrder(MStatus* status = nullptr) const;
    MStatus reorderRotation(const RotationOrder& order); ///< the same rotation, stated in another order
    MQuaternion rotationOrientation() const;
    MTransformationMatrix& setRotationOrientation(const MQuaternion& orientation);
    MStatus getRotation(double angles[3], RotationOrder& order) const;
    MStatus getRotation(double angles[3], RotationOrder& order, MSpace::Space) const;
    MStatus setRotation(const double angles[3], RotationOrder order);
    MStatus setRotation(const double angles[3], RotationOrder order, MSpace::Space);
    MStatus getRotationQuaternion(double& x, double& y, double& z, double& w) const;
    MStatus getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space) const;
    MStatus setRotationQuaternion(double x, double y, double z, double w);
    MStatus setRotationQuaternion(double x, double y, double z, double w, MSpace::Space);
    MTransformationMatrix& rotateTo(const MQuaternion& rotation);
    MTransformationMatrix& rotateTo(const MEulerRotation& rotation);
    MTransformationMatrix& rotateBy(const MQuaternion& rotation, MSpace::Space space, MStatus* status = nullptr);

    MStatus getScale(double scale[3], MSpace::Space) const;
    MStatus setScale(const double scale[3], MSpace::Space);
    MStatus getShear(double shear[3], MSpace::Space) const;
    MStatus setShear(const double shear[3], MSpace::Space);
    MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MVector translation(MSpace::Space space, MStatus* status = nullptr) const;
    MStatus setTranslation(const MVector& translation, MSpace::Space);
    MStatus addTranslation(const MVector& translation, MSpace::Space);
    MPoint rotatePivot(MSpace::Space, MStatus* status = nullptr) const;
    MStatus setRotatePivot(const MPoint& pivot, MSpace::Space, bool balance);
    MVector rotatePivotTranslation(MSpace::Space, MStatus* status = nullptr) const;
    MStatus setRotatePivotTranslation(const MVector& translation, MSpace::Space);
    MPoint scalePivot(MSpace::Space, MStatus* status = nullptr) const;
    MStatus setScalePivot(const MPoint& pivot, MSpace::Space, bool balance);
    MVector scalePivotTranslation(MSpace::Space, MStatus* status = nullptr) const;
    MStatus setScalePivotTranslation(const MVector& translation, MSpace::Space);

    bool operator==(const MTransformationMatrix& other) const;
    bool operator!=(const MTransformationMatrix& other) const { return !(*this == other); }
    bool isEquivalent(const MTransformationMatrix& other, double tolerance = 1e-10) const;

    static const MTransformationMatrix identity;

private:
    friend struct headless::Access;
    struct Parts {
        double translation[3] = {}, scale[3] = {1, 1, 1}, shear[3] = {}; // shear as xy, xz, yz
        double scale_pivot[3] = {}, scale_pivot_translation[3] = {}, rotate_pivot[3] = {},
               rotate_pivot_translation[3] = {};
        double orientation[4] = {0, 0, 0, 1};
        double angles[3] = {};
        RotationOrder order = kXYZ;
    };
    const Parts& parts() const; // worked out from the matrix at the first question
    Parts& change();            // the same, for a change: from then on the matrix follows from the parts

    mutable double matrix_[4][4];
    mutable bool matrix_known_ = true;
    mutable bool parts_known_ = true;
    mutable Parts parts_;
};
