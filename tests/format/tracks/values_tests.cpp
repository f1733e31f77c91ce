// What each kind of track gives between its keys, and the operations on the keys.

#include "tests/format/format_test.h"

#include <cmath>
#include <limits>
#include <random>

namespace VOR2_LOADER {
namespace {

template<class TRACK>
auto value_at(TRACK& track, f32 time) {
    track.set_time(time);
    typename TRACK::VALUE_TYPE value;
    return track.value(value);
}

f32 value_of(VOR2_ANIMATABLE_FLOAT32& track, f32 time) {
    track.set_time(time);
    return track.value();
}

constexpr f32 HALF_ROOT = 0.70710678F;

void expect_quaternion(const QUATERNION& q, f32 x, f32 y, f32 z, f32 w) {
    EXPECT_NEAR(q.x, x, 1e-6);
    EXPECT_NEAR(q.y, y, 1e-6);
    EXPECT_NEAR(q.z, z, 1e-6);
    EXPECT_NEAR(q.w, w, 1e-6);
}

template<class TRACK>
TRACK rotations(std::initializer_list<QUATERNION> keys) {
    TRACK track;
    f32 time = 0;
    for (const QUATERNION& key : keys) track.add_key(key, time++);
    return track;
}

TEST(linear_track, blends_on_a_straight_line_and_holds_beyond_its_ends) {
    VOR2_ANIMATABLE_VECTOR_3_LINEAR track;
    track.add_key({0, 0, 0}, 0);
    track.add_key({2, 4, 6}, 1);
    EXPECT_EQ(value_at(track, 0.25F), VECTOR_3(0.5F, 1.0F, 1.5F));
    EXPECT_EQ(value_at(track, 5), VECTOR_3(2, 4, 6));
    EXPECT_EQ(value_at(track, -5), VECTOR_3(0, 0, 0));
    track.add({1, 1, 1}).multiply(4).subtract({2, 2, 2});
    EXPECT_EQ(track.key_values()[1], VECTOR_3(10, 18, 26));
    VOR2_ANIMATABLE_VECTOR_3_LINEAR other(track);
    track.divide(4);
    other.multiply(0.25F);
    EXPECT_TRUE(track.equals(other));
    EXPECT_EQ(saved_record(track).size(), 12U + 4 * 2 + 4 + 12 * 2);
}

TEST(linear_track, one_value_is_a_constant_whatever_the_cursor_says) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR track;
    for (const f32 time : {0.0F, 1.0F, 2.0F}) track.key_times().push_back(time);
    track.key_values().push_back(7);
    track.set_time(1.5F);
    EXPECT_EQ(track.value(), 7);
    EXPECT_EQ(track.cursor_index(), 1U) << "the cursor moves all the same";
}

TEST(linear_track, each_kind_has_its_own_arithmetic) {
    VOR2_ANIMATABLE_COLOUR_LINEAR colour;
    colour.add_key({1, 2, 3, 4}, 0);
    colour.multiply({2, 0, 1, -1}).scale(0.5F).subtract({0, 1, 0, 0});
    EXPECT_EQ(colour.key_values()[0], VOR2_COLOUR(1, -1, 1.5F, -2));

    VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR box;
    box.add_key({0, 0, 0, 2, 2, 2}, 0);
    box.add_key({4, 4, 4, 8, 8, 8}, 1);
    box.multiply(2);
    EXPECT_EQ(box.key_values()[0], VOR2_BOUNDING_BOX(-1, -1, -1, 3, 3, 3)) << "about its own centre";
    EXPECT_EQ(value_at(box, 1), box.key_values()[1]);
    EXPECT_EQ(value_at(box, 0), box.key_values()[0]);
    box.subtract({1, 1, 1, 2, 2, 2});
    EXPECT_EQ(box.key_values()[0], VOR2_BOUNDING_BOX(-2, -2, -2, 1, 1, 1)) << "corner from corner";

    VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR range;
    range.add_key({0, 10}, 0);
    range.add_key({2, 20}, 1);
    EXPECT_EQ(value_at(range, 0.5F), VOR2_FLOAT32_RANGE(1, 15));
    range.add({1, 2}).subtract({5, -3});
    EXPECT_EQ(range.key_values()[1], VOR2_FLOAT32_RANGE(-2, 25)) << "end from end";

    VOR2_ANIMATABLE_FLOAT32_LINEAR number;
    number.add_key(3, 0);
    number.add_key(-1, 2);
    number.add(5).multiply(3).subtract(4).divide(2);
    EXPECT_EQ(number.key_values()[0], 10);
    EXPECT_EQ(value_of(number, 1.5F), 5.5F);

    VOR2_ANIMATABLE_VECTOR_2_LINEAR flat;
    flat.add_key({1, 2}, 0);
    flat.subtract({3, 1}).multiply(2);
    EXPECT_EQ(flat.key_values()[0], VECTOR_2(-4, 2));

    VOR2_ANIMATABLE_VECTOR_4_LINEAR four;
    four.add_key({1, 2, 3, 4}, 0);
    four.add_key({5, 4, 3, 2}, 1);
    four.add({0, 1, 2, 3}).subtract({1, 1, 1, 1}).divide(0.5F);
    EXPECT_EQ(value_at(four, 0.25F), VECTOR_4(2, 5, 8, 11));

    VOR2_ANIMATABLE_RECTF_LINEAR rectangle;
    rectangle.add_key(VOR2_RECTF(), 0);
    rectangle.add_key({2, 2, 3, 5}, 1);
    EXPECT_EQ(value_at(rectangle, 0.5F), VOR2_RECTF(1, 1, 2, 3));
    rectangle.subtract({1, 0, 0, 2});
    EXPECT_EQ(rectangle.key_values()[1], VOR2_RECTF(1, 2, 3, 3));

    VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR frame;
    frame.add_key({{1, 0, 0}, {0, 0, 1}}, 0);
    frame.add_key({{0, 1, 0}, {0, 0, 1}}, 1);
    EXPECT_EQ(value_at(frame, 0.5F), VOR2_BINORMAL_TANGENT({0.5F, 0.5F, 0}, {0, 0, 1})) << "not of unit length";
}

TEST(step_track, holds_a_value_until_the_cursor_stands_on_the_next_key) {
    VOR2_ANIMATABLE_INT32_RLE track;
    for (const i32 value : {10, 20, 30}) track.add_key(value, static_cast<f32>(value) / 10.0F - 1.0F);
    const std::pair<f32, i32> walk[] = {{0.5F, 10},  {1, 20}, {1.5F, 20}, {1, 20},
                                        {1.99F, 20}, {2, 30}, {9, 30},    {0, 10}};
    for (const auto& [time, expected] : walk) {
        track.set_time(time);
        EXPECT_EQ(track.value(), expected) << time;
    }
    track.add(5).multiply(2).divide(0).subtract(1);
    EXPECT_EQ(track.key_values()[0], 10) << "integers are never offset or scaled";
}

TEST(rotation_track, arc_and_chord) {
    auto arc = rotations<VOR2_ANIMATABLE_QUATERNION_SLERP>({{0, 0, 0, 1}, {0, 0, 1, 0}});
    auto chord = rotations<VOR2_ANIMATABLE_QUATERNION_LERP>({{0, 0, 0, 1}, {0, 0, 1, 0}});
    expect_quaternion(value_at(arc, 0.5F), 0, 0, HALF_ROOT, HALF_ROOT);
    expect_quaternion(value_at(chord, 0.5F), 0, 0, 0.5F, 0.5F);
    EXPECT_FALSE(arc.equals(chord)) << "the kinds differ";
    // Near keys are blended: half the angle has the cosine 0.995.
    const f32 sine = std::sqrt(1 - 0.995F * 0.995F);
    auto near = rotations<VOR2_ANIMATABLE_QUATERNION_SLERP>({{0, 0, 0, 1}, {0, 0, sine, 0.995F}});
    expect_quaternion(value_at(near, 0.5F), 0, 0, sine / 2, 0.9975F);
}

TEST(rotation_track, follows_the_arc_at_constant_speed) {
    std::mt19937 random(7);
    std::normal_distribution<double> normal;
    for (int round = 0; round < 200; ++round) {
        double a[4], b[4], dot = 0, length_a = 0, length_b = 0;
        for (int i = 0; i < 4; ++i) {
            a[i] = normal(random);
            b[i] = normal(random);
            length_a += a[i] * a[i];
            length_b += b[i] * b[i];
        }
        for (int i = 0; i < 4; ++i) dot += (a[i] /= std::sqrt(length_a)) * (b[i] /= std::sqrt(length_b));
        if (std::abs(dot) > 0.98) continue;
        const auto single = [](const double* q) {
            return QUATERNION(static_cast<f32>(q[0]), static_cast<f32>(q[1]), static_cast<f32>(q[2]),
                              static_cast<f32>(q[3]));
        };
        auto track = rotations<VOR2_ANIMATABLE_QUATERNION_SLERP>({single(a), single(b)});
        const double t = 0.3, angle = std::acos(dot);
        const double ka = std::sin((1 - t) * angle) / std::sin(angle), kb = std::sin(t * angle) / std::sin(angle);
        const QUATERNION got = value_at(track, 0.3F);
        EXPECT_NEAR(got.x, ka * a[0] + kb * b[0], 2e-5);
        EXPECT_NEAR(got.w, ka * a[3] + kb * b[3], 2e-5);
    }
}

TEST(rotation_track, signs_are_settled_in_one_pass) {
    const QUATERNION a{0, 0.6F, 0, 0.8F};
    const std::initializer_list<QUATERNION> cases[] = {{a, -a, -a}, {a, -a, a}, {a, a, -a}};
    for (const auto& keys : cases) {
        auto track = rotations<VOR2_ANIMATABLE_QUATERNION_SLERP>(keys);
        track.make_continuous();
        for (const QUATERNION& key : track.key_values()) EXPECT_EQ(key, a);
        EXPECT_EQ(value_at(track, 0.7F), a);
    }
    auto square = rotations<VOR2_ANIMATABLE_QUATERNION_SLERP>({{1, 0, 0, 0}, {0, -1, 0, 0}});
    square.make_continuous();
    EXPECT_EQ(square.key_values()[1], QUATERNION(0, -1, 0, 0)) << "a dot product of 0 flips nothing";
    square.rotate(QUATERNION::identity());
    EXPECT_EQ(square.key_values()[0], QUATERNION(1, 0, 0, 0));
}

TEST(rotation_track, opposed_keys_and_no_keys_give_a_rotation) {
    auto opposed = rotations<VOR2_ANIMATABLE_QUATERNION_SLERP>({{0, 0, 0, 1}, {0, 0, 0, -1}});
    EXPECT_EQ(value_at(opposed, 0.25F), QUATERNION(0, 0, 0, 1));
    EXPECT_EQ(value_at(opposed, 0.75F), QUATERNION(0, 0, 0, -1));
    VOR2_ANIMATABLE_QUATERNION_SLERP empty;
    EXPECT_EQ(value_at(empty, 0), QUATERNION::identity());
}

TEST(tracks, equality_ignores_the_cursor_and_no_number_equals_nothing) {
    VOR2_ANIMATABLE_FLOAT32_LINEAR a, b;
    for (const f32 time : {0.0F, 1.0F}) {
        a.add_key(time, time);
        b.add_key(time, time);
    }
    b.set_time(0.5F);
    EXPECT_TRUE(a.equals(b));
    const OWNED<VOR2_ANIMATABLE_FLOAT32> copy = b.clone();
    EXPECT_EQ(copy->cursor_fraction(), 0.5F) << "a copy keeps the cursor";
    b.key_values()[1] = -0.0F;
    a.key_values()[1] = 0.0F;
    EXPECT_TRUE(a.equals(b));
    a.key_times()[1] = b.key_times()[1] = std::numeric_limits<f32>::quiet_NaN();
    EXPECT_FALSE(a.equals(b));
    EXPECT_FALSE(a.equals(a));
}

TEST(tracks, families_make_their_own_numbers_only) {
    const auto made = [](auto tag, std::initializer_list<u32> numbers) {
        using FAMILY = typename decltype(tag)::type;
        for (u32 id = 0; id < 14; ++id) {
            const auto track = FAMILY::make_track(id);
            const bool own = std::find(numbers.begin(), numbers.end(), id) != numbers.end();
            ASSERT_EQ(static_cast<bool>(track), own) << id;
            if (own) {
                EXPECT_EQ(track->type_id(), id);
            }
        }
    };
    made(std::type_identity<VOR2_ANIMATABLE_FLOAT32>(), {0});
    made(std::type_identity<VOR2_ANIMATABLE_FLOAT32_RANGE>(), {1});
    made(std::type_identity<VOR2_ANIMATABLE_COLOUR>(), {2});
    made(std::type_identity<VOR2_ANIMATABLE_VECTOR_3>(), {3});
    made(std::type_identity<VOR2_ANIMATABLE_VECTOR_2>(), {4});
    made(std::type_identity<VOR2_ANIMATABLE_QUATERNION>(), {5, 6});
    made(std::type_identity<VOR2_ANIMATABLE_RECTF>(), {7});
    made(std::type_identity<VOR2_ANIMATABLE_INT32>(), {8});
    made(std::type_identity<VOR2_ANIMATABLE_VECTOR_4>(), {9});
    made(std::type_identity<VOR2_ANIMATABLE_BINORMAL_TANGENT>(), {10});
    made(std::type_identity<VOR2_ANIMATABLE_BOUNDING_BOX>(), {11});
}

TEST(value_records, defaults_and_short_vectors) {
    const std::vector<u8> box = saved_record(VOR2_BOUNDING_BOX());
    EXPECT_EQ(box, BYTES().words({0x7F7FFFFF, 0x7F7FFFFF, 0x7F7FFFFF, 0x00800000, 0x00800000, 0x00800000}).data);
    VOR2_BINORMAL_TANGENT pair({0.05F, 0, 0}, {0, 0.2F, 0});
    pair.normalise_pair();
    EXPECT_EQ(pair.binormal.x, 0.05F);
    EXPECT_FLOAT_EQ(pair.tangent.y, 1);
    EXPECT_EQ(saved_record(VOR2_RECTF()), BYTES().floats({0, 0, 1, 1}).data);
}

} // namespace
} // namespace VOR2_LOADER
