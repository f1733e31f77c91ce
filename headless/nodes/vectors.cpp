// Distances, angles and products of points and directions.
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <cmath>

namespace headless {
namespace {

using enum AttributeKind;

Vector3 unit_or(const Vector3& v, const Vector3& otherwise) {
    const double size = length(v);
    return size > 0.0 ? v * (1.0 / size) : otherwise;
}

double angle_between(const Vector3& a, const Vector3& b) {
    return std::atan2(length(cross(a, b)), dot(a, b));
}
// The z axis where the two are parallel, as the attribute's default has it.
Vector3 axis_between(const Vector3& a, const Vector3& b) {
    return unit_or(cross(a, b), {0, 0, 1});
}
Vector3 turn_between(const Vector3& a, const Vector3& b) {
    const Vector3 axis = axis_between(a, b);
    const double half = angle_between(a, b) / 2;
    const double s = std::sin(half);
    return matrix_to_euler(to_matrix(Quaternion{axis.x * s, axis.y * s, axis.z * s, std::cos(half)}), RotateOrder::xyz);
}

// 0 passes the first on, 1 is the dot product in all three, 2 the cross product, 3 the direction and 4 the point
// through the matrix.
Vector3 vector_product(std::int64_t operation, const Vector3& a, const Vector3& b, const Matrix& matrix,
                       bool normalized) {
    const double along = dot(a, b);
    const Vector3 out = operation == 1   ? Vector3{along, along, along}
                        : operation == 2 ? cross(a, b)
                        : operation == 3 ? transform_direction(a, matrix)
                        : operation == 4 ? transform_point(a, matrix)
                                         : a;
    return normalized && operation != 1 ? unit_or(out, {})
           : normalized                 ? Vector3{1, 1, 1} * dot(unit_or(a, {}), unit_or(b, {}))
                                        : out;
}

} // namespace

void add_vector_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "distanceBetween", "node", MFn::kDistanceBetween)
        .vector("point1", "p1", distance)
        .matrix("inMatrix1", "im1")
        .vector("point2", "p2", distance)
        .matrix("inMatrix2", "im2")
        .distance("distance", "d").from({"p1", "im1", "p2", "im2"},
            [](const Vector3& a, const Matrix& of_a, const Vector3& b, const Matrix& of_b) {
                return length(transform_point(a, of_a) - transform_point(b, of_b));
            });
    NodeKind(types, "dimensionShape", "shape", MFn::kDimension);
    NodeKind(types, "distanceDimShape", "dimensionShape", MFn::kDistance)
        .vector("startPoint", "sp", distance)
        .vector("endPoint", "ep", distance)
        .integer("precision", "prec", 6)
        .number("distance", "dist").from({"sp", "ep"}, [](const Vector3& a, const Vector3& b) {
            return length(a - b);
        });
    NodeKind(types, "angleBetween", "node", MFn::kAngleBetween)
        .parts("vector1", "v1", distance, {"Xx", "Yy", "Zz"}, {0, 1, 0})
        .parts("vector2", "v2", distance, {"Xx", "Yy", "Zz"}, {0, 0, 1})
        .compound("axisAngle", "axa")
            .vector("axis", "ax").from({"v1", "v2"}, axis_between)
            .angle("angle", "a").from({"v1", "v2"}, angle_between)
        .end()
        .vector("euler", "eu", angle).from({"v1", "v2"}, turn_between);
    NodeKind(types, "vectorProduct", "node", MFn::kVectorProduct)
        .enumeration("operation", "op", 1)
        .vector("input1", "i1")
        .vector("input2", "i2")
        .matrix("matrix", "m")
        .boolean("normalizeOutput", "no")
        .vector("output", "o").from({"op", "i1", "i2", "m", "no"}, vector_product);
    NodeKind(types, "pointMatrixMult", "node", MFn::kPointMatrixMult)
        .vector("inPoint", "ip", distance)
        .matrix("inMatrix", "im")
        .boolean("vectorMultiply", "vm")
        .vector("output", "o", distance).from({"ip", "im", "vm"}, [](const Vector3& in, const Matrix& by, bool direction) {
            return direction ? transform_direction(in, by) : transform_point(in, by);
        });
    // clang-format on
}

} // namespace headless
