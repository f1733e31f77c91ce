#pragma once

#include "host/export/export_settings.h"
#include "support/types.h"

#include <cstddef>
#include <vector>

namespace VOR2_EXPORTER_MAYA {

/// When an export samples: from `start_frame` on, every 1 / `sample_ratio` frames, for as long as a
/// sample lies less than one such step past `stop_frame`. Times in the file are sample numbers divided
/// by `sample_at`.
struct SAMPLE_RANGE {
    double sample_at = 0.0;
    double start_frame = 0.0, stop_frame = 0.0;
    double sample_ratio = 0.0; ///< samples per frame of the host
    double start_sample = 0.0, stop_sample = 0.0;
    VOR2_LOADER::i32 frame_count = 0; ///< samples up to the last frame; there can be one more

    [[nodiscard]] double step() const { return 1.0 / sample_ratio; }
    /// The file's time of a sample by its number, and of the range's first and k-th.
    [[nodiscard]] VOR2_LOADER::f32 time(double number) const {
        return static_cast<VOR2_LOADER::f32>(number / sample_at);
    }
    [[nodiscard]] VOR2_LOADER::f32 start_time() const { return time(start_sample); }
    [[nodiscard]] VOR2_LOADER::f32 time_of(std::size_t k) const { return time(start_sample + static_cast<double>(k)); }
};

/// The most bytes that the keys of all nodes may take before they are thinned out: what a file can hold.
inline constexpr double MOST_KEY_BYTES = 2147483647.0;
/// Of one sample of one node: two times, a position and a rotation.
inline constexpr double KEY_BYTES = 36.0;

/// One moment of an export.
struct MOMENT {
    double frame;  ///< in the host
    double number; ///< of the sample: `SAMPLE_RANGE::time` has the file's time
};
[[nodiscard]] std::vector<MOMENT> samples_of(const SAMPLE_RANGE& range);

/// Works out the range of an export at the host's rate of `fps`. False, with a message, when it can't be
/// walked: a sample rate that isn't a positive number, a frame that isn't finite, a stop before the
/// start, or samples that lie closer than the file's single-precision times can tell apart.
[[nodiscard]] bool plan_samples(const EXPORT_SETTINGS& settings, double fps, SAMPLE_RANGE& range);
/// False, with a message, when the keys of that many nodes don't fit a file.
[[nodiscard]] bool check_key_count(const SAMPLE_RANGE& range, unsigned int node_count);

} // namespace VOR2_EXPORTER_MAYA
