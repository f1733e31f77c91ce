// What moves the points of a mesh; worked out along with the mesh's history, not as plugs.
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_deformer_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "skinCluster", "node", MFn::kSkinClusterFilter)
        .array_of_compounds("weightList", "wl")
            .number("weights", "w").array()
        .end();
    NodeKind(types, "blendShape", "node", MFn::kBlendShape);
    NodeKind(types, "dagPose", "node", MFn::kDagPose);
    // clang-format on
}

} // namespace headless
