#pragma once

/// The keys of one track of a node, and which of them stay.

#include "optimise/pose.h"
#include "optimise/skeleton.h"

#include <span>
#include <vector>

namespace vor2::optimise {

enum class Channel { position, rotation, scale };

class KeySet {
public:
    /// What the track holds is read in place. `samples` are ascending times, the track's own among them.
    KeySet(std::uint32_t joint, const VOR2_LOADER::VOR2_ANIMATABLE_VECTOR_3& track, Channel channel,
           std::span<const VOR2_LOADER::f32> samples);
    KeySet(std::uint32_t joint, const VOR2_LOADER::VOR2_ANIMATABLE_QUATERNION& track,
           std::span<const VOR2_LOADER::f32> samples);
    /// At least two keys, as many values as times, all finite, and times that ascend strictly.
    static bool takes(const VOR2_LOADER::VOR2_ANIMATABLE_VECTOR_3& track);
    static bool takes(const VOR2_LOADER::VOR2_ANIMATABLE_QUATERNION& track);

    [[nodiscard]] std::uint32_t joint() const { return joint_; }
    [[nodiscard]] Channel channel() const { return channel_; }
    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(times_.size()); }
    [[nodiscard]] VOR2_LOADER::f32 time(std::uint32_t key) const { return times_[key]; }
    /// Which sample is at the key's time.
    [[nodiscard]] std::uint32_t sample(std::uint32_t key) const { return samples_[key]; }

    [[nodiscard]] bool is_kept(std::uint32_t key) const { return kept_[key] != 0; }
    [[nodiscard]] bool is_pinned(std::uint32_t key) const { return pinned_[key] != 0; }
    void keep(std::uint32_t key, bool kept) { kept_[key] = kept ? 1 : 0; }
    /// Keeps for good the keys that the value at `time` comes from.
    void pin_around(VOR2_LOADER::f32 time);
    /// Between the first and the last of several kept keys: whether all have one value.
    [[nodiscard]] bool is_constant() const;
    [[nodiscard]] std::uint32_t kept_count() const;
    struct Gap {
        std::uint32_t from, to; ///< kept, and none between them is
    };
    /// Nothing where no key is missing.
    [[nodiscard]] std::optional<Gap> gap_around(VOR2_LOADER::f32 time) const;

    /// Sets the track's part of `values` to what it gives at `time` with key `from` next to key `to`.
    void blend(std::uint32_t from, std::uint32_t to, VOR2_LOADER::f32 time, LocalValues& values) const;

    double allowance = 1; ///< as a part of the tolerance

private:
    void find_samples(std::span<const VOR2_LOADER::f32> samples);

    std::uint32_t joint_;
    Channel channel_;
    bool on_arc_ = false;
    std::span<const VOR2_LOADER::f32> times_;
    std::span<const VOR2_LOADER::VECTOR_3> vectors_;
    std::span<const VOR2_LOADER::QUATERNION> rotations_;
    std::vector<std::uint32_t> samples_;
    std::vector<char> kept_, pinned_;
};

} // namespace vor2::optimise
