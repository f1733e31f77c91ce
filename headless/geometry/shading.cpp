#include "headless/geometry/shading.h"

#include "headless/geometry/components.h"

#include <numeric>
#include <unordered_map>

namespace headless {
namespace {

bool is_membership(const Plug& destination) {
    return destination.node->type().derives_from("shadingEngine") &&
           destination.attribute().long_name == "dagSetMembers";
}

// Gives faces to groups, those of the most say first: who comes later gets what is left, and no face is looked at
// twice, however many groups name it.
class FaceShares {
public:
    explicit FaceShares(std::vector<int>& of_face) : of_face_(of_face), next_free_(of_face.size() + 1) {
        std::iota(next_free_.begin(), next_free_.end(), std::size_t{0});
    }

    void give(const IndexRange& range, int place) {
        for (std::size_t face = free_from(range.first); face < range.end; face = free_from(face)) {
            of_face_[face] = place;
            next_free_[face] = face + 1;
        }
    }

private:
    std::size_t free_from(std::size_t face) {
        while (next_free_[face] != face) {
            next_free_[face] = next_free_[next_free_[face]];
            face = next_free_[face];
        }
        return face;
    }

    std::vector<int>& of_face_;
    std::vector<std::size_t> next_free_; // the face itself while it is free; else one behind it to go on from
};

} // namespace

Shading shading_of(const Node& mesh, int instance, std::size_t face_count) {
    Shading out;
    std::unordered_map<const Node*, int> places;
    const auto place_of = [&](Node* group) {
        const auto [at, is_new] = places.try_emplace(group, static_cast<int>(out.groups.size()));
        if (is_new) out.groups.push_back(group);
        return at->second;
    };
    int of_whole = -1;
    // Files name the first instance's plug without its index.
    const Plug instances = mesh.find_plug("instObjGroups");
    for (const PlugKey& key : {instances.key, instances.key.element(instance)}) {
        if (key.depth == 0 && instance != 0) continue;
        const auto [first, last] = mesh.outputs().equal_range(key);
        for (auto at = first; at != last; ++at) {
            if (is_membership(at->second)) of_whole = place_of(at->second.node);
        }
    }
    struct Part {
        std::vector<IndexRange> faces;
        int place;
    };
    std::vector<Part> of_parts;
    const AttributeId parts = mesh.find_attribute("objectGroups"), list = mesh.find_attribute("objectGrpCompList");
    auto output = mesh.outputs().lower_bound(PlugKey{parts, 2, {instance, 0}});
    for (; output != mesh.outputs().end(); ++output) {
        const PlugKey& key = output->first;
        if (key.attribute != parts || key.depth != 2 || key.index[0] != instance) break;
        if (!is_membership(output->second)) continue;
        of_parts.push_back({faces_of(mesh.get(key.with_attribute(list)), face_count), place_of(output->second.node)});
    }
    out.of_face.assign(face_count, of_whole);
    FaceShares shares(out.of_face);
    for (auto part = of_parts.rbegin(); part != of_parts.rend(); ++part) { // the last has the most say
        for (const IndexRange& range : part->faces) shares.give(range, part->place);
    }
    return out;
}

} // namespace headless
