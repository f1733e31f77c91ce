#include "format/materials/lights.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

OWNED<VOR2_LIGHT> VOR2_LIGHT::make(u32 kind) {
    return make_of_kind<VOR2_LIGHT>(kind);
}

template struct RECORD_OPERATIONS<MAX_ATTENUATION>;
template struct RECORD_OPERATIONS<VOR2_MAX_LIGHT_PARAMS>;
template struct RECORD_OPERATIONS<VOR2_LIGHT_OBJECT_SHADOW_PARAMS>;
template struct RECORD_OPERATIONS<VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS>;
template struct RECORD_OPERATIONS<VOR2_LIGHT_SHADOW_MAP_PARAMS>;
template struct RECORD_OPERATIONS<VOR2_LIGHT_SHADOW_PARAMS>;
template struct RECORD_OPERATIONS<VOR2_LIGHT>;
template struct RECORD_OPERATIONS<VOR2_DIRECTIONAL_LIGHT>;
template struct RECORD_OPERATIONS<VOR2_POINT_LIGHT>;
template struct RECORD_OPERATIONS<VOR2_SPOT_LIGHT>;

} // namespace VOR2_LOADER
