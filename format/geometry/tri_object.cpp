#include "format/geometry/tri_object.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

void VOR2_TRI_OBJECT::add_sub_object_triangle(const VOR2_CARD32_TRIPLE& triangle, u32 material_id,
                                              u32 expected_triangles) {
    for (VOR2_TRI_SUB_OBJECT& sub_object : sub_objects) {
        if (sub_object.material_id != material_id) continue;
        sub_object.add_triangle_index(triangle);
        return;
    }
    VOR2_TRI_SUB_OBJECT& added = sub_objects.emplace_back();
    added.material_id = material_id;
    added.triangles.reserve(expected_triangles);
    added.add_triangle_index(triangle);
}

template struct RECORD_OPERATIONS<VOR2_GEOM_OBJECT>;
template struct RECORD_OPERATIONS<VOR2_TRI_SUB_OBJECT>;
template struct RECORD_OPERATIONS<VOR2_TRI_OBJECT>;
template struct RECORD_OPERATIONS<VOR2_RIGID>;

} // namespace VOR2_LOADER
