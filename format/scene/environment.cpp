#include "format/scene/environment.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

template struct RECORD_OPERATIONS<VOR2_ENVIRONMENT>;
template struct RECORD_OPERATIONS<VOR2_GLOBAL_LIGHT_TINT>;
template struct RECORD_OPERATIONS<VOR2_AMBIENT_LIGHT>;
template struct RECORD_OPERATIONS<VOR2_CAMERA_MAN>;

} // namespace VOR2_LOADER
