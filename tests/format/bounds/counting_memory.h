#pragma once

/// Counts every byte that this program takes from the heap, by whatever way.

#include "support/types.h"

namespace VOR2_LOADER {

/// Bytes that are taken now, and the most that were since `forget_peak`.
[[nodiscard]] u64 bytes_taken();
[[nodiscard]] u64 peak_of_bytes_taken();
void forget_peak();

} // namespace VOR2_LOADER
