#pragma once

/// Rows of words, each kept once: how vertices that are alike become one.

#include "viewer/page/word_block.h"

namespace vor2::viewer {

class RowSet {
public:
    explicit RowSet(u64 expected_rows) {
        u64 size = 16;
        while (size < expected_rows * 2) size *= 2;
        slots_.assign(size, empty);
    }

    /// The row being put together: append its words, then `take` it.
    std::vector<u32>& row() { return row_; }
    /// The number of the row among the distinct ones. Begins a new one. No more rows than were expected.
    u32 take();

    u32 count() const { return static_cast<u32>(starts_.size()); }
    std::span<const u32> operator[](u32 index) const {
        const u64 end = index + 1 < starts_.size() ? starts_[index + 1] : words_.size();
        return std::span(words_).subspan(starts_[index], end - starts_[index]);
    }

private:
    static constexpr u32 empty = 0xFFFFFFFF;
    std::vector<u32> row_, words_, slots_;
    std::vector<u64> starts_;
};

} // namespace vor2::viewer
