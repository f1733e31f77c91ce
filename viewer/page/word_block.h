#pragma once

/// The arrays of a page: one block of 32-bit words, little-endian, into which a page's structure points by words.

#include "support/types.h"

#include <bit>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vor2::viewer {

using VOR2_LOADER::f32;
using VOR2_LOADER::i32;
using VOR2_LOADER::u32;
using VOR2_LOADER::u64;
using VOR2_LOADER::u8;

/// First word, and a number of elements, which a word may hold several of.
struct WordSpan {
    u64 first = 0, count = 0;
};

class WordBlock {
public:
    WordSpan add(std::span<const u32> words);
    /// The same words stand in the block once, however many arrays they are: tracks mostly share their times.
    WordSpan add_shared(std::span<const u32> words);
    /// Padded to whole words; the count is in bytes.
    WordSpan add_bytes(std::span<const u8> bytes);

    const std::vector<u32>& words() const { return words_; }

private:
    std::vector<u32> words_;
    std::unordered_multimap<u64, WordSpan> shared_; ///< by hash
};

inline u32 word_of(f32 number) {
    return std::bit_cast<u32>(number);
}

/// A hash of words (FNV-1a, a word at a time, mixed at the end).
u64 hash_of(std::span<const u32> words);

} // namespace vor2::viewer
