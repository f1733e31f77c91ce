#pragma once

#include "headless/graph/scene.h"

namespace headless {

/// Which shading group each face of one instance of a mesh belongs to.
struct Shading {
    std::vector<Node*> groups; ///< each once: the one of the whole object first, then in order of the object groups
    std::vector<int> of_face;  ///< places in `groups`; -1 for a face that no group has
};

/// Follows the mesh's `instObjGroups` to shading groups: a whole instance, and over it the faces of its object groups.
/// Faces that a group names and that aren't there are passed over; sets that shade nothing too.
Shading shading_of(const Node& mesh, int instance, std::size_t face_count);

} // namespace headless
