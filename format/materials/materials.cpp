#include "format/materials/materials.h"

namespace VOR2_LOADER {

OWNED<VOR2_MATERIAL> VOR2_MATERIAL::make(u32 kind) {
    return make_of_kind<VOR2_MATERIAL, VOR2_STANDARD_MATERIAL, VOR2_SHADER_MATERIAL>(kind);
}

} // namespace VOR2_LOADER
