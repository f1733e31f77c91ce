#include "headless/geometry/geometry.h"

#include "headless/geometry/mesh_data.h"

namespace headless {

void register_geometry() {
    register_node_data("mesh", [](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<MeshData>(); });
}

} // namespace headless
