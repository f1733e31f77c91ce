// Meshes, what makes and changes them, and the sets that shade them.
#include "headless/graph/standard_types.h"

namespace headless {
namespace {

using enum AttributeKind;

AttributeId add_list(NodeType& type, const char* long_name, const char* short_name, AttributeKind kind,
                     std::initializer_list<std::pair<const char*, const char*>> children,
                     AttributeId parent = no_attribute) {
    const AttributeId id = type.add(long_name, short_name, compound, {}, parent);
    type.make_array(id);
    for (const auto& [child, brief] : children) type.add(child, brief, kind, 0.0, id);
    return id;
}

void add_mesh(NodeTypes& types) {
    NodeType& mesh = types.add("mesh", "shape", MFn::kMesh);
    mesh.add("inMesh", "i", untyped);
    mesh.make_output(mesh.add("outMesh", "o", untyped));
    const AttributeId world = mesh.add("worldMesh", "w", untyped);
    mesh.make_array(world);
    mesh.make_output(world);
    add_list(mesh, "vrts", "vt", distance, {{"vrtx", "vx"}, {"vrty", "vy"}, {"vrtz", "vz"}});
    add_list(mesh, "pnts", "pt", distance, {{"pntx", "px"}, {"pnty", "py"}, {"pntz", "pz"}});
    add_list(mesh, "edge", "ed", integer, {{"edg1", "e1"}, {"edg2", "e2"}, {"edgh", "eh"}});
    add_list(mesh, "normals", "n", number, {{"normalx", "nx"}, {"normaly", "ny"}, {"normalz", "nz"}});
    mesh.make_array(mesh.add("face", "fc", untyped));

    const AttributeId uv_sets = mesh.add("uvSet", "uvst", compound);
    mesh.make_array(uv_sets);
    mesh.add("uvSetName", "uvsn", text, {}, uv_sets);
    add_list(mesh, "uvSetPoints", "uvsp", number, {{"uvSetPointsU", "uvpu"}, {"uvSetPointsV", "uvpv"}}, uv_sets);
    mesh.add("uvSetTweakLocation", "uvtw", untyped, {}, uv_sets);
    mesh.add("currentUVSet", "cuvs", text);

    const AttributeId colour_sets = mesh.add("colorSet", "clst", compound);
    mesh.make_array(colour_sets);
    mesh.add("colorName", "clsn", text, {}, colour_sets);
    mesh.add("clamped", "clam", boolean, {}, colour_sets);
    mesh.add("representation", "rprt", enumeration, {}, colour_sets);
    add_list(mesh, "colorSetPoints", "clsp", number,
             {{"colorSetPointsR", "clpr"},
              {"colorSetPointsG", "clpg"},
              {"colorSetPointsB", "clpb"},
              {"colorSetPointsA", "clpa"}},
             colour_sets);
    mesh.add("currentColorSet", "ccls", text);
    mesh.add("displayColors", "dcol", boolean);
}

NodeType& add_creator(NodeTypes& types, const char* name) {
    NodeType& type = types.add(name, "polyCreator", MFn::kPolyCreator);
    const AttributeId axis = type.add("axis", "ax", compound);
    type.add("axisX", "axx", number, 0.0, axis);
    type.add("axisY", "axy", number, 1.0, axis);
    type.add("axisZ", "axz", number, 0.0, axis);
    return type;
}

void add_creators(NodeTypes& types) {
    NodeType& base = types.add("polyCreator", "node", MFn::kPolyCreator);
    base.make_output(base.add("output", "out", untyped));

    NodeType& cube = add_creator(types, "polyCube");
    for (const auto& [name, brief] : {std::pair("width", "w"), {"height", "h"}, {"depth", "d"}})
        cube.add(name, brief, distance, 1.0);
    for (const auto& [name, brief] :
         {std::pair("subdivisionsWidth", "sw"), {"subdivisionsHeight", "sh"}, {"subdivisionsDepth", "sd"}})
        cube.add(name, brief, integer, 1);
    cube.add("createUVs", "cuv", enumeration, 3);

    NodeType& plane = add_creator(types, "polyPlane");
    plane.add("width", "w", distance, 1.0);
    plane.add("height", "h", distance, 1.0);
    plane.add("subdivisionsWidth", "sw", integer, 10);
    plane.add("subdivisionsHeight", "sh", integer, 10);
    plane.add("createUVs", "cuv", enumeration, 1);

    NodeType& sphere = add_creator(types, "polySphere");
    sphere.add("radius", "r", distance, 1.0);
    sphere.add("subdivisionsAxis", "sa", integer, 20);
    sphere.add("subdivisionsHeight", "sh", integer, 20);
    sphere.add("createUVs", "cuv", enumeration, 2);

    for (const char* name : {"polyCylinder", "polyCone"}) {
        NodeType& round = add_creator(types, name);
        round.add("radius", "r", distance, 1.0);
        round.add("height", "h", distance, 2.0);
        round.add("subdivisionsAxis", "sa", integer, 20);
        round.add("subdivisionsHeight", "sh", integer, 1);
        round.add("subdivisionsCaps", "sc", integer, 0);
        round.add("createUVs", "cuv", enumeration, 2);
    }
}

void add_modifiers(NodeTypes& types) {
    NodeType& modifier = types.add("polyModifier", "node", MFn::kPolyModifier);
    modifier.add("inputPolymesh", "ip", untyped);
    modifier.make_output(modifier.add("output", "out", untyped));
    modifier.add("inputComponents", "ics", untyped);
    NodeType& divide = types.add("polySubdFace", "polyModifier", MFn::kPolyModifier);
    divide.add("divisions", "dv", integer, 1);
    divide.add("mode", "m", enumeration, 0);
    types.add("polyColorPerVertex", "polyModifier", MFn::kPolyModifier).add("colorSetName", "cn", text);

    NodeType& moved = types.add("transformGeometry", "node", MFn::kDependencyNode);
    moved.add("inputGeometry", "ig", untyped);
    moved.add("transform", "txf", matrix);
    moved.make_output(moved.add("outputGeometry", "og", untyped));
}

} // namespace

void add_mesh_types(NodeTypes& types) {
    add_mesh(types);
    add_creators(types);
    add_modifiers(types);
}

} // namespace headless
