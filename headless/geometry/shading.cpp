#include "headless/geometry/shading.h"

#include "headless/geometry/modifiers.h"

#include <algorithm>

namespace headless {
namespace {

bool is_membership(const Plug& destination) {
    return destination.node->type().derives_from("shadingEngine") &&
           destination.attribute().long_name == "dagSetMembers";
}

int place_of(std::vector<Node*>& groups, Node* group) {
    const auto at = std::ranges::find(groups, group);
    if (at != groups.end()) return static_cast<int>(at - groups.begin());
    groups.push_back(group);
    return static_cast<int>(groups.size() - 1);
}

} // namespace

Shading shading_of(const Node& mesh, int instance, std::size_t face_count) {
    Shading out;
    out.of_face.assign(face_count, -1);
    // Files name the first instance's plug without its index.
    const Plug instances = mesh.find_plug("instObjGroups");
    for (const PlugKey& key : {instances.key, instances.key.element(instance)}) {
        if (key.depth == 0 && instance != 0) continue;
        const auto [first, last] = mesh.outputs().equal_range(key);
        for (auto at = first; at != last; ++at) {
            if (is_membership(at->second)) std::ranges::fill(out.of_face, place_of(out.groups, at->second.node));
        }
    }
    const AttributeId parts = mesh.find_attribute("objectGroups"), list = mesh.find_attribute("objectGrpCompList");
    for (const auto& [key, destination] : mesh.outputs()) {
        if (key.attribute != parts || key.depth != 2 || key.index[0] != instance || !is_membership(destination))
            continue;
        const int place = place_of(out.groups, destination.node);
        const std::vector<bool> faces = faces_of(mesh.get(key.with_attribute(list)), face_count);
        for (std::size_t face = 0; face < face_count; ++face) {
            if (faces[face]) out.of_face[face] = place;
        }
    }
    return out;
}

} // namespace headless
