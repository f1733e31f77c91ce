#pragma once

#include <maya/MIOStreamFwd.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <math.h>

class MPoint;
class MVector;

/// A direction or displacement in single precision.
class MFloatVector {
public:
    MFloatVector() = default;
    MFloatVector(float x_, float y_, float z_ = 0.0f) : x(x_), y(y_), z(z_) {}
    MFloatVector(const float v[3]) : x(v[0]), y(v[1]), z(v[2]) {}
    MFloatVector(const MVector& v);

    float operator()(unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    float operator[](unsigned int i) const { return (*this)(i); }
    float& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    MFloatVector operator+(const MFloatVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
    MFloatVector operator-(const MFloatVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
    MFloatVector operator-() const { return {-x, -y, -z}; }
    MFloatVector operator*(float k) const { return {x * k, y * k, z * k}; }
    float operator*(const MFloatVector& o) const { return x * o.x + y * o.y + z * o.z; }
    bool operator==(const MFloatVector& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const MFloatVector& o) const { return !(*this == o); }
    static const MFloatVector zero;

    float length() const { return sqrtf(*this * *this); }

    float x = 0.0f, y = 0.0f, z = 0.0f;
};

#include <maya/MPoint.h>
#include <maya/MVector.h>
