#include "format/scene/positional_object.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

template struct RECORD_OPERATIONS<VOR2_POSITIONAL_OBJECT>;
template struct RECORD_OPERATIONS<VOR2_LIT_OBJECT>;
template struct RECORD_OPERATIONS<UNUSED__VOR2_SCALED_OBJECT>;
template struct RECORD_OPERATIONS<VOR2_HELPER>;

} // namespace VOR2_LOADER
