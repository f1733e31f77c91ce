#include "support/array/memory.h"

#include "support/platform/platform.h"

#include <algorithm>
#include <new>

namespace VOR2_LOADER {

ALLOCATE_HOOK allocate_hook = nullptr;
FREE_HOOK free_hook = nullptr;

void* allocate_memory(std::size_t size, std::size_t alignment) {
    void* block = allocate_hook != nullptr ? allocate_hook(size, alignment)
                                           : platform::aligned_allocate(size, std::max<std::size_t>(alignment, 8));
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void free_memory(void* block) noexcept {
    if (block == nullptr) return;
    free_hook != nullptr ? free_hook(block) : platform::aligned_free(block);
}

} // namespace VOR2_LOADER
