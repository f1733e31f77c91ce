#include "headless/animation/curve_node.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {
namespace {

using enum AttributeKind;

void add_curve(NodeTypes& types, const char* name, MFn::Type api_type, AttributeKind key, AttributeKind value) {
    // clang-format off
    NodeKind(types, name, "animCurve", api_type)
        .add("input", "i", key)
        .add("output", "o", value).output()
        .array_of_compounds("keyTimeValue", "ktv")
            .add("keyTime", "kt", key)
            .add("keyValue", "kv", value)
        .end()
        .keeps([](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<CurveData>(); });
    // clang-format on
}

} // namespace

void add_curve_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind curve(types, "animCurve", "node", MFn::kAnimCurve);
    curve.enumeration("tangentType", "tan")
        .boolean("weightedTangents", "wgt")
        .enumeration("preInfinity", "pre")
        .enumeration("postInfinity", "pst")
        .boolean("keyTanLocked", "ktl", true).array()
        .boolean("keyWeightLocked", "kwl", true).array();
    for (const auto& [long_name, short_name] :
         {std::pair{"keyTanInX", "kix"}, {"keyTanInY", "kiy"}, {"keyTanOutX", "kox"}, {"keyTanOutY", "koy"}})
        curve.number(long_name, short_name, 1.0).array();
    curve.enumeration("keyTanInType", "kit").array()
        .enumeration("keyTanOutType", "kot").array()
        .boolean("keyBreakdown", "kbd").array()
        .boolean("keyTickDrawSpecial", "ktds").array()
        .computes(compute_curve);

    add_curve(types, "animCurveTA", MFn::kAnimCurveTimeToAngular, time, angle);
    add_curve(types, "animCurveTL", MFn::kAnimCurveTimeToDistance, time, distance);
    add_curve(types, "animCurveTT", MFn::kAnimCurveTimeToTime, time, time);
    add_curve(types, "animCurveTU", MFn::kAnimCurveTimeToUnitless, time, number);
    add_curve(types, "animCurveUA", MFn::kAnimCurveUnitlessToAngular, number, angle);
    add_curve(types, "animCurveUL", MFn::kAnimCurveUnitlessToDistance, number, distance);
    add_curve(types, "animCurveUT", MFn::kAnimCurveUnitlessToTime, number, time);
    add_curve(types, "animCurveUU", MFn::kAnimCurveUnitlessToUnitless, number, number);
    // clang-format on
}

} // namespace headless
