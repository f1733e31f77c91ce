#pragma once

/// The skeleton of a scene: a flat array of nodes, each with the index of its parent.

#include "format/core/entity.h"
#include "format/tracks/extended_properties.h"
#include "format/tracks/track_families.h"

namespace VOR2_LOADER {

/// A joint: where it stands relative to its parent, over time. A node that lacks its position track
/// stands at its parent's origin, and one that lacks its rotation track isn't turned. A node that lacks
/// all three tracks keeps the `world_matrix` that it has, which an old file stored.
class VOR2_MATRIX_NODE : public ANIMATED_RECORD<VOR2_MATRIX_NODE, VOR2_ENTITY, VOR2_INTERNAL_ANIM_OBJECT> {
public:
    i32 parent_index = -1;                            ///< in the same array; negative for a root node
    OWNED<VOR2_ANIMATABLE_VECTOR_3> position_track;   ///< metres, in the parent's space
    OWNED<VOR2_ANIMATABLE_QUATERNION> rotation_track; ///< relative to the parent
    OWNED<VOR2_ANIMATABLE_VECTOR_3> scale_track;      ///< along the node's own axes
    const MATRIX_3X4* parent_matrix = nullptr;        ///< the parent's `world_matrix`; null for a root node
    MATRIX_3X4 world_matrix = MATRIX_3X4::identity(); ///< at the time that the clock stands at
    TEXT extra_text;                                  ///< kept and nothing else
    VOR2_EXTENDED_PROPERTIES extended_properties;

    static constexpr auto record() {
        using C = VOR2_MATRIX_NODE;
        return RECORD("VOR2_MATRIX_NODE", base<VOR2_ENTITY>(), value("parent_index", &C::parent_index),
                      optional("position_track", &C::position_track), optional("rotation_track", &C::rotation_track),
                      optional("scale_track", &C::scale_track).since(1.15F),
                      matrix_columns("world_matrix", &C::world_matrix).read_up_to(1.05F).never_written().not_compared(),
                      text("extra_text", &C::extra_text),
                      object("extended_properties", &C::extended_properties).since(1.04F).result_ignored());
    }
    /// Rebuilds `world_matrix` from the tracks' present values and the parent's matrix.
    void update_world_matrix();
    void moved() { update_world_matrix(); }
};

/// Nodes are updated in array order and read their parents' matrices: a parent stands before its
/// children. `load` and copying set each `parent_matrix`; who adds nodes by hand calls `link_parents`
/// when the array has its final size. A parent index outside the array, or at or behind the node
/// itself, whose matrix wouldn't be up to date, leaves the node without a parent; the index is kept
/// and written back.
class VOR2_MATRIX_HIERARCHY : public ANIMATED_RECORD<VOR2_MATRIX_HIERARCHY, VOR2_INTERNAL_ANIM_OBJECT,
                                                     VOR2_SERIALISABLE_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    ARRAY<VOR2_MATRIX_NODE> nodes;

    VOR2_MATRIX_HIERARCHY() = default;
    VOR2_MATRIX_HIERARCHY(const VOR2_MATRIX_HIERARCHY& source);
    VOR2_MATRIX_HIERARCHY& operator=(const VOR2_MATRIX_HIERARCHY& source);
    VOR2_MATRIX_HIERARCHY(VOR2_MATRIX_HIERARCHY&&) noexcept = default;
    VOR2_MATRIX_HIERARCHY& operator=(VOR2_MATRIX_HIERARCHY&&) noexcept = default;
    ~VOR2_MATRIX_HIERARCHY() override = default;

    static constexpr u32 CHUNK_ID = 12;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        // What a node's own load gave isn't looked at.
        return RECORD("VOR2_MATRIX_HIERARCHY", objects("nodes", &VOR2_MATRIX_HIERARCHY::nodes).load_ignored());
    }
    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) override;
    void clear() { nodes.clear(); }
    void link_parents() noexcept;
};

} // namespace VOR2_LOADER
