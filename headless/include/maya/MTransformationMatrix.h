#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MSpace.h>
#include <maya/MVector.h>

/// A transformation that can be asked for its parts: inv(SP) S SH SP ST inv(RP) RO R RP RT T, leftmost first.
/// Made from a matrix it gives that very matrix back, whatever the parts round to.
class MTransformationMatrix {
public:
    enum RotationOrder { kInvalid, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };

    MTransformationMatrix() = default;
    MTransformationMatrix(const MMatrix& matrix) : matrix_(matrix), parts_known_(false) {}
    MTransformationMatrix& operator=(const MMatrix& matrix) { return *this = MTransformationMatrix(matrix); }

    MMatrix asMatrix() const;
    MMatrix asMatrixInverse() const { return asMatrix().inverse(); }
    MMatrix asScaleMatrix() const;
    MMatrix asRotateMatrix() const;

    MQuaternion rotation() const;
    MEulerRotation eulerRotation() const;
    RotationOrder rotationOrder(MStatus* status = nullptr) const;
    /// States the same rotation in another order; `reorder` false keeps the angles and so turns otherwise.
    MStatus setRotationOrder(RotationOrder order, bool reorder);
    MQuaternion rotationOrientation(MStatus* status = nullptr) const;
    MTransformationMatrix& setRotationOrientation(const MQuaternion& orientation);
    MStatus getRotation(double angles[3], RotationOrder& order, MSpace::Space = MSpace::kTransform) const;
    MStatus setRotation(const double angles[3], RotationOrder order, MSpace::Space = MSpace::kTransform);
    MStatus getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space = MSpace::kTransform) const;
    MStatus setRotationQuaternion(double x, double y, double z, double w, MSpace::Space = MSpace::kTransform);
    MTransformationMatrix& rotateTo(const MQuaternion& rotation);
    MTransformationMatrix& rotateTo(const MEulerRotation& rotation);
    MTransformationMatrix& rotateBy(const MQuaternion& rotation, MSpace::Space space, MStatus* status = nullptr);

    MStatus getScale(double scale[3], MSpace::Space) const;
    MStatus setScale(const double scale[3], MSpace::Space);
    MStatus getShear(double shear[3], MSpace::Space) const;
    MStatus setShear(const double shear[3], MSpace::Space);
    MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
    MVector translation(MSpace::Space space, MStatus* status = nullptr) const { return getTranslation(space, status); }
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

    bool operator==(const MTransformationMatrix& other) const { return asMatrix() == other.asMatrix(); }
    bool operator!=(const MTransformationMatrix& other) const { return !(*this == other); }
    bool isEquivalent(const MTransformationMatrix& other, double tolerance = 1e-10) const;

    static const MTransformationMatrix identity;

private:
    friend struct headless::Access;
    struct Parts {
        MVector translation, scale{1, 1, 1}, shear; // shear as xy, xz, yz
        MVector scale_pivot, scale_pivot_translation, rotate_pivot, rotate_pivot_translation;
        MQuaternion orientation;
        MEulerRotation rotation;
    };
    const Parts& parts() const; // worked out from the matrix at the first question
    Parts& change();            // the same, for a change: from then on the matrix follows from the parts

    mutable MMatrix matrix_;
    mutable bool matrix_known_ = true;
    mutable bool parts_known_ = true;
    mutable Parts parts_;
};
