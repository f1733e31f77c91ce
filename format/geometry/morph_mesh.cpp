#include "format/geometry/morph_mesh.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

void VOR2_MORPH_MESH::update_morph() {
    ARRAY<f32> weights;
    weights.reserve(morph_targets.size());
    for (const auto& target : morph_targets) weights.push_back(target.track ? target.track->value() : 0.0F);
    for (VOR2_MORPH_MESH_VERT& vertex : vertices) {
        vertex.morph_offset = {0.0F, 0.0F, 0.0F};
        for (const VOR2_TARGET_VERT& target : vertex.target_verts) {
            // A negative index is far above any size once it is unsigned.
            const u64 index = static_cast<u32>(target.target_index);
            if (index < weights.size()) vertex.morph_offset += target.offset * weights[index];
        }
    }
}

template struct RECORD_OPERATIONS<VOR2_TARGET_VERT>;
template struct RECORD_OPERATIONS<VOR2_MORPH_MESH_VERT>;
template struct RECORD_OPERATIONS<VOR2_MORPH_MESH>;

} // namespace VOR2_LOADER
