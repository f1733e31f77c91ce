#pragma once

/// `BONE_PALETTE`: the world matrices of all nodes of one pose, laid out for skinning.

#include "format/scene/matrix_hierarchy.h"

namespace VOR2_LOADER {

/// A copy: it doesn't follow the hierarchy.
class BONE_PALETTE {
public:
    /// The columns of a matrix, each twice: the lower half poses points and the upper one directions, whose
    /// translation is a negative zero, which changes no number that it is added to.
    struct alignas(32) BONE {
        f32 columns[4][8];
    };

    explicit BONE_PALETTE(const VOR2_MATRIX_HIERARCHY& hierarchy);
    /// Null for an index that no node has.
    [[nodiscard]] const BONE* bone(i32 index) const noexcept {
        const u32 place = static_cast<u32>(index); // a negative index is far above any size
        return place < my_bones.size() ? my_bones.data() + place : nullptr;
    }

private:
    ARRAY<BONE> my_bones;
};

} // namespace VOR2_LOADER
