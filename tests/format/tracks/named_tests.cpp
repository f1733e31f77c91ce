#include "tests/format/format_test.h"

#include "format/tracks/extended_properties.h"

namespace VOR2_LOADER {
namespace {

using NAMED_FLOAT = VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_FLOAT32>;

NAMED_FLOAT named(const char16_t* name, f32 value) {
    NAMED_FLOAT result;
    result.name = TEXT(name);
    result.track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
    result.track->add_key(value, 0);
    return result;
}

TEST(named_animatable, record_and_copy) {
    NAMED_FLOAT bare;
    bare.name = TEXT(u"a");
    EXPECT_EQ(saved_record(bare), BYTES().text(u"a").words({0}).data);
    bare.set_time(1);
    const NAMED_FLOAT filled = named(u"weight", 3);
    EXPECT_EQ(saved_record(filled),
              BYTES().text(u"weight").words({1, 0, 0, 0, 1}).floats({0}).words({1}).floats({3}).data);
    NAMED_FLOAT copy(filled);
    copy.track->add_key(4, 1);
    copy.set_time(1);
    EXPECT_EQ(filled.track->key_values().size(), 1U) << "a copy owns a track of its own";
    EXPECT_EQ(copy.track->value(), 4);
}

TEST(extended_properties, record_equality_and_copy) {
    VOR2_EXTENDED_PROPERTIES bag;
    EXPECT_EQ(saved_record(bag), BYTES().words({0, 0, 0, 0, 0}).data);
    bag.string_arrays.emplace_back().name = TEXT(u"tags");
    bag.string_arrays[0].strings.push_back(TEXT(u"\u00fcber"));
    bag.string_arrays[0].strings.push_back(TEXT());
    bag.float_properties.push_back(named(u"a", 1));
    bag.float_properties.push_back(named(u"b", 2));
    const BYTES expected = BYTES()
                               .words({1})
                               .text(u"tags")
                               .words({2})
                               .text(u"\u00fcber")
                               .text(u"")
                               .words({0, 2})
                               .raw(saved_record(named(u"a", 1)))
                               .raw(saved_record(named(u"b", 2)))
                               .words({0, 0});
    EXPECT_EQ(saved_record(bag), expected.data);
    VOR2_EXTENDED_PROPERTIES loaded;
    load_whole(loaded, expected);
    EXPECT_EQ(loaded, bag);
    loaded.float_properties[0].track->add_key(9, 9);
    EXPECT_EQ(loaded, bag) << "tracks take no part";
    loaded.string_arrays[0].strings[0] = TEXT(u"\u00dcber");
    EXPECT_FALSE(loaded == bag) << "case counts";
    VOR2_EXTENDED_PROPERTIES swapped(bag);
    std::swap(swapped.float_properties[0], swapped.float_properties[1]);
    EXPECT_FALSE(swapped == bag) << "order counts";
}

} // namespace
} // namespace VOR2_LOADER
