#include "host/export/file_world.h"

#include "host/export/export_settings.h"
#include "host/export/transform_conversion.h"

namespace VOR2_EXPORTER_MAYA {

FILE_WORLD::FILE_WORLD(const VOR2& root, const NODE_LIST& list) {
    my_paths.append(MDagPath());
    for (unsigned int i = 0; i < list.nodes.length(); ++i) {
        if (!list.indexes_to_skip.contains(i)) my_paths.append(list.nodes[i]);
    }
    const auto& nodes = root.matrix_hierarchy.nodes;
    my_tops.push_back(0);
    for (unsigned int i = 1; i < my_paths.length(); ++i) {
        my_indices[my_paths[i].fullPathName().asChar()] = static_cast<i32>(i);
        const i32 parent = nodes[i].parent_index;
        my_tops.push_back(parent > 0 ? my_tops[static_cast<std::size_t>(parent)] : i);
        if (parent > 0) continue;
        AFFINE axes;
        const double turn = export_settings().rotate_180 ? 1.0 : -1.0;
        axes.columns = {AFFINE::COLUMN{turn, 0, 0}, {0, 1, 0}, {0, 0, turn}, {0, 0, 0}};
        const AFFINE unmoved = axes * in_vertex_axes(host_matrix(my_paths[i]));
        const AFFINE moved(nodes[i].world_matrix);
        for (std::size_t r = 0; r < 3; ++r) axes.columns[3][r] = moved.columns[3][r] - unmoved.columns[3][r];
        my_axes[i] = axes;
    }
}

i32 FILE_WORLD::index_of(const MDagPath& path) const {
    const auto found = my_indices.find(path.fullPathName().asChar());
    return found == my_indices.end() ? -1 : found->second;
}

unsigned int FILE_WORLD::top_of(unsigned int index) const {
    return my_tops[index];
}

AFFINE FILE_WORLD::in_file(unsigned int top, const MMatrix& world) const {
    const auto axes = my_axes.find(top);
    if (axes == my_axes.end()) return in_vertex_axes(world);
    return axes->second * in_vertex_axes(world * my_paths[top].exclusiveMatrix().inverse());
}

} // namespace VOR2_EXPORTER_MAYA
