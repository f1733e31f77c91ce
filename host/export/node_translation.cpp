#include "host/export/node_translation.h"

#include "host/export/host_text.h"
#include "host/export/transform_conversion.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace VOR2_EXPORTER_MAYA {
namespace {

MString name_of(const MDagPath& path) {
    MObject node = path.node();
    return MFnDependencyNode(node).name();
}

i32 find_parent(const MDagPath& path, const HIERARCHY_INDEX& translated) {
    const MFnDagNode node(path);
    if (node.parentCount() == 0) return -1;
    MObject parent = node.parent(0);
    MFnDagNode parent_node(parent);
    MDagPath parent_path;
    if (!parent_node.getPath(parent_path)) return -1;
    return translated.find(parent_path);
}

std::size_t hash_of(const MDagPath& path) {
    return std::hash<std::string_view>()(path.fullPathName().asChar());
}

template<class TRACK>
OWNED<TRACK> new_track(u32 key_reserve) {
    OWNED<TRACK> track = make_owned<TRACK>();
    track->key_times().reserve(key_reserve);
    track->key_values().reserve(key_reserve);
    return track;
}

// The sum of zero times each number is a number only when all of them are. What rounds to an infinity in
// the file counts as one.
bool is_finite(const MMatrix& matrix) {
    double sum = 0.0;
    for (const auto& row : matrix.matrix) {
        for (const double number : row) sum += static_cast<double>(static_cast<f32>(number)) * 0.0;
    }
    return sum == 0.0;
}

} // namespace

void HIERARCHY_INDEX::add(const MDagPath& path, i32 index) {
    std::vector<ENTRY>& entries = my_entries[hash_of(path)];
    const auto same = std::ranges::find_if(entries, [&](const ENTRY& entry) { return entry.path == path; });
    if (same != entries.end())
        same->index = index;
    else
        entries.push_back({path, index});
}

i32 HIERARCHY_INDEX::find(const MDagPath& path) const {
    const auto entries = my_entries.find(hash_of(path));
    if (entries == my_entries.end()) return -1;
    for (const ENTRY& entry : entries->second) {
        if (entry.path == path) return entry.index;
    }
    return -1;
}

bool translate_node(const MDagPath& path, VOR2& root, HIERARCHY_INDEX& translated, i32 index, u32 key_reserve) {
    ARRAY<VOR2_MATRIX_NODE>& nodes = root.matrix_hierarchy.nodes;
    const u64 wanted = static_cast<u64>(index) + 1;
    if (nodes.size() < wanted) nodes.grow_by(wanted - nodes.size());
    VOR2_MATRIX_NODE& node = nodes[static_cast<u64>(index)];
    node.name = to_text(name_of(path));
    node.parent_index = find_parent(path, translated);
    node.position_track = new_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(key_reserve);
    node.rotation_track = new_track<VOR2_ANIMATABLE_QUATERNION_SLERP>(key_reserve);
    translated.add(path, index);
    return true;
}

NODE_SAMPLER::NODE_SAMPLER(VOR2& root, const MDagPathArray& nodes) {
    struct HOST_NODE {
        unsigned int index = 0;
        const MFnTransform* transform = nullptr;
    };
    std::unordered_map<std::u16string_view, HOST_NODE> last_of_name;
    std::deque<TEXT> names;
    for (unsigned int i = 0; i < nodes.length(); ++i) {
        const TEXT& name = names.emplace_back(to_text(name_of(nodes[i])));
        last_of_name[name.view()].index = i;
    }
    ARRAY<VOR2_MATRIX_NODE>& hierarchy = root.matrix_hierarchy.nodes;
    my_nodes.resize(static_cast<std::size_t>(hierarchy.size()));
    for (std::size_t i = 1; i < my_nodes.size(); ++i) {
        VOR2_MATRIX_NODE& node = hierarchy[i];
        const auto host_node = last_of_name.find(node.name.view());
        if (host_node == last_of_name.end()) continue;
        HOST_NODE& followed = host_node->second;
        if (followed.transform == nullptr)
            followed.transform = std::addressof(my_transforms.emplace_back(nodes[followed.index]));
        my_nodes[i] = {followed.transform, node.position_track.get(), node.rotation_track.get()};
    }
}

bool NODE_SAMPLER::sample_node(u32 index, double sample, double sample_at) {
    return add_sample(my_nodes[index], to_file_matrix, sample, sample_at);
}

bool NODE_SAMPLER::sample_node_scaled(u32 index, double sample, double sample_at) {
    return add_sample(my_nodes[index], to_file_matrix_scaled, sample, sample_at);
}

bool NODE_SAMPLER::add_sample(const FOLLOWED& node, CONVERSION convert, double sample, double sample_at) {
    if (node.transform == nullptr) return true;
    const MMatrix orj_mat = node.transform->transformation().asMatrix();
    if (!is_finite(orj_mat)) {
        MGlobal::displayError(MString("The transform of ") + node.transform->name() + " isn't finite at " +
                              sample / sample_at + " seconds");
        return false;
    }
    const MATRIX_3X4 world_mat = convert(orj_mat);
    const f32 time = static_cast<f32>(sample / sample_at);
    node.positions->add_key(world_mat.translation(), time);
    node.rotations->add_key(QUATERNION(world_mat), time);
    return true;
}

} // namespace VOR2_EXPORTER_MAYA
