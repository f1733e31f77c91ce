// Nodes that every scene holds, and what drives or decorates scenes as a whole.
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_scene_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "time", "node", MFn::kTime).time("outTime", "o").output();
    NodeKind(types, "script", "node", MFn::kScript)
        .text("before", "b")
        .text("after", "a")
        .enumeration("scriptType", "st");

    for (const char* name : {"sequenceManager",         "hardwareRenderingGlobals",
                             "renderGlobalsList",       "defaultLightList",
                             "defaultShaderList",       "postProcessList",
                             "defaultRenderUtilityList", "defaultRenderingList",
                             "lightList",               "defaultTextureList",
                             "particleCloud",           "materialInfo",
                             "shaderGlow",              "dof",
                             "renderGlobals",           "renderQuality",
                             "resolution",              "viewColorManager",
                             "colorManagementGlobals",  "hardwareRenderGlobals",
                             "ikSystem",                "hyperGraphInfo",
                             "hyperLayout",             "globalCacheControl",
                             "dynController",           "strokeGlobals",
                             "displayLayerManager",     "renderLayerManager",
                             "nodeGraphEditorInfo",     "shapeEditorManager",
                             "poseInterpolatorManager"})
        NodeKind(types, name, "node", MFn::kDependencyNode);
    // clang-format on
}

} // namespace headless
