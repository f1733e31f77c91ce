#pragma once

#include "headless/graph/value.h"

#include <cstdint>
#include <span>
#include <vector>

namespace headless {

/// The parts of a face in a file, each a word and a list of numbers; "mu" and "mc" have the number of a set between.
enum class FacePart : std::int32_t { outline, hole, uvs, colours, plain_uvs, plain_hole_uvs, plain_colours };

/// A face's words as numbers, part by part: the kind, the set (0 where the part has none), how many numbers, the
/// numbers. Appends to `out`; false, with `out` as it was, for words that aren't of that form.
bool encode_face(const RawTokens& words, std::vector<std::int32_t>& out);

/// The words again, as a file has them.
RawTokens decode_face(std::span<const std::int32_t> numbers);

/// Calls `visit(part, set, span of numbers)` for each part of an encoded face.
template<typename Visit>
void each_part(std::span<const std::int32_t> numbers, Visit&& visit) {
    while (!numbers.empty()) {
        const auto count = static_cast<std::size_t>(numbers[2]);
        visit(static_cast<FacePart>(numbers[0]), numbers[1], numbers.subspan(3, count));
        numbers = numbers.subspan(3 + count);
    }
}

} // namespace headless
