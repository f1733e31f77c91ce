#include "viewer/page/track_table.h"

namespace vor2::viewer {

i32 TrackTable::add_track(const VOR2_LOADER::VOR2_ANIMATABLE& track, u64 value_count) {
    times_.clear();
    for (const f32 time : track.key_times()) times_.push_back(word_of(time));
    const WordSpan times = block_.add_shared(times_);
    const WordSpan values = block_.add(values_);
    for (const u64 word : {u64{track.type_id()}, u64{track.cursor_index()}, u64{word_of(track.cursor_fraction())},
                           times.first, times.count, values.first, value_count})
        rows_.push_back(static_cast<u32>(word));
    return count_++;
}

} // namespace vor2::viewer
