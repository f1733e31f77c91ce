#pragma once

#include "headless/graph/value.h"

#include <vector>

namespace headless {

struct IndexRange {
    std::size_t first, end;
};
/// Which elements of a kind ("f", "vtx") a list of components ("f[0]", "f[2:5]", "f[*]") means: ranges that rise and
/// don't meet. They are cut at the last of `count` elements; words that name none of the kind are passed over.
std::vector<IndexRange> elements_of(const Value& components, std::string_view kind, std::size_t count);

/// The same in the order of the list, where further values go along with it; they may meet.
std::vector<IndexRange> elements_in_order(const Value& components, std::string_view kind, std::size_t count);

inline std::vector<IndexRange> faces_of(const Value& components, std::size_t face_count) {
    return elements_of(components, "f", face_count);
}

} // namespace headless
