#include "tests/format/every_record.h"
#include "tests/format/format_test.h"

namespace VOR2_LOADER {
namespace {

TEST(every_record, is_read_in_every_version_and_written_in_the_newest) {
    for (const f32 version : telling_versions()) {
        for (const bool full : {false, true}) {
            for (const u32 length : {0U, 3U}) {
                VOR2 root;
                VOR2_INPUT_BUFFER buffer(std::span<const u8>(EVERY_RECORD{version, version, full, length}.file().data),
                                         TEXT());
                ASSERT_TRUE(root.load(buffer, false)) << version << buffer.problem();
                EXPECT_EQ(root.inf.version, version);
                const EVERY_RECORD newest{CURRENT_VERSION, version, full, length};
                EXPECT_EQ(saved_scene(root), newest.file().data) << version << full << length;
            }
        }
    }
}

TEST(every_record, survives_copying_clearing_and_loading_again) {
    const std::vector<u8> bytes = EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, true, 40}.file().data;
    VOR2 root;
    ASSERT_TRUE(load_scene(root, bytes));
    VOR2 copy(root);
    EXPECT_EQ(copy.weighted_meshes[0].get() == root.weighted_meshes[0].get(), false);
    EXPECT_TRUE(*copy.weighted_meshes[0] == *root.weighted_meshes[0]);
    EXPECT_TRUE(*copy.anim_meshes[0] == *root.anim_meshes[0]);
    EXPECT_TRUE(copy.materials[1]->equals(*root.materials[1]));
    EXPECT_TRUE(copy.rigid_instances[0]->equals(*root.rigid_instances[0]));
    root.set_time(0.5F);
    EXPECT_EQ(saved_scene(copy), bytes) << "the copy has tracks of its own";
    EXPECT_NE(saved_scene(root), bytes);
    ASSERT_TRUE(load_scene(root, bytes));
    EXPECT_EQ(saved_scene(root), bytes) << "loading clears first";
    copy = static_cast<const VOR2&>(copy); // itself
    EXPECT_EQ(saved_scene(copy), bytes);
    copy.clear();
    EXPECT_TRUE(copy.lights.empty() && copy.speedtree_instances.empty() && copy.materials.empty());
}

/// The fraction at which the box tracks of an array's first object stand.
f32 box_fraction(const auto& objects) {
    return objects[0]->box_track->cursor_fraction();
}

TEST(every_record, follows_the_clock_but_for_some) {
    VOR2 root;
    ASSERT_TRUE(load_scene(root, EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION}.file().data));
    root.set_time(1);
    for (const f32 moved :
         {box_fraction(root.rigids),
          box_fraction(root.anim_meshes),
          box_fraction(root.morph_meshes),
          box_fraction(root.weighted_meshes),
          box_fraction(root.xref_speedtrees),
          box_fraction(root.light_instances),
          box_fraction(root.rigid_instances),
          box_fraction(root.anim_mesh_instances),
          box_fraction(root.morph_mesh_instances),
          box_fraction(root.weighted_mesh_instances),
          box_fraction(root.bezier_spline_instances),
          box_fraction(root.helper_instances),
          box_fraction(root.xref_object_instances),
          box_fraction(root.speedtree_instances),
          root.lights[0]->shadow_params.shadow_map_params.state_track_3->cursor_fraction(),
          static_cast<VOR2_CAMERA_MOTION_BLUR_EFFECT&>(*root.cameras[0]->effects[2]).state_track_5->cursor_fraction(),
          static_cast<VOR2_SHADER_MATERIAL&>(*root.materials[0]).vector_4_params[1].track->cursor_fraction(),
          static_cast<VOR2_STANDARD_MATERIAL&>(*root.materials[1]).maps[1]->map_value->cursor_fraction(),
          root.environment.map->map_value->cursor_fraction(),
          root.camera_man.camera_track->cursor_fraction(),
          root.bezier_spline_objects[0]->anim_splines[1].point_tracks[1]->cursor_fraction()}) {
        EXPECT_EQ(moved, 1);
    }
    for (const f32 kept :
         {box_fraction(root.helpers), box_fraction(root.xref_objects), box_fraction(root.camera_instances),
          box_fraction(root.lights), box_fraction(root.cameras), box_fraction(root.bezier_spline_objects),
          root.rigids[0]->extended_properties.float_properties[0].track->cursor_fraction()}) {
        EXPECT_EQ(kept, 0.25F);
    }
}

TEST(every_record, cut_off_anywhere_is_read_in_order_or_refused) {
    const std::vector<u8> bytes = EVERY_RECORD{1.12F, 1.12F, true, 1, true}.file().data;
    u32 loaded = 0;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        VOR2 root;
        const std::vector<u8> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        if (!load_scene(root, cut, true)) continue;
        ++loaded;
    }
    EXPECT_EQ(loaded, 33U) << "a scene ends behind the magic word and behind each of its chunks but the last";
}

TEST(every_record, hostile_words_anywhere_are_read_in_order_or_refused) {
    const std::vector<u8> bytes = EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, true, 1, true}.file().data;
    for (const u32 word : {0xFFFFFFFFU, 0x00010000U}) {
        for (std::size_t at = 4; at + 4 <= bytes.size(); at += 10) {
            std::vector<u8> changed = bytes;
            std::memcpy(&changed[at], &word, sizeof word);
            VOR2 root;
            static_cast<void>(load_scene(root, changed, true));
            root.advance(0.1F);
        }
    }
}

} // namespace
} // namespace VOR2_LOADER
