#include "optimise/window.h"

#include <algorithm>

namespace vor2::optimise {

using namespace VOR2_LOADER;

bool Tolerance::holds(const Affine& now, const Affine& original, double point_distance, double allowance) const {
    const Difference difference(now, original);
    if (!difference.is_within(point_distance, position * allowance)) return !is_finite(original);
    if (!turn || difference.turn_bound() <= *turn * allowance * 0.5) return true;
    return angle_of(difference.turn(), original) <= *turn * allowance;
}

std::uint32_t Window::most_samples(std::size_t joints, std::uint64_t memory) {
    const std::uint64_t fitting = memory / (sizeof(Sample) * std::max<std::uint64_t>(joints, 1));
    return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(fitting, 16, 1U << 30));
}

Window::Window(VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<Joint>& joints, std::span<const f32> samples,
               std::uint32_t first, std::uint32_t last)
    : joints_(joints), times_(samples), first_(first), last_(last), count_(last - first + 1),
      samples_(joints.size() * count_), scratch_(joints.size()) {
    for (std::uint32_t j = 0; j < joints_.size(); ++j) {
        VOR2_MATRIX_NODE& node = hierarchy.nodes[joints_[j].node];
        for (std::uint32_t s = first_; s <= last_; ++s) {
            Sample& sample = at(j, s);
            if (joints_[j].has_tracks) {
                sample.values = values_at(node, times_[s]);
                sample.local = local_matrix(sample.values);
            } else {
                sample.local = affine(node.world_matrix);
            }
            sample.world = joints_[j].parent ? compose(sample.local, at(*joints_[j].parent, s).world) : sample.local;
            sample.original = sample.world;
        }
    }
}

bool Window::sample_holds(const KeySet& keys, std::uint32_t from, std::uint32_t to, std::uint32_t sample) {
    const std::uint32_t j = keys.joint();
    const Joint& joint = joints_[j];
    LocalValues values = at(j, sample).values;
    keys.blend(from, to, times_[sample], values);
    const Affine local = local_matrix(values);
    scratch_[j] = joint.parent ? compose(local, at(*joint.parent, sample).world) : local;
    if (!tolerance_.holds(scratch_[j], at(j, sample).original, joint.point_distance, allowance_)) return false;
    for (std::uint32_t d = j + 1; d < joint.end; ++d) {
        const Sample& below = at(d, sample);
        scratch_[d] = compose(below.local, scratch_[*joints_[d].parent]);
        if (!tolerance_.holds(scratch_[d], below.original, joints_[d].point_distance, allowance_)) return false;
    }
    return true;
}

/// The middle first, where a step that doesn't hold is most likely to show it.
bool Window::step_holds(const KeySet& keys, std::uint32_t from, std::uint32_t to) {
    const std::uint32_t first = keys.sample(from) + 1, end = keys.sample(to);
    if (first >= end) return true;
    const std::uint32_t middle = first + (end - first) / 2;
    if (!sample_holds(keys, from, to, middle)) return false;
    for (std::uint32_t s = first; s < end; ++s) {
        if (s != middle && !sample_holds(keys, from, to, s)) return false;
    }
    return true;
}

/// The key that the longest step found leads to; `from` itself where not even the next can be reached.
std::uint32_t Window::longest_step(const KeySet& keys, std::uint32_t from, std::uint32_t last, std::uint32_t guess) {
    std::uint32_t end = from + 1;
    while (end < last && !keys.is_pinned(end)) ++end;
    // Ever longer steps until one fails, then halves between.
    std::uint32_t good = from, bad = end + 1;
    for (std::uint32_t length = std::max(guess, 1U); good < end; length *= 2) {
        const std::uint32_t to = std::min(from + length, end);
        if (step_holds(keys, from, to)) {
            good = to;
        } else {
            bad = to;
            break;
        }
    }
    while (bad - good > 1) {
        const std::uint32_t to = good + (bad - good) / 2;
        (step_holds(keys, from, to) ? good : bad) = to;
    }
    return good;
}

