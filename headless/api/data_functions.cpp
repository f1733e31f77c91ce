// What plugs hold beside numbers and texts: matrices, lists of points and of components.
#include "headless/api/access.h"
#include "headless/geometry/components.h"
#include "headless/geometry/deformer_data.h"
#include "headless/geometry/mesh_history.h"

#include <maya/MFnComponentListData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>

#include <deque>

using namespace headless;

namespace {

// The last objects that were given, under rising numbers; older ones are gone, so that the list has an end.
constexpr std::size_t kept_objects = 16384;
std::deque<DataObject> given;
std::uint32_t first_number = 1;

MFn::Type type_of(const Plug& plug) {
    if (plug.is_array() || plug.is_compound()) return MFn::kInvalid;
    const Value value = Access::scene().evaluate(plug);
    if (value.get_if<Matrix>() || plug.attribute().kind == AttributeKind::matrix) return MFn::kMatrixData;
    if (const auto* words = value.get_if<RawTokens>()) {
        if (words->type == "pointArray") return MFn::kPointArrayData;
        if (words->type == "componentList") return MFn::kComponentListData;
        return MFn::kInvalid;
    }
    if (plug.attribute().kind != AttributeKind::untyped || !value.empty()) return MFn::kInvalid;
    const std::shared_ptr<const Mesh> mesh = mesh_at(Access::scene(), plug);
    return mesh && !mesh->points.empty() ? MFn::kMeshData : MFn::kInvalid;
}

MObject give(const DataObject& object) {
    if (given.size() == kept_objects) {
        given.pop_front();
        ++first_number;
    }
    given.push_back(object);
    return Access::object(NodeHandle{data_slot, first_number + static_cast<std::uint32_t>(given.size()) - 1});
}

Value value_of(const MFnBase& functions) {
    const DataObject* data = Access::data(Access::object(functions));
    Node* node = data ? Access::scene().find(data->node) : nullptr;
    return node ? Access::scene().evaluate({node, data->key}) : Value();
}

// The texts of a list of components, behind how many there are.
std::span<const std::string> words_of(const Value& value) {
    const auto* raw = value.get_if<RawTokens>();
    return raw && !raw->tokens.empty() ? std::span(raw->tokens).subspan(1) : std::span<const std::string>();
}

} // namespace

const DataObject* Access::data(const MObject& object) {
    const auto [slot, number] = handle(object);
    if (slot != data_slot || number < first_number || number - first_number >= given.size()) return nullptr;
    const DataObject& found = given[number - first_number];
    return scene().find(found.node) ? &found : nullptr;
}

bool DataObject::has_fn(MFn::Type wanted) const {
    if (wanted == type || wanted == MFn::kBase) return true;
    if (type == MFn::kMeshVertComponent) return wanted == MFn::kSingleIndexedComponent || wanted == MFn::kComponent;
    // The functions of meshes work on what a plug has as on a node.
    if (type == MFn::kMeshData && (wanted == MFn::kMesh || wanted == MFn::kGeometryData)) return true;
    return wanted == MFn::kData;
}

MObject Access::data_of(const Plug& plug) {
    const MFn::Type type = plug ? type_of(plug) : MFn::kInvalid;
    return type == MFn::kInvalid ? MObject() : give({plug.node->handle(), plug.key, type});
}

const MMatrix& MFnMatrixData::matrix(MStatus* status) const {
    static MMatrix out;
    const Value value = value_of(*this);
    put(status, object().isNull() ? MStatus::kFailure : MStatus::kSuccess);
    out = headless::matrix(value.matrix());
    return out;
}

unsigned int MFnPointArrayData::length(MStatus* status) const {
    return succeed(status, static_cast<unsigned int>(kept_points(value_of(*this)).size()));
}

MStatus MFnPointArrayData::copyTo(MPointArray& array) const {
    const std::vector<Vector3> points = kept_points(value_of(*this));
    array.setLength(static_cast<unsigned int>(points.size()));
    for (unsigned int i = 0; i < array.length(); ++i) array[i] = MPoint(vector(points[i]));
    return object().isNull() ? MStatus::kFailure : MStatus::kSuccess;
}

unsigned int MFnComponentListData::length(MStatus* status) const {
    return succeed(status, static_cast<unsigned int>(words_of(value_of(*this)).size()));
}

MObject MFnComponentListData::operator[](unsigned int index) const {
    const DataObject* data = Access::data(object());
    const Value value = value_of(*this);
    const std::span<const std::string> words = words_of(value);
    if (!data || index >= words.size() || words[index].find("vtx[") == std::string::npos) return MObject();
    return give({data->node, data->key, MFn::kMeshVertComponent, index});
}

MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const {
    elements.clear();
    const DataObject* data = Access::data(object());
    const Value value = value_of(*this);
    const std::span<const std::string> words = words_of(value);
    if (!data || data->part >= words.size()) return MStatus::kFailure;
    const Value word = RawTokens{"componentList", {words[data->part]}};
    constexpr std::size_t most = 1 << 28;
    for (const IndexRange& range : elements_in_order(word, "vtx", most)) {
        if (range.end == most) return MStatus::kSuccess; // all of a shape, which this object doesn't know
        for (std::size_t i = range.first; i < range.end; ++i) elements.append(static_cast<int>(i));
    }
    return MStatus::kSuccess;
}

int MFnComponent::elementCount(MStatus* status) const {
    MIntArray elements;
    const MObject self = object();
    put(status, MFnSingleIndexedComponent(self).getElements(elements));
    return static_cast<int>(elements.length());
}

bool MFnComponent::isComplete(MStatus* status) const {
    const DataObject* data = Access::data(object());
    const Value value = value_of(*this);
    const std::span<const std::string> words = words_of(value);
    if (!data || data->part >= words.size()) return fail(status, false);
    return succeed(status, words[data->part].find("[*]") != std::string::npos);
}
