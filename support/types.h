#pragma once

/// The short names of the fixed-width numbers that the file format is told in.

#include <cstdint>

namespace VOR2_LOADER {

using i32 = std::int32_t;
using i64 = std::int64_t;
using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;
using f32 = float;
using f64 = double;

static_assert(sizeof(f32) == 4 && sizeof(f64) == 8, "the format stores IEEE single and double precision");

} // namespace VOR2_LOADER
