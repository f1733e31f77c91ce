// The cursor of a track, through the kind that needs least: plain numbers.

#include "tests/format/format_test.h"

#include <cmath>
#include <limits>

namespace VOR2_LOADER {
namespace {

VOR2_ANIMATABLE_FLOAT32_LINEAR track_with(std::initializer_list<f32> times) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR track;
    f32 value = 0;
    for (const f32 time : times) track.add_key(value++, time);
    return track;
}

/// A track as a file holds it, with any cursor.
VOR2_ANIMATABLE_FLOAT32_LINEAR loaded(u32 index, f32 fraction, std::initializer_list<f32> times,
                                      std::initializer_list<f32> values) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR track;
    load_whole(track, BYTES()
                          .words({index})
                          .floats({fraction})
                          .words({static_cast<u32>(times.size())})
                          .floats(times)
                          .words({static_cast<u32>(values.size())})
                          .floats(values));
    return track;
}

void expect_cursor(const VOR2_ANIMATABLE& track, u32 index, f32 fraction, const char* where) {
    EXPECT_EQ(track.cursor_index(), index) << where;
    EXPECT_FLOAT_EQ(track.cursor_fraction(), fraction) << where;
}

TEST(cursor, clamps_at_the_ends_and_settles_inner_keys_by_direction) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR track = track_with({0, 1, 2});
    track.set_time(1);
    expect_cursor(track, 0, 1, "an inner key from before");
    track.set_time(1.5F);
    expect_cursor(track, 1, 0.5F, "within");
    track.set_time(1);
    expect_cursor(track, 1, 0, "an inner key from behind");
    for (const f32 time : {2.0F, 7.0F, std::numeric_limits<f32>::infinity()}) {
        track.set_time(time);
        expect_cursor(track, 1, 1, "at or past the end");
    }
    for (const f32 time : {0.0F, -7.0F}) {
        track.set_time(time);
        expect_cursor(track, 0, 0, "at or before the start");
    }
    track.set_time(1.25F);
    track.set_time(std::numeric_limits<f32>::quiet_NaN());
    expect_cursor(track, 1, 0.25F, "no time moves nothing");
}

TEST(cursor, fewer_than_two_keys_never_move) {
    for (VOR2_ANIMATABLE_FLOAT32_LINEAR track : {track_with({}), track_with({5})}) {
        track.set_time(9);
        track.advance(9);
        expect_cursor(track, 0, 0, "short");
        EXPECT_EQ(track.current_time(), 0);
    }
}

TEST(cursor, advancing_past_the_end_loops_by_a_short_overshoot_and_restarts_by_a_long_one) {
    const std::pair<f32, f32> cases[] = {{4, 3}, {8, 0}, {1, 10}, {14, 3}, {20.5F, 0}, {-20, 0}, {0.5F, 9.5F}};
    for (const auto& [delta, expected] : cases) {
        VOR2_ANIMATABLE_FLOAT32_LINEAR track = track_with({0, 10});
        track.set_time(9);
        track.advance(delta);
        EXPECT_NEAR(track.current_time(), expected, 1e-5) << delta;
    }
    VOR2_ANIMATABLE_FLOAT32_LINEAR still = track_with({3, 3});
    still.advance(2);
    expect_cursor(still, 0, 1, "keys that span no time stay at their end");
}

TEST(cursor, dense_times_agree_with_a_plain_search) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR track = track_with({-1, 0.25F, 0.5F, 3, 7});
    const f32 keys[] = {-1, 0.25F, 0.5F, 3, 7};
    for (int step = 0; step < 4000; ++step) {
        const f32 time = std::fmod(static_cast<f32>(step) * 7.919F, 10.0F) - 2.0F;
        track.set_time(time);
        const f32 clamped = std::clamp(time, -1.0F, 7.0F);
        int i = 0;
        while (i < 3 && clamped > keys[i + 1]) ++i;
        const f32 expected = static_cast<f32>(i) + (clamped - keys[i]) / (keys[i + 1] - keys[i]);
        ASSERT_NEAR(track.value(), expected, 1e-5) << time;
    }
}

TEST(cursor, of_a_file_is_kept_to_the_bit_and_stays_within_the_keys) {
    for (const u32 index : {0U, 1U, 5U, 0xFFFFFFFFU}) {
        VOR2_ANIMATABLE_FLOAT32_LINEAR track = loaded(index, 0.75F, {0, 1, 2}, {10, 20, 30});
        const std::vector<u8> bytes = saved_record(track);
        EXPECT_EQ(bytes.size(), 12U + 12 + 4 + 12);
        EXPECT_EQ(BYTES().raw(bytes.data(), 8).data, BYTES().words({index}).floats({0.75F}).data);
        const f32 value = track.value();
        EXPECT_TRUE(value >= 10 && value <= 30) << value;
        track.set_time(0.5F);
        EXPECT_FLOAT_EQ(track.value(), 15) << "a stray cursor finds its way back";
    }
}

TEST(cursor, tracks_that_are_not_well_formed_give_orderly_values) {
    EXPECT_EQ(loaded(0, 0.5F, {0, 1}, {}).value(), 0) << "no value at all";
    EXPECT_EQ(loaded(3, 0.5F, {}, {10, 20}).value(), 20) << "fewer values than the cursor says";
    VOR2_ANIMATABLE_FLOAT32_LINEAR equal = loaded(0, 0, {0, 1, 1, 2}, {0, 10, 20, 30});
    equal.set_time(1);
    equal.set_time(1.5F);
    equal.set_time(1);
    EXPECT_TRUE(std::isfinite(equal.value()));
    VOR2_ANIMATABLE_FLOAT32_LINEAR reversed = loaded(0, 0, {2, 1, 0}, {0, 10, 20});
    for (const f32 time : {-1.0F, 0.5F, 1.0F, 1.5F, 3.0F}) {
        reversed.set_time(time);
        reversed.advance(0.1F);
        EXPECT_TRUE(std::isfinite(reversed.value())) << time;
    }
}

} // namespace
} // namespace VOR2_LOADER
