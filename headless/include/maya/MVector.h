#pragma once

#include <maya/MIOStreamFwd.h>
#include <maya/MStatus.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MTypes.h>

#include <math.h>

class MEulerRotation;
class MFloatVector;
class MMatrix;
class MPoint;
class MQuaternion;

/// A direction or displacement: a row to the left of a matrix, which its translation leaves alone.
class MVector {
public:
    enum Axis { kXaxis, kYaxis, kZaxis, kWaxis };

    MVector() = default;
    MVector(double x_, double y_, double z_ = 0.0) : x(x_), y(y_), z(z_) {}
    MVector(const double v[3]) : x(v[0]), y(v[1]), z(v[2]) {}
    MVector(const float v[3]) : x(v[0]), y(v[1]), z(v[2]) {}
    MVector(const MFloatVector& v);
    MVector(const MPoint& p);

    double operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double operator[](unsigned int i) const { return (*this)(i); }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    MVector operator+(const MVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
    MVector operator-(const MVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
    MVector operator-() const { return {-x, -y, -z}; }
    MVector operator*(double k) const { return {x * k, y * k, z * k}; }
    MVector operator/(double k) const { return {x / k, y / k, z / k}; }
    MVector& operator+=(const MVector& o) { return *this = *this + o; }
    MVector& operator-=(const MVector& o) { return *this = *this - o; }
    MVector& operator*=(double k) { return *this = *this * k; }
    MVector& operator/=(double k) { return *this = *this / k; }
    double operator*(const MVector& o) const { return x * o.x + y * o.y + z * o.z; } ///< scalar product
    MVector operator^(const MVector& o) const {                                      ///< vector product
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    MVector operator*(const MMatrix& m) const;
    MVector& operator*=(const MMatrix& m);
    bool operator==(const MVector& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const MVector& o) const { return !(*this == o); }

    double length() const { return sqrt(*this * *this); }
    MStatus normalize(); ///< a vector of no length stays
    MVector normal() const;
    double angle(const MVector& other) const; ///< radians; 0 when either has no length
    bool isEquivalent(const MVector& other, double tolerance = 1e-10) const;
    bool isParallel(const MVector& other, double tolerance = 1e-10) const;
    MVector rotateBy(const MQuaternion& rotation) const;
    MVector rotateBy(const MEulerRotation& rotation) const;
    MStatus get(double out[3]) const;

    friend MVector operator*(double k, const MVector& v) { return v * k; }
    friend ostream& operator<<(ostream& out, const MVector& v);

    static const MVector zero, one, xAxis, yAxis, zAxis, xNegAxis, yNegAxis, zNegAxis;

    double x = 0.0, y = 0.0, z = 0.0;
};

#include <maya/MFloatVector.h>
#include <maya/MPoint.h>
