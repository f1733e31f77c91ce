#include "format/core/entity.h"
#include "format/core/record_operations.h"
#include "format/core/value_records.h"

namespace VOR2_LOADER {

template struct RECORD_OPERATIONS<VOR2_ENTITY>;
template struct RECORD_OPERATIONS<VOR2_COLOUR>;
template struct RECORD_OPERATIONS<VOR2_BOUNDING_BOX>;
template struct RECORD_OPERATIONS<VOR2_BINORMAL_TANGENT>;
template struct RECORD_OPERATIONS<VOR2_RECTF>;
template struct RECORD_OPERATIONS<VOR2_FLOAT32_RANGE>;

} // namespace VOR2_LOADER
