#include "format/tracks/animatable.h"

#include <cmath>

namespace VOR2_LOADER {
namespace detail {

/// How many of the first `most` keys fulfil what no key behind them does. Without a branch on the keys: half of
/// those would be foretold wrongly.
template<class CONDITION>
u64 count_first(const f32* keys, u64 most, CONDITION condition) {
    const f32* first = keys;
    while (most > 1) {
        const u64 half = most / 2;
        first += condition(first[half - 1]) ? half : 0;
        most -= half;
    }
    return static_cast<u64>(first - keys) + (most == 1 && condition(*first) ? 1 : 0);
}

} // namespace detail

bool VOR2_ANIMATABLE::load(VOR2_INPUT_BUFFER& buffer, f32 version) {
    const bool cursor = buffer.read_value(my_cursor_index) && buffer.read_value(my_cursor_fraction);
    my_ascent.count = 0;
    return LIST_KIND<VALUE_KIND>::load(my_key_times, buffer, version) && cursor;
}

// The times themselves go straight to the file: only the cursor and the count reach the result.
bool VOR2_ANIMATABLE::save(VOR2_WRITE_STREAM& stream) const {
    const bool cursor = stream.write_value(my_cursor_index) && stream.write_value(my_cursor_fraction);
    const bool count = stream.write_value(static_cast<u32>(my_key_times.size()));
    stream.file().write(my_key_times.data(), static_cast<u32>(my_key_times.size() * sizeof(f32)));
    return cursor && count;
}

void VOR2_ANIMATABLE::describe(RECORD_VISITOR& visitor) const {
    visitor.unsigned_number("cursor_index", my_cursor_index);
    visitor.real("cursor_fraction", my_cursor_fraction);
    visitor.reals("key_times", my_key_times.view(), 1);
}

bool VOR2_ANIMATABLE::times_equal(const VOR2_ANIMATABLE& other) const noexcept {
    return std::equal(my_key_times.begin(), my_key_times.end(), other.my_key_times.begin(), other.my_key_times.end());
}

f32 VOR2_ANIMATABLE::current_time() const noexcept {
    if (my_key_times.size() < 2) return 0;
    const u64 i = cursor_interval();
    return (my_key_times[i + 1] - my_key_times[i]) * my_cursor_fraction + my_key_times[i];
}

/// Places the cursor in that interval if it holds the time.
bool VOR2_ANIMATABLE::settle(u64 index, f32 time) noexcept {
    const f32 from = my_key_times[index], to = my_key_times[index + 1];
    if (!(time >= from && to >= time)) return false;
    place(index, fraction_of(time, from, to));
    return true;
}

/// Looks at up to `most` intervals, the cursor's own first.
bool VOR2_ANIMATABLE::walk(f32 time, bool forward, u64 from, u64 most) noexcept {
    const u64 count = std::min(most, forward ? my_key_times.size() - 1 - from : from + 1);
    for (u64 k = 0; k < count; ++k) {
        if (settle(forward ? from + k : from - k, time)) return true;
    }
    return false;
}

/// The one interval of ascending times where a walk from `from` could end.
u64 VOR2_ANIMATABLE::find(f32 time, bool forward, u64 from) const noexcept {
    const f32* times = my_key_times.data();
    if (forward) {
        const auto is_before = [time](f32 key) { return key < time; };
        return detail::count_first(times + from + 1, my_key_times.size() - 2 - from, is_before) + from;
    }
    return detail::count_first(times + 1, from, [time](f32 key) { return !(key > time); });
}

/// Goes on for up to `most` times where the last look ended.
bool VOR2_ANIMATABLE::ascends(u64 most) noexcept {
    const u64 n = my_key_times.size();
    u64 k = std::clamp<u64>(my_ascent.count, 1, n);
    for (const u64 end = k + std::min(most, n - k); k < end && my_key_times[k - 1] <= my_key_times[k];) ++k;
    my_ascent.count = k;
    return k == n;
}

void VOR2_ANIMATABLE::seek(f32 time) noexcept {
    constexpr u64 NEAR = 4;   // intervals that are looked at one by one
    constexpr u64 A_FEW = 64; // times whose order a step can look at without costing more for it
    const u64 n = my_key_times.size();
    if (n < 2) return;
    if (time >= my_key_times[n - 1]) return place(n - 2, 1.0F);
    if (my_key_times[0] >= time) return place(0, 0.0F);
    const bool forward = time - current_time() >= 0;
    const u64 from = cursor_interval();
    const bool is_near = walk(time, forward, from, NEAR);
    const bool is_ordered = ascends(is_near ? A_FEW : n);
    if (is_near) return;
    (void)(is_ordered ? settle(find(time, forward, from), time) : walk(time, forward, from, n));
}

void VOR2_ANIMATABLE::advance(f32 delta) {
    const u64 n = my_key_times.size();
    if (n < 2) return;
    const f32 time = current_time() + delta;
    const f32 first = my_key_times[0], last = my_key_times[n - 1];
    if (last >= time) return set_time(time);
    const f32 span = last - first;
    if (!(span > 0)) return set_time(last);
    const f32 q = (time - last) / span;
    const f32 r = std::trunc(q + 0.5F);
    set_time((q - r) * span + first);
}

} // namespace VOR2_LOADER
