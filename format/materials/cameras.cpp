#include "format/materials/cameras.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

OWNED<VOR2_CAMERA_EFFECT> VOR2_CAMERA_EFFECT::make(u32 kind) {
    return make_of_kind<VOR2_CAMERA_EFFECT>(kind);
}

template struct RECORD_OPERATIONS<VOR2_CAMERA_EFFECT>;
template struct RECORD_OPERATIONS<VOR2_CAMERA_MOTION_BLUR_EFFECT>;
template struct RECORD_OPERATIONS<VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT>;
template struct RECORD_OPERATIONS<VOR2_CAMERA>;

} // namespace VOR2_LOADER
