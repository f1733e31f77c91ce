#pragma once

#include "headless/graph/result.h"

#include <cstdint>

namespace headless {

/// The lines of a file that a reader passes over, gathered so that they cost one warning however many they are.
class MaNotes {
public:
    /// Counts a line that couldn't be followed. The first is told, and its place costs a walk over the text, so it is
    /// asked for the first alone: `where` gives an `Error`.
    template<class Where>
    void passed_over(const Where& where) {
        if (passed_over_++ == 0) first_ = where();
    }
    void tell() const; ///< puts the warning into words

private:
    Error first_;
    std::int64_t passed_over_ = 0;
};

} // namespace headless
