// MMatrix, MQuaternion and MEulerRotation.
#include "headless/api/access.h"

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MQuaternion.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>

using headless::matrix;

const MMatrix MMatrix::identity;

MMatrix::MMatrix() {
    setToIdentity();
}

MMatrix::MMatrix(const double m[4][4]) {
    std::copy(&m[0][0], &m[0][0] + 16, &matrix[0][0]);
}

MMatrix::MMatrix(const float m[4][4]) {
    std::copy(&m[0][0], &m[0][0] + 16, &matrix[0][0]);
}

MStatus MMatrix::get(double out[4][4]) const {
    std::copy(&matrix[0][0], &matrix[0][0] + 16, &out[0][0]);
    return MStatus::kSuccess;
}

MStatus MMatrix::get(float out[4][4]) const {
    std::transform(&matrix[0][0], &matrix[0][0] + 16, &out[0][0], [](double v) { return static_cast<float>(v); });
    return MStatus::kSuccess;
}

MMatrix& MMatrix::setToIdentity() {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) matrix[r][c] = r == c ? 1.0 : 0.0;
    }
    return *this;
}

MMatrix& MMatrix::setToProduct(const MMatrix& left, const MMatrix& right) {
    return *this = left * right;
}

MMatrix MMatrix::operator+(const MMatrix& other) const {
    MMatrix out = *this;
    for (int i = 0; i < 16; ++i) out.matrix[i / 4][i % 4] += other.matrix[i / 4][i % 4];
    return out;
}

MMatrix MMatrix::operator-(const MMatrix& other) const {
    return *this + other * -1.0;
}

MMatrix MMatrix::operator*(const MMatrix& other) const {
    return headless::matrix(headless::matrix(*this) * headless::matrix(other));
}

MMatrix MMatrix::operator*(double k) const {
    MMatrix out = *this;
    for (int i = 0; i < 16; ++i) out.matrix[i / 4][i % 4] *= k;
    return out;
}

bool MMatrix::operator==(const MMatrix& other) const {
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0]);
}

MMatrix MMatrix::transpose() const {
    MMatrix out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) out.matrix[r][c] = matrix[c][r];
    }
    return out;
}

MMatrix MMatrix::inverse() const {
    return headless::matrix(headless::inverse(headless::matrix(*this)));
}

double MMatrix::det4x4() const {
    return headless::determinant(headless::matrix(*this));
}

