#include "optimise/optimise.h"

#include "optimise/key_set.h"
#include "optimise/point_distances.h"
#include "optimise/sample_times.h"
#include "optimise/window.h"
#include "optimise/world_error.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace vor2::optimise {
namespace {

using namespace VOR2_LOADER;

/// What the choice of keys aims at and what the result is held to, as parts of the tolerance: between the times that
/// are looked at an error may be greater by a trace.
constexpr double aimed_at = 0.998, held_to = 0.999;
/// Errors of joints on a way to a leaf rarely add up in full, so that the first may take more than their n-th part.
constexpr double share_growth = 0.75;
constexpr int most_rounds = 3; ///< in which tracks are thinned further
constexpr int most_single_restores = 8;

u64 keys_in(const VOR2_MATRIX_NODE& node) {
    u64 keys = 0;
    if (node.position_track) keys += std::as_const(*node.position_track).key_times().size();
    if (node.rotation_track) keys += std::as_const(*node.rotation_track).key_times().size();
    if (node.scale_track) keys += std::as_const(*node.scale_track).key_times().size();
    return keys;
}

/// A copy of the kept keys, with the cursor where the track's own was.
template<class FAMILY>
void thin_track(const FAMILY& from, OWNED<FAMILY>& to, const KeySet& keys) {
    OWNED<FAMILY> track = FAMILY::make_track(from.type_id());
    const u32 count = keys.is_constant() ? 1 : keys.kept_count();
    if (count == keys.size()) return;
    track->key_times().reserve(count);
    track->key_values().reserve(count);
    for (u32 k = 0; k < keys.size() && track->key_values().size() < count; ++k) {
        if (keys.is_kept(k)) track->add_key(from.key_values()[k], from.key_times()[k]);
    }
    track->set_time(from.current_time());
    to = std::move(track);
}

class Optimiser {
public:
    Optimiser(VOR2& scene, const Limits& limits) : scene_(scene), limits_(limits), original_(scene.matrix_hierarchy) {}

    Result run() {
        if (!fits()) return std::move(result_);
        // The clock moves copies alone, and the scene's own only through what follows from its nodes' cursors.
        VOR2_MATRIX_HIERARCHY clock(original_);
        joints_ = walk_order(original_, distances());
        samples_ = sample_times(original_, times_);
        collect_tracks();
        share_tolerance();
        for (u32 first = 0; first + 1 < samples_.size();) first = thin_window(clock, first);
        settle(clock);
        return std::move(result_);
    }

private:
    bool fits() {
        const u64 count = original_.nodes.size();
        if (count > most_nodes) {
            result_.problem = "has " + std::to_string(count) + " nodes, more than the " + std::to_string(most_nodes) +
                              " that can be optimised";
            return false;
        }
        times_ = key_times_of(original_);
        if (times_.size() * count <= most_node_times) return true;
        result_.problem = "the keys of its " + std::to_string(count) + " nodes stand at " +
                          std::to_string(times_.size()) + " different times, more than can be measured";
        return false;
    }

    std::vector<double> distances() {
        std::vector<double> distances = point_distances(scene_, limits_.point_distance);
        scene_.matrix_hierarchy = original_;
        result_.nodes.resize(distances.size());
        for (std::size_t i = 0; i < distances.size(); ++i) result_.nodes[i].point_distance = distances[i];
        return distances;
    }

    void collect_tracks() {
        for (u32 j = 0; j < joints_.size(); ++j) {
            first_track_.push_back(static_cast<u32>(tracks_.size()));
            const VOR2_MATRIX_NODE& node = original_.nodes[joints_[j].node];
            if (node.position_track && KeySet::takes(*node.position_track))
                tracks_.emplace_back(j, *node.position_track, Channel::position, samples_);
            if (node.rotation_track && KeySet::takes(*node.rotation_track))
                tracks_.emplace_back(j, *node.rotation_track, samples_);
            if (node.scale_track && KeySet::takes(*node.scale_track))
                tracks_.emplace_back(j, *node.scale_track, Channel::scale, samples_);
        }
        for (KeySet& track : tracks_) track.pin_around(scene_.environment.time_range.start);
    }

    /// Gives the i-th of the n tracks on the way to a leaf its allowance, where there are several leaves for the most
    /// tracks.
    void share_tolerance() {
        std::vector<u32> before(joints_.size(), 0), most(joints_.size(), 0);
        std::vector<u32> own(joints_.size(), 0);
        for (const KeySet& track : tracks_) ++own[track.joint()];
        for (u32 j = 0; j < joints_.size(); ++j) {
            before[j] = joints_[j].parent ? before[*joints_[j].parent] + own[*joints_[j].parent] : 0;
        }
        for (u32 j = static_cast<u32>(joints_.size()); j-- > 0;) {
            most[j] = std::max(most[j], before[j] + own[j]);
            if (joints_[j].parent) most[*joints_[j].parent] = std::max(most[*joints_[j].parent], most[j]);
        }
        u32 nth = 0;
        for (std::size_t i = 0; i < tracks_.size(); ++i) {
            const u32 j = tracks_[i].joint();
            nth = i > 0 && tracks_[i - 1].joint() == j ? nth + 1 : 1;
            tracks_[i].allowance = std::pow(static_cast<double>(before[j] + nth) / most[j], share_growth);
        }
    }

