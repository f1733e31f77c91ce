#pragma once

#include <cstdint>

/// Double-precision values of the scene graph. A point is a row: it stands left of a matrix, translation is
/// row 3, and in a product the leftmost matrix acts first.
namespace headless {

struct Vector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    double& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }
    double operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }
    bool operator==(const Vector3&) const = default;
};

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector3 operator-(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector3 operator-(const Vector3& a) {
    return {-a.x, -a.y, -a.z};
}
inline Vector3 operator*(const Vector3& a, double k) {
    return {a.x * k, a.y * k, a.z * k};
}
inline double dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vector3 cross(const Vector3& a, const Vector3& b);
double length(const Vector3& a);

struct Matrix {
    double m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    double* operator[](int row) { return m[row]; }
    const double* operator[](int row) const { return m[row]; }
    Vector3 row(int r) const { return {m[r][0], m[r][1], m[r][2]}; }
    void set_row(int r, const Vector3& v);
    Vector3 translation() const { return row(3); }
    bool operator==(const Matrix&) const;

    static Matrix translate(const Vector3& by);
    static Matrix scale(const Vector3& by);
};

Matrix operator*(const Matrix& a, const Matrix& b);
Matrix transposed(const Matrix& a);
double determinant(const Matrix& a);
/// The inverse; of a singular matrix, the identity.
Matrix inverse(const Matrix& a);
/// A point through the whole matrix, a direction through its upper 3 by 3 block.
Vector3 transform_point(const Vector3& point, const Matrix& a);
Vector3 transform_direction(const Vector3& direction, const Matrix& a);

/// Scalar last. In a product the left quaternion acts first, as with matrices.
struct Quaternion {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};

Quaternion operator*(const Quaternion& a, const Quaternion& b);
Matrix to_matrix(const Quaternion& q);
/// The rotation of an orthonormal upper 3 by 3 block.
Quaternion to_quaternion(const Matrix& a);

/// In which order the three angles of a rotation act; the first named acts first. Numbered as the attribute is.
enum class RotateOrder : std::uint8_t { xyz, yzx, zxy, xzy, yxz, zyx };

/// Any number as a rotate order: one outside 0 to 5 reads as xyz.
RotateOrder rotate_order(std::int64_t number);
Matrix euler_to_matrix(const Vector3& radians, RotateOrder order);
/// Angles that give the rotation of an orthonormal upper block: the middle one within a quarter turn either
/// way. Where the first and last axes fall together, the last angle is 0.
Vector3 matrix_to_euler(const Matrix& a, RotateOrder order);

} // namespace headless
