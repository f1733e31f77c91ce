#pragma once

#include "headless/graph/scene.h"

namespace headless {

/// As much of the first path of each node of a scene as no other path ends in, worked out for all at once, in time that
/// grows with the nodes and their instances and not with how many share a name. Good until a name or a place in the DAG
/// changes.
class UniqueNames {
public:
    explicit UniqueNames(const Scene& scene);
    std::string of(const Node& node) const;

private:
    std::unordered_map<const Node*, int> names_needed_; // where it is more than the node's own
};

} // namespace headless
