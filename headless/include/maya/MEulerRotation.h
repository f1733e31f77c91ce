#pragma once

#include <maya/MIOStreamFwd.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MTypes.h>

class MMatrix;
class MQuaternion;
class MVector;

/// A rotation by three angles in radians, in one of six orders; the axis named first acts first.
class MEulerRotation {
public:
    enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };

    MEulerRotation() = default;
    MEulerRotation(double x_, double y_, double z_, RotationOrder order_ = kXYZ) : x(x_), y(y_), z(z_), order(order_) {}
    MEulerRotation(const MVector& v, RotationOrder order_ = kXYZ);

    MMatrix asMatrix() const;
    MQuaternion asQuaternion() const;
    MVector asVector() const;
    static MEulerRotation decompose(const MMatrix& rotation, RotationOrder order);
    MEulerRotation& operator=(const MMatrix& rotation);
    MEulerRotation& operator=(const MQuaternion& rotation);
    MEulerRotation reorder(RotationOrder other) const;
    MEulerRotation& reorderIt(RotationOrder other) { return *this = reorder(other); }

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    bool operator==(const MEulerRotation& o) const { return x == o.x && y == o.y && z == o.z && order == o.order; }
    bool operator!=(const MEulerRotation& o) const { return !(*this == o); }
    bool isEquivalent(const MEulerRotation& other, double tolerance = 1e-10) const;

    friend ostream& operator<<(ostream& out, const MEulerRotation& r);

    static const MEulerRotation identity;

    double x = 0.0, y = 0.0, z = 0.0;
    RotationOrder order = kXYZ;
};
