#pragma once

/// Changes of texts that keep their frame. Linked into a target, it takes the place of the fuzzer's own changes.

#include <random>
#include <string>

namespace fuzz {

using PieceMaker = std::string (*)(std::minstd_rand& random);

/// A piece for texts of the target's language, to be put among theirs; null where the target has no maker of them.
extern PieceMaker make_piece;

} // namespace fuzz
