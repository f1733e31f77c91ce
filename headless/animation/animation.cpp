#include "headless/animation/animation.h"

#include "headless/animation/arithmetic_nodes.h"
#include "headless/animation/constraints.h"
#include "headless/animation/curve_node.h"
#include "headless/animation/pair_blend.h"

namespace headless {

void register_animation() {
    // The type that all curves derive from has no times of its own, and so no keys.
    register_node_data("animCurve", [](Node& node) -> std::unique_ptr<NodeData> {
        if (node.type().find("kt") == no_attribute) return nullptr;
        return std::make_unique<CurveData>();
    });
    register_compute("animCurve", compute_curve);
    register_constraints();
    register_pair_blend();
    register_arithmetic_nodes();
}

} // namespace headless
