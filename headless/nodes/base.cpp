#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_base_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "node", "", MFn::kDependencyNode)
        .message("message", "msg")
        .boolean("caching", "cch")
        .integer("isHistoricallyInteresting", "ihi", 2)
        .enumeration("nodeState", "nds");

    // The matrices are the graph's own to work out, and come first.
    NodeKind(types, "dagNode", "node", MFn::kDagNode)
        .matrix("matrix", "m").output()
        .matrix("inverseMatrix", "im").output()
        .matrix("worldMatrix", "wm").array().output()
        .matrix("worldInverseMatrix", "wim").array().output()
        .matrix("parentMatrix", "pm").array().output()
        .matrix("parentInverseMatrix", "pim").array().output()
        .boolean("visibility", "v", true)
        .boolean("intermediateObject", "io")
        .boolean("template", "tmp")
        .array_of_compounds("instObjGroups", "iog")
            .array_of_compounds("objectGroups", "og")
                .untyped("objectGrpCompList", "gcl")
                .integer("objectGroupId", "gid")
                .integer("objectGrpColor", "gco")
            .end()
        .end();
    NodeKind(types, "dagRoot", "dagNode", MFn::kWorld);
    // clang-format on
}

} // namespace headless
