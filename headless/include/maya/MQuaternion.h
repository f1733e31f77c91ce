#pragma once

#include <maya/MStatus.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MTypes.h>

class MEulerRotation;
class MMatrix;
class MVector;

/// A rotation with the scalar part last. In a product the left one acts first, as with matrices.
class MQuaternion {
public:
    MQuaternion() = default;
    MQuaternion(double x_, double y_, double z_, double w_) : x(x_), y(y_), z(z_), w(w_) {}
    MQuaternion(const double v[4]) : x(v[0]), y(v[1]), z(v[2]), w(v[3]) {}
    MQuaternion(double radians, const MVector& axis);
    /// The least rotation that takes the direction of `from` to that of `to`.
    MQuaternion(const MVector& from, const MVector& to);

    MQuaternion& operator=(const MMatrix& rotation);
    MQuaternion& operator=(const MEulerRotation& rotation);
    MMatrix asMatrix() const;
    MEulerRotation asEulerRotation() const; ///< in the order xyz
    bool getAxisAngle(MVector& axis, double& radians) const;
    MQuaternion& setAxisAngle(const MVector& axis, double radians);
    MQuaternion& setToXAxis(double radians);
    MQuaternion& setToYAxis(double radians);
    MQuaternion& setToZAxis(double radians);

    MQuaternion operator*(const MQuaternion& other) const;
    MQuaternion& operator*=(const MQuaternion& other) { return *this = *this * other; }
    MQuaternion operator+(const MQuaternion& o) const { return {x + o.x, y + o.y, z + o.z, w + o.w}; }
    MQuaternion operator-(const MQuaternion& o) const { return {x - o.x, y - o.y, z - o.z, w - o.w}; }
    MQuaternion operator-() const { return {-x, -y, -z, -w}; }
    friend MQuaternion operator*(double k, const MQuaternion& q) { return {k * q.x, k * q.y, k * q.z, k * q.w}; }
    bool operator==(const MQuaternion& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
    bool operator!=(const MQuaternion& o) const { return !(*this == o); }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }

    MQuaternion normal() const;
    MQuaternion& normalizeIt() { return *this = normal(); }
    MQuaternion conjugate() const { return {-x, -y, -z, w}; }
    MQuaternion& conjugateIt() { return *this = conjugate(); }
    MQuaternion inverse() const;
    MQuaternion& invertIt() { return *this = inverse(); }
    MQuaternion& negateIt() { return *this = -*this; }
    bool isEquivalent(const MQuaternion& other, double tolerance = 1e-10) const;
    MStatus get(double out[4]) const;

    /// Between two rotations along the shorter arc.
    friend MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t);
    friend ostream& operator<<(ostream& out, const MQuaternion& q);

    static const MQuaternion identity;

    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};
