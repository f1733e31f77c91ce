// Sets of nodes, and what divides scenes into parts.
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_set_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "objectSet", "node", MFn::kSet)
        .message("dagSetMembers", "dsm").array()
        .message("dnSetMembers", "dnsm").array()
        .integer("memberWireframeColor", "mwc", -1).array()
        .message("partition", "pa");
    NodeKind(types, "partition", "node", MFn::kPartition).message("sets", "st").array();
    NodeKind(types, "displayLayer", "node", MFn::kDisplayLayer);
    NodeKind(types, "renderLayer", "node", MFn::kRenderLayer);
    NodeKind(types, "groupId", "node", MFn::kGroupId);
    NodeKind(types, "groupParts", "node", MFn::kGroupParts)
        .untyped("inputGeometry", "ig")
        .integer("groupId", "gi")
        .untyped("inputComponents", "ic")
        .untyped("outputGeometry", "og").output();
    // clang-format on
}

} // namespace headless
