#include "optimise/key_set.h"

#include "format/tracks/tracks.h"

#include <algorithm>

namespace vor2::optimise {
namespace {

using namespace VOR2_LOADER;

bool is_finite(const VECTOR_3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
bool is_finite(const QUATERNION& q) {
    return std::isfinite(q.x) && std::isfinite(q.y) && std::isfinite(q.z) && std::isfinite(q.w);
}

template<class TRACK>
bool takes_track(const TRACK& track) {
    const auto& times = track.key_times();
    const auto& values = track.key_values();
    if (times.size() < 2 || values.size() != times.size()) return false;
    for (u64 k = 0; k < times.size(); ++k) {
        if (!std::isfinite(times[k]) || !is_finite(values[k]) || (k > 0 && !(times[k] > times[k - 1]))) return false;
    }
    return true;
}

} // namespace

bool KeySet::takes(const VOR2_ANIMATABLE_VECTOR_3& track) {
    return takes_track(track);
}
bool KeySet::takes(const VOR2_ANIMATABLE_QUATERNION& track) {
    return takes_track(track);
}

KeySet::KeySet(std::uint32_t joint, const VOR2_ANIMATABLE_VECTOR_3& track, Channel channel,
               std::span<const f32> samples)
    : joint_(joint), channel_(channel), times_(track.key_times().view()), vectors_(track.key_values().view()) {
    find_samples(samples);
}
KeySet::KeySet(std::uint32_t joint, const VOR2_ANIMATABLE_QUATERNION& track, std::span<const f32> samples)
    : joint_(joint), channel_(Channel::rotation), on_arc_(track.type_id() == VOR2_ANIMATABLE_QUATERNION_SLERP::TYPE_ID),
      times_(track.key_times().view()), rotations_(track.key_values().view()) {
    find_samples(samples);
}

void KeySet::find_samples(std::span<const f32> samples) {
    auto at = samples.begin();
    for (const f32 time : times_) {
        at = std::lower_bound(at, samples.end(), time);
        samples_.push_back(static_cast<std::uint32_t>(at - samples.begin()));
    }
    kept_.assign(times_.size(), 1);
    pinned_.assign(times_.size(), 0);
}

void KeySet::pin_around(f32 time) {
    const auto after = std::lower_bound(times_.begin(), times_.end(), time);
    if (after == times_.end()) return;
    const std::size_t k = static_cast<std::size_t>(after - times_.begin());
    pinned_[k] = 1;
    if (*after != time && k > 0) pinned_[k - 1] = 1;
}

bool KeySet::is_constant() const {
    for (std::uint32_t k = 1; k < size(); ++k) {
        if (!is_kept(k)) continue;
        const bool same = vectors_.empty() ? rotations_[k] == rotations_[0] : vectors_[k] == vectors_[0];
        if (!same) return false;
    }
    return true;
}

std::uint32_t KeySet::kept_count() const {
    return static_cast<std::uint32_t>(std::count(kept_.begin(), kept_.end(), 1));
}

std::optional<KeySet::Gap> KeySet::gap_around(f32 time) const {
    const std::uint32_t last = size() - 1;
    std::uint32_t to = std::min(
        static_cast<std::uint32_t>(std::lower_bound(times_.begin(), times_.end(), time) - times_.begin()), last);
    while (to < last && !is_kept(to)) ++to;
    std::uint32_t from = to > 0 ? to - 1 : 0;
    while (from > 0 && !is_kept(from)) --from;
    if (to <= from + 1) return {};
    return Gap{from, to};
}

void KeySet::blend(std::uint32_t from, std::uint32_t to, f32 time, LocalValues& values) const {
    const f32 length = times_[to] - times_[from];
    const f32 fraction = (time - times_[from]) / length;
    if (channel_ == Channel::rotation) {
        const QUATERNION &a = rotations_[from], &b = rotations_[to];
        values.rotation = on_arc_ ? slerp(a, b, fraction) : VOR2_LOADER::blend(a, b, fraction);
    } else {
        VECTOR_3& target = channel_ == Channel::position ? values.position : values.scale;
        target = VOR2_LOADER::blend(vectors_[from], vectors_[to], fraction);
    }
}

} // namespace vor2::optimise
