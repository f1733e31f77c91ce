#pragma once

/// The tracks of a page: seven words each, kind, cursor index, cursor fraction, first time, times, first value, values.

#include "format/tracks/tracks.h"
#include "viewer/page/word_block.h"

namespace vor2::viewer {

class TrackTable {
public:
    explicit TrackTable(WordBlock& block) : block_(block) {}

    /// The track's number; -1 where there is none.
    template<class FAMILY>
    i32 add(const VOR2_LOADER::OWNED<FAMILY>& track) {
        if (!track) return -1;
        values_.clear();
        for (const auto& value : track->key_values()) append(value);
        return add_track(*track, track->key_values().size());
    }
    /// Puts the table itself into the block, once all tracks are in.
    WordSpan finish() { return block_.add(rows_); }

private:
    void append(f32 value) { values_.push_back(word_of(value)); }
    void append(i32 value) { values_.push_back(std::bit_cast<u32>(value)); }
    void append(const VOR2_LOADER::VECTOR_3& v) { append_all({v.x, v.y, v.z}); }
    void append(const VOR2_LOADER::VECTOR_4& v) { append_all({v.x, v.y, v.z, v.w}); }
    void append(const VOR2_LOADER::QUATERNION& q) { append_all({q.x, q.y, q.z, q.w}); }
    void append(const VOR2_LOADER::VOR2_COLOUR& c) { append_all({c.red, c.green, c.blue, c.alpha}); }
    void append_all(std::initializer_list<f32> numbers) {
        for (const f32 number : numbers) append(number);
    }
    i32 add_track(const VOR2_LOADER::VOR2_ANIMATABLE& track, u64 value_count);

    WordBlock& block_;
    std::vector<u32> values_, times_, rows_;
    i32 count_ = 0;
};

} // namespace vor2::viewer