double MMatrix::det3x3() const {
    const headless::Matrix m = headless::matrix(*this);
    return headless::dot(m.row(0), headless::cross(m.row(1), m.row(2)));
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const {
    for (int i = 0; i < 16; ++i) {
        if (!(std::abs(matrix[i / 4][i % 4] - other.matrix[i / 4][i % 4]) <= tolerance)) return false;
    }
    return true;
}

bool MMatrix::isSingular() const {
    return det4x4() == 0.0;
}

ostream& operator<<(ostream& out, const MMatrix& m) {
    for (int r = 0; r < 4; ++r)
        out << (r ? ", [" : "[[") << m[r][0] << ", " << m[r][1] << ", " << m[r][2] << ", " << m[r][3] << "]";
    return out << "]";
}

const MQuaternion MQuaternion::identity;

MQuaternion::MQuaternion(double radians, const MVector& axis) {
    setAxisAngle(axis, radians);
}

MQuaternion::MQuaternion(const MVector& from, const MVector& to) {
    const MVector a = from.normal(), b = to.normal();
    const double cosine = a * b;
    if (cosine > -1.0 + 1e-12) {
        const MVector axis = a ^ b;
        *this = MQuaternion(axis.x, axis.y, axis.z, 1.0 + cosine).normal();
        return;
    }
    // Opposite directions: half a turn about anything at right angles.
    const MVector across = std::abs(a.x) < 0.9 ? MVector::xAxis : MVector::yAxis;
    setAxisAngle(a ^ across, std::numbers::pi);
}

MQuaternion& MQuaternion::operator=(const MMatrix& rotation) {
    return *this = headless::quaternion(headless::to_quaternion(headless::matrix(rotation)));
}

MQuaternion& MQuaternion::operator=(const MEulerRotation& rotation) {
    return *this = rotation.asMatrix();
}

MMatrix MQuaternion::asMatrix() const {
    return headless::matrix(headless::to_matrix(headless::quaternion(*this)));
}

MEulerRotation MQuaternion::asEulerRotation() const {
    return MEulerRotation::decompose(asMatrix(), MEulerRotation::kXYZ);
}

bool MQuaternion::getAxisAngle(MVector& axis, double& radians) const {
    axis = MVector(x, y, z);
    radians = 2.0 * std::atan2(axis.length(), w);
    if (axis.normalize() == MStatus::kSuccess) return true;
    axis = MVector::zAxis;
    return false;
}

MQuaternion& MQuaternion::setAxisAngle(const MVector& axis, double radians) {
    const MVector part = axis.normal() * std::sin(radians / 2.0);
    return *this = MQuaternion(part.x, part.y, part.z, std::cos(radians / 2.0));
}

MQuaternion& MQuaternion::setToXAxis(double radians) {
    return setAxisAngle(MVector::xAxis, radians);
}
MQuaternion& MQuaternion::setToYAxis(double radians) {
    return setAxisAngle(MVector::yAxis, radians);
}
MQuaternion& MQuaternion::setToZAxis(double radians) {
    return setAxisAngle(MVector::zAxis, radians);
}

MQuaternion MQuaternion::operator*(const MQuaternion& other) const {
    return headless::quaternion(headless::quaternion(*this) * headless::quaternion(other));
}

MQuaternion MQuaternion::normal() const {
    const double size = std::sqrt(x * x + y * y + z * z + w * w);
    return size > 0.0 ? (1.0 / size) * *this : *this;
}

MQuaternion MQuaternion::inverse() const {
    const double square = x * x + y * y + z * z + w * w;
    return square > 0.0 ? (1.0 / square) * conjugate() : *this;
}

bool MQuaternion::isEquivalent(const MQuaternion& other, double tolerance) const {
    for (unsigned int i = 0; i < 4; ++i) {
        if (!(std::abs((*this)[i] - other[i]) <= tolerance)) return false;
    }
    return true;
}

MStatus MQuaternion::get(double out[4]) const {
    for (unsigned int i = 0; i < 4; ++i) out[i] = (*this)[i];
    return MStatus::kSuccess;
}

MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t) {
    double cosine = p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w;
    const MQuaternion to = cosine < 0.0 ? -q : q;
    cosine = std::min(std::abs(cosine), 1.0);
    const double angle = std::acos(cosine), sine = std::sin(angle);
    if (sine < 1e-9) return ((1.0 - t) * p + t * to).normal();
    return (std::sin((1.0 - t) * angle) / sine) * p + (std::sin(t * angle) / sine) * to;
}

ostream& operator<<(ostream& out, const MQuaternion& q) {
    return out << "[" << q.x << ", " << q.y << ", " << q.z << ", " << q.w << "]";
}

const MEulerRotation MEulerRotation::identity;

MMatrix MEulerRotation::asMatrix() const {
    return headless::matrix(headless::euler_to_matrix({x, y, z}, headless::rotate_order(order)));
}

MEulerRotation::MEulerRotation(const MVector& v, RotationOrder order_) : x(v.x), y(v.y), z(v.z), order(order_) {}

MVector MEulerRotation::asVector() const {
    return {x, y, z};
}
MQuaternion MEulerRotation::asQuaternion() const {
    MQuaternion out;
    return out = asMatrix();
}

MEulerRotation& MEulerRotation::operator=(const MMatrix& rotation) {
    return *this = decompose(rotation, order);
}
MEulerRotation& MEulerRotation::operator=(const MQuaternion& rotation) {
    return *this = decompose(rotation.asMatrix(), order);
}
MEulerRotation MEulerRotation::reorder(RotationOrder other) const {
    return decompose(asMatrix(), other);
}

MEulerRotation MEulerRotation::decompose(const MMatrix& rotation, RotationOrder order) {
    const headless::Vector3 angles =
        headless::matrix_to_euler(headless::matrix(rotation), headless::rotate_order(order));
    return {angles.x, angles.y, angles.z, order};
}

bool MEulerRotation::isEquivalent(const MEulerRotation& other, double tolerance) const {
    return asVector().isEquivalent(other.asVector(), tolerance) && order == other.order;
}

ostream& operator<<(ostream& out, const MEulerRotation& r) {
    return out << r.asVector() << " order " << r.order;
}
