#include "format/geometry/anim_mesh.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

template struct RECORD_OPERATIONS<VOR2_ANIM_MESH_VERT>;
template struct RECORD_OPERATIONS<VOR2_ANIM_MESH>;

} // namespace VOR2_LOADER
