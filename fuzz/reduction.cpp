// Key reduction against the rule itself, told with arrays of its own, on any values.

#include "fuzz/input.h"
#include "host/export/key_reduction.h"

#include <array>
#include <cmath>
#include <vector>

namespace {

using namespace VOR2_EXPORTER_MAYA;

template<std::size_t WIDTH>
struct Key {
    f32 time;
    std::array<f32, WIDTH> value;
};

template<std::size_t WIDTH>
bool differ(const Key<WIDTH>& a, const Key<WIDTH>& b) {
    for (std::size_t i = 0; i < WIDTH; ++i) {
        if (std::fabs(a.value[i] - b.value[i]) > 0.0001F) return true;
    }
    return false;
}

template<std::size_t WIDTH>
std::vector<Key<WIDTH>> plainly_reduced(const std::vector<Key<WIDTH>>& keys) {
    if (keys.size() < 2) return keys;
    std::vector<Key<WIDTH>> out{keys[0]};
    for (std::size_t i = 1; i + 1 < keys.size(); ++i) {
        if (differ(out.back(), keys[i]) || differ(keys[i], keys[i + 1])) out.push_back(keys[i]);
    }
    if (differ(keys.back(), keys[keys.size() - 2])) out.push_back(keys.back());
    return out;
}

/// Often the value before, or a little beside it: what reduction is about.
template<std::size_t WIDTH>
std::vector<Key<WIDTH>> take_keys(fuzz::Input& input) {
    std::vector<Key<WIDTH>> keys;
    Key<WIDTH> key{};
    while (!input.empty()) {
        const u8 step = input.take<u8>();
        f32& number = key.value[step % WIDTH];
        if (step % 3 == 0) number += static_cast<f32>(input.take<std::int8_t>()) * 0.00001F;
        if (step % 7 == 1) number = input.take<f32>();
        key.time = input.below(16) == 0 ? input.take<f32>() : key.time + 0.5F;
        keys.push_back(key);
    }
    return keys;
}

template<std::size_t WIDTH>
void check(fuzz::Input& input, auto& track, auto reduce) {
    const std::vector<Key<WIDTH>> keys = take_keys<WIDTH>(input);
    for (const Key<WIDTH>& key : keys) {
        std::decay_t<decltype(track.key_values()[0])> value;
        std::memcpy(&value, key.value.data(), sizeof key.value);
        track.add_key(value, key.time);
    }
    reduce(track);
    const std::vector<Key<WIDTH>> expected = plainly_reduced(keys);
    if (track.key_times().size() != expected.size() || track.key_values().size() != expected.size()) {
        fuzz::wrong("another number of keys");
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (std::memcmp(&track.key_times()[i], &expected[i].time, sizeof(f32)) != 0 ||
            std::memcmp(&track.key_values()[i], expected[i].value.data(), sizeof expected[i].value) != 0) {
            fuzz::wrong("another key");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    fuzz::Input input(data, size);
    if (input.below(2) == 0) {
        VOR2_ANIMATABLE_VECTOR_3_LINEAR track;
        check<3>(input, track, reduce_vector_keys);
    } else {
        VOR2_ANIMATABLE_QUATERNION_SLERP track;
        check<4>(input, track, reduce_quaternion_keys);
    }
    return 0;
}
