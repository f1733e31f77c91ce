#include "format/materials/lights.h"

namespace VOR2_LOADER {

OWNED<VOR2_LIGHT> VOR2_LIGHT::make(u32 kind) {
    return make_of_kind<VOR2_LIGHT, VOR2_DIRECTIONAL_LIGHT, VOR2_POINT_LIGHT, VOR2_SPOT_LIGHT>(kind);
}

} // namespace VOR2_LOADER
