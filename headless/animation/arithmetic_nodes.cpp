#include "headless/animation/arithmetic_nodes.h"

#include "headless/graph/scene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace headless {
namespace {

constexpr double ticks_per_second = 6000.0;

double number_of(EvaluationContext& context, Node& node, const char* name) {
    return context.number(node.plug(node.find_attribute(name)));
}

double converted(EvaluationContext& context, Node& node) {
    return number_of(context, node, "input") * number_of(context, node, "conversionFactor");
}

Value compute_unit(EvaluationContext& context, Node& node, const Plug&) {
    return converted(context, node);
}
Value compute_from_time(EvaluationContext& context, Node& node, const Plug&) {
    return converted(context, node) * ticks_per_second;
}
Value compute_to_time(EvaluationContext& context, Node& node, const Plug&) {
    return converted(context, node) / ticks_per_second;
}
Value compute_sum_of_two(EvaluationContext& context, Node& node, const Plug&) {
    return number_of(context, node, "input1") + number_of(context, node, "input2");
}
Value compute_product_of_two(EvaluationContext& context, Node& node, const Plug&) {
    return number_of(context, node, "input1") * number_of(context, node, "input2");
}

double combined(std::int64_t operation, double a, double b) {
    const double out = operation == 0 ? a : operation == 2 ? a / b : operation == 3 ? std::pow(a, b) : a * b;
    return std::isfinite(out) ? out : 0.0;
}

Value compute_multiply_divide(EvaluationContext& context, Node& node, const Plug& plug) {
    const std::int64_t operation = context.evaluate(node.plug(node.find_attribute("operation"))).integer();
    const Plug output = node.plug(node.find_attribute("output"));
    const Plug first = node.plug(node.find_attribute("input1")), second = node.plug(node.find_attribute("input2"));
    Vector3 out;
    for (int axis = 0; axis < 3; ++axis) {
        const Plug child = output.child(axis);
        if (plug != child && plug != output) continue;
        out[axis] = combined(operation, context.number(first.child(axis)), context.number(second.child(axis)));
        if (plug == child) return out[axis];
    }
    return out;
}

// A column of the input array: an element itself, or its child at a place.
double combined_column(EvaluationContext& context, Node& node, AttributeId array, int column) {
    const std::int64_t operation = context.evaluate(node.plug(node.find_attribute("operation"))).integer();
    double out = 0.0;
    int count = 0;
    for (const int index : node.existing_indices({array, 0, {}})) {
        const Plug element = node.plug(array).element(index);
        const double value = context.number(column < 0 ? element : element.child(column));
        if (++count == 1)
            out = value;
        else if (operation != 0)
            out += operation == 2 ? -value : value;
    }
    return operation == 3 && count > 0 ? out / count : out;
}

Value compute_plus_minus_average(EvaluationContext& context, Node& node, const Plug& plug) {
    static constexpr std::array<std::pair<const char*, const char*>, 2> wide = {
        {{"output2D", "input2D"}, {"output3D", "input3D"}}};
    for (const auto& [output_name, input_name] : wide) {
        const Plug output = node.plug(node.find_attribute(output_name));
        const AttributeId input = node.find_attribute(input_name);
        const int width = static_cast<int>(output.attribute().children.size());
        Value::Doubles all;
        for (int column = 0; column < width; ++column) {
            if (plug == output.child(column)) return combined_column(context, node, input, column);
            if (plug == output) all.push_back(combined_column(context, node, input, column));
        }
        if (all.size() == 3) return Vector3{all[0], all[1], all[2]};
        if (plug == output) return all;
    }
    return combined_column(context, node, node.find_attribute("input1D"), -1);
}

Value compute_blend_weighted(EvaluationContext& context, Node& node, const Plug&) {
    const Plug inputs = node.plug(node.find_attribute("input")), weights = node.plug(node.find_attribute("weight"));
    double out = 0.0;
    for (const int index : node.existing_indices(inputs.key))
        out += context.number(inputs.element(index)) * context.number(weights.element(index));
    return out;
}

} // namespace

void register_arithmetic_nodes() {
    register_compute("unitConversion", compute_unit);
    register_compute("timeToUnitConversion", compute_from_time);
    register_compute("unitToTimeConversion", compute_to_time);
    register_compute("addDoubleLinear", compute_sum_of_two);
    register_compute("multDoubleLinear", compute_product_of_two);
    register_compute("multiplyDivide", compute_multiply_divide);
    register_compute("plusMinusAverage", compute_plus_minus_average);
    register_compute("blendWeighted", compute_blend_weighted);
}

} // namespace headless
