// Meshes, and what makes and changes them; the points are worked out along the mesh's history, not as plugs.
#include "headless/geometry/mesh_data.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

namespace headless {
namespace {

using enum AttributeKind;

void add_mesh(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "mesh", "shape", MFn::kMesh)
        .untyped("inMesh", "i")
        .untyped("outMesh", "o").output()
        .untyped("worldMesh", "w").array().output()
        .array_of_compounds("vrts", "vt").distance("vrtx", "vx").distance("vrty", "vy").distance("vrtz", "vz").end()
        .array_of_compounds("pnts", "pt").distance("pntx", "px").distance("pnty", "py").distance("pntz", "pz").end()
        .array_of_compounds("edge", "ed").integer("edg1", "e1").integer("edg2", "e2").integer("edgh", "eh").end()
        .array_of_compounds("normals", "n")
            .number("normalx", "nx").number("normaly", "ny").number("normalz", "nz")
        .end()
        .untyped("face", "fc").array()
        .array_of_compounds("uvSet", "uvst")
            .text("uvSetName", "uvsn")
            .array_of_compounds("uvSetPoints", "uvsp").number("uvSetPointsU", "uvpu").number("uvSetPointsV", "uvpv").end()
            .untyped("uvSetTweakLocation", "uvtw")
        .end()
        .text("currentUVSet", "cuvs")
        .array_of_compounds("colorSet", "clst")
            .text("colorName", "clsn")
            .boolean("clamped", "clam")
            .enumeration("representation", "rprt")
            .array_of_compounds("colorSetPoints", "clsp")
                .number("colorSetPointsR", "clpr").number("colorSetPointsG", "clpg")
                .number("colorSetPointsB", "clpb").number("colorSetPointsA", "clpa")
            .end()
        .end()
        .text("currentColorSet", "ccls")
        .boolean("displayColors", "dcol")
        .keeps([](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<MeshData>(); });
    // clang-format on
}

NodeKind creator(NodeTypes& types, const char* name) {
    NodeKind kind(types, name, "polyCreator", MFn::kPolyCreator);
    kind.parts("axis", "ax", number, {"Xx", "Yy", "Zz"}, {0, 1, 0});
    return kind;
}

void add_creators(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "polyCreator", "node", MFn::kPolyCreator).untyped("output", "out").output();
    creator(types, "polyCube")
        .distance("width", "w", 1.0)
        .distance("height", "h", 1.0)
        .distance("depth", "d", 1.0)
        .integer("subdivisionsWidth", "sw", 1)
        .integer("subdivisionsHeight", "sh", 1)
        .integer("subdivisionsDepth", "sd", 1)
        .enumeration("createUVs", "cuv", 3);
    creator(types, "polyPlane")
        .distance("width", "w", 1.0)
        .distance("height", "h", 1.0)
        .integer("subdivisionsWidth", "sw", 10)
        .integer("subdivisionsHeight", "sh", 10)
        .enumeration("createUVs", "cuv", 1);
    creator(types, "polySphere")
        .distance("radius", "r", 1.0)
        .integer("subdivisionsAxis", "sa", 20)
        .integer("subdivisionsHeight", "sh", 20)
        .enumeration("createUVs", "cuv", 2);
    for (const char* name : {"polyCylinder", "polyCone"})
        creator(types, name)
            .distance("radius", "r", 1.0)
            .distance("height", "h", 2.0)
            .integer("subdivisionsAxis", "sa", 20)
            .integer("subdivisionsHeight", "sh", 1)
            .integer("subdivisionsCaps", "sc")
            .enumeration("createUVs", "cuv", 2);
    // clang-format on
}

void add_modifiers(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "polyModifier", "node", MFn::kMidModifier)
        .untyped("inputPolymesh", "ip")
        .untyped("output", "out").output()
        .untyped("inputComponents", "ics");
    NodeKind(types, "polySubdFace", "polyModifier", MFn::kMidModifier)
        .integer("divisions", "dv", 1)
        .enumeration("mode", "m");
    NodeKind(types, "polyColorPerVertex", "polyModifier", MFn::kMidModifier).text("colorSetName", "cn");
    NodeKind(types, "transformGeometry", "node", MFn::kDependencyNode)
        .untyped("inputGeometry", "ig")
        .matrix("transform", "txf")
        .untyped("outputGeometry", "og").output();
    // clang-format on
}

} // namespace

void add_mesh_kinds(NodeTypes& types) {
    add_mesh(types);
    add_creators(types);
    add_modifiers(types);
}

} // namespace headless
