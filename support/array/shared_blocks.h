#pragma once

/// Blocks of memory that many small arrays share.
///
/// A mesh that is loaded gives each vertex lists of a few elements. While a `SHARED_BLOCKS` stands, arrays of its
/// thread that are filled for the first time, to a size that is known, take their memory out of its blocks instead of
/// one of the heap's each. Such an array is like any other: it can be changed, moved and given to other threads, grows
/// into memory of its own, and gives back what it had. A shared block is freed once nothing of it is in use any more.
/// Inside, the address sanitizer sees the ends of each array as on the heap.

#include "support/types.h"

#include <cstddef>

namespace VOR2_LOADER {

class SHARED_BLOCKS {
public:
    /// More than that is never taken out of a shared block.
    static constexpr std::size_t MOST = 1024;

    /// Stands until it is destroyed, in place of one that stood before.
    SHARED_BLOCKS() noexcept : my_outer(our_current) { our_current = this; }
    ~SHARED_BLOCKS() {
        close();
        our_current = my_outer;
    }
    SHARED_BLOCKS(const SHARED_BLOCKS&) = delete;
    SHARED_BLOCKS& operator=(const SHARED_BLOCKS&) = delete;

    /// That of this thread; null for none.
    [[nodiscard]] static SHARED_BLOCKS* current() noexcept { return our_current; }

    /// `size` bytes, at most `MOST`, aligned to 8. Throws `std::bad_alloc` when memory runs out.
    [[nodiscard]] void* take(std::size_t size);
    /// From any thread.
    static void give_back(void* memory, std::size_t size) noexcept;

private:
    struct BLOCK;
    void open();
    void close() noexcept;

    static constinit thread_local SHARED_BLOCKS* our_current;
    SHARED_BLOCKS* my_outer;
    BLOCK* my_block = nullptr;
    u8 *my_next = nullptr, *my_end = nullptr;
    std::size_t my_block_size = 0;
    u64 my_taken = 0; ///< out of the present block
};

} // namespace VOR2_LOADER
