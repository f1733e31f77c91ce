#include "optimise/sample_times.h"

#include <algorithm>
#include <cmath>

namespace vor2::optimise {

using namespace VOR2_LOADER;

namespace {

void add_times(const VOR2_ANIMATABLE* track, std::vector<f32>& times) {
    if (track == nullptr) return;
    for (const f32 time : track->key_times()) {
        if (std::isfinite(time)) times.push_back(time);
    }
    // Kept short on the way: most tracks have the times of the others.
    if (times.size() < times.capacity() / 2) return;
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
}

/// The most that any rotation turns from each time to the next.
std::vector<double> turns_between(const VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<f32>& times) {
    std::vector<double> turns(times.size(), 0);
    for (const VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        if (!node.rotation_track) continue;
        const auto& keys = std::as_const(*node.rotation_track).key_times();
        const auto& values = std::as_const(*node.rotation_track).key_values();
        std::size_t from = 0;
        for (u64 k = 1; k < keys.size() && k < values.size(); ++k) {
            if (!(keys[k] > keys[k - 1])) continue;
            from = static_cast<std::size_t>(std::lower_bound(times.begin(), times.end(), keys[k - 1]) - times.begin());
            const std::size_t to = static_cast<std::size_t>(
                std::lower_bound(times.begin() + static_cast<std::ptrdiff_t>(from), times.end(), keys[k]) -
                times.begin());
            const QUATERNION &a = values[k - 1], &b = values[k];
            const double dot = static_cast<double>(a.x) * b.x + static_cast<double>(a.y) * b.y +
                               static_cast<double>(a.z) * b.z + static_cast<double>(a.w) * b.w;
            const double turn = 2 * std::acos(std::clamp(dot, -1.0, 1.0));
            for (std::size_t i = from; i < to; ++i) {
                const double share =
                    (static_cast<double>(times[i + 1]) - times[i]) / (static_cast<double>(keys[k]) - keys[k - 1]);
                turns[i] = std::max(turns[i], turn * share);
            }
        }
    }
    return turns;
}

} // namespace

std::vector<f32> key_times_of(const VOR2_MATRIX_HIERARCHY& hierarchy) {
    std::vector<f32> times;
    times.reserve(1U << 16);
    for (const VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        add_times(node.position_track.get(), times);
        add_times(node.rotation_track.get(), times);
        add_times(node.scale_track.get(), times);
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

std::vector<f32> sample_times(const VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<f32>& key_times) {
    const std::vector<double> turns = turns_between(hierarchy, key_times);
    std::vector<f32> samples;
    for (std::size_t i = 0; i < key_times.size(); ++i) {
        samples.push_back(key_times[i]);
        if (i + 1 == key_times.size()) break;
        const int parts = turns[i] > fastest_turn ? 4 : turns[i] > fast_turn ? 2 : 1;
        for (int k = 1; k < parts; ++k) {
            const f32 time = time_between(key_times[i], key_times[i + 1], k, parts);
            if (time > samples.back() && time < key_times[i + 1]) samples.push_back(time);
        }
    }
    return samples;
}

} // namespace vor2::optimise
