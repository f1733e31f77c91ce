#pragma once

#include "headless/graph/node_type.h"

namespace headless {

/// The kinds of nodes that files and scripts name. The graph knows none of them by name but those that make a DAG;
/// the table is told in headless/nodes.
void add_standard_types(NodeTypes& types);

} // namespace headless
