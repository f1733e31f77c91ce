#pragma once

/// Meshes beside the hierarchy, for who asks for them: the commands never do.

#include "format/scene/root.h"
#include "host/export/node_list.h"
#include "host/export/sample_range.h"

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Whether exports take the meshes of their nodes along. Off unless the program around the plug-in turns it
/// on.
[[nodiscard]] bool& exports_meshes();

/// Adds the mesh shapes of the exported nodes to a root whose hierarchy is complete: a rigid for each, with
/// its name, a mapping channel for each UV set, numbered from 1, and the materials that it uses, each
/// translated once. Intermediate shapes are left out.
///
/// Each mesh gets a node of its own under that of its transform, which turns vertices into the axes of nodes
/// and brings in the scale and shear that the hierarchy doesn't carry, so that at the first sample every
/// mesh stands as in the host, from the uppermost exported node on; a sheared one needs two. From there it
/// moves with its parent as a rigid body.
///
/// A shader that is no lambert becomes a material with its name and nothing else, with a warning; so does a
/// mesh that the host doesn't give whole become an empty one, with an error.
///
/// False, with an error and no mesh added, when a file can't hold them all.
[[nodiscard]] bool export_meshes(VOR2& root, const NODE_LIST& list, const SAMPLE_RANGE& range);

} // namespace VOR2_EXPORTER_MAYA
