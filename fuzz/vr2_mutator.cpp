// Changes of scene files that keep their frame: whole chunks are dropped, doubled, swapped and changed from
// within, small numbers become other small numbers, and every chunk's length is put right again. Plain
// bytes would seldom get past the first header.

#include "support/types.h"

#include <cstring>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(VOR2_LOADER::u8* data, std::size_t size, std::size_t max_size);

namespace {

using namespace VOR2_LOADER;
using Chunk = std::vector<u8>;

constexpr std::size_t HEADER = 8;

u32 word_at(const u8* at) {
    u32 word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

bool split(const u8* data, std::size_t size, std::vector<Chunk>& chunks) {
    if (size < 4) return false;
    for (std::size_t at = 4; at + HEADER <= size;) {
        const u32 length = word_at(data + at);
        if (length < HEADER || length > size - at) return false;
        chunks.emplace_back(data + at, data + at + length);
        at += length;
    }
    return !chunks.empty();
}

void change_chunk(Chunk& chunk, std::minstd_rand& random) {
    const std::size_t body = chunk.size() - HEADER;
    switch (random() % 6) {
    case 0: // another kind of chunk
        chunk[4] = static_cast<u8>(random() % 26);
        break;
    case 1: // a count, flag or type number
        if (body >= 4) {
            const u32 word = random() % 4 == 0 ? static_cast<u32>(random()) : static_cast<u32>(random() % 14);
            std::memcpy(chunk.data() + HEADER + random() % (body - 3), &word, sizeof word);
        }
        break;
    case 2: { // a stretch twice
        const std::size_t from = HEADER + random() % (body + 1);
        const std::size_t count = random() % std::min<std::size_t>(chunk.size() - from + 1, 64);
        const Chunk stretch(chunk.begin() + static_cast<std::ptrdiff_t>(from),
                            chunk.begin() + static_cast<std::ptrdiff_t>(from + count));
        chunk.insert(chunk.begin() + static_cast<std::ptrdiff_t>(from), stretch.begin(), stretch.end());
        break;
    }
    case 3: // zeros: absent objects, empty lists
        chunk.insert(chunk.begin() + static_cast<std::ptrdiff_t>(HEADER + random() % (body + 1)), 4, 0);
        break;
    default: {
        const std::size_t room = chunk.size() + 32;
        chunk.resize(room);
        const std::size_t now = LLVMFuzzerMutate(chunk.data() + HEADER, body, room - HEADER);
        chunk.resize(HEADER + now);
    }
    }
}

void change_list(std::vector<Chunk>& chunks, std::minstd_rand& random) {
    const std::size_t at = random() % chunks.size();
    const std::size_t other = random() % chunks.size();
    switch (random() % 8) {
    case 0:
        chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(at));
        break;
    case 1:
        chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(other), Chunk(chunks[at]));
        break;
    case 2:
        std::swap(chunks[at], chunks[other]);
        break;
    default:
        change_chunk(chunks[at], random);
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(u8* data, std::size_t size, std::size_t max_size, unsigned seed) {
    std::minstd_rand random(seed);
    std::vector<Chunk> chunks;
    if (random() % 16 == 0 || !split(data, size, chunks)) return LLVMFuzzerMutate(data, size, max_size);
    change_list(chunks, random);
    std::size_t at = 4;
    for (Chunk& chunk : chunks) {
        if (at + chunk.size() > max_size) break;
        const u32 length = static_cast<u32>(chunk.size());
        std::memcpy(chunk.data(), &length, sizeof length);
        std::memcpy(data + at, chunk.data(), chunk.size());
        at += chunk.size();
    }
    return at;
}
