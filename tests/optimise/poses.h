#pragma once

/// Where a hierarchy's nodes stand, worked out in double precision straight from the keys, without the library's
/// tracks.

#include "format/vor2.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace VOR2_LOADER {

using POINT = std::array<double, 3>;

/// Takes p to `axes` p + `origin`; `axes[c]` is the image of an axis.
struct PLACE {
    std::array<POINT, 3> axes{POINT{1, 0, 0}, POINT{0, 1, 0}, POINT{0, 0, 1}};
    POINT origin{0, 0, 0};

    [[nodiscard]] POINT of(const POINT& p) const {
        POINT out = origin;
        for (std::size_t c = 0; c < 3; ++c) {
            for (std::size_t r = 0; r < 3; ++r) out[r] += axes[c][r] * p[c];
        }
        return out;
    }
};

inline double distance(const POINT& a, const POINT& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// The keys around a time, and how far it is from the first to the second.
struct BETWEEN {
    u64 from, to;
    double fraction;
};
inline BETWEEN between(const ARRAY<f32>& times, double time) {
    if (times.size() < 2 || time <= times[0]) return {0, 0, 0};
    if (time >= times.back()) return {times.size() - 1, times.size() - 1, 0};
    const u64 to = static_cast<u64>(std::upper_bound(times.begin(), times.end(), time) - times.begin());
    return {to - 1, to, (time - times[to - 1]) / (static_cast<double>(times[to]) - times[to - 1])};
}

inline POINT value_of(const VOR2_ANIMATABLE_VECTOR_3& track, double time) {
    const auto [from, to, t] = between(track.key_times(), time);
    const VECTOR_3 &a = track.key_values()[from], &b = track.key_values()[to];
    return {a.x + t * (static_cast<double>(b.x) - a.x), a.y + t * (static_cast<double>(b.y) - a.y),
            a.z + t * (static_cast<double>(b.z) - a.z)};
}

/// The axes as the keys' quaternions turn them: on the arc only where they are far from each other.
inline std::array<POINT, 3> axes_of(const VOR2_ANIMATABLE_QUATERNION& track, double time) {
    const auto [from, to, t] = between(track.key_times(), time);
    const QUATERNION &a = track.key_values()[from], &b = track.key_values()[to];
    const f32 dot = a.x * b.x + a.w * b.w + a.y * b.y + a.z * b.z;
    double p = 1 - t, q = t;
    if (track.type_id() == VOR2_ANIMATABLE_QUATERNION_SLERP::TYPE_ID && !(dot > 0.99F)) {
        const double arc = std::acos(static_cast<double>(dot));
        p = std::sin((1 - t) * arc) / std::sin(arc);
        q = std::sin(t * arc) / std::sin(arc);
    }
    const double x = p * a.x + q * b.x, y = p * a.y + q * b.y, z = p * a.z + q * b.z, w = p * a.w + q * b.w;
    return {POINT{1 - 2 * y * y - 2 * z * z, 2 * x * y + 2 * w * z, 2 * x * z - 2 * w * y},
            POINT{2 * x * y - 2 * w * z, 1 - 2 * x * x - 2 * z * z, 2 * y * z + 2 * w * x},
            POINT{2 * x * z + 2 * w * y, 2 * y * z - 2 * w * x, 1 - 2 * x * x - 2 * y * y}};
}

/// Every node has a track, and parents stand before their children.
inline std::vector<PLACE> places_at(const VOR2_MATRIX_HIERARCHY& hierarchy, double time) {
    std::vector<PLACE> places;
    for (const VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        PLACE local;
        if (node.rotation_track) local.axes = axes_of(*node.rotation_track, time);
        if (node.position_track) local.origin = value_of(*node.position_track, time);
        if (node.scale_track) {
            const POINT scale = value_of(*node.scale_track, time);
            for (std::size_t c = 0; c < 3; ++c) {
                for (double& number : local.axes[c]) number *= scale[c];
            }
        }
        if (node.parent_index >= 0) {
            const PLACE& parent = places[static_cast<std::size_t>(node.parent_index)];
            const PLACE turned{parent.axes, {0, 0, 0}};
            for (POINT& axis : local.axes) axis = turned.of(axis);
            local.origin = parent.of(local.origin);
        }
        places.push_back(local);
    }
    return places;
}

/// The furthest that a point up to its node's distance away moved, of those tried at `count` random times.
inline double furthest_move(const VOR2_MATRIX_HIERARCHY& a, const VOR2_MATRIX_HIERARCHY& b,
                            const std::vector<double>& distances, double start, double end, int count) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> times(start - 0.1, end + 0.1);
    std::normal_distribution<double> direction;
    double furthest = 0;
    for (int i = 0; i < count; ++i) {
        const double time = times(random);
        const std::vector<PLACE> before = places_at(a, time), after = places_at(b, time);
        for (std::size_t n = 0; n < before.size(); ++n) {
            for (int k = 0; k < 8; ++k) {
                POINT point{direction(random), direction(random), direction(random)};
                const double length = std::hypot(point[0], point[1], point[2]);
                for (double& number : point) number *= k == 0 ? 0 : distances[n] / length;
                furthest = std::max(furthest, distance(before[n].of(point), after[n].of(point)));
            }
        }
    }
    return furthest;
}

} // namespace VOR2_LOADER
