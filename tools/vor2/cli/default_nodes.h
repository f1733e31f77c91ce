#pragma once

#include "headless/graph/scene.h"

#include <string>
#include <vector>

namespace tool {

/// What is exported of a scene when nobody says: the top-level nodes that are joints or have joints below them, or, in
/// a scene without joints, all top-level transforms but the ones that every scene has; with `meshes`, behind those with
/// joints also the ones that are above a mesh. Full paths, in the scene's order.
std::vector<std::string> default_nodes(const headless::Scene& scene, bool meshes = false);

} // namespace tool
