#include "tests/format/format_test.h"

namespace VOR2_LOADER {
namespace {

constexpr u32 DEPTH = 100000;

/// Normal maps one within the other, each the first map of the one around it.
BYTES deep_maps() {
    BYTES bytes;
    for (u32 i = 0; i + 1 < DEPTH; ++i) bytes.text(u"").text(u"").words({0, 1, 1});
    bytes.text(u"").text(u"").words({0, 0, 0}).words({0, 0, 0, DEPTH});
    for (u32 i = 0; i + 1 < DEPTH; ++i) bytes.words({0}).words({0, 0, 1, i});
    return bytes;
}

/// Counts what it is told of.
class COUNTING_VISITOR : public RECORD_VISITOR {
public:
    u32 objects = 0, open = 0, most_open = 0;
    void boolean(std::string_view, bool) override {}
    void signed_number(std::string_view, i32) override {}
    void unsigned_number(std::string_view, u32) override {}
    void real(std::string_view, f32) override {}
    void long_real(std::string_view, f64) override {}
    void text(std::string_view, const TEXT&) override {}
    void tuple(std::string_view, std::span<const f32>) override {}
    void reals(std::string_view, std::span<const f32>, u32) override {}
    void signed_numbers(std::string_view, std::span<const i32>) override {}
    void unsigned_numbers(std::string_view, std::span<const u32>) override {}
    void begin_object(std::string_view, std::string_view) override {
        ++objects;
        most_open = std::max(most_open, ++open);
    }
    void end_object() override { --open; }
    void absent(std::string_view) override {}
    void begin_list(std::string_view, u64) override {}
    void end_list() override {}
};

TEST(material_maps, nest_to_any_depth_without_recursion) {
    const BYTES bytes = deep_maps();
    VOR2_STANDARD_MATERIAL material;
    material.maps.push_back(VOR2_MATERIAL_MAP::make(VOR2_NORMAL_MATERIAL_MAP::KIND));
    VOR2_MATERIAL_MAP& map = *material.maps[0];
    load_whole(map, bytes);
    EXPECT_EQ(saved_record(map), bytes.data);
    map.set_time(1);

    const OWNED<VOR2_MATERIAL> copy = material.clone();
    EXPECT_TRUE(copy->equals(material));
    auto& copied = static_cast<VOR2_NORMAL_MATERIAL_MAP&>(*static_cast<VOR2_STANDARD_MATERIAL&>(*copy).maps[0]);
    EXPECT_EQ(saved_record(copied), bytes.data);
    COUNTING_VISITOR visitor;
    copied.describe(visitor);
    EXPECT_EQ(visitor.open, 0U);
    EXPECT_EQ(visitor.most_open, DEPTH) << "all maps but the outermost, and a channel direction";

    VOR2_NORMAL_MATERIAL_MAP* innermost = &copied;
    while (innermost->first_map) innermost = static_cast<VOR2_NORMAL_MATERIAL_MAP*>(innermost->first_map.get());
    innermost->normal_map_word = 1;
    EXPECT_FALSE(copied.equals(map));
    copied = *static_cast<VOR2_NORMAL_MATERIAL_MAP*>(copied.first_map.get());
    EXPECT_NE(saved_record(copied), bytes.data) << "a map can take the place of the one that holds it";
}

TEST(material_maps, branches_keep_their_order_and_move_with_the_clock) {
    const auto leaf = [](f32 value) {
        OWNED<VOR2_MATERIAL_MAP> map = VOR2_MATERIAL_MAP::make(0);
        map->map_value = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        map->map_value->add_key(value, 0);
        map->map_value->add_key(value + 1, 1);
        return map;
    };
    VOR2_NORMAL_MATERIAL_MAP top;
    auto inner = make_owned<VOR2_NORMAL_MATERIAL_MAP>();
    inner->first_map = leaf(1);
    inner->second_map = leaf(2);
    inner->normal_map_word = 7;
    top.first_map = std::move(inner);
    top.second_map = leaf(3);
    top.set_time(0.5F);
    const auto& moved = static_cast<const VOR2_NORMAL_MATERIAL_MAP&>(*top.first_map);
    EXPECT_EQ(moved.first_map->map_value->value(), 1.5F);
    EXPECT_EQ(moved.second_map->map_value->value(), 2.5F);
    EXPECT_EQ(top.second_map->map_value->value(), 3.5F);
    top.advance(0.25F);
    EXPECT_EQ(moved.second_map->map_value->value(), 2.75F);

    VOR2_NORMAL_MATERIAL_MAP copy(top);
    EXPECT_TRUE(copy == top);
    const std::vector<u8> bytes = saved_record(top);
    VOR2_NORMAL_MATERIAL_MAP loaded;
    load_whole(loaded, BYTES{bytes});
    EXPECT_EQ(saved_record(loaded), bytes);
    copy.first_map->name = TEXT(u"other");
    EXPECT_TRUE(copy == top) << "names take no part";
    copy.second_map.reset();
    EXPECT_FALSE(copy == top);
    copy.second_map = VOR2_MATERIAL_MAP::make(1);
    EXPECT_FALSE(copy == top) << "a map of another kind";
}

TEST(materials, unknown_kinds_fail_with_a_reason) {
    const std::pair<const char*, BYTES> cases[] = {
        {"no class of the lights has the kind 3", BYTES().chunk(5, BYTES().words({3}))},
        {"no class of the materials has the kind 2", BYTES().chunk(13, BYTES().words({2}))},
        {"no array holds instances of the kind 10", BYTES().chunk(16, BYTES().words({10}))},
        {"type number 2", BYTES().chunk(2, BYTES().floats({0, 0}).words({0, 1, 2}))},
    };
    for (const auto& [why, chunk] : cases) {
        VOR2 root;
        VOR2_INPUT_BUFFER buffer(std::span<const u8>(file_of_version(1.16F).bytes(chunk).data), TEXT());
        EXPECT_FALSE(root.load(buffer, true)) << why;
        EXPECT_NE(buffer.problem().find(why), std::string::npos) << buffer.problem();
    }
}

} // namespace
} // namespace VOR2_LOADER
