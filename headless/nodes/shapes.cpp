#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {
namespace {

void add_lights(NodeTypes& types) {
    NodeKind(types, "light", "shape", MFn::kLight).colour("color", "cl", 1.0).number("intensity", "in", 1.0);
    NodeKind(types, "ambientLight", "light", MFn::kAmbientLight);
    NodeKind(types, "nonAmbientLightShapeNode", "light", MFn::kNonAmbientLight);
    NodeKind(types, "nonExtendedLightShapeNode", "nonAmbientLightShapeNode", MFn::kNonExtendedLight);
    NodeKind(types, "areaLight", "nonAmbientLightShapeNode", MFn::kAreaLight);
    NodeKind(types, "directionalLight", "nonExtendedLightShapeNode", MFn::kDirectionalLight);
    NodeKind(types, "pointLight", "nonExtendedLightShapeNode", MFn::kPointLight);
    NodeKind(types, "spotLight", "nonExtendedLightShapeNode", MFn::kSpotLight);
    NodeKind(types, "volumeLight", "pointLight", MFn::kVolumeLight);
}

} // namespace

void add_shape_kinds(NodeTypes& types) {
    NodeKind(types, "shape", "dagNode", MFn::kShape);
    // clang-format off
    NodeKind(types, "locator", "shape", MFn::kLocator)
        .vector("localPosition", "lp", AttributeKind::distance)
        .vector("localScale", "los", AttributeKind::number, 1.0)
        .array_of_compounds("worldPosition", "wp")
            .distance("worldPositionX", "wpx").distance("worldPositionY", "wpy").distance("worldPositionZ", "wpz")
        .end().from({"lp", "wm"}, [](const Vector3& place, const Matrix& world) {
            return transform_point(place, world);
        });
    // clang-format on
    NodeKind(types, "nurbsCurve", "shape", MFn::kNurbsCurve);
    NodeKind(types, "nurbsSurface", "shape", MFn::kNurbsSurface);
    NodeKind(types, "lattice", "shape", MFn::kLattice);
    NodeKind(types, "camera", "shape", MFn::kCamera)
        .boolean("renderable", "rnd", true)
        .number("focalLength", "fl", 35.0)
        .distance("centerOfInterest", "coi", 5.0)
        .distance("nearClipPlane", "ncp", 0.1)
        .distance("farClipPlane", "fcp", 10000.0)
        .boolean("orthographic", "o")
        .distance("orthographicWidth", "ow", 10.0);
    add_lights(types);
}

} // namespace headless
