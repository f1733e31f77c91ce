#include "viewer/drawings/track_lanes.h"

#include "inspect/scene_facts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vor2::viewer {
namespace {

using namespace VOR2_LOADER;

constexpr int samples = 600;
/// Past that many keys a picture shows no more of them than samples do.
constexpr u64 most_keys = 5000;

using Numbers = std::vector<double>;

Numbers numbers_of(const VECTOR_3& v) {
    return {v.x, v.y, v.z};
}
Numbers numbers_of(const QUATERNION& q) {
    return {q.x, q.y, q.z, q.w};
}

/// Angles x, y, z of the rotation Rx Ry Rz, in degrees.
Numbers angles_of(const Numbers& quaternion) {
    double length = 0;
    for (const double part : quaternion) length += part * part;
    length = length > 0 ? std::sqrt(length) : 1;
    const double x = quaternion[0] / length, y = quaternion[1] / length, z = quaternion[2] / length,
                 w = quaternion[3] / length;
    const double sine = std::clamp(2 * (x * z + w * y), -1.0, 1.0);
    constexpr double degrees = 180 / std::numbers::pi;
    if (std::abs(sine) > 0.999999)
        return {std::atan2(2 * (y * z + w * x), 1 - 2 * (x * x + z * z)) * degrees, std::asin(sine) * degrees, 0};
    return {std::atan2(-2 * (y * z - w * x), 1 - 2 * (x * x + y * y)) * degrees, std::asin(sine) * degrees,
            std::atan2(-2 * (x * y - w * z), 1 - 2 * (y * y + z * z)) * degrees};
}

struct Times {
    std::vector<double> times;
    std::vector<std::size_t> keys;
};

Times times_of(const VOR2_ANIMATABLE& track, const TrackLaneOptions& options) {
    Times all;
    for (int i = 0; i <= samples; ++i) all.times.push_back(options.start + (options.end - options.start) * i / samples);
    std::vector<double> keys;
    const auto& key_times = track.key_times();
    for (u64 k = 0; key_times.size() > 1 && k < std::min(key_times.size(), most_keys); ++k) {
        if (key_times[k] >= options.start && key_times[k] <= options.end) keys.push_back(key_times[k]);
    }
    all.times.insert(all.times.end(), keys.begin(), keys.end());
    std::ranges::sort(all.times);
    all.times.erase(std::unique(all.times.begin(), all.times.end()), all.times.end());
    for (const double key : keys)
        all.keys.push_back(static_cast<std::size_t>(std::ranges::lower_bound(all.times, key) - all.times.begin()));
    return all;
}

/// The track's components over time; with `angles` as degrees, without jumps of whole turns.
template<class TRACK>
std::vector<Curve> curves_of(TRACK& track, bool angles, const Times& at) {
    std::vector<Curve> curves;
    for (const double time : at.times) {
        track.set_time(static_cast<f32>(time));
        typename TRACK::VALUE_TYPE value;
        Numbers numbers = numbers_of(track.value(value));
        if (angles) numbers = angles_of(numbers);
        if (curves.empty()) {
            for (std::size_t c = 0; c < numbers.size(); ++c)
                curves.push_back({std::string(1, "xyzw"[c]), {}, {}, at.keys});
        }
        for (std::size_t c = 0; c < numbers.size(); ++c) {
            Curve& curve = curves[c];
            if (angles && !curve.values.empty())
                numbers[c] -= 360 * std::round((numbers[c] - curve.values.back()) / 360);
            curve.times.push_back(time);
            curve.values.push_back(numbers[c]);
        }
    }
    return curves;
}

double greatest_difference(const std::vector<Curve>& a, const std::vector<Curve>& b) {
    double greatest = 0;
    for (std::size_t c = 0; c < std::min(a.size(), b.size()); ++c) {
        for (std::size_t i = 0; i < a[c].values.size(); ++i) {
            const double difference = std::abs(a[c].values[i] - b[c].values[i]);
            const bool both_nan = std::isnan(a[c].values[i]) && std::isnan(b[c].values[i]);
            if (!both_nan) greatest = std::max(greatest, std::isfinite(difference) ? difference : HUGE_VAL);
        }
    }
    return greatest;
}

template<class TRACK>
std::optional<Lane> lane_of(std::string title, std::string unit, TRACK* track, TRACK* other, bool angles,
                            const TrackLaneOptions& options) {
    if (track == nullptr) std::swap(track, other);
    if (track == nullptr) return {};
    const Times at = times_of(*track, options);
    Lane lane{std::move(title), std::move(unit), curves_of(*track, angles, at)};
    if (other == nullptr) return lane;
    std::vector<Curve> others = curves_of(*other, angles, at);
    if (options.only_different && greatest_difference(lane.curves, others) <= options.tolerance) return {};
    for (Curve& curve : others) {
        curve.dashed = true;
        lane.curves.push_back(std::move(curve));
    }
    return lane;
}

} // namespace

std::vector<Lane> lanes_of(VOR2_MATRIX_NODE& node, VOR2_MATRIX_NODE* other, const TrackLaneOptions& options) {
    const std::string name = inspect::readable(node.name);
    std::vector<Lane> lanes;
    const auto add = [&](const char* what, const char* unit, auto member, bool angles) {
        auto lane = lane_of(name + " " + what, unit, (node.*member).get(),
                            other != nullptr ? (other->*member).get() : nullptr, angles, options);
        if (lane) lanes.push_back(std::move(*lane));
    };
    add("position", "m", &VOR2_MATRIX_NODE::position_track, false);
    add("rotation", options.quaternions ? "" : "degrees", &VOR2_MATRIX_NODE::rotation_track, !options.quaternions);
    add("scale", "", &VOR2_MATRIX_NODE::scale_track, false);
    return lanes;
}

} // namespace vor2::viewer
