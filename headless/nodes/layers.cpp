// Animation layers: what mixes the values of two layers, and a layer's say in it.
//
// A blend node gives `weightA` times the layers below and `weightB` times its own layer. A layer's weights feed these:
// `foregroundWeight` its own, `backgroundWeight` what is left to the layers below.
#include "headless/animation/rotation_blend.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <algorithm>
#include <cmath>

namespace headless {
namespace {

using enum AttributeKind;

double weighted(double a, double b, double weight_a, double weight_b) {
    return a * weight_a + b * weight_b;
}

// A scale counts as a factor, so a weight is its power: half of doubling is the root of 2.
double power(double base, double exponent) {
    const double out = base < 0.0 ? -std::pow(-base, exponent) : std::pow(base, exponent);
    return std::isfinite(out) ? out : 0.0;
}
double weighted_scale(double a, double b, double weight_a, double weight_b, std::int64_t accumulation) {
    return accumulation == 0 ? weighted(a, b, weight_a, weight_b) : power(a, weight_a) * power(b, weight_b);
}

// Either angle by angle, or (accumulation by layer) the lower layers' turn first and this layer's on top, each as far
// along its arc as its weight says.
Vector3 weighted_rotation(const Vector3& a, const Vector3& b, double weight_a, double weight_b,
                          std::int64_t accumulation, RotateOrder order) {
    if (accumulation == 0) return a * weight_a + b * weight_b;
    const auto turn = [order](const Vector3& angles, double weight) {
        return slerp(Quaternion{}, to_quaternion(euler_to_matrix(angles, order)), weight);
    };
    return matrix_to_euler(to_matrix(turn(a, weight_a) * turn(b, weight_b)), order);
}

// What doesn't mix is the layer's own as soon as it has the greater say.
Value chosen(const Value& a, const Value& b, double weight_a, double weight_b) {
    return weight_b > 0.0 && weight_b >= weight_a ? b : a;
}

NodeKind blend(NodeTypes& types, const char* name) {
    NodeKind kind(types, name, "animBlendNodeBase", MFn::kDependencyNode);
    return kind;
}

void add_blends(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "animBlendNodeBase", "node", MFn::kDependencyNode)
        .number("weightA", "wa", 1.0)
        .number("weightB", "wb", 1.0);
    for (const auto& [name, kind] : {std::pair{"animBlendNodeAdditive", number},
                                     {"animBlendNodeAdditiveDA", angle},
                                     {"animBlendNodeAdditiveDL", AttributeKind::distance},
                                     {"animBlendNodeAdditiveF", number},
                                     {"animBlendNodeAdditiveFA", angle},
                                     {"animBlendNodeAdditiveFL", AttributeKind::distance}})
        blend(types, name)
            .add("inputA", "ia", kind)
            .add("inputB", "ib", kind)
            .add("output", "o", kind).from({"ia", "ib", "wa", "wb"}, weighted);
    for (const char* name : {"animBlendNodeAdditiveI16", "animBlendNodeAdditiveI32"})
        blend(types, name)
            .integer("inputA", "ia")
            .integer("inputB", "ib")
            .integer("output", "o").from({"ia", "ib", "wa", "wb"}, [](double a, double b, double wa, double wb) {
                return std::round(weighted(a, b, wa, wb));
            });
    blend(types, "animBlendNodeTime")
        .time("inputA", "ia")
        .time("inputB", "ib")
        .time("output", "o").from({"ia", "ib", "wa", "wb"}, weighted);
    blend(types, "animBlendNodeBoolean")
        .boolean("inputA", "ia")
        .boolean("inputB", "ib")
        .boolean("output", "o").from({"ia", "ib", "wa", "wb"}, chosen);
    blend(types, "animBlendNodeEnum")
        .enumeration("inputA", "ia")
        .enumeration("inputB", "ib")
        .enumeration("output", "o").from({"ia", "ib", "wa", "wb"}, chosen);
    blend(types, "animBlendNodeAdditiveScale")
        .number("inputA", "ia", 1.0)
        .number("inputB", "ib", 1.0)
        .enumeration("accumulationMode", "acm", 1)
        .number("output", "o").from({"ia", "ib", "wa", "wb", "acm"}, weighted_scale);
    blend(types, "animBlendNodeAdditiveRotation")
        .vector("inputA", "ia", angle)
        .vector("inputB", "ib", angle)
        .enumeration("accumulationMode", "acm")
        .enumeration("rotateOrder", "ro")
        .vector("output", "o", angle).from({"ia", "ib", "wa", "wb", "acm", "ro"}, weighted_rotation);
    // clang-format on
}

// A layer that is mute, or beside one that is heard alone, has no say and leaves all to those below.
bool heard(bool mute, bool parent_mute, bool solo, bool sibling_solo, bool child_solo) {
    return !mute && !parent_mute && (!sibling_solo || solo || child_solo);
}

double say(double weight, double parent_weight, bool mute, bool parent_mute, bool solo, bool sibling_solo,
           bool child_solo) {
    return heard(mute, parent_mute, solo, sibling_solo, child_solo) ? weight * parent_weight : 0.0;
}

double left_to_those_below(double weight, double parent_weight, bool mute, bool parent_mute, bool solo,
                           bool sibling_solo, bool child_solo, bool overrides, bool passes_through) {
    if (!overrides || !heard(mute, parent_mute, solo, sibling_solo, child_solo)) return 1.0;
    return passes_through ? 1.0 - weight * parent_weight : 0.0;
}

} // namespace

void add_layer_kinds(NodeTypes& types) {
    add_blends(types);
    // clang-format off
    NodeKind(types, "animLayer", "objectSet", MFn::kDependencyNode)
        .number("weight", "w", 1.0)
        .number("parentWeight", "pwt", 1.0)
        .boolean("mute", "mut")
        .boolean("parentMute", "pmt")
        .boolean("solo", "slo")
        .boolean("siblingSolo", "ssl")
        .boolean("childrenSolo", "chsl").array()
        .boolean("childsoloed", "csol").from({"chsl"}, [](const Elements& children) {
            return std::ranges::any_of(children.indices(), [&](int i) { return children.value(i).boolean(); });
        })
        .boolean("override", "ovrd")
        .boolean("passthrough", "pth", true)
        .boolean("lock", "lo")
        .boolean("preferred", "pref")
        .boolean("selected", "slct")
        .enumeration("rotationAccumulationMode", "ram")
        .enumeration("scaleAccumulationMode", "sam", 1)
        .message("parentLayer", "pl")
        .message("childrenLayers", "cdly").array()
        .message("blendNodes", "bnds").array()
        .boolean("outMute", "omte").from({"mut", "pmt", "slo", "ssl", "csol"},
            [](bool mute, bool parent_mute, bool solo, bool sibling_solo, bool child_solo) {
                return !heard(mute, parent_mute, solo, sibling_solo, child_solo);
            })
        .enumeration("outRotationAccumulationMode", "oram").from({"ram"}, [](std::int64_t mode) { return mode; })
        .number("foregroundWeight", "fgw").from({"w", "pwt", "mut", "pmt", "slo", "ssl", "csol"}, say)
        .number("backgroundWeight", "bgw")
            .from({"w", "pwt", "mut", "pmt", "slo", "ssl", "csol", "ovrd", "pth"}, left_to_those_below);
    // clang-format on
}

} // namespace headless
