#include "format/tracks/animatable.h"

#include <cmath>

namespace VOR2_LOADER {

bool VOR2_ANIMATABLE::load(VOR2_INPUT_BUFFER& buffer, f32 version) {
    const bool cursor = buffer.read_value(my_cursor_index) && buffer.read_value(my_cursor_fraction);
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

void VOR2_ANIMATABLE::place(u64 index, f32 fraction) noexcept {
    my_cursor_index = static_cast<u32>(index);
    my_cursor_fraction = fraction;
}

void VOR2_ANIMATABLE::place_within(u64 index, f32 time) noexcept {
    const f32 length = my_key_times[index + 1] - my_key_times[index];
    place(index, length > 0 ? (time - my_key_times[index]) / length : 0.0F);
}

void VOR2_ANIMATABLE::set_time(f32 time) {
    const u64 n = my_key_times.size();
    if (n < 2) return;
    if (time >= my_key_times[n - 1]) return place(n - 2, 1.0F);
    if (my_key_times[0] >= time) return place(0, 0.0F);
    const auto holds = [this, time](u64 i) { return time >= my_key_times[i] && my_key_times[i + 1] >= time; };
    if (time - current_time() >= 0) {
        for (u64 i = cursor_interval(); i <= n - 2; ++i) {
            if (holds(i)) return place_within(i, time);
        }
    } else {
        for (u64 i = cursor_interval() + 1; i > 0; --i) {
            if (holds(i - 1)) return place_within(i - 1, time);
        }
    }
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
