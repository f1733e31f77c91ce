#include "format/materials/cameras.h"

namespace VOR2_LOADER {

OWNED<VOR2_CAMERA_EFFECT> VOR2_CAMERA_EFFECT::make(u32 kind) {
    return make_of_kind<VOR2_CAMERA_EFFECT, VOR2_CAMERA_MOTION_BLUR_EFFECT, VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT>(kind);
}

} // namespace VOR2_LOADER
