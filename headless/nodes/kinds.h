#pragma once

#include "headless/graph/node_type.h"

/// Every kind of node that this host knows, one file a family. A kind is one entry in one of them: its attributes with
/// their long and short names and defaults, and what its outputs are. Attributes that nothing here reads come to a node
/// when a file sets them. A base stands before what derives from it.
namespace headless {

void add_base_kinds(NodeTypes& types);
void add_transform_kinds(NodeTypes& types);
void add_constraint_kinds(NodeTypes& types);
void add_ik_kinds(NodeTypes& types);
void add_shape_kinds(NodeTypes& types);
void add_mesh_kinds(NodeTypes& types);
void add_set_kinds(NodeTypes& types);
void add_shading_kinds(NodeTypes& types);
void add_deformer_kinds(NodeTypes& types);
void add_curve_kinds(NodeTypes& types);
void add_character_kinds(NodeTypes& types);
void add_pair_blend_kind(NodeTypes& types);
void add_layer_kinds(NodeTypes& types);
void add_arithmetic_kinds(NodeTypes& types);
void add_choosing_kinds(NodeTypes& types);
void add_vector_kinds(NodeTypes& types);
void add_matrix_kinds(NodeTypes& types);
void add_quaternion_kinds(NodeTypes& types);
void add_expression_kind(NodeTypes& types);
void add_scene_kinds(NodeTypes& types);

} // namespace headless
