#include "optimise/skeleton.h"

namespace vor2::optimise {
namespace {

using namespace VOR2_LOADER;

bool has_tracks(const VOR2_MATRIX_NODE& node) {
    return node.position_track || node.rotation_track || node.scale_track;
}

} // namespace

std::vector<Joint> walk_order(const VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<double>& point_distances) {
    const auto& nodes = hierarchy.nodes;
    const std::uint32_t count = static_cast<std::uint32_t>(nodes.size());
    // What moves with a node: parents stand before children, so that sizes add up from the end.
    std::vector<std::uint32_t> parent(count, count), size(count, 1), place(count, 0);
    for (std::uint32_t i = count; i-- > 0;) {
        const i32 index = nodes[i].parent_index;
        if (index < 0 || static_cast<std::uint32_t>(index) >= i || !has_tracks(nodes[i])) continue;
        parent[i] = static_cast<std::uint32_t>(index);
        size[parent[i]] += size[i];
    }
    std::vector<Joint> joints(count);
    std::vector<std::uint32_t> next(count, 0); // the place for the next child
    std::uint32_t next_root = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t& free_place = parent[i] < count ? next[parent[i]] : next_root;
        place[i] = free_place;
        free_place += size[i];
        next[i] = place[i] + 1;
        Joint& joint = joints[place[i]];
        joint.node = i;
        if (parent[i] < count) joint.parent = place[parent[i]];
        joint.end = place[i] + size[i];
        joint.has_tracks = has_tracks(nodes[i]);
        joint.point_distance = point_distances[i];
    }
    return joints;
}

} // namespace vor2::optimise
