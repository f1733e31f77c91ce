#include "format/scene/matrix_hierarchy.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

void VOR2_MATRIX_NODE::update_world_matrix() {
    if (!position_track && !rotation_track && !scale_track) return;
    QUATERNION rotation = QUATERNION::identity();
    if (rotation_track) rotation_track->value(rotation);
    MATRIX_3X4 local = rotation.matrix();
    if (scale_track) {
        VECTOR_3 scale;
        scale_track->value(scale);
        local.set_x_axis(local.column(0) * scale.x);
        local.set_y_axis(local.column(1) * scale.y);
        local.set_z_axis(local.column(2) * scale.z);
    }
    VECTOR_3 position{0.0F, 0.0F, 0.0F};
    if (position_track) position_track->value(position);
    local.set_translation(position);
    world_matrix = parent_matrix != nullptr ? compose(local, *parent_matrix) : local;
}

VOR2_MATRIX_HIERARCHY::VOR2_MATRIX_HIERARCHY(const VOR2_MATRIX_HIERARCHY& source)
    : ANIMATED_RECORD(source), nodes(source.nodes) {
    link_parents();
}

VOR2_MATRIX_HIERARCHY& VOR2_MATRIX_HIERARCHY::operator=(const VOR2_MATRIX_HIERARCHY& source) {
    if (this == &source) return *this;
    nodes = source.nodes;
    link_parents();
    return *this;
}

bool VOR2_MATRIX_HIERARCHY::load(VOR2_INPUT_BUFFER& buffer, f32 version) {
    const bool loaded = RECORDED::load(buffer, version);
    link_parents();
    return loaded;
}

void VOR2_MATRIX_HIERARCHY::link_parents() noexcept {
    for (u64 i = 0; i < nodes.size(); ++i) {
        const i32 parent = nodes[i].parent_index;
        const bool stands_before = parent >= 0 && static_cast<u64>(parent) < i;
        nodes[i].parent_matrix = stands_before ? &nodes[static_cast<u64>(parent)].world_matrix : nullptr;
    }
}

template struct RECORD_OPERATIONS<VOR2_MATRIX_NODE>;
template struct RECORD_OPERATIONS<VOR2_MATRIX_HIERARCHY>;

} // namespace VOR2_LOADER
