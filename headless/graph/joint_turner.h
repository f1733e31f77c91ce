#pragma once

#include "headless/graph/math.h"

#include <vector>

namespace headless {

class EvaluationContext;
class Node;

/// How a kind of node turns joints that no connection of it leads to, as an IK handle turns those of its chain.
/// Several that turn the same joint act in order of rank, those that begin higher up first among equals.
struct JointTurner {
    /// The joints, each under the one before it; none when the node turns nothing. Says what is amiss as an
    /// evaluation error. Asked again whenever such a node or a place in the DAG changed.
    std::vector<Node*> (*joints)(EvaluationContext& context, Node& node);
    int (*rank)(const Node& node);
    /// The rotate values (radians) of one of the joints, by its place among them; `before` are those that it has
    /// without this node. Asked once a joint and time step.
    Vector3 (*rotate)(EvaluationContext& context, Node& node, std::size_t place, const Vector3& before);
};

} // namespace headless
