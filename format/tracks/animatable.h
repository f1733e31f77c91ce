#pragma once

/// `VOR2_ANIMATABLE`, what every track shares: key times, and a cursor that follows the clock.
///
/// A track is a list of key times (seconds, ascending) and a list of key values. Moving through time
/// and reading a value are separate steps: `set_time` and `advance` move the cursor, `value` reads at
/// it. Each track has times of its own and loops by its own first and last key.
///
/// A well-formed track has strictly ascending times and as many values as times, or exactly one value,
/// which is a constant. A file may hold others. They keep to these rules: the cursor is kept and
/// written back as read, and where it lies outside the keys every use takes the nearest key; times
/// that don't ascend move the cursor only to an interval that holds the time asked for, and between
/// two equal times the fraction is 0; a track without values gives zeros (the identity rotation).
///
/// A step within an interval or to the next costs the same for any number of keys, and a jump grows with
/// their logarithm, where the times ascend. The cursor is in every case the one that a walk from the old
/// one, interval by interval, comes to.

#include "format/core/record.h"

namespace VOR2_LOADER {

namespace detail {

/// How many of a list's first times are known to ascend, equal neighbours included. A move takes it along with the
/// list and leaves none.
class ASCENT {
public:
    ASCENT() noexcept = default;
    ASCENT(const ASCENT&) noexcept = default;
    ASCENT(ASCENT&& other) noexcept : count(std::exchange(other.count, 0)) {}
    ~ASCENT() = default;
    ASCENT& operator=(const ASCENT&) noexcept = default;
    ASCENT& operator=(ASCENT&& other) noexcept {
        count = std::exchange(other.count, 0);
        return *this;
    }
    u64 count = 0;
};

} // namespace detail

class VOR2_ANIMATABLE : public VOR2_SERIALISABLE_OBJECT, public VOR2_INTERNAL_ANIM_OBJECT {
public:
    /// Cursor, count of times, times; each kind reads and writes its values behind it.
    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) override;
    bool save(VOR2_WRITE_STREAM& stream) const override;
    void describe(RECORD_VISITOR& visitor) const override;
    /// The number that stands beside the track in a file.
    [[nodiscard]] virtual u32 type_id() const = 0;
    [[nodiscard]] virtual std::string_view class_name() const = 0;
    /// Same kind, same times, same values, with no tolerance: a NaN differs from everything. The cursor
    /// takes no part.
    [[nodiscard]] virtual bool equals(const VOR2_ANIMATABLE& other) const = 0;

    /// Moves by `delta` seconds. Past the last key it goes on from the first by the overshoot where that
    /// is less than half the track's length (and its remainder likewise), and from the first key itself
    /// otherwise; before the first key it stays there. A track whose keys span no time stays at its end.
    void advance(f32 delta) final;
    /// Clamps at the ends. A time on an inner key ends the interval before it when the cursor comes from
    /// earlier, and begins the one after it when it comes from later.
    void set_time(f32 time) final {
        if (!step_to(time)) seek(time);
    }
    /// The cursor's time; 0 with fewer than two keys.
    [[nodiscard]] f32 current_time() const noexcept;

    /// For changes. They are to be made before the clock moves this track again: afterwards ask anew, since what the
    /// track knows of its times' order holds until the next call.
    [[nodiscard]] ARRAY<f32>& key_times() noexcept {
        my_ascent.count = 0;
        return my_key_times;
    }
    [[nodiscard]] const ARRAY<f32>& key_times() const noexcept { return my_key_times; }
    [[nodiscard]] u32 cursor_index() const noexcept { return my_cursor_index; }
    [[nodiscard]] f32 cursor_fraction() const noexcept { return my_cursor_fraction; }

protected:
    /// What is known of the times before a new last one still holds.
    void add_key_time(f32 time) { my_key_times.push_back(time); }
    [[nodiscard]] bool times_equal(const VOR2_ANIMATABLE& other) const noexcept;
    /// Which of `count` values, more than one, the cursor lies between.
    struct INTERVAL {
        u64 from, to;
    };
    [[nodiscard]] INTERVAL interval(u64 count) const noexcept {
        const u64 from = std::min<u64>(my_cursor_index, count - 1);
        return {from, std::min(from + 1, count - 1)};
    }

private:
    void place(u64 index, f32 fraction) noexcept {
        my_cursor_index = static_cast<u32>(index);
        my_cursor_fraction = fraction;
    }
    [[nodiscard]] static f32 fraction_of(f32 time, f32 from, f32 to) noexcept {
        const f32 length = to - from;
        return length > 0 ? (time - from) / length : 0.0F;
    }
    /// Strictly between two neighbours of ascending times, no end, no other interval and, in the cursor's own, no
    /// direction can matter. False, with nothing moved, for every other time.
    bool step_to(f32 time) noexcept {
        const u64 i = my_cursor_index;
        const u64 n = my_key_times.size();
        if (my_ascent.count != n || i + 1 >= n) return false;
        const f32* times = my_key_times.data() + i;
        const f32 from = times[0], to = times[1];
        if (time > from && time < to) {
            my_cursor_fraction = fraction_of(time, from, to);
            return true;
        }
        if (i + 2 >= n || !(time > to && time < times[2])) return false;
        if (!(time - ((to - from) * my_cursor_fraction + from) >= 0)) return false;
        place(i + 1, fraction_of(time, to, times[2]));
        return true;
    }
    void seek(f32 time) noexcept;
    [[nodiscard]] bool settle(u64 index, f32 time) noexcept;
    [[nodiscard]] bool walk(f32 time, bool forward, u64 from, u64 most) noexcept;
    [[nodiscard]] u64 find(f32 time, bool forward, u64 from) const noexcept;
    [[nodiscard]] bool ascends(u64 most) noexcept;
    [[nodiscard]] u64 cursor_interval() const noexcept {
        return std::min<u64>(my_cursor_index, my_key_times.size() - 2);
    }

    u32 my_cursor_index = 0;
    f32 my_cursor_fraction = 0;
    ARRAY<f32> my_key_times;
    detail::ASCENT my_ascent;
};

} // namespace VOR2_LOADER
