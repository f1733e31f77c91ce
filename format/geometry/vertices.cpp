#include "format/geometry/vertices.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

template struct RECORD_OPERATIONS<VOR2_RIGID_VERT>;
template struct RECORD_OPERATIONS<VOR2_CARD32_TRIPLE>;

} // namespace VOR2_LOADER
