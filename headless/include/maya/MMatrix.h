#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// Four by four numbers. A point is a row to its left: translation stands in row 3, and in a product the left
/// matrix acts first.
class MMatrix {
public:
    MMatrix();
    MMatrix(const double m[4][4]);
    MMatrix(const float m[4][4]);

    double operator()(unsigned int row, unsigned int col) const { return matrix[row & 3u][col & 3u]; }
    double& operator()(unsigned int row, unsigned int col) { return matrix[row & 3u][col & 3u]; }
    const double* operator[](unsigned int row) const { return matrix[row & 3u]; }
    double* operator[](unsigned int row) { return matrix[row & 3u]; }
    MStatus get(double out[4][4]) const;
    MStatus get(float out[4][4]) const;

    MMatrix& setToIdentity();
    MMatrix& setToProduct(const MMatrix& left, const MMatrix& right);
    MMatrix operator+(const MMatrix& other) const;
    MMatrix operator-(const MMatrix& other) const;
    MMatrix operator*(const MMatrix& other) const;
    MMatrix operator*(double k) const;
    MMatrix& operator+=(const MMatrix& other) { return *this = *this + other; }
    MMatrix& operator-=(const MMatrix& other) { return *this = *this - other; }
    MMatrix& operator*=(const MMatrix& other) { return *this = *this * other; }
    MMatrix& operator*=(double k) { return *this = *this * k; }
    bool operator==(const MMatrix& other) const;
    bool operator!=(const MMatrix& other) const { return !(*this == other); }

    MMatrix transpose() const;
    MMatrix inverse() const; ///< the identity for a singular matrix
    double det4x4() const;
    double det3x3() const; ///< of the upper left block
    bool isEquivalent(const MMatrix& other, double tolerance = 1e-10) const;
    bool isSingular() const;

    friend MMatrix operator*(double k, const MMatrix& m) { return m * k; }
    friend ostream& operator<<(ostream& out, const MMatrix& m);

    static const MMatrix identity;

    double matrix[4][4];
};
