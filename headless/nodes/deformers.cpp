// What moves the points of a mesh; worked out along with the mesh's history, not as plugs.
#include "headless/geometry/deformer_data.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_deformer_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "geometryFilter", "node", MFn::kGeometryFilt)
        .array_of_compounds("input", "ip")
            .untyped("inputGeometry", "ig")
            .integer("groupId", "gi")
            .text("componentTagExpression", "gtg")
        .end()
        .untyped("outputGeometry", "og").array().output()
        .number("envelope", "en", 1.0)
        .keeps([](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<DeformerData>(); });
    NodeKind(types, "weightGeometryFilter", "geometryFilter", MFn::kWeightGeometryFilt)
        .array_of_compounds("weightList", "wl")
            .number("weights", "w", 1.0).array()
        .end();
    NodeKind(types, "skinCluster", "geometryFilter", MFn::kSkinClusterFilter)
        .array_of_compounds("weightList", "wl")
            .number("weights", "w").array()
        .end()
        .matrix("bindPreMatrix", "pm").array()
        .matrix("geomMatrix", "gm")
        .matrix("matrix", "ma").array()
        .boolean("useComponents", "uc")
        .enumeration("skinningMethod", "skm")
        .enumeration("normalizeWeights", "nw", 1);
    NodeKind(types, "blendShape", "geometryFilter", MFn::kBlendShape)
        .number("weight", "w").array()
        .array_of_compounds("inputTarget", "it")
            .array_of_compounds("inputTargetGroup", "itg")
                .array_of_compounds("inputTargetItem", "iti")
                    .untyped("inputGeomTarget", "igt")
                    .untyped("inputPointsTarget", "ipt")
                    .untyped("inputComponentsTarget", "ict")
                .end()
                .number("targetWeights", "tw", 1.0).array()
                .enumeration("postDeformersMode", "pdm")
            .end()
            .number("baseWeights", "bw", 1.0).array()
        .end()
        .enumeration("origin", "or", 1)
        .boolean("targetVisibility", "tgvs", true).array();
    NodeKind(types, "cluster", "weightGeometryFilter", MFn::kClusterFilter)
        .matrix("bindPreMatrix", "pm")
        .matrix("geomMatrix", "gm").array()
        .matrix("matrix", "ma")
        .boolean("relative", "rel");
    NodeKind(types, "tweak", "geometryFilter", MFn::kTweak);
    // Named, and not evaluated.
    for (const char* name : {"nonLinear", "ffd", "wire", "wrap", "sculpt", "softMod", "deltaMush", "tension", "shrinkWrap",
                             "proximityWrap", "textureDeformer", "morph", "solidify", "jointCluster", "jiggle"})
        NodeKind(types, name, "weightGeometryFilter", MFn::kWeightGeometryFilt);
    NodeKind(types, "dagPose", "node", MFn::kDagPose);
    // clang-format on
}

} // namespace headless
