#pragma once

#include "headless/geometry/mesh.h"
#include "headless/graph/scene.h"

namespace headless {

/// Nodes that one mesh's history may hold; what stands behind more isn't looked at, with a note.
inline constexpr std::size_t max_history = 512;

/// The mesh of a mesh node as its history makes it: from the node at the far end of what is connected to `inMesh` (a
/// mesh's own lists, or a creation node), through what stands between, to this node's tweaks.
/// Cubes, planes, spheres, cylinders and cones are made from their parameters at the current time; faces are divided,
/// points transformed and vertices coloured by the nodes that do so. Deformers (skin clusters, blend shapes, clusters
/// and their like) pass points on as they come, so a skinned mesh stands in its bind pose. What isn't evaluated passes
/// its input on and is named in the mesh's notes. Null for a node that isn't a mesh.
/// The result is kept until one of the nodes it came from changes.
std::shared_ptr<const Mesh> mesh_of(Scene& scene, Node& node);

/// Whether a deformer by joints stands in the history of a mesh node: its points are those of its bind pose.
bool is_skinned(const Node& node);

} // namespace headless
