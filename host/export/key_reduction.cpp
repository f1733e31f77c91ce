#include "host/export/key_reduction.h"

#include <algorithm>
#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

bool differs(f32 a, f32 b) {
    return std::fabs(a - b) > KEY_TOLERANCE;
}
bool differs(const VECTOR_3& a, const VECTOR_3& b) {
    return differs(a.x, b.x) || differs(a.y, b.y) || differs(a.z, b.z);
}
bool differs(const QUATERNION& a, const QUATERNION& b) {
    return differs(a.x, b.x) || differs(a.y, b.y) || differs(a.z, b.z) || differs(a.w, b.w);
}

template<class VALUE>
void shorten(ARRAY<VALUE>& array, u64 size) {
    while (array.size() > size) array.pop_back();
}

// Kept keys move to the front of the arrays. They never overtake the keys that are still to be read: key
// k - 1 is only ever overwritten by itself before key k is decided.
template<class VALUE>
void reduce(ARRAY<f32>& times, ARRAY<VALUE>& values) {
    const u64 n = std::min(times.size(), values.size());
    if (n < 2) return;
    u64 kept = 1;
    const auto keep = [&](u64 k) {
        times[kept] = times[k];
        values[kept] = values[k];
        ++kept;
    };
    const bool last_stays = differs(values[n - 1], values[n - 2]);
    for (u64 k = 1; k + 1 < n; ++k) {
        if (differs(values[kept - 1], values[k]) || differs(values[k], values[k + 1])) keep(k);
    }
    if (last_stays) keep(n - 1);
    shorten(times, kept);
    shorten(values, kept);
}

} // namespace

void reduce_vector_keys(VOR2_ANIMATABLE_VECTOR_3& track) {
    reduce(track.key_times(), track.key_values());
}

void reduce_quaternion_keys(VOR2_ANIMATABLE_QUATERNION& track) {
    reduce(track.key_times(), track.key_values());
}

} // namespace VOR2_EXPORTER_MAYA
