#include "format/geometry/weighted_mesh.h"

// Eight lanes are handed over only where the call is inlined, so that how calls hand them over can't differ.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wpsabi"
#endif

namespace VOR2_LOADER {
namespace {

VOR2_ALWAYS_INLINE LANES_8 column(const BONE_PALETTE::BONE& bone, int c) {
    LANES_8 lanes;
    std::memcpy(&lanes, bone.columns[c], sizeof lanes);
    return lanes;
}

/// The same number in all four lanes of each half.
VOR2_ALWAYS_INLINE LANES_8 halves(f32 lower, f32 upper) {
#if defined(__GNUC__)
    // Two steps, each of which the processor has an instruction for.
    const LANES_4 low{lower, lower, lower, lower}, high{upper, upper, upper, upper};
    return __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7);
#else
    return LANES_8{lower, lower, lower, lower, upper, upper, upper, upper};
#endif
}

/// Both vectors turned by the 3 by 3 part.
VOR2_ALWAYS_INLINE LANES_8 turned(const BONE_PALETTE::BONE& bone, const VECTOR_3& lower, const VECTOR_3& upper) {
    return column(bone, 0) * halves(lower.x, upper.x) + column(bone, 1) * halves(lower.y, upper.y) +
           column(bone, 2) * halves(lower.z, upper.z);
}

VOR2_ALWAYS_INLINE VECTOR_3 lower_half(const LANES_8& lanes) {
    return {lanes[0], lanes[1], lanes[2]};
}
VOR2_ALWAYS_INLINE VECTOR_3 upper_half(const LANES_8& lanes) {
    return {lanes[4], lanes[5], lanes[6]};
}

VOR2_ALWAYS_INLINE void skin_pairs(VOR2_WEIGHTED_MESH_VERT& vertex, const BONE_PALETTE& palette) {
    for (u64 j = 0; j < vertex.binormal_tangents.size(); ++j) {
        LANES_8 sum = halves(0.0F, 0.0F);
        for (const VOR2_BONE_WEIGHT_DATA& weight : vertex.bone_weights) {
            const BONE_PALETTE::BONE* bone = palette.bone(weight.bone_index);
            if (bone == nullptr || j >= weight.local_binormal_tangents.size()) continue;
            const VOR2_BINORMAL_TANGENT& local = weight.local_binormal_tangents[j];
            sum += turned(*bone, local.binormal, local.tangent) * weight.weight;
        }
        vertex.binormal_tangents[j].binormal = lower_half(sum);
        vertex.binormal_tangents[j].tangent = upper_half(sum);
        vertex.binormal_tangents[j].normalise_pair();
    }
}

/// What `VOR2_WEIGHTED_MESH_VERT::skin` does, with the position in one half and the normal in the other.
VOR2_ALWAYS_INLINE void skin_all(ARRAY<VOR2_WEIGHTED_MESH_VERT>& vertices, const BONE_PALETTE& palette) {
    for (VOR2_WEIGHTED_MESH_VERT& vertex : vertices) {
        LANES_8 sum = halves(0.0F, 0.0F);
        for (const VOR2_BONE_WEIGHT_DATA& weight : vertex.bone_weights) {
            const BONE_PALETTE::BONE* bone = palette.bone(weight.bone_index);
            if (bone == nullptr) continue;
            sum += (turned(*bone, weight.local_position, weight.local_normal) + column(*bone, 3)) * weight.weight;
        }
        vertex.position = lower_half(sum);
        vertex.normal = upper_half(sum).normalised();
        if (!vertex.binormal_tangents.empty()) skin_pairs(vertex, palette);
    }
}

VOR2_WIDE_TARGET void skin_all_wide(ARRAY<VOR2_WEIGHTED_MESH_VERT>& vertices, const BONE_PALETTE& palette) {
    skin_all(vertices, palette);
}

} // namespace

BONE_PALETTE::BONE_PALETTE(const VOR2_MATRIX_HIERARCHY& hierarchy) {
    my_bones.grow_by(hierarchy.nodes.size());
    BONE* bone = my_bones.data();
    for (const VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        for (int c = 0; c < 4; ++c) {
            for (int r = 0; r < 3; ++r) {
                bone->columns[c][r] = node.world_matrix.m[r][c];
                bone->columns[c][r + 4] = c < 3 ? node.world_matrix.m[r][c] : -0.0F;
            }
            bone->columns[c][3] = bone->columns[c][7] = 0.0F;
        }
        ++bone;
    }
}

void VOR2_WEIGHTED_MESH::skin(const BONE_PALETTE& palette) {
    static const bool is_wide = has_wide_lanes();
    is_wide ? skin_all_wide(vertices, palette) : skin_all(vertices, palette);
}

void VOR2_WEIGHTED_MESH::skin(const VOR2_MATRIX_HIERARCHY& hierarchy) {
    // A few vertices are posed before the matrices of many nodes are laid out.
    if (vertices.size() >= hierarchy.nodes.size()) return skin(BONE_PALETTE(hierarchy));
    for (VOR2_WEIGHTED_MESH_VERT& vertex : vertices) vertex.skin(hierarchy);
}

} // namespace VOR2_LOADER
