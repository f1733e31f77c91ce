#pragma once

/// Several single-precision numbers that are worked with at once, each in its lane. A lane's operations are those of a
/// plain number, one by one in the order written, so that the bits are those of the plain formula.

#include "support/types.h"

#include <cstddef>
#include <cstring>

namespace VOR2_LOADER {

#if defined(__GNUC__)
// The compilers' own vectors, which are two or more of the processor's where it has none so wide.
using LANES_4 = f32 __attribute__((vector_size(16)));
using LANES_8 = f32 __attribute__((vector_size(32)));
/// For the functions that a road for several kinds of processors is made of, each of them built for its own.
#define VOR2_ALWAYS_INLINE [[gnu::always_inline]] inline
#else
#define VOR2_ALWAYS_INLINE __forceinline
template<int COUNT>
struct PLAIN_LANES {
    f32 lane[COUNT];

    f32& operator[](int i) noexcept { return lane[i]; }
    f32 operator[](int i) const noexcept { return lane[i]; }
    friend PLAIN_LANES operator+(const PLAIN_LANES& a, const PLAIN_LANES& b) noexcept {
        PLAIN_LANES sum;
        for (int i = 0; i < COUNT; ++i) sum.lane[i] = a.lane[i] + b.lane[i];
        return sum;
    }
    friend PLAIN_LANES operator*(const PLAIN_LANES& a, const PLAIN_LANES& b) noexcept {
        PLAIN_LANES product;
        for (int i = 0; i < COUNT; ++i) product.lane[i] = a.lane[i] * b.lane[i];
        return product;
    }
    friend PLAIN_LANES operator*(const PLAIN_LANES& a, f32 b) noexcept {
        PLAIN_LANES product;
        for (int i = 0; i < COUNT; ++i) product.lane[i] = a.lane[i] * b;
        return product;
    }
    PLAIN_LANES& operator+=(const PLAIN_LANES& b) noexcept { return *this = *this + b; }
};
using LANES_4 = PLAIN_LANES<4>;
using LANES_8 = PLAIN_LANES<8>;
#endif

[[nodiscard]] inline LANES_4 load_lanes(const f32* from) noexcept {
    LANES_4 lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}
inline void store_lanes(f32* to, const LANES_4& lanes) noexcept {
    std::memcpy(to, &lanes, sizeof lanes);
}

/// Eight lanes fill one register of most x86 processors, but not of the oldest that a build runs on. A function marked
/// `VOR2_WIDE_TARGET` is built for the former and called where `has_wide_lanes` says so. (GCC for Windows is left out:
/// it keeps such registers on stacks that aren't aligned for them.)
#if defined(__GNUC__) && defined(__x86_64__) && !defined(_WIN32)
#define VOR2_WIDE_TARGET __attribute__((target("avx")))
[[nodiscard]] inline bool has_wide_lanes() noexcept {
    return __builtin_cpu_supports("avx") != 0;
}
#else
#define VOR2_WIDE_TARGET
[[nodiscard]] inline bool has_wide_lanes() noexcept {
    return false;
}
#endif

} // namespace VOR2_LOADER
