// MVector, MPoint and their single-precision kin.
#include "headless/api/access.h"

#include <maya/MColor.h>
#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>

MFloatVector::MFloatVector(const MVector& v)
    : x(static_cast<float>(v.x)), y(static_cast<float>(v.y)), z(static_cast<float>(v.z)) {}

const MColor MColor::kOpaqueBlack(0, 0, 0, 1);

const MFloatVector MFloatVector::zero(0, 0, 0);

const MVector MVector::zero(0, 0, 0), MVector::one(1, 1, 1);
const MVector MVector::xAxis(1, 0, 0), MVector::yAxis(0, 1, 0), MVector::zAxis(0, 0, 1);
const MVector MVector::xNegAxis(-1, 0, 0), MVector::yNegAxis(0, -1, 0), MVector::zNegAxis(0, 0, -1);

MVector::MVector(const MFloatVector& v) : x(v.x), y(v.y), z(v.z) {}
MVector::MVector(const MPoint& p) : x(p.x), y(p.y), z(p.z) {}

MVector MVector::operator*(const MMatrix& m) const {
    return headless::vector(headless::transform_direction({x, y, z}, headless::matrix(m)));
}

MVector& MVector::operator*=(const MMatrix& m) {
    return *this = *this * m;
}

MStatus MVector::normalize() {
    const double size = length();
    if (size == 0.0) return MStatus::kFailure;
    *this /= size;
    return MStatus::kSuccess;
}

MVector MVector::normal() const {
    MVector out = *this;
    out.normalize();
    return out;
}

double MVector::angle(const MVector& other) const {
    // The arc tangent is exact for nearly parallel vectors, where the arc cosine loses half of the digits.
    return std::atan2((*this ^ other).length(), *this * other);
}

bool MVector::isEquivalent(const MVector& other, double tolerance) const {
    return (*this - other).length() <= tolerance;
}

bool MVector::isParallel(const MVector& other, double tolerance) const {
    return (normal() ^ other.normal()).length() <= tolerance;
}

MVector MVector::rotateBy(const MQuaternion& rotation) const {
    return *this * rotation.asMatrix();
}
MVector MVector::rotateBy(const MEulerRotation& rotation) const {
    return *this * rotation.asMatrix();
}

MStatus MVector::get(double out[3]) const {
    for (unsigned int i = 0; i < 3; ++i) out[i] = (*this)[i];
    return MStatus::kSuccess;
}

ostream& operator<<(ostream& out, const MVector& v) {
    return out << "[" << v.x << ", " << v.y << ", " << v.z << "]";
}

const MPoint MPoint::origin(0, 0, 0, 1);

MPoint::MPoint(const MVector& v) : x(v.x), y(v.y), z(v.z) {}

MPoint MPoint::operator+(const MVector& v) const {
    return {x + v.x, y + v.y, z + v.z, w};
}
MPoint MPoint::operator-(const MVector& v) const {
    return {x - v.x, y - v.y, z - v.z, w};
}
MVector MPoint::operator-(const MPoint& p) const {
    return {x - p.x, y - p.y, z - p.z};
}
double MPoint::distanceTo(const MPoint& other) const {
    return (*this - other).length();
}

MPoint MPoint::operator*(const MMatrix& m) const {
    MPoint out(0, 0, 0, 0);
    for (unsigned int c = 0; c < 4; ++c) out[c] = x * m(0, c) + y * m(1, c) + z * m(2, c) + w * m(3, c);
    return out;
}

MPoint& MPoint::operator*=(const MMatrix& m) {
    return *this = *this * m;
}

MPoint& MPoint::cartesianize() {
    if (w != 0.0 && w != 1.0) *this = {x / w, y / w, z / w, 1.0};
    return *this;
}

bool MPoint::isEquivalent(const MPoint& other, double tolerance) const {
    return (*this - other).length() <= tolerance && std::abs(w - other.w) <= tolerance;
}

MStatus MPoint::get(double out[4]) const {
    for (unsigned int i = 0; i < 4; ++i) out[i] = (*this)[i];
    return MStatus::kSuccess;
}

ostream& operator<<(ostream& out, const MPoint& p) {
    return out << "[" << p.x << ", " << p.y << ", " << p.z << ", " << p.w << "]";
}
