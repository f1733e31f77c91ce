#include "host/export/sample_range.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace VOR2_EXPORTER_MAYA {
namespace {

bool refuse(const MString& why) {
    MGlobal::displayError(why);
    return false;
}

double samples_in(const SAMPLE_RANGE& range) {
    return (range.stop_frame - range.start_frame) * range.sample_ratio + 2.0;
}

// Whether neighbouring samples get different times in the file. Then the frames, in double precision,
// move at every step too.
bool times_ascend(const SAMPLE_RANGE& range) {
    const double furthest = std::max(std::fabs(range.start_sample), std::fabs(range.stop_sample)) / range.sample_at;
    return furthest * std::numeric_limits<float>::epsilon() <= 1.0 / range.sample_at;
}

} // namespace

std::vector<MOMENT> samples_of(const SAMPLE_RANGE& range) {
    std::vector<MOMENT> out;
    const double step = range.step();
    MOMENT moment{range.start_frame, range.start_sample};
    while (range.stop_frame + step > moment.frame) {
        out.push_back(moment);
        moment.frame += step;
        moment.number += 1.0;
    }
    return out;
}

bool plan_samples(const EXPORT_SETTINGS& settings, double fps, SAMPLE_RANGE& range) {
    if (!std::isfinite(settings.sample_at) || settings.sample_at <= 0.0)
        return refuse(MString("The sample rate isn't a number above 0: ") + settings.sample_at);
    if (!std::isfinite(settings.start_frame) || !std::isfinite(settings.stop_frame))
        return refuse("The first or last frame isn't a finite number");
    if (settings.stop_frame < settings.start_frame)
        return refuse(MString("The last frame, ") + settings.stop_frame + ", lies before the first, " +
                      settings.start_frame);
    range.sample_at = settings.sample_at;
    range.start_frame = settings.start_frame;
    range.stop_frame = settings.stop_frame;
    range.sample_ratio = settings.sample_at / fps;
    range.start_sample = range.start_frame * range.sample_ratio;
    range.stop_sample = range.stop_frame * range.sample_ratio;
    if (!std::isfinite(range.step()) || !times_ascend(range))
        return refuse("The samples lie closer together, or further from 0, than the file's times can tell");
    // Times that ascend in single precision are few enough to be counted.
    range.frame_count =
        static_cast<VOR2_LOADER::i32>((range.stop_frame - range.start_frame) * range.sample_ratio + 1.0);
    return true;
}

bool check_key_count(const SAMPLE_RANGE& range, unsigned int node_count) {
    if (samples_in(range) * KEY_BYTES * node_count <= MOST_KEY_BYTES) return true;
    return refuse(MString("The export would hold more keys than a file can: ") + samples_in(range) + " samples of " +
                  node_count + " nodes");
}

} // namespace VOR2_EXPORTER_MAYA
