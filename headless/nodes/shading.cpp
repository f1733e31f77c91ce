#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {
namespace {

void add_lamberts(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "lambert", "node", MFn::kLambert)
        .colour("color", "c", 0.5)
        .colour("transparency", "it")
        .colour("ambientColor", "ambc")
        .colour("incandescence", "ic")
        .number("diffuse", "dc", 0.8)
        .number("translucence", "tc")
        .vector("normalCamera", "n")
        .colour("outColor", "oc").output();
    NodeKind(types, "reflect", "lambert", MFn::kReflect)
        .colour("specularColor", "sc", 0.5)
        .number("reflectivity", "rfl", 0.5)
        .colour("reflectedColor", "rc");
    NodeKind(types, "blinn", "reflect", MFn::kBlinn)
        .number("eccentricity", "ec", 0.3)
        .number("specularRollOff", "sro", 0.7);
    NodeKind(types, "phong", "reflect", MFn::kPhong).number("cosinePower", "cp", 20.0);
    // clang-format on
}

// The two differ in their short names, and in how rough they come.
void add_standard_surfaces(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "standardSurface", "node", MFn::kDependencyNode)
        .number("base", "b", 1.0).colour("baseColor", "bc", 0.8)
        .number("metalness", "m")
        .number("specular", "s", 1.0).colour("specularColor", "sc", 1.0).number("specularRoughness", "sr", 0.4)
        .number("emission", "e").colour("emissionColor", "ec", 1.0)
        .colour("opacity", "o", 1.0)
        .vector("normalCamera", "n")
        .colour("outColor", "oc").output();
    NodeKind(types, "aiStandardSurface", "node", MFn::kDependencyNode)
        .number("base", "base", 1.0).colour("baseColor", "base_color", 0.8)
        .number("metalness", "metalness")
        .number("specular", "specular", 1.0).colour("specularColor", "specular_color", 1.0)
        .number("specularRoughness", "specular_roughness", 0.2)
        .number("emission", "emission").colour("emissionColor", "emission_color", 1.0)
        .colour("opacity", "opacity", 1.0)
        .vector("normalCamera", "n")
        .colour("outColor", "out").output();
    // clang-format on
}

NodeKind placed(NodeTypes& types, const char* name, MFn::Type api_type) {
    NodeKind kind(types, name, "node", api_type);
    // clang-format off
    kind.compound("offset", "of").number("offsetU", "ofu").number("offsetV", "ofv").end()
        .compound("repeatUV", "re").number("repeatU", "reu", 1.0).number("repeatV", "rev", 1.0).end()
        .boolean("wrapU", "wu", true).boolean("wrapV", "wv", true)
        .boolean("mirrorU", "mu").boolean("mirrorV", "mv").boolean("stagger", "s")
        .compound("coverage", "c").number("coverageU", "cu", 1.0).number("coverageV", "cv", 1.0).end()
        .compound("translateFrame", "tf").number("translateFrameU", "tfu").number("translateFrameV", "tfv").end()
        .compound("noiseUV", "n").number("noiseU", "nu").number("noiseV", "nv").end()
        .angle("rotateFrame", "rf");
    // clang-format on
    return kind;
}

} // namespace

void add_shading_kinds(NodeTypes& types) {
    add_lamberts(types);
    add_standard_surfaces(types);
    // clang-format off
    NodeKind(types, "shadingEngine", "objectSet", MFn::kShadingEngine).untyped("surfaceShader", "ss");
    placed(types, "file", MFn::kFileTexture)
        .angle("rotateUV", "ro")
        .text("fileTextureName", "ftn")
        .colour("outColor", "oc").output()
        .number("outAlpha", "oa").output()
        .colour("outTransparency", "ot").output();
    placed(types, "place2dTexture", MFn::kPlace2dTexture).angle("rotateUV", "r");
    NodeKind(types, "bump2d", "node", MFn::kBump)
        .number("bumpValue", "bv")
        .number("bumpDepth", "bd", 1.0)
        .enumeration("bumpInterp", "bi")
        .vector("outNormal", "o").output();
    NodeKind(types, "lightLinker", "node", MFn::kLightLink);
    // clang-format on
}

} // namespace headless
