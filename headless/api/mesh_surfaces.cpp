// What covers a mesh: the colours, UVs and shaders of MFnMesh, and MFnLambertShader.
#include "headless/api/access.h"
#include "headless/geometry/mesh.h"
#include "headless/geometry/shading.h"

#include <maya/MFloatArray.h>
#include <maya/MFnLambertShader.h>
#include <maya/MIntArray.h>

#include <algorithm>
#include <span>

using namespace headless;

namespace {

// A set by name, or the current one without; null when there is none.
template<typename T>
const CornerValues<T>* set_of(const std::vector<CornerValues<T>>& sets, std::size_t current, const MString* name) {
    if (!name || name->length() == 0) return current < sets.size() ? &sets[current] : nullptr;
    const auto at = std::ranges::find(sets, Access::text(*name), &CornerValues<T>::name);
    return at == sets.end() ? nullptr : &*at;
}

const UvSet* uv_set_of(const Mesh& mesh, const MString* name) {
    return set_of(mesh.uv_sets, mesh.current_uv_set, name);
}

template<typename T>
MStatus put_names(const std::vector<CornerValues<T>>& sets, MStringArray& out) {
    out.clear();
    for (const CornerValues<T>& set : sets) out.append(text(set.name));
    return MStatus::kSuccess;
}

} // namespace

MStatus MFnMesh::getVertexColors(MColorArray& colors, const MString* colorSet, const MColor* defaultUnsetColor) {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return MStatus::kFailure;
    const MColor unset = defaultUnsetColor ? *defaultUnsetColor : MColor(-1.0f, -1.0f, -1.0f, -1.0f);
    const ColourSet* set = set_of(mesh->colour_sets, mesh->current_colour_set, colorSet);
    if (!set && colorSet && colorSet->length() > 0) return MStatus::kInvalidParameter;
    const std::size_t count = mesh->points.size();
    colors = MColorArray(static_cast<unsigned int>(count), unset);
    if (!set) return MStatus::kSuccess;
    std::vector<MColor> sums(count, MColor(0.0f, 0.0f, 0.0f, 0.0f));
    std::vector<int> found(count);
    for (std::size_t corner = 0; corner < set->of_corner.size(); ++corner) {
        const int value = set->of_corner[corner];
        if (value < 0) continue;
        const auto vertex = static_cast<std::size_t>(mesh->corner_vertex[corner]);
        const Float4& c = set->values[static_cast<std::size_t>(value)];
        sums[vertex] = sums[vertex] + MColor(c.r, c.g, c.b, c.a);
        ++found[vertex];
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (found[i] == 0) continue;
        const auto shares = static_cast<float>(found[i]);
        const MColor& sum = sums[i];
        colors[static_cast<unsigned int>(i)] = MColor(sum.r / shares, sum.g / shares, sum.b / shares, sum.a / shares);
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::getFaceVertexColors(MColorArray& colors, const MString* colorSet, const MColor* defaultUnsetColor) {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return MStatus::kFailure;
    const MColor unset = defaultUnsetColor ? *defaultUnsetColor : MColor(-1.0f, -1.0f, -1.0f, -1.0f);
    const ColourSet* set = set_of(mesh->colour_sets, mesh->current_colour_set, colorSet);
    if (!set && colorSet && colorSet->length() > 0) return MStatus::kInvalidParameter;
    colors = MColorArray(static_cast<unsigned int>(mesh->corner_vertex.size()), unset);
    for (unsigned int corner = 0; set && corner < colors.length(); ++corner) {
        const int value = set->of_corner[corner];
        if (value < 0) continue;
        const Float4& c = set->values[static_cast<std::size_t>(value)];
        colors[corner] = MColor(c.r, c.g, c.b, c.a);
    }
    return MStatus::kSuccess;
}

int MFnMesh::numColorSets(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? succeed(status, static_cast<int>(mesh->colour_sets.size())) : fail(status, 0);
}

MString MFnMesh::currentColorSetName(int, MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh || mesh->current_colour_set >= mesh->colour_sets.size()) return fail(status, MString());
    return succeed(status, text(mesh->colour_sets[mesh->current_colour_set].name));
}

MStatus MFnMesh::getColorSetNames(MStringArray& setNames) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? put_names(mesh->colour_sets, setNames) : MStatus(MStatus::kFailure);
}

int MFnMesh::numUVSets(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? succeed(status, static_cast<int>(mesh->uv_sets.size())) : fail(status, 0);
}

MStatus MFnMesh::getUVSetNames(MStringArray& setNames) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? put_names(mesh->uv_sets, setNames) : MStatus(MStatus::kFailure);
}

int MFnMesh::numUVs(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return fail(status, 0);
    const UvSet* set = uv_set_of(*mesh, nullptr);
    return succeed(status, set ? static_cast<int>(set->values.size()) : 0);
}

int MFnMesh::numUVs(const MString& uvSet, MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    const UvSet* set = mesh ? uv_set_of(*mesh, &uvSet) : nullptr;
    return set ? succeed(status, static_cast<int>(set->values.size())) : fail(status, 0, MStatus::kInvalidParameter);
}

