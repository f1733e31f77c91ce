#pragma once

#include "format/core/record.h"

namespace VOR2_LOADER {

class VOR2;

/// Chunk 1: how long each of the root's arrays will be, so that a reader can reserve them before the
/// elements arrive. The counts are no promise: nothing compares them with the chunks that follow.
/// Which of them a file holds is decided by its version alone.
class VOR2_ARRAY_LENGTH_HELPER
    : public RECORDED<VOR2_ARRAY_LENGTH_HELPER, VOR2_CHUNK_OBJECT, VOR2_SERIALISABLE_OBJECT> {
public:
    static constexpr u32 COUNT_OF_COUNTS = 23;

    u32 count_of_counts = COUNT_OF_COUNTS; ///< always written as 23; what a file says is passed over
    u32 light_count = 0, camera_count = 0, rigid_count = 0, anim_mesh_count = 0, morph_mesh_count = 0;
    u32 weighted_mesh_count = 0, bezier_spline_object_count = 0, helper_count = 0, material_count = 0;
    u32 light_instance_count = 0, camera_instance_count = 0, rigid_instance_count = 0;
    u32 anim_mesh_instance_count = 0, morph_mesh_instance_count = 0, weighted_mesh_instance_count = 0;
    u32 bezier_spline_instance_count = 0, helper_instance_count = 0;
    u32 xref_15_count = 0, xref_20_count = 0, xref_object_count = 0, xref_object_instance_count = 0;
    u32 xref_speedtree_count = 0, speedtree_instance_count = 0;

    VOR2_ARRAY_LENGTH_HELPER() = default;
    /// The sizes of the root's arrays, null entries counted.
    explicit VOR2_ARRAY_LENGTH_HELPER(const VOR2& root);

    static constexpr u32 CHUNK_ID = 1;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) override;
    /// Reserves each of the root's arrays to its count, but room for no more than `most` elements in all.
    void apply_to(VOR2& root, u64 most = ~u64{0}) const;

    static constexpr auto record() {
        using C = VOR2_ARRAY_LENGTH_HELPER;
        return RECORD("VOR2_ARRAY_LENGTH_HELPER", value("count_of_counts", &C::count_of_counts),
                      value("light_count", &C::light_count), value("camera_count", &C::camera_count),
                      value("rigid_count", &C::rigid_count), value("anim_mesh_count", &C::anim_mesh_count),
                      value("morph_mesh_count", &C::morph_mesh_count),
                      value("weighted_mesh_count", &C::weighted_mesh_count),
                      value("bezier_spline_object_count", &C::bezier_spline_object_count),
                      value("helper_count", &C::helper_count), value("material_count", &C::material_count),
                      value("light_instance_count", &C::light_instance_count),
                      value("camera_instance_count", &C::camera_instance_count),
                      value("rigid_instance_count", &C::rigid_instance_count),
                      value("anim_mesh_instance_count", &C::anim_mesh_instance_count),
                      value("morph_mesh_instance_count", &C::morph_mesh_instance_count),
                      value("weighted_mesh_instance_count", &C::weighted_mesh_instance_count),
                      value("bezier_spline_instance_count", &C::bezier_spline_instance_count),
                      value("helper_instance_count", &C::helper_instance_count),
                      value("xref_15_count", &C::xref_15_count), value("xref_20_count", &C::xref_20_count).since(1.10F),
                      value("xref_object_count", &C::xref_object_count).since(1.10F),
                      value("xref_object_instance_count", &C::xref_object_instance_count).since(1.10F),
                      value("xref_speedtree_count", &C::xref_speedtree_count).since(1.12F),
                      value("speedtree_instance_count", &C::speedtree_instance_count).since(1.12F));
    }
};

} // namespace VOR2_LOADER