/// The keys of the track within the window; fewer than three when nothing can be taken away, since those at the ends
/// stay, so that nothing outside changes.
std::vector<std::uint32_t> Window::kept_within(const KeySet& keys) const {
    std::vector<std::uint32_t> kept;
    for (std::uint32_t k = 0; k < keys.size(); ++k) {
        if (keys.is_kept(k) && keys.sample(k) >= first_ && keys.sample(k) <= last_) kept.push_back(k);
    }
    return kept;
}

void Window::thin(KeySet& keys, const Tolerance& tolerance, double allowance) {
    tolerance_ = tolerance;
    allowance_ = allowance;
    const std::vector<std::uint32_t> kept = kept_within(keys);
    if (kept.size() < 3) return;
    std::vector<std::uint32_t> chosen{kept.front()};
    std::uint32_t guess = 1;
    while (chosen.back() < kept.back()) {
        const std::uint32_t next = std::max(longest_step(keys, chosen.back(), kept.back(), guess), chosen.back() + 1);
        guess = std::max(1U, (next - chosen.back()) / 2);
        chosen.push_back(next);
    }
    take_over(keys, chosen);
}

bool Window::thin_further(KeySet& keys, const Tolerance& tolerance) {
    tolerance_ = tolerance;
    allowance_ = 1;
    const std::vector<std::uint32_t> kept = kept_within(keys);
    if (kept.size() < 3) return false;
    std::vector<std::uint32_t> chosen{kept.front()}, detour;
    for (std::size_t i = 0; i + 1 < kept.size();) {
        if (find_detour(keys, std::span(kept).subspan(i), detour)) {
            chosen.insert(chosen.end(), detour.begin(), detour.end());
            i += detour.size() + 1;
        } else {
            chosen.push_back(kept[++i]);
        }
    }
    if (chosen.size() == kept.size()) return false;
    take_over(keys, chosen);
    return true;
}

/// From the first of these keys by steps of its own to another of them, over one key less than these take.
bool Window::find_detour(const KeySet& keys, std::span<const std::uint32_t> kept, std::vector<std::uint32_t>& detour) {
    detour.clear();
    std::uint32_t place = kept[0];
    for (std::size_t i = 2; i < std::min<std::size_t>(kept.size(), longest_detour + 2); ++i) {
        if (keys.is_pinned(kept[i - 1])) return false;
        const std::uint32_t next = longest_step(keys, place, kept[i], kept[i] - place);
        if (next == kept[i]) {
            detour.push_back(next);
            return true;
        }
        if (next <= kept[i - 1]) return false;
        detour.push_back(next);
        place = next;
    }
    return false;
}

void Window::take_over(KeySet& keys, const std::vector<std::uint32_t>& chosen) {
    const std::uint32_t j = keys.joint();
    for (std::uint32_t k = chosen.front(); k <= chosen.back(); ++k) keys.keep(k, false);
    for (const std::uint32_t k : chosen) keys.keep(k, true);
    for (std::size_t i = 1; i < chosen.size(); ++i) {
        for (std::uint32_t s = keys.sample(chosen[i - 1]); s <= keys.sample(chosen[i]); ++s) {
            Sample& sample = at(j, s);
            keys.blend(chosen[i - 1], chosen[i], times_[s], sample.values);
            sample.local = local_matrix(sample.values);
        }
    }
    for (std::uint32_t d = j; d < joints_[j].end; ++d) {
        const std::optional<std::uint32_t> parent = joints_[d].parent;
        for (std::uint32_t s = keys.sample(chosen.front()); s <= keys.sample(chosen.back()); ++s) {
            Sample& sample = at(d, s);
            sample.world = parent ? compose(sample.local, at(*parent, s).world) : sample.local;
        }
    }
}

} // namespace vor2::optimise
