#pragma once

#include <maya/MIOStreamFwd.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MFloatVector;
class MMatrix;
class MVector;

/// A place: a row to the left of a matrix, with w 1 unless said otherwise.
class MPoint {
public:
    MPoint() = default;
    MPoint(double x_, double y_, double z_ = 0.0, double w_ = 1.0) : x(x_), y(y_), z(z_), w(w_) {}
    MPoint(const double v[4]) : x(v[0]), y(v[1]), z(v[2]), w(v[3]) {}
    MPoint(const MVector& v);

    double operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double operator[](unsigned int i) const { return (*this)(i); }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    MPoint operator+(const MVector& v) const;
    MPoint operator-(const MVector& v) const;
    MVector operator-(const MPoint& p) const;
    MPoint& operator+=(const MVector& v) { return *this = *this + v; }
    MPoint& operator-=(const MVector& v) { return *this = *this - v; }
    MPoint operator*(const double k) const { return {x * k, y * k, z * k, w}; }
    MPoint operator/(const double k) const { return {x / k, y / k, z / k, w}; }
    MPoint operator*(const MMatrix& m) const;
    MPoint& operator*=(const MMatrix& m);
    bool operator==(const MPoint& p) const { return x == p.x && y == p.y && z == p.z && w == p.w; }
    bool operator!=(const MPoint& p) const { return !(*this == p); }

    MPoint& cartesianize(); ///< divides by w; a w of 0 or 1 leaves the point
    double distanceTo(const MPoint& other) const;
    bool isEquivalent(const MPoint& other, double tolerance = 1e-10) const;
    MStatus get(double out[4]) const;

    friend ostream& operator<<(ostream& out, const MPoint& p);

    static const MPoint origin;

    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};

#include <maya/MFloatVector.h>
#include <maya/MVector.h>
