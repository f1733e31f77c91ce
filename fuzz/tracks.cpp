// A track's cursor against a plain search in double precision, over any order of steps.

#include "format/tracks/tracks.h"
#include "fuzz/input.h"

#include <cmath>
#include <vector>

namespace {

using namespace VOR2_LOADER;

/// The value at a time: a straight line between the keys on both sides, the end keys beyond them.
double plain_value(const std::vector<f32>& times, const std::vector<f32>& values, double time) {
    if (times.size() < 2 || time <= times.front()) return values.front();
    if (time >= times.back()) return values.back();
    std::size_t i = 0;
    while (times[i + 1] < time) ++i;
    const double part = (time - times[i]) / (static_cast<double>(times[i + 1]) - times[i]);
    return values[i] + (static_cast<double>(values[i + 1]) - values[i]) * part;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    fuzz::Input input(data, size);
    VOR2_ANIMATABLE_FLOAT32_LINEAR track;
    std::vector<f32> times, values;
    f32 time = static_cast<f32>(static_cast<i32>(input.below(200)) - 100);
    for (u32 n = 1 + input.below(40); n > 0; --n) {
        const f32 value = static_cast<f32>(static_cast<i32>(input.below(2000)) - 1000);
        times.push_back(time);
        values.push_back(value);
        track.add_key(value, time);
        time += static_cast<f32>(1 + input.below(1000)) / 64.0F;
    }
    while (!input.empty()) {
        const f32 to = static_cast<f32>(input.take<std::int16_t>()) / 64.0F;
        if (input.below(4) == 0) {
            track.advance(to);
        } else {
            track.set_time(to);
            const double expected = plain_value(times, values, to);
            if (std::abs(track.value() - expected) > 0.01) fuzz::wrong("another value than a plain search gives");
        }
        const bool fits = times.size() < 2 || track.cursor_index() + 1 < times.size();
        if (!fits || !(track.cursor_fraction() >= 0 && track.cursor_fraction() <= 1)) {
            fuzz::wrong("a cursor outside the keys");
        }
    }
    return 0;
}
