// Nodes that choose between values, or mix them.
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <algorithm>
#include <vector>

namespace headless {
namespace {

using enum AttributeKind;

// In single precision, as both terms are kept: sums that come to the same by two ways are equal.
bool holds(std::int64_t operation, double first_term, double second_term) {
    const auto first = static_cast<float>(first_term), second = static_cast<float>(second_term);
    switch (operation) {
    case 1:
        return first != second;
    case 2:
        return first > second;
    case 3:
        return first >= second;
    case 4:
        return first < second;
    case 5:
        return first <= second;
    default:
        return first == second;
    }
}

enum Interpolation : std::int64_t { none = 0, linear = 1 };

struct RampPoint {
    double position = 0.0;
    Value value;
    std::int64_t interpolation = linear;
};

std::vector<RampPoint> points_of(const Elements& entries) {
    std::vector<RampPoint> out;
    for (const int index : entries.indices())
        out.push_back({entries.value(index, 0).number(), entries.value(index, 1), entries.value(index, 2).integer()});
    std::ranges::stable_sort(out, {}, &RampPoint::position);
    return out;
}

// Where among the points a place falls: between `from` and the next one, by `part`. Outside it is an end's alone.
struct OnRamp {
    std::size_t from = 0;
    double part = 0.0;
};

OnRamp find_on_ramp(const std::vector<RampPoint>& points, double place) {
    if (place <= points.front().position) return {};
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        if (place >= points[i + 1].position) continue;
        const double width = points[i + 1].position - points[i].position;
        return {i, points[i].interpolation == none ? 0.0 : (place - points[i].position) / width};
    }
    return {points.size() - 1, 0.0};
}

// `value` put from the input's range into 0 to 1, held there.
double place_in(double value, double low, double high) {
    return high == low ? 0.0 : std::clamp((value - low) / (high - low), 0.0, 1.0);
}

double mixed(double a, double b, double part) {
    return a + (b - a) * part;
}

double remapped(double value, double low, double high, double out_low, double out_high, const Elements& entries) {
    const double place = place_in(value, low, high);
    const std::vector<RampPoint> points = points_of(entries);
    double on_ramp = place;
    if (!points.empty()) {
        const OnRamp at = find_on_ramp(points, place);
        const double here = points[at.from].value.number();
        on_ramp = at.part > 0.0 ? mixed(here, points[at.from + 1].value.number(), at.part) : here;
    }
    return mixed(out_low, out_high, on_ramp);
}

Vector3 remapped_colour(double value, double low, double high, const Elements& entries) {
    const double place = place_in(value, low, high);
    const std::vector<RampPoint> points = points_of(entries);
    if (points.empty()) return {place, place, place};
    const OnRamp at = find_on_ramp(points, place);
    const Vector3 here = points[at.from].value.vector();
    return at.part > 0.0 ? here + (points[at.from + 1].value.vector() - here) * at.part : here;
}

std::string why_no_ramp(const Node& node) {
    for (const PlugKey& key : node.stored()) {
        const std::string& name = node.attribute(key.attribute).short_name;
        if ((name == "vli" || name == "cli") && node.get(key).integer() > linear)
            return "its smooth and spline interpolations aren't";
    }
    return {};
}

} // namespace

void add_choosing_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "condition", "node", MFn::kCondition)
        .enumeration("operation", "op")
        .number("firstTerm", "ft")
        .number("secondTerm", "st")
        .colour("colorIfTrue", "ct")
        .colour("colorIfFalse", "cf", 1.0)
        .colour("outColor", "oc").from({"op", "ft", "st", "ct", "cf"},
            [](std::int64_t operation, double first, double second, double if_true, double if_false) {
                return holds(operation, first, second) ? if_true : if_false;
            });
    NodeKind(types, "choice", "node", MFn::kChoice)
        .integer("selector", "s")
        .untyped("input", "i").array()
        .untyped("output", "o").from({"s", "i"}, [](std::int64_t selector, const Elements& inputs) -> Value {
            const auto& indices = inputs.indices();
            const bool there = std::ranges::find(indices, selector) != indices.end();
            return there ? inputs.value(static_cast<int>(selector)) : Value();
        });
    NodeKind(types, "blendColors", "node", MFn::kBlendColors)
        .number("blender", "b", 0.5)
        .parts("color1", "c1", number, {"Rr", "Gg", "Bb"}, {1, 0, 0})
        .parts("color2", "c2", number, {"Rr", "Gg", "Bb"}, {0, 0, 1})
        .colour("output", "op").from({"b", "c1", "c2"}, [](double blender, double first, double second) {
            return first * blender + second * (1.0 - blender);
        });
    NodeKind(types, "blendTwoAttr", "blend", MFn::kBlendTwoAttr)
        .number("attributesBlender", "ab")
        .number("input", "i").array()
        .integer("current", "c")
        .number("output", "o").from({"ab", "i"}, [](double blender, const Elements& inputs) {
            return inputs.number(0) * (1.0 - blender) + inputs.number(1) * blender;
        });
    NodeKind(types, "remapValue", "node", MFn::kRemapValue)
        .number("inputValue", "i")
        .number("inputMin", "imn")
        .number("inputMax", "imx", 1.0)
        .number("outputMin", "omn")
        .number("outputMax", "omx", 1.0)
        .array_of_compounds("value", "vl")
            .number("value_Position", "vlp")
            .number("value_FloatValue", "vlfv")
            .enumeration("value_Interp", "vli")
        .end()
        .array_of_compounds("color", "cl")
            .number("color_Position", "clp")
            .parts("color_Color", "clc", number, {"Rr", "Gg", "Bb"})
            .enumeration("color_Interp", "cli")
        .end()
        .number("outValue", "ov").from({"i", "imn", "imx", "omn", "omx", "vl"}, remapped)
        .colour("outColor", "oc").from({"i", "imn", "imx", "cl"}, remapped_colour)
        .falls_short(why_no_ramp);
    // clang-format on
}

} // namespace headless
