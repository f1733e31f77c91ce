#include "tests/format/format_test.h"

#include <limits>

namespace VOR2_LOADER {
namespace {

BYTES default_file() {
    BYTES lengths;
    lengths.words({23});
    for (int i = 0; i < 23; ++i) lengths.words({0});
    return BYTES()
        .words({MAGIC_WORD})
        .chunk(0, BYTES().words({0x3F947AE1}).text(u"NATIVE WIN32").text(u""))
        .chunk(1, lengths)
        .chunk(2, BYTES().floats({0, 0}).words({0, 0}).f64s(0))
        .chunk(22, BYTES().words({0}))
        .chunk(12, BYTES().words({0}));
}

TEST(root, default_scene_is_written_byte_for_byte) {
    EXPECT_EQ(default_file().size(), 204U);
    EXPECT_EQ(saved_scene(VOR2()), default_file().data);
}

TEST(root, full_scene_survives_saving_copying_and_loading) {
    VOR2 root;
    root.inf.creator = TEXT(u"Maya v2016.00  ");
    root.environment.time_range = {1, 2};
    root.environment.sample_rate = 60;
    root.ambient_light = make_owned<VOR2_AMBIENT_LIGHT>();
    root.ambient_light->colour_track = make_owned<VOR2_ANIMATABLE_COLOUR_LINEAR>();
    root.ambient_light->colour_track->add_key({1, 2, 3, 4}, 0.5F);
    root.global_light_tint = make_owned<VOR2_GLOBAL_LIGHT_TINT>();
    root.camera_man.camera_track = make_owned<VOR2_ANIMATABLE_INT32_RLE>();
    root.camera_man.camera_track->add_key(7, 0);
    root.matrix_hierarchy.nodes.grow_by(2);
    root.matrix_hierarchy.nodes[1].parent_index = 0;
    root.matrix_hierarchy.nodes[1].name = TEXT(u"\u4e2d\u00e9");
    const std::vector<u8> bytes = saved_scene(root);

    VOR2 loaded;
    ASSERT_TRUE(load_scene(loaded, bytes));
    EXPECT_EQ(saved_scene(loaded), bytes);
    const VOR2 copy(loaded);
    EXPECT_EQ(copy.matrix_hierarchy.nodes[1].parent_matrix, &copy.matrix_hierarchy.nodes[0].world_matrix);
    VOR2 moved(std::move(loaded));
    loaded = std::move(moved);
    EXPECT_EQ(loaded.matrix_hierarchy.nodes[1].parent_matrix, &loaded.matrix_hierarchy.nodes[0].world_matrix);
    EXPECT_EQ(saved_scene(loaded), bytes);
    loaded.clear();
    EXPECT_EQ(loaded.ambient_light, nullptr);
    EXPECT_EQ(saved_scene(copy), bytes);
}

TEST(root, instances_are_made_by_chunk_and_equal_their_own_kind_alone) {
    const OWNED<VOR2_INSTANCE> plain = VOR2_INSTANCE::make_of_chunk(VOR2_INSTANCE::CHUNK_ID);
    const OWNED<VOR2_INSTANCE> geometry = VOR2_INSTANCE::make_of_chunk(VOR2_GEOM_INSTANCE::CHUNK_ID);
    ASSERT_TRUE(plain && geometry);
    EXPECT_TRUE(plain->equals(*plain->clone()) && geometry->equals(*geometry->clone()));
    EXPECT_FALSE(plain->equals(*geometry) || geometry->equals(*plain));
    EXPECT_EQ(VOR2_INSTANCE::make_of_chunk(VOR2_INF::CHUNK_ID), nullptr);
}

TEST(root, chunks_come_in_any_order_and_number) {
    BYTES file = file_of_version(1.16F);
    const BYTES tint_1 = BYTES().words({1, 0, 0}).floats({0}).words({1}).floats({0}).words({1}).floats({5}).words({0});
    const BYTES tint_2 = BYTES().words({0, 0});
    file.chunk(3, tint_1).chunk(24, BYTES().words({1, 2, 3})).chunk(0xFFFFFFFF, BYTES()).chunk(0x100, BYTES());
    file.chunk(12, BYTES().words({0})).chunk(3, tint_2);
    VOR2 root;
    ASSERT_TRUE(load_scene(root, file.data));
    ASSERT_NE(root.global_light_tint.get(), nullptr);
    EXPECT_EQ(root.global_light_tint->float_track, nullptr) << "the second chunk replaces the first";
    EXPECT_TRUE(load_scene(root, BYTES().words({MAGIC_WORD}).data)) << "no chunk at all is an empty scene";
    EXPECT_EQ(root.global_light_tint, nullptr);
}

TEST(root, array_lengths_are_read_by_version_and_never_trusted) {
    for (const auto& [version, words] : {std::pair{1.09F, 19}, {1.10F, 22}, {1.12F, 24}}) {
        BYTES lengths;
        for (int i = 0; i < words; ++i) lengths.words({i == 3 ? 0xFFFFFFFFU : 9U});
        VOR2 root;
        EXPECT_TRUE(load_scene(root, file_of_version(version).chunk(1, lengths).data)) << version;
    }
}

TEST(root, a_file_that_tells_no_version_is_as_old_as_can_be) {
    BYTES node = BYTES().words({1}).text(u"hip").words({0xFFFFFFFF, 0, 0});
    for (int i = 0; i < 16; ++i) node.floats({static_cast<f32>(i)});
    VOR2 root;
    ASSERT_TRUE(load_scene(root, BYTES().words({MAGIC_WORD}).chunk(12, node.text(u"x")).data));
    EXPECT_EQ(root.matrix_hierarchy.nodes[0].world_matrix.m[1][3], 13);
    EXPECT_EQ(root.matrix_hierarchy.nodes[0].extra_text, TEXT(u"x"));
}

TEST(root, older_files_keep_their_version_in_memory_and_are_saved_as_the_newest) {
    VOR2 root;
    root.environment.sample_rate = 99;
    ASSERT_TRUE(load_scene(root, file_of_version(1.15F).chunk(2, BYTES().floats({0, 1}).words({0, 0})).data));
    EXPECT_EQ(root.inf.version, 1.15F);
    EXPECT_EQ(root.environment.sample_rate, 0);
    VOR2 again;
    ASSERT_TRUE(load_scene(again, saved_scene(root)));
    EXPECT_EQ(again.inf.version, 1.16F);
}

TEST(root, what_is_no_scene_is_refused_with_a_reason) {
    const BYTES good = file_of_version(1.16F);
    const BYTES longer = BYTES().bytes(good).words({13, 12}).words({0});
    const f32 nan = std::numeric_limits<f32>::quiet_NaN();
    const std::pair<const char*, BYTES> cases[] = {
        {"empty", BYTES()},
        {"didn't finish", BYTES().words({0})},
        {"no scene file", BYTES().words({0x12345678})},
        {"newer", file_of_version(1.17F)},
        {"newer", file_of_version(nan)},
        {"doesn't fit", BYTES().bytes(good).words({7, 24})},
        {"doesn't fit", longer},
        {"ends within", BYTES().bytes(good).words({8})},
        {"ends within", BYTES().bytes(good).chunk(2, BYTES().words({0}))},
        {"type number 9", BYTES().bytes(good).chunk(4, BYTES().words({1, 9}))},
        {"count of 4000000000", BYTES().bytes(good).chunk(12, BYTES().words({4000000000U}))},
    };
    for (const auto& [why, bytes] : cases) {
        VOR2 root;
        VOR2_INPUT_BUFFER buffer(std::span<const u8>(bytes.data), TEXT());
        EXPECT_FALSE(root.load(buffer, true));
        EXPECT_NE(buffer.problem().find(why), std::string::npos) << buffer.problem() << " for " << why;
    }
    VOR2_INPUT_BUFFER missing(TEXT(u"/nowhere/at/all.vr2"));
    EXPECT_EQ(missing.end, nullptr);
    VOR2 root;
    EXPECT_FALSE(root.load(missing, true));
    EXPECT_FALSE(root.save(TEXT(u"/nowhere/at/all.vr2")));
}

} // namespace
} // namespace VOR2_LOADER
