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
// 0 adds, 1 multiplies.
double accumulated(double a, double b, double weight_a, double weight_b, std::int64_t mode) {
    return mode == 0 ? weighted(a, b, weight_a, weight_b) : power(a, weight_a) * power(b, weight_b);
}

enum RotationMode : std::int64_t { by_component, by_layer_cumulative, by_layer_blended };

// By layer, a rotation is one turn: the layer's own acts before those below, within their axes, each as far along its
// arc as its weight says; blended, the turn goes from the one to the other.
Vector3 weighted_rotation(const Vector3& a, const Vector3& b, double weight_a, double weight_b, std::int64_t mode,
                          RotateOrder order) {
    if (mode == by_component) return a * weight_a + b * weight_b;
    const Quaternion below = to_quaternion(euler_to_matrix(a, order)), own = to_quaternion(euler_to_matrix(b, order));
    if (mode == by_layer_cumulative)
        return matrix_to_euler(to_matrix(slerp({}, own, weight_b) * slerp({}, below, weight_a)), order);
    const double sum = weight_a + weight_b;
    return matrix_to_euler(to_matrix(slerp(below, own, sum > 0.0 ? weight_b / sum : 0.0)), order);
}

// What doesn't mix is the layer's own as soon as it has a say.
Value chosen(const Value& a, const Value& b, double weight_b) {
    return weight_b > 0.0 ? b : a;
}

std::string why_not_rotation(const Node& node) {
    const auto is_set = [&](const char* name) {
        return node.get(PlugKey{node.find_attribute(name), 0, {}}).integer() != 0;
    };
    if (is_set("ri")) return "its quaternion interpolation isn't";
    return is_set("bllm") ? "its old way of accumulating layers isn't" : "";
}

NodeKind blend(NodeTypes& types, const char* name, MFn::Type api_type) {
    return {types, name, "animBlendNodeBase", api_type};
}

void add_number_blends(NodeTypes& types) {
    struct Row {
        const char* name;
        AttributeKind kind;
        MFn::Type api_type;
    };
    for (const auto& [name, kind, api_type] :
         {Row{"animBlendNodeAdditive", number, MFn::kBlendNodeDouble},
          {"animBlendNodeAdditiveDA", angle, MFn::kBlendNodeDoubleAngle},
          {"animBlendNodeAdditiveDL", AttributeKind::distance, MFn::kBlendNodeDoubleLinear},
          {"animBlendNodeAdditiveF", number, MFn::kBlendNodeFloat},
          {"animBlendNodeAdditiveFA", angle, MFn::kBlendNodeFloatAngle},
          {"animBlendNodeAdditiveFL", AttributeKind::distance, MFn::kBlendNodeFloatLinear}})
        blend(types, name, api_type)
            .add("inputA", "ia", kind)
            .add("inputB", "ib", kind)
            .enumeration("interpolateMode", "im")
            .add("output", "o", kind)
            .from({"ia", "ib", "wa", "wb", "im"}, accumulated);
    for (const auto& [name, api_type] : {std::pair{"animBlendNodeAdditiveI16", MFn::kBlendNodeInt16},
                                         {"animBlendNodeAdditiveI32", MFn::kBlendNodeInt32}})
        blend(types, name, api_type)
            .integer("inputA", "ia")
            .integer("inputB", "ib")
            .enumeration("interpolateMode", "im")
            .integer("output", "o")
            .from({"ia", "ib", "wa", "wb", "im"}, [](double a, double b, double wa, double wb, std::int64_t mode) {
                return std::round(accumulated(a, b, wa, wb, mode));
            });
}

