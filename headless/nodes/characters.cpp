#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_character_kinds(NodeTypes& types) {
    // clang-format off
    // What is stored in a character's lists, or connected to them, passes through.
    NodeKind(types, "character", "objectSet", MFn::kCharacter)
        .distance("linearValues", "lv").array()
        .angle("angularValues", "av").array()
        .number("unitlessValues", "uv").array()
        .time("timeValues", "tv").array();
    NodeKind(types, "clipLibrary", "node", MFn::kClipLibrary);
    NodeKind(types, "animClip", "node", MFn::kClip);
    NodeKind(types, "clipScheduler", "node", MFn::kClipScheduler).falls_short([](const Node&) {
        return std::string("its clips aren't");
    });
    // clang-format on
}

} // namespace headless
