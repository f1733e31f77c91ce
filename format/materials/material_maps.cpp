#include "format/materials/material_maps.h"

namespace VOR2_LOADER {
namespace {

template<class MAP>
bool same_kind_and_record(const MAP& map, const VOR2_MATERIAL_MAP& other) {
    return map.kind() == other.kind() && map == static_cast<const MAP&>(other);
}

} // namespace

OWNED<VOR2_MATERIAL_MAP> VOR2_MATERIAL_MAP::make(u32 kind) {
    if (kind == VOR2_BITMAP_MATERIAL_MAP::KIND) return OWNED<VOR2_MATERIAL_MAP>(new VOR2_BITMAP_MATERIAL_MAP());
    if (kind == VOR2_NORMAL_MATERIAL_MAP::KIND) return OWNED<VOR2_MATERIAL_MAP>(new VOR2_NORMAL_MATERIAL_MAP());
    return {};
}

bool VOR2_BITMAP_MATERIAL_MAP::equals(const VOR2_MATERIAL_MAP& other) const {
    return same_kind_and_record(*this, other);
}
std::string_view VOR2_BITMAP_MATERIAL_MAP::class_name() const {
    return record().class_name;
}
OWNED<VOR2_MATERIAL_MAP> VOR2_BITMAP_MATERIAL_MAP::clone() const {
    return OWNED<VOR2_MATERIAL_MAP>(new VOR2_BITMAP_MATERIAL_MAP(*this));
}

bool VOR2_NORMAL_MATERIAL_MAP::equals(const VOR2_MATERIAL_MAP& other) const {
    return same_kind_and_record(*this, other);
}
std::string_view VOR2_NORMAL_MATERIAL_MAP::class_name() const {
    return record().class_name;
}
OWNED<VOR2_MATERIAL_MAP> VOR2_NORMAL_MATERIAL_MAP::clone() const {
    return OWNED<VOR2_MATERIAL_MAP>(new VOR2_NORMAL_MATERIAL_MAP(*this));
}

} // namespace VOR2_LOADER
