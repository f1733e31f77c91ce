#include "headless/animation/animation.h"

#include "headless/animation/curve_node.h"

namespace headless {

void register_animation() {
    register_node_data("animCurve", [](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<CurveData>(); });
    register_compute("animCurve", compute_curve);
}

} // namespace headless