MStatus MFnMesh::getUV(int uvId, float& u, float& v, const MString* uvSet) const {
    const Mesh* mesh = Access::mesh(*this);
    const UvSet* set = mesh ? uv_set_of(*mesh, uvSet) : nullptr;
    if (!set) return MStatus::kFailure;
    if (uvId < 0 || static_cast<std::size_t>(uvId) >= set->values.size()) return MStatus::kInvalidParameter;
    u = set->values[static_cast<std::size_t>(uvId)].u;
    v = set->values[static_cast<std::size_t>(uvId)].v;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getUVs(MFloatArray& uArray, MFloatArray& vArray, const MString* uvSet) const {
    const Mesh* mesh = Access::mesh(*this);
    const UvSet* set = mesh ? uv_set_of(*mesh, uvSet) : nullptr;
    if (!set) return MStatus::kFailure;
    uArray.setLength(static_cast<unsigned int>(set->values.size()));
    vArray.setLength(uArray.length());
    for (unsigned int i = 0; i < uArray.length(); ++i) {
        uArray[i] = set->values[i].u;
        vArray[i] = set->values[i].v;
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::getAssignedUVs(MIntArray& uvCounts, MIntArray& uvIds, const MString* uvSet) const {
    const Mesh* mesh = Access::mesh(*this);
    const UvSet* set = mesh ? uv_set_of(*mesh, uvSet) : nullptr;
    if (!set) return MStatus::kFailure;
    uvCounts.setLength(static_cast<unsigned int>(mesh->face_count()));
    uvIds.clear();
    for (unsigned int face = 0; face < uvCounts.length(); ++face) {
        const auto ids = std::span(set->of_corner).subspan(mesh->face_start[face], mesh->corner_count(face));
        const bool all = std::ranges::all_of(ids, [](int id) { return id >= 0; });
        uvCounts[face] = all ? static_cast<int>(ids.size()) : 0;
        for (std::size_t i = 0; all && i < ids.size(); ++i) uvIds.append(ids[i]);
    }
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPolygonUVid(int polygonId, int vertexIndex, int& uvId, const MString* uvSet) const {
    const Mesh* mesh = Access::mesh(*this);
    const UvSet* set = mesh ? uv_set_of(*mesh, uvSet) : nullptr;
    if (!set) return MStatus::kFailure;
    const auto face = static_cast<std::size_t>(polygonId), at = static_cast<std::size_t>(vertexIndex);
    if (polygonId < 0 || face >= mesh->face_count() || vertexIndex < 0 || at >= mesh->corner_count(face))
        return MStatus::kInvalidParameter;
    const int found = set->of_corner[mesh->face_start[face] + at];
    if (found < 0) return MStatus::kFailure;
    uvId = found;
    return MStatus::kSuccess;
}

MStatus MFnMesh::getConnectedShaders(unsigned int instanceNumber, MObjectArray& shaders, MIntArray& indices) const {
    const Mesh* mesh = Access::mesh(*this);
    const Node* node = Access::node(*this);
    if (!mesh || !node) return MStatus::kFailure;
    if (instanceNumber >= static_cast<unsigned int>(Access::scene().instance_count(*node)))
        return MStatus::kInvalidParameter;
    const Shading shading = shading_of(*node, static_cast<int>(instanceNumber), mesh->face_count());
    shaders.clear();
    for (const Node* group : shading.groups) shaders.append(Access::object(group));
    indices = MIntArray(shading.of_face.data(), static_cast<unsigned int>(shading.of_face.size()));
    return MStatus::kSuccess;
}

namespace {

Value value_of(const MObject& object, const char* attribute) {
    const Node* node = Access::node(object);
    const Plug plug = node ? node->find_plug(attribute) : Plug();
    return plug ? Access::scene().evaluate(plug) : Value();
}

MColor colour_of(const MObject& object, const char* attribute, MStatus* status) {
    if (!Access::node(object)) return fail(status, MColor());
    const Float3 c = narrow(value_of(object, attribute).vector());
    return succeed(status, MColor(c.x, c.y, c.z));
}

float number_of(const MObject& object, const char* attribute, MStatus* status) {
    if (!Access::node(object)) return fail(status, 0.0f);
    return succeed(status, static_cast<float>(value_of(object, attribute).number()));
}

} // namespace

MColor MFnLambertShader::color(MStatus* status) const {
    return colour_of(Access::object(*this), "color", status);
}
MColor MFnLambertShader::transparency(MStatus* status) const {
    return colour_of(Access::object(*this), "transparency", status);
}
MColor MFnLambertShader::ambientColor(MStatus* status) const {
    return colour_of(Access::object(*this), "ambientColor", status);
}
MColor MFnLambertShader::incandescence(MStatus* status) const {
    return colour_of(Access::object(*this), "incandescence", status);
}
float MFnLambertShader::diffuseCoeff(MStatus* status) const {
    return number_of(Access::object(*this), "diffuse", status);
}
float MFnLambertShader::translucenceCoeff(MStatus* status) const {
    return number_of(Access::object(*this), "translucence", status);
}
