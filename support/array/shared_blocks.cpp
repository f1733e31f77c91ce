#include "support/array/shared_blocks.h"

#include "support/array/memory.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define WITH_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define WITH_ADDRESS_SANITIZER
#endif
#ifdef WITH_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#define HIDE(memory, size) ASAN_POISON_MEMORY_REGION(memory, size)
#define SHOW(memory, size) ASAN_UNPOISON_MEMORY_REGION(memory, size)
#else
#define HIDE(memory, size) ((void)(memory), (void)(size))
#define SHOW(memory, size) ((void)(memory), (void)(size))
#endif

namespace VOR2_LOADER {
namespace {

constexpr std::size_t FIRST_SIZE = 4096, LARGEST_SIZE = 1U << 22U;
/// In front of what is taken stands the block that it is part of, on 32-bit systems with room behind it.
constexpr std::size_t BEFORE = 8, ADDRESS = sizeof(void*);
/// What a block counts more than is in use, as long as more may be taken out of it: then only giving back counts.
constexpr u64 OPEN = u64{1} << 40U;

constexpr std::size_t whole_words(std::size_t size) {
    return (size + BEFORE - 1) & ~(BEFORE - 1);
}

} // namespace

struct SHARED_BLOCKS::BLOCK {
    std::atomic<u64> in_use{OPEN};
    u64 size;

    void drop(u64 count) noexcept {
        if (in_use.fetch_sub(count, std::memory_order_acq_rel) != count) return;
        SHOW(this, size);
        this->~BLOCK();
        free_memory(this);
    }
};

constinit thread_local SHARED_BLOCKS* SHARED_BLOCKS::our_current = nullptr;

void* SHARED_BLOCKS::take(std::size_t size) {
    const std::size_t whole = BEFORE + whole_words(size);
    if (static_cast<std::size_t>(my_end - my_next) < whole) open();
    SHOW(my_next, BEFORE + size);
    std::memcpy(my_next, &my_block, ADDRESS);
    void* out = my_next + BEFORE;
    HIDE(my_next, BEFORE);
    my_next += whole;
    ++my_taken;
    return out;
}

void SHARED_BLOCKS::give_back(void* memory, std::size_t size) noexcept {
    u8* before = static_cast<u8*>(memory) - BEFORE;
    BLOCK* block = nullptr;
    SHOW(before, BEFORE);
    std::memcpy(&block, before, ADDRESS);
    HIDE(before, BEFORE + size);
    block->drop(1);
}

void SHARED_BLOCKS::open() {
    close();
    my_block_size = my_block_size == 0 ? FIRST_SIZE : std::min(my_block_size * 4, LARGEST_SIZE);
    u8* start = static_cast<u8*>(allocate_memory(my_block_size, alignof(BLOCK)));
    my_block = ::new (static_cast<void*>(start)) BLOCK;
    my_block->size = my_block_size;
    my_next = start + sizeof(BLOCK);
    my_end = start + my_block_size;
    HIDE(my_next, my_block_size - sizeof(BLOCK));
}

void SHARED_BLOCKS::close() noexcept {
    if (my_block != nullptr) my_block->drop(OPEN - my_taken);
    my_block = nullptr;
    my_next = my_end = nullptr;
    my_taken = 0;
}

} // namespace VOR2_LOADER
