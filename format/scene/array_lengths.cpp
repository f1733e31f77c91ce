#include "format/scene/array_lengths.h"

#include "format/core/record_operations.h"
#include "format/scene/detail/root_chunks.h"

namespace VOR2_LOADER {

VOR2_ARRAY_LENGTH_HELPER::VOR2_ARRAY_LENGTH_HELPER(const VOR2& root) {
    each_chunk_row([&](const auto& row) {
        if constexpr (std::remove_cvref_t<decltype(row)>::IS_ARRAY)
            this->*row.count = static_cast<u32>((root.*row.member).size());
    });
}

bool VOR2_ARRAY_LENGTH_HELPER::load(VOR2_INPUT_BUFFER& buffer, f32 version) {
    const bool loaded = RECORDED::load(buffer, version);
    count_of_counts = COUNT_OF_COUNTS;
    return loaded;
}

void VOR2_ARRAY_LENGTH_HELPER::apply_to(VOR2& root, u64 most) const {
    each_chunk_row([&](const auto& row) {
        if constexpr (std::remove_cvref_t<decltype(row)>::IS_ARRAY) {
            const u64 room = std::min<u64>(this->*row.count, most);
            most -= room;
            (root.*row.member).reserve(room);
        }
    });
}

template struct RECORD_OPERATIONS<VOR2_ARRAY_LENGTH_HELPER>;

} // namespace VOR2_LOADER
