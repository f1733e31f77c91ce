#include "headless/graph/dag_path.h"

namespace headless {

DagPath::DagPath(std::vector<NodeHandle> way)
    : leaf_(way.empty() ? NodeHandle{} : way.back()),
      way_(std::make_shared<const std::vector<NodeHandle>>(std::move(way))) {}

bool DagPath::operator==(const DagPath& other) const {
    if (leaf_ != other.leaf_) return false;
    if (!way_ || !other.way_) return way_ == other.way_;
    return way_ == other.way_ || *way_ == *other.way_;
}

std::size_t DagPathHash::operator()(const DagPath& path) const {
    std::size_t hash = path.leaf().serial;
    if (!path.is_explicit()) return hash;
    for (const NodeHandle& node : path.way()) hash = hash * 1'099'511'628'211ULL + node.serial;
    return hash;
}

} // namespace headless
