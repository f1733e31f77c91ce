#include "headless/animation/rotation_blend.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <cmath>

namespace headless {
namespace {

using enum AttributeKind;

Quaternion conjugate(const Quaternion& q) {
    return {-q.x, -q.y, -q.z, q.w};
}
Quaternion scaled(const Quaternion& q, double by) {
    return {q.x * by, q.y * by, q.z * by, q.w * by};
}
double squared_length(const Quaternion& q) {
    return q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
}
Quaternion normalized(const Quaternion& q) {
    const double size = std::sqrt(squared_length(q));
    return size > 0.0 ? scaled(q, 1.0 / size) : Quaternion{};
}
Quaternion inverse_of(const Quaternion& q) {
    const double size = squared_length(q);
    return size > 0.0 ? scaled(conjugate(q), 1.0 / size) : Quaternion{};
}
Quaternion sum(const Quaternion& a, const Quaternion& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w};
}

Quaternion from_axis(const Vector3& axis, double angle) {
    const double size = length(axis);
    if (!(size > 0.0)) return {};
    const double s = std::sin(angle / 2) / size;
    return {axis.x * s, axis.y * s, axis.z * s, std::cos(angle / 2)};
}
double angle_of(const Quaternion& q) {
    return 2.0 * std::atan2(std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z), q.w);
}
Vector3 axis_of(const Quaternion& q) {
    const double size = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    return size > 0.0 ? Vector3{q.x, q.y, q.z} * (1.0 / size) : Vector3{1, 0, 0};
}

NodeKind of_one(NodeTypes& types, const char* name, Quaternion (*formula)(const Quaternion&)) {
    NodeKind kind(types, name, "node", MFn::kPluginDependNode);
    kind.quaternion("inputQuat", "iq").quaternion("outputQuat", "oq").from({"iq"}, formula);
    return kind;
}

void of_two(NodeTypes& types, const char* name, Quaternion (*formula)(const Quaternion&, const Quaternion&)) {
    NodeKind(types, name, "node", MFn::kPluginDependNode)
        .quaternion("input1Quat", "iq1")
        .quaternion("input2Quat", "iq2")
        .quaternion("outputQuat", "oq")
        .from({"iq1", "iq2"}, formula);
}

} // namespace

void add_quaternion_kinds(NodeTypes& types) {
    of_one(types, "quatConjugate", conjugate);
    of_one(types, "quatInvert", inverse_of);
    of_one(types, "quatNormalize", normalized);
    of_one(types, "quatNegate", [](const Quaternion& q) { return scaled(q, -1.0); });
    of_two(types, "quatAdd", sum);
    of_two(types, "quatSub", [](const Quaternion& a, const Quaternion& b) { return sum(a, scaled(b, -1.0)); });
    of_two(types, "quatProd", [](const Quaternion& a, const Quaternion& b) { return a * b; });
    // clang-format off
    NodeKind(types, "quatSlerp", "node", MFn::kPluginDependNode)
        .quaternion("input1Quat", "iq1")
        .quaternion("input2Quat", "iq2")
        .number("inputT", "t")
        .enumeration("angleInterpolation", "ai")
        .quaternion("outputQuat", "oq").from({"iq1", "iq2", "t", "ai"},
            [](const Quaternion& a, const Quaternion& b, double part, std::int64_t) { return slerp(a, b, part); })
        .falls_short([](const Node& node) {
            const bool shortest = node.get(PlugKey{node.find_attribute("ai"), 0, {}}).integer() == 0;
            return std::string(shortest ? "" : "an arc that isn't the shortest isn't followed");
        });
    NodeKind(types, "eulerToQuat", "node", MFn::kPluginDependNode)
        .compound("inputRotate", "irt")
            .angle("inputRotateX", "irx").angle("inputRotateY", "iry").angle("inputRotateZ", "irz")
        .end()
        .enumeration("inputRotateOrder", "ro")
        .quaternion("outputQuat", "oq").from({"irt", "ro"}, [](const Vector3& angles, RotateOrder order) {
            return to_quaternion(euler_to_matrix(angles, order));
        });
    NodeKind(types, "quatToEuler", "node", MFn::kPluginDependNode)
        .quaternion("inputQuat", "iq")
        .enumeration("inputRotateOrder", "iro")
        .compound("outputRotate", "ort")
            .angle("outputRotateX", "orx").angle("outputRotateY", "ory").angle("outputRotateZ", "orz")
        .end().from({"iq", "iro"}, [](const Quaternion& q, RotateOrder order) {
            return matrix_to_euler(to_matrix(normalized(q)), order);
        });
    NodeKind(types, "axisAngleToQuat", "node", MFn::kPluginDependNode)
        .vector("inputAxis", "ia")
        .angle("inputAngle", "iang")
        .quaternion("outputQuat", "oq").from({"ia", "iang"}, from_axis);
    NodeKind(types, "quatToAxisAngle", "node", MFn::kPluginDependNode)
        .quaternion("inputQuat", "iq")
        .vector("outputAxis", "oa").from({"iq"}, axis_of)
        .angle("outputAngle", "oang").from({"iq"}, angle_of);
    // clang-format on
}

} // namespace headless
