#include "host/export/key_reduction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace VOR2_EXPORTER_MAYA {
namespace {

using INDICES = std::vector<int>;

// Keys k at time k; the indices of those that stay.
template<class TRACK, class MAKE, class REDUCE>
INDICES kept(const std::vector<f32>& values, MAKE make, REDUCE reduce) {
    TRACK track;
    for (std::size_t k = 0; k < values.size(); ++k) track.add_key(make(values[k]), static_cast<f32>(k));
    reduce(track);
    INDICES out;
    for (u64 k = 0; k < track.key_times().size(); ++k) {
        out.push_back(static_cast<int>(track.key_times()[k]));
        EXPECT_EQ(track.key_values()[k], make(values[static_cast<std::size_t>(out.back())]));
    }
    EXPECT_EQ(track.key_values().size(), track.key_times().size());
    return out;
}

struct CASE {
    std::vector<f32> values;
    INDICES kept;
};

// 0.0001f is 9.99999975e-05: 1.0001f is one place past it above 1, and 0.0001f itself is no difference from 0.
const CASE CASES[] = {
    {{}, {}},
    {{1}, {0}},
    {{1, 1}, {0}},
    {{1, 2}, {0, 1}},
    {{1, 1, 1, 2, 2, 2}, {0, 2, 3}},
    {{1, 1, 1, 1, 1, 1}, {0}},
    {{1, 2, 3, 4, 5, 6}, {0, 1, 2, 3, 4, 5}},
    {{1, 2, 1, 1}, {0, 1, 2}},
    {{0, 0.0001F}, {0}},
    {{1, 1.0001F}, {0, 1}},
    // A drift of 0.00006 a key: the second step takes it past the tolerance from the last kept key.
    {{0, 0.00006F, 0.00012F, 0.00018F, 0.00024F, 0.0003F}, {0, 2, 4}},
};

TEST(key_reduction, keeps_what_the_values_ask_for_in_every_component) {
    for (const CASE& one : CASES) {
        const auto along = [](int axis) {
            return [axis](f32 v) { return VECTOR_3(axis == 0 ? v : 7, axis == 1 ? v : 7, axis == 2 ? v : 7); };
        };
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_EQ(kept<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(one.values, along(axis), reduce_vector_keys), one.kept);
        for (int axis = 0; axis < 4; ++axis) {
            const auto part = [axis](f32 v) {
                return QUATERNION(axis == 0 ? v : 7, axis == 1 ? v : 7, axis == 2 ? v : 7, axis == 3 ? v : 7);
            };
            EXPECT_EQ(kept<VOR2_ANIMATABLE_QUATERNION_SLERP>(one.values, part, reduce_quaternion_keys), one.kept);
        }
    }
}

TEST(key_reduction, finds_no_difference_to_what_is_no_number) {
    VOR2_ANIMATABLE_VECTOR_3_LINEAR track;
    const f32 values[] = {1, std::nanf(""), std::nanf(""), 5, 5};
    for (int k = 0; k < 5; ++k) track.add_key({values[k], 0, 0}, static_cast<f32>(k));
    reduce_vector_keys(track);
    ASSERT_EQ(track.key_times().size(), 2U); // 1 stays as the first; 5 differs from the 1 that stayed
    EXPECT_EQ(track.key_times()[1], 3.0F);
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
