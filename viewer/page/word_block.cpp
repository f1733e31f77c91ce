#include "viewer/page/word_block.h"

#include <algorithm>
#include <cstring>

namespace vor2::viewer {

u64 hash_of(std::span<const u32> words) {
    u64 hash = 0xCBF29CE484222325U;
    for (const u32 word : words) hash = (hash ^ word) * 0x100000001B3U;
    return hash ^ hash >> 32U;
}

WordSpan WordBlock::add(std::span<const u32> words) {
    const WordSpan span{words_.size(), words.size()};
    words_.insert(words_.end(), words.begin(), words.end());
    return span;
}

WordSpan WordBlock::add_shared(std::span<const u32> words) {
    const u64 hash = hash_of(words);
    const auto [begin, end] = shared_.equal_range(hash);
    for (auto it = begin; it != end; ++it) {
        const WordSpan known = it->second;
        if (std::ranges::equal(words, std::span(words_).subspan(known.first, known.count))) return known;
    }
    const WordSpan span = add(words);
    // Few distinct arrays are worth looking for; past that a search costs more than it saves.
    if (shared_.size() < 100'000) shared_.emplace(hash, span);
    return span;
}

WordSpan WordBlock::add_bytes(std::span<const u8> bytes) {
    const WordSpan span{words_.size(), bytes.size()};
    words_.resize(words_.size() + (bytes.size() + 3) / 4);
    if (!bytes.empty()) std::memcpy(&words_[span.first], bytes.data(), bytes.size());
    return span;
}

} // namespace vor2::viewer
