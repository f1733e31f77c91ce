#include "tests/format/bounds/counting_memory.h"

#include "support/array/memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace VOR2_LOADER {
namespace {

/// Before each block stands its size, in a place that keeps the block aligned.
constexpr std::size_t HEAD = alignof(std::max_align_t);

u64 taken = 0, peak = 0;

void* take(std::size_t size) {
    void* block = std::malloc(HEAD + size);
    if (block == nullptr) return nullptr;
    std::memcpy(block, &size, sizeof size);
    taken += size;
    peak = std::max(peak, taken);
    return static_cast<u8*>(block) + HEAD;
}

void give_back(void* block) noexcept {
    if (block == nullptr) return;
    void* head = static_cast<u8*>(block) - HEAD;
    std::size_t size = 0;
    std::memcpy(&size, head, sizeof size);
    taken -= size;
    std::free(head);
}

void* take_for_array(std::size_t size, std::size_t alignment) {
    return alignment <= HEAD ? take(size) : nullptr;
}

[[maybe_unused]] const bool ARRAYS_ARE_COUNTED = [] {
    allocate_hook = take_for_array;
    free_hook = give_back;
    return true;
}();

} // namespace

u64 bytes_taken() {
    return taken;
}
u64 peak_of_bytes_taken() {
    return peak;
}
void forget_peak() {
    peak = taken;
}

} // namespace VOR2_LOADER

void* operator new(std::size_t size) {
    void* block = VOR2_LOADER::take(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void operator delete(void* block) noexcept {
    VOR2_LOADER::give_back(block);
}
void operator delete(void* block, std::size_t) noexcept {
    VOR2_LOADER::give_back(block);
}
