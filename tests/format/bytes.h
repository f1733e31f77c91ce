#pragma once

/// Bytes by hand.

#include "format/vor2.h"

#include <bit>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace VOR2_LOADER {

/// Writes little-endian values one behind the other, independently of the library's own `save`.
struct BYTES {
    std::vector<u8> data;

    BYTES& raw(const void* from, std::size_t size) {
        const u8* bytes = static_cast<const u8*>(from);
        data.insert(data.end(), bytes, bytes + size);
        return *this;
    }
    BYTES& raw(const std::vector<u8>& bytes) { return raw(bytes.data(), bytes.size()); }
    BYTES& u16s(std::initializer_list<u32> values) {
        for (const u32 v : values) {
            data.push_back(static_cast<u8>(v));
            data.push_back(static_cast<u8>(v >> 8));
        }
        return *this;
    }
    BYTES& words(std::initializer_list<u32> values) {
        for (const u32 v : values) u16s({v & 0xFFFF, v >> 16});
        return *this;
    }
    BYTES& floats(std::initializer_list<f32> values) {
        for (const f32 v : values) words({std::bit_cast<u32>(v)});
        return *this;
    }
    BYTES& f64s(f64 value) {
        const u64 bits = std::bit_cast<u64>(value);
        return words({static_cast<u32>(bits), static_cast<u32>(bits >> 32)});
    }
    BYTES& text(std::u16string_view value) {
        u16s({static_cast<u32>(value.size())});
        for (const char16_t unit : value) u16s({unit});
        return *this;
    }
    BYTES& bytes(const BYTES& other) { return raw(other.data.data(), other.data.size()); }
    /// A chunk with its header.
    BYTES& chunk(u32 id, const BYTES& body) { return words({static_cast<u32>(body.data.size() + 8), id}).bytes(body); }
    [[nodiscard]] std::size_t size() const { return data.size(); }
};

/// The start of every file: the magic word and chunk 0.
inline BYTES file_of_version(f32 version) {
    return BYTES().words({MAGIC_WORD}).chunk(0, BYTES().floats({version}).text(u"").text(u""));
}

} // namespace VOR2_LOADER
