#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {

void add_shading_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "lambert", "node", MFn::kLambert)
        .colour("color", "c", 0.5)
        .colour("transparency", "it")
        .colour("ambientColor", "ambc")
        .colour("incandescence", "ic")
        .number("diffuse", "dc", 0.8)
        .number("translucence", "tc")
        .colour("outColor", "oc").output();
    NodeKind(types, "reflect", "lambert", MFn::kReflect);
    NodeKind(types, "blinn", "reflect", MFn::kBlinn);
    NodeKind(types, "phong", "reflect", MFn::kPhong);
    NodeKind(types, "shadingEngine", "objectSet", MFn::kShadingEngine).untyped("surfaceShader", "ss");
    NodeKind(types, "file", "node", MFn::kFileTexture);
    NodeKind(types, "place2dTexture", "node", MFn::kPlace2dTexture);
    NodeKind(types, "lightLinker", "node", MFn::kLightLink);
    // clang-format on
}

} // namespace headless
