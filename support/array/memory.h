#pragma once

/// The pair of replaceable functions through which all array memory comes and goes.

#include <cstddef>

namespace VOR2_LOADER {

/// Gives a block of `size` bytes aligned to `alignment`, or null when memory runs out.
using ALLOCATE_HOOK = void* (*)(std::size_t size, std::size_t alignment);
/// Takes back a block that the matching `ALLOCATE_HOOK` gave; null is passed over.
using FREE_HOOK = void (*)(void* block);

/// Both empty by default: the C runtime's aligned allocation then serves, with an alignment of at
/// least 8. Set both, before the first array allocates, or neither. Not synchronised.
extern ALLOCATE_HOOK allocate_hook;
extern FREE_HOOK free_hook;

/// Allocates through the hook or the default. Never gives null: when memory runs out it throws
/// `std::bad_alloc`, so that an array never writes through a null pointer.
[[nodiscard]] void* allocate_memory(std::size_t size, std::size_t alignment);
void free_memory(void* block) noexcept;

} // namespace VOR2_LOADER
