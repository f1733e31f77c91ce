#pragma once

#include "support/types.h"

#include <span>
#include <string_view>
#include <vector>

namespace vor2::inspect {

/// How many bytes of a scene file go to each kind of record.
struct ChunkSize {
    VOR2_LOADER::i32 chunk_id;
    std::string_view name; ///< "matrix hierarchy"; "unknown" for an id that the format doesn't have
    VOR2_LOADER::u64 count;
    VOR2_LOADER::u64 bytes; ///< headers included
};

struct ChunkTable {
    std::vector<ChunkSize> kinds;       ///< the largest first
    VOR2_LOADER::u64 bytes_in_none = 0; ///< the magic word, and what no chunk's length accounts for
};

/// Walks the chunk headers of a whole file. Where a length doesn't fit the file the walk ends.
ChunkTable measure_chunks(std::span<const VOR2_LOADER::u8> file);

} // namespace vor2::inspect
