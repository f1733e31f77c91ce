#include "headless/geometry/mesh_data.h"

#include "headless/geometry/poly_faces.h"

#include <algorithm>
#include <optional>

namespace headless {
namespace {

struct MeshAttributes {
    AttributeId points, tweaks, edges, normals, faces, uv_sets, uvs, colour_sets, colours;

    static const MeshAttributes& ids() {
        static const MeshAttributes made = [] {
            const NodeType& type = *NodeTypes::all().find("mesh");
            return MeshAttributes{type.find("vt"),   type.find("pt"),   type.find("ed"),
                                  type.find("n"),    type.find("fc"),   type.find("uvst"),
                                  type.find("uvsp"), type.find("clst"), type.find("clsp")};
        }();
        return made;
    }
};

// Which of a compound's children an attribute is, when they stand right behind it: 0 to `count` - 1.
std::optional<int> child_of(AttributeId compound, AttributeId id, AttributeId count) {
    if (id <= compound || id > compound + count) return {};
    return static_cast<int>(id - compound - 1);
}

template<std::size_t N>
bool set_numbers(std::map<int, ElementList<std::array<double, N>>>& sets, const PlugKey& key, int component,
                 const Value& value) {
    if (component >= 0) {
        if (!value.is_number()) return false;
        sets[key.index[0]].at(key.index[1])[static_cast<std::size_t>(component)] = value.number();
        return true;
    }
    const auto* list = value.get_if<Value::Doubles>();
    if (!list || list->size() != N) return false;
    std::ranges::copy(*list, sets[key.index[0]].at(key.index[1]).begin());
    return true;
}

template<std::size_t N>
bool get_numbers(const std::map<int, ElementList<std::array<double, N>>>& sets, const PlugKey& key, int component,
                 Value& out) {
    const auto set = sets.find(key.index[0]);
    const auto* found = set == sets.end() ? nullptr : set->second.find(key.index[1]);
    if (!found) return false;
    out = component >= 0 ? Value((*found)[static_cast<std::size_t>(component)])
                         : Value(Value::Doubles(found->begin(), found->end()));
    return true;
}

template<std::size_t N>
bool list_indices(const std::map<int, ElementList<std::array<double, N>>>& sets, const PlugKey& array,
                  std::vector<int>& out) {
    const auto set = sets.find(array.index[0]);
    if (set != sets.end()) out = set->second.indices();
    return true;
}

// Sets have names in the node and values here; either makes one.
template<std::size_t N>
void set_indices(const std::map<int, ElementList<std::array<double, N>>>& sets, const Plug& array,
                 std::vector<int>& out) {
    for (const auto& [index, list] : sets) out.push_back(index);
    for (const PlugKey& key : array.node->stored()) {
        if (key.depth > 0 && array.node->attribute(key.attribute).parent == array.key.attribute)
            out.push_back(key.index[0]);
    }
    std::ranges::sort(out);
    out.erase(std::unique(out.begin(), out.end()), out.end());
}

} // namespace

MeshData* MeshData::of(const Node& node) {
    return node.type().derives_from("mesh") ? static_cast<MeshData*>(node.data()) : nullptr;
}

ElementList<Vector3>* MeshData::triples(AttributeId id, int& component) {
    const MeshAttributes& ids = MeshAttributes::ids();
    const std::pair<AttributeId, ElementList<Vector3>*> lists[] = {
        {ids.points, &points_}, {ids.tweaks, &tweaks_}, {ids.edges, &edges_}, {ids.normals, &normals_}};
    for (const auto& [compound, list] : lists) {
        const auto child = child_of(compound, id, 3);
        if (id != compound && !child) continue;
        component = child.value_or(-1);
        return list;
    }
    return nullptr;
}

bool MeshData::set_triple(ElementList<Vector3>& list, int component, int index, const Value& value) {
    if (component >= 0) {
        if (!value.is_number()) return false;
        list.at(index)[component] = value.number();
        return true;
    }
    const auto* triple = value.get_if<Vector3>();
    if (triple) list.at(index) = *triple;
    return triple != nullptr;
}

bool MeshData::set_face(int index, const Value& value) {
    const auto* words = value.get_if<RawTokens>();
    // Faces stand one behind the other in a statement, each from its "f" on.
    if (!words || words->type != "polyFaces" || words->tokens.empty() || words->tokens[0] != "f") return false;
    const std::size_t first = face_numbers_.size();
    FaceSpan& span = faces_.at(index);
    odd_faces_.erase(index);
    if (!encode_face(*words, face_numbers_)) {
        span = {};
        odd_faces_[index] = *words;
        return true;
    }
    const std::size_t count = face_numbers_.size() - first;
    if (count <= span.count) {
        // Set again in its old place, so that a face set over and over takes no more room.
        std::copy(face_numbers_.begin() + static_cast<std::ptrdiff_t>(first), face_numbers_.end(),
                  face_numbers_.begin() + static_cast<std::ptrdiff_t>(span.first));
        face_numbers_.resize(first);
        span.count = count;
    } else {
        span = {first, count};
    }
    return true;
}

bool MeshData::set(const Plug& plug, const Value& value) {
    const MeshAttributes& ids = MeshAttributes::ids();
    const PlugKey& key = plug.key;
    if (key.depth == 0) return false;
    if (key.depth == 1) {
        int component = -1;
        if (ElementList<Vector3>* list = triples(key.attribute, component))
            return set_triple(*list, component, key.index[0], value);
        return key.attribute == ids.faces && set_face(key.index[0], value);
    }
    if (key.depth != 2) return false;
    if (const auto child = child_of(ids.uvs, key.attribute, 2); child || key.attribute == ids.uvs)
        return set_numbers(uvs_, key, child.value_or(-1), value);
    if (const auto child = child_of(ids.colours, key.attribute, 4); child || key.attribute == ids.colours)
        return set_numbers(colours_, key, child.value_or(-1), value);
    return false;
}

bool MeshData::keeps_alone(const Plug& plug) const {
    return plug.key.attribute == MeshAttributes::ids().faces;
}

bool MeshData::get(const Plug& plug, Value& out) const {
    const MeshAttributes& ids = MeshAttributes::ids();
    const PlugKey& key = plug.key;
    if (key.depth == 1) {
        int component = -1;
        if (const ElementList<Vector3>* list = const_cast<MeshData*>(this)->triples(key.attribute, component)) {
            const Vector3* found = list->find(key.index[0]);
            if (found) out = component >= 0 ? Value((*found)[component]) : Value(*found);
            return found != nullptr;
        }
        if (key.attribute != ids.faces || !faces_.find(key.index[0])) return false;
        out = face_words(key.index[0]);
        return true;
    }
    if (key.depth != 2) return false;
    if (const auto child = child_of(ids.uvs, key.attribute, 2); child || key.attribute == ids.uvs)
        return get_numbers(uvs_, key, child.value_or(-1), out);
    if (const auto child = child_of(ids.colours, key.attribute, 4); child || key.attribute == ids.colours)
        return get_numbers(colours_, key, child.value_or(-1), out);
    return false;
}

bool MeshData::indices(const Plug& array, std::vector<int>& out) const {
    const MeshAttributes& ids = MeshAttributes::ids();
    const PlugKey& key = array.key;
    int component = -1;
    if (key.depth == 0) {
        const ElementList<Vector3>* list = const_cast<MeshData*>(this)->triples(key.attribute, component);
        if (list && component < 0) {
            out = list->indices();
        } else if (key.attribute == ids.faces) {
            out = faces_.indices();
        } else if (key.attribute == ids.uv_sets) {
            set_indices(uvs_, array, out);
        } else if (key.attribute == ids.colour_sets) {
            set_indices(colours_, array, out);
        } else {
            return false;
        }
        return true;
    }
    if (key.attribute == ids.uvs) return list_indices(uvs_, key, out);
    if (key.attribute == ids.colours) return list_indices(colours_, key, out);
    return false;
}

std::span<const std::int32_t> MeshData::face(int index) const {
    const FaceSpan* span = faces_.find(index);
    if (!span) return {};
    return std::span(face_numbers_).subspan(span->first, span->count);
}

RawTokens MeshData::face_words(int index) const {
    const auto odd = odd_faces_.find(index);
    return odd == odd_faces_.end() ? decode_face(face(index)) : odd->second;
}

} // namespace headless
