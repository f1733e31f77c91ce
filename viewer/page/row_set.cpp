#include "viewer/page/row_set.h"

#include <algorithm>

namespace vor2::viewer {

u32 RowSet::take() {
    u64 slot = hash_of(row_) & (slots_.size() - 1);
    while (slots_[slot] != empty) {
        if (std::ranges::equal((*this)[slots_[slot]], row_)) {
            row_.clear();
            return slots_[slot];
        }
        slot = (slot + 1) & (slots_.size() - 1);
    }
    const u32 index = count();
    slots_[slot] = index;
    starts_.push_back(words_.size());
    words_.insert(words_.end(), row_.begin(), row_.end());
    row_.clear();
    return index;
}

} // namespace vor2::viewer
