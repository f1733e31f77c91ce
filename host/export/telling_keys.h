#pragma once

#include "host/export/sample_range.h"

namespace VOR2_EXPORTER_MAYA {

/// Adds a key for each of `count` samples but those that stand between two of their own value, which add nothing.
template<class TRACK, class VALUE_AT>
void add_telling_keys(TRACK& track, const SAMPLE_RANGE& range, std::size_t count, const VALUE_AT& value_at) {
    for (std::size_t k = 0; k < count; ++k) {
        const auto& value = value_at(k);
        const bool as_before = k > 0 && value == value_at(k - 1);
        const bool as_behind = k + 1 == count || value == value_at(k + 1);
        if (!(as_before && as_behind)) track.add_key(value, range.time_of(k));
    }
}

} // namespace VOR2_EXPORTER_MAYA
