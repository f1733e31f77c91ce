#pragma once

/// Generated scenes in three sizes, the same at every run.

#include "format/vor2.h"

#include <cmath>
#include <filesystem>
#include <string>

namespace bench {

using namespace VOR2_LOADER;

/// A name in the system's folder for temporary files.
inline std::string temporary_path(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}
inline TEXT text_of(const std::string& name) {
    return TEXT(std::u16string(name.begin(), name.end()));
}

/// A hierarchy of chains of ten nodes, each with `keys` keys on position and rotation.
inline void add_nodes(VOR2& root, u32 nodes, u32 keys) {
    ARRAY<VOR2_MATRIX_NODE>& list = root.matrix_hierarchy.nodes;
    list.grow_by(nodes);
    for (u32 n = 0; n < nodes; ++n) {
        VOR2_MATRIX_NODE& node = list[n];
        node.name = text_of("joint" + std::to_string(n));
        node.parent_index = n % 10 == 0 ? -1 : static_cast<i32>(n) - 1;
        auto position = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        auto rotation = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
        for (u32 k = 0; k < keys; ++k) {
            const f32 time = static_cast<f32>(k) / 60.0F;
            const f32 angle = std::sin(time + static_cast<f32>(n));
            position->add_key({angle, 1.0F, time}, time);
            rotation->add_key({std::sin(angle / 2), 0.0F, 0.0F, std::cos(angle / 2)}, time);
        }
        node.position_track = std::move(position);
        node.rotation_track = std::move(rotation);
    }
    root.matrix_hierarchy.link_parents();
    root.environment.time_range = {0.0F, static_cast<f32>(keys) / 60.0F};
}

} // namespace bench
