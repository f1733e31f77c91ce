#pragma once

#include "headless/graph/node.h"

#include <memory>
#include <vector>

namespace headless {

/// One way from the world down to a DAG node. A node with a single way is its own path and stays right when
/// it is moved elsewhere; where instances make several ways, the path keeps the nodes of its own.
class DagPath {
public:
    DagPath() = default;
    explicit DagPath(NodeHandle leaf) : leaf_(leaf) {}
    /// `way` from the top-level node to the leaf, both included.
    explicit DagPath(std::vector<NodeHandle> way);
    DagPath(NodeHandle leaf, std::shared_ptr<const std::vector<NodeHandle>> way) : leaf_(leaf), way_(std::move(way)) {}

    NodeHandle leaf() const { return leaf_; }
    bool is_explicit() const { return way_ != nullptr; }
    const std::vector<NodeHandle>& way() const { return *way_; }
    const std::shared_ptr<const std::vector<NodeHandle>>& shared_way() const { return way_; }
    explicit operator bool() const { return static_cast<bool>(leaf_); }
    bool operator==(const DagPath& other) const;

private:
    NodeHandle leaf_;
    std::shared_ptr<const std::vector<NodeHandle>> way_;
};

struct DagPathHash {
    std::size_t operator()(const DagPath& path) const;
};

} // namespace headless
