#pragma once

/// Meshes beside the hierarchy, for who asks for them: the commands never do.

#include "format/scene/root.h"
#include "host/export/mesh_options.h"
#include "host/export/node_list.h"
#include "host/export/sample_range.h"

#include <set>
#include <string>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Takes the bones of the skins on exported meshes into account before anything is sampled. With `include_bones` those
/// that aren't in the list come into it, each with the transforms above it; without, the result is false, with an error
/// for each. `carrying` gets the full paths of all nodes that a skin hangs on: their keys count.
[[nodiscard]] bool add_bones(NODE_LIST& list, std::set<std::string>& carrying);

/// Adds the mesh shapes of the exported nodes to a root whose hierarchy is complete, with their names, a mapping
/// channel for each UV set and the materials that they use, each translated once. Intermediate shapes are left out.
///
/// A mesh that a skin cluster moves becomes a weighted mesh (see `skin_binding.h`), and poses as in the host at every
/// sample. One that blend shapes move becomes a morph mesh (`morph_shapes.h`); with a skin beside, the skin alone goes,
/// or both by option. What other deformers do is as it is at the first frame, and they are named, unless by option such
/// a mesh becomes an animated mesh.
///
/// Every other mesh becomes a rigid. It gets a node of its own under that of its transform, which turns vertices into
/// the axes of nodes and brings in the scale and shear that the hierarchy doesn't carry, so that at the first sample
/// every mesh stands as in the host, from the uppermost exported node on; a sheared one needs two. From there it moves
/// with its parent as a rigid body.
///
/// Shaders become materials as `surfaces.h` tells. A mesh that the host doesn't give whole becomes an empty one, with
/// an error.
///
/// False, with an error, when a file can't hold them all or a skin can't be had.
[[nodiscard]] bool export_meshes(VOR2& root, const NODE_LIST& list, const SAMPLE_RANGE& range);

} // namespace VOR2_EXPORTER_MAYA