    /// Gives where the next window begins.
    u32 thin_window(VOR2_MATRIX_HIERARCHY& clock, u32 first) {
        const u32 last = static_cast<u32>(
            std::min<u64>(samples_.size() - 1, u64{first} + Window::most_samples(joints_.size(), limits_.memory) - 1));
        Window window(clock, joints_, samples_, first, last);
        Tolerance tolerance{limits_.position * aimed_at, {}};
        if (limits_.rotation) tolerance.turn = *limits_.rotation * aimed_at;
        for (KeySet& track : tracks_) window.thin(track, tolerance, track.allowance);
        for (int round = 0; round < most_rounds; ++round) {
            bool found = false;
            for (std::size_t i = tracks_.size(); i-- > 0;) found = window.thin_further(tracks_[i], tolerance) || found;
            if (!found) break;
        }
        return last;
    }

    VOR2_MATRIX_HIERARCHY thinned() const {
        VOR2_MATRIX_HIERARCHY hierarchy(original_);
        for (const KeySet& track : tracks_) {
            const u32 index = joints_[track.joint()].node;
            const VOR2_MATRIX_NODE& from = original_.nodes[index];
            VOR2_MATRIX_NODE& to = hierarchy.nodes[index];
            switch (track.channel()) {
            case Channel::position:
                thin_track(std::as_const(*from.position_track), to.position_track, track);
                break;
            case Channel::rotation:
                thin_track(std::as_const(*from.rotation_track), to.rotation_track, track);
                break;
            case Channel::scale:
                thin_track(std::as_const(*from.scale_track), to.scale_track, track);
                break;
            }
        }
        return hierarchy;
    }

    /// Measures what has come of it and brings keys back until it is within the limits.
    void settle(VOR2_MATRIX_HIERARCHY& clock) {
        Limits held = limits_;
        held.position *= held_to;
        if (held.rotation) *held.rotation *= held_to;
        for (int round = 0;; ++round) {
            VOR2_MATRIX_HIERARCHY result = thinned(), played(result);
            bool is_over = false;
            GAPS gaps;
            measure(clock, played, joints_, times_, held, result_.nodes, [&](u32 joint, f32 time) {
                is_over = true;
                collect_gaps(joint, time, gaps);
            });
            if (!is_over) return finish(std::move(result));
            if (gaps.empty()) {
                result_.problem = "can't be measured: the same keys give different poses";
                return;
            }
            for (const auto& [place, to] : gaps) restore(tracks_[place.first], place.second, to, round);
        }
    }

    /// By track and the key that each begins at: the key that it ends at.
    using GAPS = std::map<std::pair<u32, u32>, u32>;

    /// Of the tracks that put the joint where it is.
    void collect_gaps(u32 joint, f32 time, GAPS& gaps) const {
        for (std::optional<u32> j = joint; j; j = joints_[*j].parent) {
            for (u32 i = first_track_[*j]; i < tracks_.size() && tracks_[i].joint() == *j; ++i) {
                if (const std::optional<KeySet::Gap> gap = tracks_[i].gap_around(time))
                    gaps.emplace(std::pair(i, gap->from), gap->to);
            }
        }
    }

    static void restore(KeySet& track, u32 from, u32 to, int round) {
        if (round < most_single_restores) return track.keep(from + (to - from) / 2, true);
        for (u32 k = from; k < to; ++k) track.keep(k, true);
    }

    void finish(VOR2_MATRIX_HIERARCHY&& hierarchy) {
        for (std::size_t i = 0; i < result_.nodes.size(); ++i) {
            NodeReport& report = result_.nodes[i];
            report.keys_before = keys_in(original_.nodes[i]);
            report.keys_after = keys_in(hierarchy.nodes[i]);
            result_.keys_before += report.keys_before;
            result_.keys_after += report.keys_after;
            if (report.worst_position > (result_.worst_node ? result_.nodes[*result_.worst_node].worst_position : 0))
                result_.worst_node = i;
        }
        scene_.matrix_hierarchy = std::move(hierarchy);
    }

    VOR2& scene_;
    Limits limits_;
    VOR2_MATRIX_HIERARCHY original_;
    std::vector<f32> times_, samples_;
    std::vector<Joint> joints_;
    std::vector<KeySet> tracks_;
    std::vector<u32> first_track_; ///< of each joint
    Result result_;
};

} // namespace

Result optimise_keys(VOR2& scene, const Limits& limits) {
    return Optimiser(scene, limits).run();
}

} // namespace vor2::optimise
