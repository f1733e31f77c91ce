#include "headless/graph/transform_limits.h"

#include "headless/graph/evaluation.h"

#include <algorithm>

namespace headless {
namespace {

// The compounds of bounds, by field and side, and of their switches, which stand right behind them.
struct LimitAttributes {
    AttributeId bound[3][2], enable[3][2];

    explicit LimitAttributes(const NodeType& transform) {
        const char* const names[3] = {"Trans", "Rot", "Scale"};
        for (int i = 0; i < 3; ++i) {
            for (int upper = 0; upper < 2; ++upper) {
                const std::string name = std::string(upper ? "max" : "min") + names[i] + "Limit";
                bound[i][upper] = transform.find(name);
                enable[i][upper] = transform.find(name + "Enable");
            }
        }
    }
};

Plug if_driven(Node& node, AttributeId compound, AttributeId child) {
    if (node.inputs().empty()) return {};
    const bool driven = node.source_of({child, 0, {}}) || node.source_of({compound, 0, {}});
    return driven ? node.plug(child) : Plug{};
}

} // namespace

std::vector<TransformLimit> limits_of(Node& node) {
    static const LimitAttributes ids(*NodeTypes::all().find("transform"));
    std::vector<TransformLimit> out;
    for (std::uint8_t field = 0; field < 9; ++field) {
        for (int upper = 0; upper < 2; ++upper) {
            const AttributeId bounds = ids.bound[field / 3][upper], switches = ids.enable[field / 3][upper];
            const AttributeId bound = node.attribute(bounds).children[field % 3];
            const AttributeId enable = node.attribute(switches).children[field % 3];
            const Plug enabled_by = if_driven(node, switches, enable);
            if (!enabled_by && !node.get({enable, 0, {}}).boolean()) continue;
            out.push_back(
                {field, upper != 0, node.get({bound, 0, {}}).number(), enabled_by, if_driven(node, bounds, bound)});
        }
    }
    return out;
}

double limited(EvaluationContext& context, const TransformLimit& limit, double value) {
    if (limit.enabled_by && !context.evaluate(limit.enabled_by).boolean()) return value;
    const double bound = limit.bound_by ? context.number(limit.bound_by) : limit.bound;
    return limit.upper ? std::min(value, bound) : std::max(value, bound);
}

} // namespace headless
