#pragma once

/// The poses of a whole hierarchy over a stretch of time, and the thinning of tracks within it.

#include "optimise/key_set.h"

namespace vor2::optimise {

/// What must hold for each joint, with `allowance` as a part of both.
struct Tolerance {
    double position = 0;
    std::optional<double> turn; ///< of the axes, as the distance that a unit vector moves

    [[nodiscard]] bool holds(const Affine& now, const Affine& original, double point_distance, double allowance) const;
};

class Window {
public:
    static constexpr std::size_t longest_detour = 8; ///< in keys
    /// How many samples fit into that many bytes; no fewer than 16.
    static std::uint32_t most_samples(std::size_t joints, std::uint64_t memory);

    /// Moves the hierarchy's clock over the samples from `first` to `last`, which is one of the stretch.
    Window(VOR2_LOADER::VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<Joint>& joints,
           std::span<const VOR2_LOADER::f32> samples, std::uint32_t first, std::uint32_t last);

    /// Chooses by the longest steps which of the track's keys within the window stay, with all other tracks as they
    /// are.
    void thin(KeySet& keys, const Tolerance& tolerance, double allowance);
    /// Looks for ways over fewer keys between two that stay. False where there are none.
    bool thin_further(KeySet& keys, const Tolerance& tolerance);

private:
    struct Sample {
        Affine local, world, original;
        LocalValues values;
    };
    Sample& at(std::uint32_t joint, std::uint32_t sample) {
        return samples_[static_cast<std::size_t>(joint) * count_ + (sample - first_)];
    }
    bool step_holds(const KeySet& keys, std::uint32_t from, std::uint32_t to);
    bool sample_holds(const KeySet& keys, std::uint32_t from, std::uint32_t to, std::uint32_t sample);
    std::uint32_t longest_step(const KeySet& keys, std::uint32_t from, std::uint32_t last, std::uint32_t guess);
    [[nodiscard]] std::vector<std::uint32_t> kept_within(const KeySet& keys) const;
    bool find_detour(const KeySet& keys, std::span<const std::uint32_t> kept, std::vector<std::uint32_t>& detour);
    void take_over(KeySet& keys, const std::vector<std::uint32_t>& chosen);

    const std::vector<Joint>& joints_;
    std::span<const VOR2_LOADER::f32> times_;
    std::uint32_t first_, last_, count_;
    std::vector<Sample> samples_;
    std::vector<Affine> scratch_; ///< of the joints below the one in hand, at one sample
    Tolerance tolerance_;
    double allowance_ = 1;
};

} // namespace vor2::optimise
