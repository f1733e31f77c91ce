#include "format/scene/instances.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

bool VOR2_INSTANCE::equals(const VOR2_INSTANCE& other) const {
    return other.kind() == KIND && *this == other;
}

OWNED<VOR2_INSTANCE> VOR2_INSTANCE::clone() const {
    return make_owned<VOR2_INSTANCE>(*this);
}

OWNED<VOR2_INSTANCE> VOR2_INSTANCE::make_of_chunk(u32 chunk_id) {
    switch (chunk_id) {
    case VOR2_INSTANCE::CHUNK_ID:
        return make_owned<VOR2_INSTANCE>();
    case VOR2_GEOM_INSTANCE::CHUNK_ID:
        return make_owned<VOR2_GEOM_INSTANCE>();
    case VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS::CHUNK_ID:
        return make_owned<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS>();
    case VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS::CHUNK_ID:
        return make_owned<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS>();
    default:
        return {};
    }
}

template struct RECORD_OPERATIONS<VOR2_INSTANCE>;
template struct RECORD_OPERATIONS<VOR2_GEOM_INSTANCE>;
template struct RECORD_OPERATIONS<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS>;
template struct RECORD_OPERATIONS<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS>;

} // namespace VOR2_LOADER
