#pragma once

#include "format/scene/root.h"

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Turns each instance that claims triangle groups of its own (`VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS`)
/// but has the triangles of its object into a lighter class: one that differs in materials, or in nothing.
/// The triangles of the last group aren't compared. Order and number of the instances stay. An instance
/// whose object isn't there stays as it is. Reaches into the scenes of `xrefs_15` and `xrefs_20`.
void simplify_instances(VOR2& root);

/// Removes the materials that no mesh and no instance uses and closes the gaps: the others keep their order
/// and all references follow. An id that names no material, as well as "none", is left as it is and uses
/// nothing. Reaches into the scenes of `xrefs_15` and `xrefs_20`.
void drop_unused_materials(VOR2& root);

} // namespace VOR2_EXPORTER_MAYA
