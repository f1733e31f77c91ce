#include "format/materials/materials.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

OWNED<VOR2_MATERIAL> VOR2_MATERIAL::make(u32 kind) {
    return make_of_kind<VOR2_MATERIAL>(kind);
}

template struct RECORD_OPERATIONS<VOR2_MATERIAL>;
template struct RECORD_OPERATIONS<VOR2_STANDARD_MATERIAL>;
template struct RECORD_OPERATIONS<VOR2_SHADER_STRING_PARAM>;
template struct RECORD_OPERATIONS<VOR2_SHADER_LIGHT_PARAM>;
template struct RECORD_OPERATIONS<VOR2_SHADER_MATERIAL>;

} // namespace VOR2_LOADER
