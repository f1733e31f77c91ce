#include "format/scene/root.h"

namespace VOR2_LOADER {
namespace {

/// The transpose of the 3 by 3 part, without a translation.
MATRIX_3X4 transposed_rotation(const MATRIX_3X4& matrix) {
    MATRIX_3X4 transposed;
    for (int row = 0; row < 3; ++row)
        transposed.set_column(row, {matrix.m[row][0], matrix.m[row][1], matrix.m[row][2]});
    transposed.set_translation({0.0F, 0.0F, 0.0F});
    return transposed;
}

} // namespace

void VOR2::prepare_weighted_meshes() {
    if (weighted_meshes.empty()) return;
    matrix_hierarchy.set_time(environment.time_range.start);
    ARRAY<MATRIX_3X4> inverse_world;
    ARRAY<MATRIX_3X4> inverse_rotation;
    inverse_world.reserve(matrix_hierarchy.nodes.size());
    inverse_rotation.reserve(matrix_hierarchy.nodes.size());
    for (const VOR2_MATRIX_NODE& node : matrix_hierarchy.nodes) {
        inverse_world.push_back(node.world_matrix).invert();
        inverse_rotation.push_back(transposed_rotation(node.world_matrix));
    }
    for (OWNED<VOR2_WEIGHTED_MESH>& mesh : weighted_meshes) {
        if (mesh) mesh->compute_local_data(inverse_world.view(), inverse_rotation.view());
    }
}

} // namespace VOR2_LOADER
