#include "headless/nodes/kinds.h"

#include "headless/graph/standard_types.h"

namespace headless {

void add_standard_types(NodeTypes& types) {
    for (const auto add_family :
         {add_base_kinds,      add_transform_kinds, add_constraint_kinds, add_ik_kinds,         add_shape_kinds,
          add_mesh_kinds,      add_set_kinds,       add_shading_kinds,    add_deformer_kinds,   add_curve_kinds,
          add_character_kinds, add_pair_blend_kind, add_layer_kinds,      add_arithmetic_kinds, add_choosing_kinds,
          add_vector_kinds,    add_matrix_kinds,    add_quaternion_kinds, add_expression_kind,  add_scene_kinds})
        add_family(types);
}

} // namespace headless
