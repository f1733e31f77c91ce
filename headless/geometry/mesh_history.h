#pragma once

#include "headless/geometry/mesh.h"
#include "headless/graph/scene.h"

namespace headless {

/// Nodes that one mesh's history may hold; what stands behind more isn't looked at, with a note.
inline constexpr std::size_t max_history = 512;

/// The mesh of a mesh node as its history makes it: from the node at the far end of what is connected to `inMesh` (a
/// mesh's own lists, or a creation node), through what stands between, to this node's tweaks.
/// Cubes, planes, spheres, cylinders and cones are made from their parameters at the current time; faces are divided,
/// points transformed and vertices coloured by the nodes that do so; skin clusters, blend shapes, clusters and tweaks
/// move points at the current time. What isn't evaluated passes its input on and is named in the mesh's notes. Null for
/// a node that isn't a mesh.
/// The result is kept until one of the nodes it came from changes.
std::shared_ptr<const Mesh> mesh_of(Scene& scene, Node& node);

/// The mesh at an output or an input of a node, worked out anew unless it is a mesh node's. Null where there is none.
std::shared_ptr<const Mesh> mesh_at(Scene& scene, const Plug& plug);

} // namespace headless
