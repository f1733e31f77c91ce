#pragma once

#include "headless/graph/node.h"

#include <span>

namespace headless {

/// A node on the road to what moves other nodes, and what of it this host doesn't work out.
struct Unevaluated {
    Node* node = nullptr;
    std::string why;           ///< "kinds of this name aren't evaluated", or what is short in this one
    std::vector<Node*> moving; ///< which of the nodes asked for hang on it, in the order asked
};

/// Follows all that the world matrices of the nodes hang on (their own values, those of what they stand under, and
/// every connection into these, through as many nodes as there are) and gives what isn't evaluated there, each node
/// once, in order of creation. Takes time linear in what it walks over.
std::vector<Unevaluated> find_unevaluated(Scene& scene, std::span<Node* const> moving);

/// "The animClip 'walk' isn't evaluated, and moves 'hips', 'knee' and 12 more: why".
std::string told(const Unevaluated& found);

} // namespace headless