void add_blends(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "animBlendNodeBase", "node", MFn::kBlendNodeBase)
        .number("weightA", "wa", 1.0)
        .number("weightB", "wb", 1.0)
        .text("destinationPlug", "dp").array();
    add_number_blends(types);
    blend(types, "animBlendNodeTime", MFn::kBlendNodeTime)
        .time("inputA", "ia")
        .time("inputB", "ib")
        .time("output", "o").from({"ia", "ib", "wa", "wb"}, weighted);
    blend(types, "animBlendNodeBoolean", MFn::kBlendNodeBoolean)
        .boolean("inputA", "ia")
        .boolean("inputB", "ib")
        .boolean("output", "o").from({"ia", "ib", "wb"}, chosen);
    blend(types, "animBlendNodeEnum", MFn::kBlendNodeEnum)
        .enumeration("inputA", "ia")
        .enumeration("inputB", "ib")
        .enumeration("output", "o").from({"ia", "ib", "wb"}, chosen);
    blend(types, "animBlendNodeAdditiveScale", MFn::kBlendNodeAdditiveScale)
        .number("inputA", "ia")
        .number("inputB", "ib")
        .enumeration("accumulationMode", "acm")
        .number("output", "o").from({"ia", "ib", "wa", "wb", "acm"}, accumulated);
    blend(types, "animBlendNodeAdditiveRotation", MFn::kBlendNodeAdditiveRotation)
        .vector("inputA", "ia", angle)
        .vector("inputB", "ib", angle)
        .enumeration("accumulationMode", "acm")
        .boolean("byLayerAccLegacyMode", "bllm")
        .enumeration("rotateOrder", "ro")
        .enumeration("rotationInterpolation", "ri")
        .vector("output", "o", angle).from({"ia", "ib", "wa", "wb", "acm", "ro"}, weighted_rotation)
        .falls_short(why_not_rotation);
    // clang-format on
}

// A layer that is mute, or beside one that is heard alone, has no say and leaves all to those below.
bool heard(bool mute, bool parent_mute, bool solo, bool sibling_solo) {
    return !mute && !parent_mute && (!sibling_solo || solo);
}

double say(double weight, double parent_weight, bool mute, bool parent_mute, bool solo, bool sibling_solo) {
    return heard(mute, parent_mute, solo, sibling_solo) ? weight * parent_weight : 0.0;
}

double left_to_those_below(double weight, double parent_weight, bool mute, bool parent_mute, bool solo,
                           bool sibling_solo, bool overrides, bool passes_through) {
    if (!overrides || !heard(mute, parent_mute, solo, sibling_solo)) return 1.0;
    return passes_through ? 1.0 - weight * parent_weight : 0.0;
}

} // namespace

void add_layer_kinds(NodeTypes& types) {
    add_blends(types);
    // clang-format off
    NodeKind(types, "animLayer", "objectSet", MFn::kAnimLayer)
        .message("blendNodes", "bnds").array()
        .message("childrenLayers", "cdly").array()
        .message("parentLayer", "play")
        .boolean("mute", "mt")
        .boolean("parentMute", "pmte")
        .boolean("solo", "sl")
        .boolean("siblingSolo", "sslo")
        .boolean("childrenSolo", "chsl").array()
        .boolean("childsoloed", "csol").from({"chsl"}, [](const Elements& children) {
            return std::ranges::any_of(children.indices(), [&](int i) { return children.value(i).boolean(); });
        })
        .boolean("lock", "lo")
        .boolean("ghost", "gh")
        .integer("ghostColor", "ghc", 5)
        .boolean("preferred", "pref")
        .boolean("selected", "slct")
        .boolean("collapse", "coll")
        .boolean("override", "ovrd")
        .boolean("passthrough", "pthg", true)
        .number("weight", "wgth", 1.0)
        .number("parentWeight", "pwth", 1.0)
        .enumeration("rotationAccumulationMode", "ram")
        .enumeration("scaleAccumulationMode", "sam", 1)
        .boolean("outMute", "omte").from({"mt", "pmte", "sl", "sslo"},
            [](bool mute, bool parent_mute, bool solo, bool sibling_solo) {
                return !heard(mute, parent_mute, solo, sibling_solo);
            })
        .enumeration("outRotationAccumulationMode", "oram").from({"ram", "ovrd"},
            [](std::int64_t mode, bool overrides) -> std::int64_t {
                return mode == by_component ? by_component : overrides ? by_layer_blended : by_layer_cumulative;
            })
        .number("foregroundWeight", "fgwt").from({"wgth", "pwth", "mt", "pmte", "sl", "sslo"}, say)
        .number("backgroundWeight", "bgwt")
            .from({"wgth", "pwth", "mt", "pmte", "sl", "sslo", "ovrd", "pthg"}, left_to_those_below);
    // clang-format on
}

} // namespace headless
