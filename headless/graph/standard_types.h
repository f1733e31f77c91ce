#pragma once

#include "headless/graph/node_type.h"

namespace headless {

/// The types that files and scripts name: the DAG's and the constraints', with every attribute that a local or a
/// world matrix follows from; curves and what stands between a curve and its transform; and the types of the
/// default nodes. Attributes of theirs that no evaluation reads come to a node when a file sets them.
void add_standard_types(NodeTypes& types);
void add_animation_types(NodeTypes& types);
void add_mesh_types(NodeTypes& types);

} // namespace headless
