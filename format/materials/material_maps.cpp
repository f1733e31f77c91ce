#include "format/materials/material_maps.h"

namespace VOR2_LOADER {

OWNED<VOR2_MATERIAL_MAP> VOR2_MATERIAL_MAP::make(u32 kind) {
    return make_of_kind<VOR2_MATERIAL_MAP, VOR2_BITMAP_MATERIAL_MAP, VOR2_NORMAL_MATERIAL_MAP>(kind);
}

} // namespace VOR2_LOADER
