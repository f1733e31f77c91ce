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

} // namespace headless
