#include "headless/animation/animation.h"

#include "headless/animation/arithmetic_nodes.h"
#include "headless/animation/constraints.h"
#include "headless/animation/curve_node.h"
#include "headless/animation/pair_blend.h"

namespace headless {

void register_animation() {
    register_node_data("animCurve", [](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<CurveData>(); });
    register_compute("animCurve", compute_curve);
    register_constraints();
    register_pair_blend();
    register_arithmetic_nodes();
}

} // namespace headless
