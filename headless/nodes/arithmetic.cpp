// Sums, products and units, number by number.
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <cmath>

namespace headless {
namespace {

using enum AttributeKind;

// The factors in files count time in ticks.
constexpr double ticks_per_second = 6000.0;

double finite_or_zero(double value) {
    return std::isfinite(value) ? value : 0.0;
}

// 0 passes the first on, 1 multiplies, 2 divides, 3 raises to a power. What has no finite result is 0.
double combined(std::int64_t operation, double a, double b) {
    return finite_or_zero(operation == 0 ? a : operation == 2 ? a / b : operation == 3 ? std::pow(a, b) : a * b);
}

// 0 passes the first element on, 1 sums, 2 takes the others from the first, 3 averages.
double gathered(std::int64_t operation, const Elements& inputs) {
    double out = 0.0;
    int count = 0;
    for (const int index : inputs.indices()) {
        const double value = inputs.number(index);
        if (++count == 1)
            out = value;
        else if (operation != 0)
            out += operation == 2 ? -value : value;
    }
    return operation == 3 && count > 0 ? out / count : out;
}

double weighted_sum(const Elements& inputs, const Elements& weights) {
    double out = 0.0;
    for (const int index : inputs.indices()) out += inputs.number(index) * weights.number(index);
    return out;
}

// Of a number, or of a triple as a whole.
Value converted(const Value& value, double factor) {
    const Vector3* triple = value.get_if<Vector3>();
    return triple ? Value(*triple * factor) : Value(value.number() * factor);
}

void add_conversions(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "unitConversion", "node", MFn::kUnitConversion)
        .number("input", "i")
        .number("conversionFactor", "cf", 1.0)
        .number("output", "o").from({"i", "cf"}, converted);
    NodeKind(types, "unitToTimeConversion", "node", MFn::kUnitToTimeConversion)
        .number("input", "i")
        .number("conversionFactor", "cf", 1.0)
        .time("output", "o").from({"i", "cf"}, [](double value, double factor) {
            return value * factor / ticks_per_second;
        });
    NodeKind(types, "timeToUnitConversion", "node", MFn::kTimeToUnitConversion)
        .time("input", "i")
        .number("conversionFactor", "cf", 1.0)
        .number("output", "o").from({"i", "cf"}, [](double value, double factor) {
            return value * factor * ticks_per_second;
        });
    // clang-format on
}

} // namespace

void add_arithmetic_kinds(NodeTypes& types) {
    add_conversions(types);
    // clang-format off
    NodeKind(types, "addDoubleLinear", "node", MFn::kAddDoubleLinear)
        .distance("input1", "i1")
        .distance("input2", "i2")
        .distance("output", "o").from({"i1", "i2"}, [](double a, double b) { return a + b; });
    NodeKind(types, "multDoubleLinear", "node", MFn::kMultDoubleLinear)
        .distance("input1", "i1")
        .distance("input2", "i2")
        .distance("output", "o").from({"i1", "i2"}, [](double a, double b) { return a * b; });
    NodeKind(types, "multiplyDivide", "node", MFn::kMultiplyDivide)
        .enumeration("operation", "op", 1)
        .vector("input1", "i1")
        .vector("input2", "i2", number, 1.0)
        .vector("output", "o").from({"op", "i1", "i2"}, combined);
    NodeKind(types, "plusMinusAverage", "node", MFn::kPlusMinusAverage)
        .enumeration("operation", "op", 1)
        .number("input1D", "i1").array()
        .array_of_compounds("input2D", "i2").number("input2Dx", "i2x").number("input2Dy", "i2y").end()
        .array_of_compounds("input3D", "i3")
            .number("input3Dx", "i3x").number("input3Dy", "i3y").number("input3Dz", "i3z")
        .end()
        .number("output1D", "o1").from({"op", "i1"}, gathered)
        .compound("output2D", "o2").number("output2Dx", "o2x").number("output2Dy", "o2y").end()
            .from({"op", "i2"}, gathered)
        .compound("output3D", "o3")
            .number("output3Dx", "o3x").number("output3Dy", "o3y").number("output3Dz", "o3z")
        .end().from({"op", "i3"}, gathered);
    NodeKind(types, "blend", "node", MFn::kBlend);
    NodeKind(types, "blendWeighted", "blend", MFn::kBlendWeighted)
        .number("input", "i").array()
        .number("weight", "w", 1.0).array()
        .integer("current", "c")
        .number("output", "o").from({"i", "w"}, weighted_sum);
    NodeKind(types, "reverse", "node", MFn::kReverse)
        .vector("input", "i")
        .vector("output", "o").from({"i"}, [](double value) { return 1.0 - value; });
    NodeKind(types, "clamp", "node", MFn::kClampColor)
        .colour("min", "mn")
        .colour("max", "mx")
        .colour("input", "ip")
        .colour("output", "op").from({"mn", "mx", "ip"}, [](double low, double high, double value) {
            return std::max(low, std::min(high, value));
        });
    NodeKind(types, "setRange", "node", MFn::kSetRange)
        .vector("value", "v")
        .vector("min", "n")
        .vector("max", "m")
        .vector("oldMin", "on")
        .vector("oldMax", "om")
        .vector("outValue", "o").from({"v", "n", "m", "on", "om"}, [](double value, double low, double high,
                                                                      double old_low, double old_high) {
            const double held = std::max(old_low, std::min(old_high, value));
            return old_high == old_low ? low : low + (held - old_low) / (old_high - old_low) * (high - low);
        });
    // clang-format on
}

} // namespace headless
