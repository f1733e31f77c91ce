#pragma once

/// `VIRTUAL_BLOCK`: zeroed pages straight from the operating system, for large short-lived blocks.

#include "support/types.h"

namespace VOR2_LOADER {

class VIRTUAL_BLOCK {
public:
    /// Pages come in this unit; a block's tail beyond the size asked for is zero.
    static constexpr u32 GRANULARITY = 65536;

    VIRTUAL_BLOCK() noexcept = default;
    ~VIRTUAL_BLOCK() { release(); }
    VIRTUAL_BLOCK(const VIRTUAL_BLOCK&) = delete;
    VIRTUAL_BLOCK& operator=(const VIRTUAL_BLOCK&) = delete;

    /// Frees a present block and takes one of `size` bytes rounded up to whole multiples of
    /// `GRANULARITY`. A size of 0, and a system without memory, leave `address` null.
    void allocate(u32 size);
    [[nodiscard]] u8* address() const noexcept { return my_address; }

    /// `size` rounded up; a size in the last 65,535 below 4 GiB wraps to 0, like 0 itself.
    [[nodiscard]] static constexpr u32 rounded(u32 size) noexcept { return (size + 65535U) & 0xFFFF0000U; }

private:
    void release() noexcept;

    u8* my_address = nullptr;
    u32 my_size = 0;
};

} // namespace VOR2_LOADER
