#pragma once

/// `TEXT` and `NARROW_TEXT`: arrays of characters that always end in a NUL element.

#include "support/array/array.h"

#include <string_view>

namespace VOR2_LOADER {

/// An `ARRAY` whose `size` counts the terminating NUL: an empty text has `size` 1 and a capacity of
/// 8. The number of characters is `length`. Only a text that was moved from holds no NUL.
template<class CHARACTER>
class BASIC_TEXT : private ARRAY<CHARACTER> {
    using BASE = ARRAY<CHARACTER>;

public:
    using VIEW = std::basic_string_view<CHARACTER>;

    BASIC_TEXT() { BASE::push_back(CHARACTER{}); }
    BASIC_TEXT(VIEW characters) {
        BASE::reserve(characters.size() + 1 > 8 ? characters.size() + 1 : 8);
        assign(characters);
    }
    BASIC_TEXT(const CHARACTER* characters) : BASIC_TEXT(VIEW(characters)) {}

    using BASE::capacity;
    using BASE::data;
    using BASE::reserve;
    using BASE::size;
    using BASE::operator[];
    using BASE::begin; ///< iteration includes the NUL
    using BASE::end;

    [[nodiscard]] u64 length() const noexcept { return size() == 0 ? 0 : size() - 1; }
    [[nodiscard]] VIEW view() const noexcept { return {data(), static_cast<std::size_t>(length())}; }
    operator VIEW() const noexcept { return view(); }
    [[nodiscard]] const CHARACTER* c_str() const noexcept {
        static constexpr CHARACTER NOTHING{};
        return size() == 0 ? &NOTHING : data();
    }

    /// Back to no characters, in the block it has.
    void clear() { resize_uninitialised(0); }
    /// `characters` must not lie in this text.
    void assign(VIEW characters) {
        resize_uninitialised(characters.size());
        characters.copy(data(), characters.size());
    }
    /// Appends; the block doubles when it is full. `characters` may lie in this text.
    void append(VIEW characters) {
        if (length() + characters.size() + 1 > capacity() && !characters.empty()) {
            const BASIC_TEXT kept(characters);
            u64 room = capacity() == 0 ? 8 : capacity();
            while (room < length() + characters.size() + 1) room *= 2;
            reserve(room);
            return append_in_place(kept.view());
        }
        append_in_place(characters);
    }
    void append(CHARACTER character) { append(VIEW(&character, 1)); }

    /// Gives the text `count` characters, the new ones to be filled in by the caller, and puts the
    /// NUL behind them.
    void resize_uninitialised(u64 count) {
        reserve(count + 1);
        BASE::set_size(count + 1);
        data()[count] = CHARACTER{};
    }

    friend bool operator==(const BASIC_TEXT& a, const BASIC_TEXT& b) noexcept { return a.view() == b.view(); }

private:
    void append_in_place(VIEW characters) {
        const u64 old_length = length();
        resize_uninitialised(old_length + characters.size());
        characters.copy(data() + old_length, characters.size());
    }
};

using TEXT = BASIC_TEXT<char16_t>;    ///< 16-bit code units: what the file stores
using NARROW_TEXT = BASIC_TEXT<char>; ///< 8-bit characters: reports and what goes to the system

} // namespace VOR2_LOADER
