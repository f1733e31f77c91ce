#include "host/export/deformers.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MString.h>

#include <string_view>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr int MOST_STEPS = 4096; ///< along one history, which may run in a ring

MPlug geometry_input(const DEFORMER& deformer) {
    return child_named(find_plug(deformer.node, "input").elementByLogicalIndex(deformer.geometry), "inputGeometry");
}

/// What feeds the mesh of a node of a history, whatever the kind calls it.
MPlug source_of_step(const MObject& node, unsigned int geometry) {
    if (node.hasFn(MFn::kGeometryFilt)) return source_of(geometry_input({node, geometry}));
    for (const char* name : {"inMesh", "inputPolymesh", "inputGeometry", "inputMesh", "ip", "ig", "im"}) {
        const MPlug source = source_of(find_plug(node, name));
        if (!source.isNull()) return source;
    }
    return MPlug();
}

} // namespace

MPlug find_plug(const MObject& node, const char* name) {
    const MFnDependencyNode functions(node);
    return functions.hasAttribute(name) ? functions.findPlug(name) : MPlug();
}

MPlug child_named(const MPlug& compound, const char* name) {
    for (unsigned int i = 0; !compound.isNull() && i < compound.numChildren(); ++i) {
        const MPlug child = compound.child(i);
        const MString path = child.partialName(false, false, false, false, false, true);
        const std::string_view whole = path.asChar();
        if (whole.substr(whole.rfind('.') + 1) == name) return child;
    }
    return MPlug();
}

std::vector<unsigned int> indices_of(MPlug array) {
    MIntArray found;
    if (array.isNull() || !array.isArray()) return {};
    array.getExistingArrayAttributeIndices(found);
    std::vector<unsigned int> out(found.length());
    for (unsigned int i = 0; i < found.length(); ++i) out[i] = static_cast<unsigned int>(found[i]);
    return out;
}

MPlug source_of(const MPlug& plug) {
    MPlugArray sources;
    if (plug.isNull() || !plug.connectedTo(sources, true, false) || sources.length() == 0) return MPlug();
    return sources[0];
}

MMatrix matrix_of(const MPlug& plug) {
    if (plug.isNull()) return MMatrix();
    const MObject data = plug.asMObject();
    return data.isNull() ? MMatrix() : MFnMatrixData(data).matrix();
}

MObject input_mesh(const DEFORMER& deformer) {
    const MPlug input = geometry_input(deformer);
    return input.isNull() ? MObject() : input.asMObject();
}

std::vector<DEFORMER> deformers_of(const MDagPath& shape) {
    std::vector<DEFORMER> out;
    MObject node = shape.node();
    unsigned int geometry = 0;
    for (int step = 0; step < MOST_STEPS; ++step) {
        if (node.hasFn(MFn::kGeometryFilt) && node.apiType() != MFn::kTweak) out.push_back({node, geometry});
        const MPlug source = source_of_step(node, geometry);
        if (source.isNull()) break;
        node = source.node();
        geometry = source.isElement() ? source.logicalIndex() : 0;
    }
    return out;
}

} // namespace VOR2_EXPORTER_MAYA
