#pragma once

#include "headless/geometry/mesh.h"
#include "headless/graph/scene.h"

namespace headless {

/// What a deformer works on: the mesh that comes in at one of its inputs.
struct DeformerInput {
    Node& deformer;
    int index = 0;              ///< of its `input`
    const Node* from = nullptr; ///< the shape at the far end of the history, which holds the component tags
};

/// Whether nodes of that kind are evaluated here.
bool is_deformer(const NodeType& type);

/// Moves the points of a mesh as the deformer does at the scene's current time: skin clusters, blend shapes, clusters
/// and tweaks. Points stay single, sums are in double precision. A deformer touches the points of its group or its
/// component tag, all without either, by its envelope.
///
/// Skin clusters: out = p G (sum of w_i B_i M_i) inverse(G), with G the geometry's matrix, B_i the bind matrices'
/// inverses and M_i the influences' matrices. A point that no influence has a weight for stays. Normals that were set
/// by hand turn with their points. Blend shapes: out = p + sum of w_i d_i. Between targets at several weights the
/// offset goes straight from one to the next, and beyond them on as it went at the end. Clusters: out = p + w (p G P M
/// inverse(G) - p), P and M the cluster's bind matrix and its handle's.
///
/// What of it isn't evaluated is told in the mesh's notes.
void deform(Scene& scene, const DeformerInput& input, Mesh& mesh);

} // namespace headless
