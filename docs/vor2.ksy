# Written by `format_reference` from the tables of the library's records: not to be changed by hand.
meta:
  id: vor2
  title: Vor2 scene
  file-extension: vr2
  license: MIT
  ks-version: 0.9
  endian: le
doc: |
  An animated scene: a magic word and then chunks to the end of the file. docs/format.md tells what the
  records mean. Every version up to 1.16 is read; a field that a file's version doesn't have is absent.
  Chunk 0 stands first, where every writer puts it, and holds the version that all records go by.
seq:
  - id: magic
    contents: [0x01, 0x32, 0x52, 0x56]
  - id: head
    type: first_chunk
  - id: chunks
    type: chunk
    repeat: eos
instances:
  version:
    value: head.record.version
-root-members: [inf, environment, global_light_tint, ambient_light, camera_man, lights, cameras, rigids, anim_meshes, morph_meshes, weighted_meshes, bezier_spline_objects, helpers, xref_speedtrees, matrix_hierarchy, materials, light_instances, camera_instances, rigid_instances, anim_mesh_instances, morph_mesh_instances, weighted_mesh_instances, bezier_spline_instances, helper_instances, xrefs_15, xrefs_20, xref_objects, xref_object_instances, speedtree_instances]
types:
  first_chunk:
    seq:
      - id: len_chunk
        type: u4
      - id: chunk_type
        type: s4
        valid: 0
      - id: record
        type: inf
  chunk:
    seq:
      - id: len_chunk
        type: u4
        doc: In bytes, with these four and the chunk's type.
        valid:
          min: 8
      - id: chunk_type
        type: s4
        enum: chunk_type
        doc: A type that isn't among these is passed over.
        valid:
          expr: _.to_i != 0
      - id: unknown
        size: len_chunk - 8
        if: chunk_type.to_i < 0 or chunk_type.to_i >= 24
      - id: record
        type:
          switch-on: chunk_type
          cases:
            'chunk_type::array_lengths': array_length_helper
            'chunk_type::environment': environment
            'chunk_type::global_light_tint': global_light_tint
            'chunk_type::ambient_light': ambient_light
            'chunk_type::lights': light_of_kind
            'chunk_type::cameras': camera
            'chunk_type::rigids': rigid
            'chunk_type::anim_meshes': anim_mesh
            'chunk_type::morph_meshes': morph_mesh
            'chunk_type::weighted_meshes': weighted_mesh
            'chunk_type::bezier_spline_objects': bezier_spline_object
            'chunk_type::matrix_hierarchy': matrix_hierarchy
            'chunk_type::materials': material_of_kind
            'chunk_type::instance': instance_of_kind
            'chunk_type::xrefs_15': xref_15
            'chunk_type::geom_instance': geom_instance_of_kind
            'chunk_type::helpers': helper
            'chunk_type::geom_instance_differing_materials': geom_instance_differing_materials_of_kind
            'chunk_type::geom_instance_differing_sub_objects': geom_instance_differing_sub_objects_of_kind
            'chunk_type::xrefs_20': xref_20
            'chunk_type::xref_objects': xref_object
            'chunk_type::camera_man': camera_man
            'chunk_type::xref_speedtrees': xref_speedtree
  light_of_kind:
    seq:
      - id: kind
        type: u4
        valid:
          any-of: [0, 1, 2]
      - id: object
        type:
          switch-on: kind
          cases:
            0: directional_light
            1: point_light
            2: spot_light
  material_of_kind:
    seq:
      - id: kind
        type: u4
        valid:
          any-of: [0, 1]
      - id: object
        type:
          switch-on: kind
          cases:
            0: standard_material
            1: shader_material
  instance_of_kind:
    seq:
      - id: kind
        type: u4
        enum: instance_kind
        doc: What is repeated.
        valid:
          in-enum: true
      - id: object
        type: instance
  geom_instance_of_kind:
    seq:
      - id: kind
        type: u4
        enum: instance_kind
        doc: What is repeated.
        valid:
          in-enum: true
      - id: object
        type: geom_instance
  geom_instance_differing_materials_of_kind:
    seq:
      - id: kind
        type: u4
        enum: instance_kind
        doc: What is repeated.
        valid:
          in-enum: true
      - id: object
        type: geom_instance_differing_materials
  geom_instance_differing_sub_objects_of_kind:
    seq:
      - id: kind
        type: u4
        enum: instance_kind
        doc: What is repeated.
        valid:
          in-enum: true
      - id: object
        type: geom_instance_differing_sub_objects
  text:
    seq:
      - id: num_units
        type: u2
      - id: units
        size: num_units * 2
    instances:
      value:
        value: units.to_s('UTF-16LE')
  tuple_2:
    seq:
      - id: x
        type: f4
      - id: y
        type: f4
  tuple_3:
    seq:
      - id: x
        type: f4
      - id: y
        type: f4
      - id: z
        type: f4
  tuple_4:
    seq:
      - id: x
        type: f4
      - id: y
        type: f4
      - id: z
        type: f4
      - id: w
        type: f4
  matrix_columns:
    seq:
      - id: columns
        type: tuple_4
        repeat: expr
        repeat-expr: 4
  optional_binormal_tangent:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [10]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            10: binormal_tangent_linear
  optional_bounding_box:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [11]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            11: bounding_box_linear
  optional_colour:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [2]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            2: colour_linear
  optional_float32:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [0]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            0: float32_linear
  optional_float32_range:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [1]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            1: float32_range_linear
  optional_int32:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [8]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            8: int32_rle
  optional_quaternion:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [5, 6]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            5: quaternion_lerp
            6: quaternion_slerp
  optional_rectf:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [7]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            7: rectf_linear
  optional_vector_2:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [4]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            4: vector_2_linear
  optional_vector_3:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [3]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            3: vector_3_linear
  optional_vector_4:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [9]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            9: vector_4_linear
  optional_camera_effect:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [0, 1]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            0: camera_motion_blur_effect
            1: camera_depth_of_field_effect
  optional_material_map:
    seq:
      - id: is_present
        type: u4
      - id: type_number
        type: u4
        if: is_present != 0
        valid:
          any-of: [0, 1]
      - id: object
        if: is_present != 0
        type:
          switch-on: type_number
          cases:
            0: bitmap_material_map
            1: normal_material_map
  max_attenuation:
    -class: "MAX_ATTENUATION"
    seq:
      - id: state_track
        type: optional_int32
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
  ambient_light:
    -class: "VOR2_AMBIENT_LIGHT"
    seq:
      - id: colour_track
        type: optional_colour
  binormal_tangent_linear:
    -class: "VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: binormal_tangent
        repeat: expr
        repeat-expr: num_key_values
  bounding_box_linear:
    -class: "VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: bounding_box
        repeat: expr
        repeat-expr: num_key_values
  colour_linear:
    -class: "VOR2_ANIMATABLE_COLOUR_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: colour
        repeat: expr
        repeat-expr: num_key_values
  float32_linear:
    -class: "VOR2_ANIMATABLE_FLOAT32_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: f4
        repeat: expr
        repeat-expr: num_key_values
  float32_range_linear:
    -class: "VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: float32_range
        repeat: expr
        repeat-expr: num_key_values
  int32_rle:
    -class: "VOR2_ANIMATABLE_INT32_RLE"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: s4
        repeat: expr
        repeat-expr: num_key_values
  quaternion_lerp:
    -class: "VOR2_ANIMATABLE_QUATERNION_LERP"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: tuple_4
        repeat: expr
        repeat-expr: num_key_values
  quaternion_slerp:
    -class: "VOR2_ANIMATABLE_QUATERNION_SLERP"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: tuple_4
        repeat: expr
        repeat-expr: num_key_values
  rectf_linear:
    -class: "VOR2_ANIMATABLE_RECTF_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: rectf
        repeat: expr
        repeat-expr: num_key_values
  vector_2_linear:
    -class: "VOR2_ANIMATABLE_VECTOR_2_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: tuple_2
        repeat: expr
        repeat-expr: num_key_values
  vector_3_linear:
    -class: "VOR2_ANIMATABLE_VECTOR_3_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: tuple_3
        repeat: expr
        repeat-expr: num_key_values
  vector_4_linear:
    -class: "VOR2_ANIMATABLE_VECTOR_4_LINEAR"
    seq:
      - id: cursor_index
        type: u4
      - id: cursor_fraction
        type: f4
      - id: num_key_times
        type: u4
      - id: key_times
        type: f4
        repeat: expr
        repeat-expr: num_key_times
      - id: num_key_values
        type: u4
      - id: key_values
        type: tuple_4
        repeat: expr
        repeat-expr: num_key_values
  anim_bezier_curve:
    -class: "VOR2_ANIM_BEZIER_CURVE"
    seq:
      - id: degree
        type: u4
        doc: "the curve has `degree` + 1 control points"
      - id: length
        type: f4
        doc: "as stored; nothing here works it out"
  anim_bezier_spline:
    -class: "VOR2_ANIM_BEZIER_SPLINE"
    seq:
      - id: num_point_tracks
        type: u4
      - id: point_tracks
        type: optional_vector_3
        repeat: expr
        repeat-expr: num_point_tracks
      - id: num_curves
        type: u4
      - id: curves
        type: anim_bezier_curve
        repeat: expr
        repeat-expr: num_curves
  anim_mesh:
    -class: "VOR2_ANIM_MESH"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: num_mapping_channels
        type: u4
      - id: mapping_channels
        type: u4
        repeat: expr
        repeat-expr: num_mapping_channels
        doc: "entry i names the channel of entry i of every vertex's `uvs`"
      - id: num_vertices
        type: u4
      - id: vertices
        type: anim_mesh_vert
        repeat: expr
        repeat-expr: num_vertices
      - id: num_sub_objects
        type: u4
      - id: sub_objects
        type: tri_sub_object
        repeat: expr
        repeat-expr: num_sub_objects
        doc: "in the order in which their materials first occurred"
      - id: object_word
        type: u4
        doc: "kept and nothing else"
  anim_mesh_vert:
    -class: "VOR2_ANIM_MESH_VERT"
    seq:
      - id: position_track
        type: optional_vector_3
      - id: normal_track
        type: optional_vector_3
      - id: colour_track
        type: optional_colour
      - id: num_uv_tracks
        type: u4
      - id: uv_tracks
        type: optional_vector_3
        repeat: expr
        repeat-expr: num_uv_tracks
        doc: "entry i belongs to entry i of `mapping_channels`"
      - id: num_binormal_tangent_tracks
        type: u4
        if: _root.version >= 1.0299999713897705
      - id: binormal_tangent_tracks
        type: optional_binormal_tangent
        if: _root.version >= 1.0299999713897705
        repeat: expr
        repeat-expr: num_binormal_tangent_tracks
        -default: []
  array_length_helper:
    -class: "VOR2_ARRAY_LENGTH_HELPER"
    seq:
      - id: count_of_counts
        type: u4
        doc: "always written as 23; what a file says is passed over"
      - id: light_count
        type: u4
      - id: camera_count
        type: u4
      - id: rigid_count
        type: u4
      - id: anim_mesh_count
        type: u4
      - id: morph_mesh_count
        type: u4
      - id: weighted_mesh_count
        type: u4
      - id: bezier_spline_object_count
        type: u4
      - id: helper_count
        type: u4
      - id: material_count
        type: u4
      - id: light_instance_count
        type: u4
      - id: camera_instance_count
        type: u4
      - id: rigid_instance_count
        type: u4
      - id: anim_mesh_instance_count
        type: u4
      - id: morph_mesh_instance_count
        type: u4
      - id: weighted_mesh_instance_count
        type: u4
      - id: bezier_spline_instance_count
        type: u4
      - id: helper_instance_count
        type: u4
      - id: xref_15_count
        type: u4
      - id: xref_20_count
        type: u4
        if: _root.version >= 1.1000000238418579
        -default: 0
      - id: xref_object_count
        type: u4
        if: _root.version >= 1.1000000238418579
        -default: 0
      - id: xref_object_instance_count
        type: u4
        if: _root.version >= 1.1000000238418579
        -default: 0
      - id: xref_speedtree_count
        type: u4
        if: _root.version >= 1.1200000047683716
        -default: 0
      - id: speedtree_instance_count
        type: u4
        if: _root.version >= 1.1200000047683716
        -default: 0
  bezier_spline_object:
    -class: "VOR2_BEZIER_SPLINE_OBJECT"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: num_rigid_splines
        type: u4
      - id: rigid_splines
        type: rigid_bezier_spline
        repeat: expr
        repeat-expr: num_rigid_splines
      - id: num_anim_splines
        type: u4
      - id: anim_splines
        type: anim_bezier_spline
        repeat: expr
        repeat-expr: num_anim_splines
  binormal_tangent:
    -class: "VOR2_BINORMAL_TANGENT"
    seq:
      - id: binormal
        type: tuple_3
      - id: tangent
        type: tuple_3
  bitmap_crop_place:
    -class: "VOR2_BITMAP_CROP_PLACE"
    seq:
      - id: crop_place_flag
        type: u4
      - id: crop_place_mode
        type: u4
      - id: crop_place_rect
        type: optional_rectf
  bitmap_material_map:
    -class: "VOR2_BITMAP_MATERIAL_MAP"
    seq:
      - id: name
        type: text
      - id: map_text
        type: text
      - id: map_value
        type: optional_float32
      - id: coordinates
        type: bitmap_material_map_coordinates
      - id: bitmap_params
        type: bitmap_material_map_bitmap_params
      - id: time
        type: bitmap_material_map_time
  bitmap_material_map_bitmap_params:
    -class: "VOR2_BITMAP_MATERIAL_MAP_BITMAP_PARAMS"
    seq:
      - id: bitmap_name
        type: text
      - id: param_word_0
        type: u4
      - id: param_word_1
        type: u4
      - id: crop_place
        type: bitmap_crop_place
  bitmap_material_map_coordinates:
    -class: "VOR2_BITMAP_MATERIAL_MAP_COORDINATES"
    seq:
      - id: coordinate_word_0
        type: u4
      - id: coordinate_word_1
        type: u4
      - id: uv_track_0
        type: optional_vector_2
        doc: "pairs of U and V"
      - id: uv_track_1
        type: optional_vector_2
        doc: "pairs of U and V"
      - id: wrap_mode
        type: uv_material_wrap_mode
      - id: uvw_track
        type: optional_vector_3
  bitmap_material_map_time:
    -class: "VOR2_BITMAP_MATERIAL_MAP_TIME"
    seq:
      - id: time_value_0
        type: f4
      - id: time_value_1
        type: f4
      - id: time_word
        type: u4
  bone_weight_data:
    -class: "VOR2_BONE_WEIGHT_DATA"
    seq:
      - id: bone_index
        type: s4
        doc: "in `nodes` of the root's hierarchy; -1 means no bone"
      - id: weight
        type: f4
  bounding_box:
    -class: "VOR2_BOUNDING_BOX"
    seq:
      - id: min
        type: tuple_3
      - id: max
        type: tuple_3
  camera:
    -class: "VOR2_CAMERA"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: camera_type
        type: u4
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
      - id: range_track_1
        type: optional_float32_range
      - id: range_track_2
        type: optional_float32_range
      - id: num_effects
        type: u4
      - id: effects
        type: optional_camera_effect
        repeat: expr
        repeat-expr: num_effects
        doc: "in any order; an entry may be absent"
  camera_depth_of_field_effect:
    -class: "VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT"
    seq:
      - id: state_track_1
        type: optional_int32
      - id: float_track_1
        type: optional_float32
      - id: state_track_2
        type: optional_int32
      - id: state_track_3
        type: optional_int32
      - id: float_track_2
        type: optional_float32
      - id: float_track_3
        type: optional_float32
      - id: state_track_4
        type: optional_int32
      - id: float_track_4
        type: optional_float32
      - id: state_track_5
        type: optional_int32
      - id: state_track_6
        type: optional_int32
      - id: state_track_7
        type: optional_int32
  camera_man:
    -class: "VOR2_CAMERA_MAN"
    seq:
      - id: camera_track
        type: optional_int32
  camera_motion_blur_effect:
    -class: "VOR2_CAMERA_MOTION_BLUR_EFFECT"
    seq:
      - id: state_track_1
        type: optional_int32
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
      - id: state_track_2
        type: optional_int32
      - id: float_track_3
        type: optional_float32
      - id: state_track_3
        type: optional_int32
      - id: state_track_4
        type: optional_int32
      - id: state_track_5
        type: optional_int32
  card32_triple:
    -class: "VOR2_CARD32_TRIPLE"
    seq:
      - id: first
        type: u4
      - id: second
        type: u4
      - id: third
        type: u4
  colour:
    -class: "VOR2_COLOUR"
    seq:
      - id: red
        type: f4
        doc: "fully transparent black by default"
      - id: green
        type: f4
        doc: "fully transparent black by default"
      - id: blue
        type: f4
        doc: "fully transparent black by default"
      - id: alpha
        type: f4
        doc: "fully transparent black by default"
  directional_light:
    -class: "VOR2_DIRECTIONAL_LIGHT"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: state_track
        type: optional_int32
        if: _root.version >= 1.0700000524520874
        -default: null
      - id: colour_track_1
        type: optional_colour
      - id: colour_track_2
        type: optional_colour
      - id: colour_track_3
        type: optional_colour
      - id: vector_track
        type: optional_vector_3
      - id: float_track
        type: optional_float32
      - id: map
        type: optional_material_map
      - id: max_params
        type: max_light_params
        if: _root.version >= 1.0499999523162842
      - id: shadow_params
        type: light_shadow_params
        if: _root.version >= 1.0700000524520874
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
      - id: linked_index
        type: s4
  environment:
    -class: "VOR2_ENVIRONMENT"
    seq:
      - id: time_range
        type: float32_range
        doc: "first and last time of the scene, in seconds"
      - id: colour_track
        type: optional_colour
      - id: map
        type: optional_material_map
      - id: sample_rate
        type: f8
        if: _root.version >= 1.1599999666213989
        doc: "samples per second at which the scene was taken"
        -default: 0
  extended_properties:
    -class: "VOR2_EXTENDED_PROPERTIES"
    seq:
      - id: num_string_arrays
        type: u4
      - id: string_arrays
        type: named_string_array
        repeat: expr
        repeat-expr: num_string_arrays
      - id: num_int_properties
        type: u4
      - id: int_properties
        type: named_int32
        repeat: expr
        repeat-expr: num_int_properties
      - id: num_float_properties
        type: u4
      - id: float_properties
        type: named_float32
        repeat: expr
        repeat-expr: num_float_properties
      - id: num_vector_3_properties
        type: u4
      - id: vector_3_properties
        type: named_vector_3
        repeat: expr
        repeat-expr: num_vector_3_properties
      - id: num_vector_4_properties
        type: u4
      - id: vector_4_properties
        type: named_vector_4
        repeat: expr
        repeat-expr: num_vector_4_properties
  float32_range:
    -class: "VOR2_FLOAT32_RANGE"
    seq:
      - id: start
        type: f4
      - id: end
        type: f4
  geom_instance:
    -class: "VOR2_GEOM_INSTANCE"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: scale_track
        type: optional_vector_3
        if: _root.version >= 1.1200000047683716 and _root.version <= 1.1299998760223389
        -read-over: true
      - id: instanced_object
        type: u4
        doc: "what it repeats; carried and not interpreted here"
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
  geom_instance_differing_materials:
    -class: "VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: scale_track
        type: optional_vector_3
        if: _root.version >= 1.1200000047683716 and _root.version <= 1.1299998760223389
        -read-over: true
      - id: instanced_object
        type: u4
        doc: "what it repeats; carried and not interpreted here"
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: num_material_list
        type: u4
      - id: material_list
        type: u4
        repeat: expr
        repeat-expr: num_material_list
        doc: "stand for the materials used instead of those of the object"
  geom_instance_differing_sub_objects:
    -class: "VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: scale_track
        type: optional_vector_3
        if: _root.version >= 1.1200000047683716 and _root.version <= 1.1299998760223389
        -read-over: true
      - id: instanced_object
        type: u4
        doc: "what it repeats; carried and not interpreted here"
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: num_sub_objects
        type: u4
      - id: sub_objects
        type: tri_sub_object
        repeat: expr
        repeat-expr: num_sub_objects
  global_light_tint:
    -class: "VOR2_GLOBAL_LIGHT_TINT"
    seq:
      - id: float_track
        type: optional_float32
      - id: colour_track
        type: optional_colour
  helper:
    -class: "VOR2_HELPER"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
  inf:
    -class: "VOR2_INF"
    seq:
      - id: version
        type: f4
        doc: "of the file this came from; `save` always states the current one"
      - id: creator
        type: text
        doc: "what made the file"
      - id: file_info
        type: text
        doc: "free text about the export"
  instance:
    -class: "VOR2_INSTANCE"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: scale_track
        type: optional_vector_3
        if: _root.version >= 1.1200000047683716 and _root.version <= 1.1299998760223389
        -read-over: true
      - id: instanced_object
        type: u4
        doc: "what it repeats; carried and not interpreted here"
  light:
    -class: "VOR2_LIGHT"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: state_track
        type: optional_int32
        if: _root.version >= 1.0700000524520874
        -default: null
      - id: colour_track_1
        type: optional_colour
      - id: colour_track_2
        type: optional_colour
      - id: colour_track_3
        type: optional_colour
      - id: vector_track
        type: optional_vector_3
      - id: float_track
        type: optional_float32
      - id: map
        type: optional_material_map
      - id: max_params
        type: max_light_params
        if: _root.version >= 1.0499999523162842
      - id: shadow_params
        type: light_shadow_params
        if: _root.version >= 1.0700000524520874
  light_atmospheric_shadow_params:
    -class: "VOR2_LIGHT_ATMOSPHERIC_SHADOW_PARAMS"
    seq:
      - id: state_track
        type: optional_int32
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
  light_object_shadow_params:
    -class: "VOR2_LIGHT_OBJECT_SHADOW_PARAMS"
    seq:
      - id: colour_track
        type: optional_colour
      - id: float_track
        type: optional_float32
      - id: state_track_1
        type: optional_int32
      - id: map
        type: optional_material_map
      - id: state_track_2
        type: optional_int32
  light_shadow_map_params:
    -class: "VOR2_LIGHT_SHADOW_MAP_PARAMS"
    seq:
      - id: float_track_1
        type: optional_float32
      - id: state_track_1
        type: optional_int32
      - id: float_track_2
        type: optional_float32
      - id: state_track_2
        type: optional_int32
      - id: state_track_3
        type: optional_int32
  light_shadow_params:
    -class: "VOR2_LIGHT_SHADOW_PARAMS"
    seq:
      - id: state_track
        type: optional_int32
      - id: object_shadow_params
        type: light_object_shadow_params
      - id: atmospheric_shadow_params
        type: light_atmospheric_shadow_params
      - id: shadow_map_params
        type: light_shadow_map_params
  material:
    -class: "VOR2_MATERIAL"
    seq:
      - id: name
        type: text
      - id: material_text
        type: text
        if: _root.version >= 1.0800000429153442
        -default: ""
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.1499999761581421
        doc: "not moved by the clock"
  matrix_hierarchy:
    -class: "VOR2_MATRIX_HIERARCHY"
    seq:
      - id: num_nodes
        type: u4
      - id: nodes
        type: matrix_node
        repeat: expr
        repeat-expr: num_nodes
  matrix_node:
    -class: "VOR2_MATRIX_NODE"
    seq:
      - id: name
        type: text
      - id: parent_index
        type: s4
        doc: "in the same array; negative for a root node"
      - id: position_track
        type: optional_vector_3
        doc: "metres, in the parent's space"
      - id: rotation_track
        type: optional_quaternion
        doc: "relative to the parent"
      - id: scale_track
        type: optional_vector_3
        if: _root.version >= 1.1499999761581421
        doc: "along the node's own axes"
        -default: null
      - id: world_matrix
        type: matrix_columns
        if: _root.version <= 1.0499999523162842
        doc: "at the time that the clock stands at"
        -read-over: true
      - id: extra_text
        type: text
        doc: "kept and nothing else"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
  max_light_params:
    -class: "VOR2_MAX_LIGHT_PARAMS"
    seq:
      - id: attenuation_1
        type: max_attenuation
      - id: attenuation_2
        type: max_attenuation
  morph_mesh:
    -class: "VOR2_MORPH_MESH"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: num_mapping_channels
        type: u4
      - id: mapping_channels
        type: u4
        repeat: expr
        repeat-expr: num_mapping_channels
        doc: "entry i names the channel of entry i of every vertex's `uvs`"
      - id: num_vertices
        type: u4
      - id: vertices
        type: morph_mesh_vert
        repeat: expr
        repeat-expr: num_vertices
      - id: num_sub_objects
        type: u4
      - id: sub_objects
        type: tri_sub_object
        repeat: expr
        repeat-expr: num_sub_objects
        doc: "in the order in which their materials first occurred"
      - id: object_word
        type: u4
        doc: "kept and nothing else"
      - id: num_morph_targets
        type: u4
      - id: morph_targets
        type: named_float32
        repeat: expr
        repeat-expr: num_morph_targets
  morph_mesh_vert:
    -class: "VOR2_MORPH_MESH_VERT"
    seq:
      - id: position
        type: tuple_3
      - id: normal
        type: tuple_3
      - id: colour
        type: colour
      - id: num_uvs
        type: u4
      - id: uvs
        type: tuple_3
        repeat: expr
        repeat-expr: num_uvs
        doc: "entry i belongs to entry i of the object's `mapping_channels`; z is W"
      - id: num_binormal_tangents
        type: u4
        if: _root.version >= 1.0299999713897705
      - id: binormal_tangents
        type: binormal_tangent
        if: _root.version >= 1.0299999713897705
        repeat: expr
        repeat-expr: num_binormal_tangents
        -default: []
      - id: num_target_verts
        type: u4
      - id: target_verts
        type: target_vert
        repeat: expr
        repeat-expr: num_target_verts
        doc: "in no order; of two entries for one target both count"
      - id: morph_offset
        type: tuple_3
        doc: "of the last update; a file remembers it"
  named_float32:
    -class: "VOR2_NAMED_ANIMATABLE"
    seq:
      - id: name
        type: text
      - id: track
        type: optional_float32
        doc: "may be absent"
  named_int32:
    -class: "VOR2_NAMED_ANIMATABLE"
    seq:
      - id: name
        type: text
      - id: track
        type: optional_int32
        doc: "may be absent"
  named_vector_3:
    -class: "VOR2_NAMED_ANIMATABLE"
    seq:
      - id: name
        type: text
      - id: track
        type: optional_vector_3
        doc: "may be absent"
  named_vector_4:
    -class: "VOR2_NAMED_ANIMATABLE"
    seq:
      - id: name
        type: text
      - id: track
        type: optional_vector_4
        doc: "may be absent"
  named_string_array:
    -class: "VOR2_NAMED_STRING_ARRAY"
    seq:
      - id: name
        type: text
      - id: num_strings
        type: u4
      - id: strings
        type: text
        repeat: expr
        repeat-expr: num_strings
  normal_channel_direction:
    -class: "VOR2_NORMAL_CHANNEL_DIRECTION"
    seq:
      - id: first_channel
        type: u4
      - id: second_channel
        type: u4
      - id: third_channel
        type: u4
  normal_material_map:
    -class: "VOR2_NORMAL_MATERIAL_MAP"
    seq:
      - id: name
        type: text
      - id: map_text
        type: text
      - id: map_value
        type: optional_float32
      - id: first_map
        type: optional_material_map
      - id: second_map
        type: optional_material_map
      - id: channel_direction
        type: normal_channel_direction
      - id: normal_map_word
        type: u4
  point_light:
    -class: "VOR2_POINT_LIGHT"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: state_track
        type: optional_int32
        if: _root.version >= 1.0700000524520874
        -default: null
      - id: colour_track_1
        type: optional_colour
      - id: colour_track_2
        type: optional_colour
      - id: colour_track_3
        type: optional_colour
      - id: vector_track
        type: optional_vector_3
      - id: float_track
        type: optional_float32
      - id: map
        type: optional_material_map
      - id: max_params
        type: max_light_params
        if: _root.version >= 1.0499999523162842
      - id: shadow_params
        type: light_shadow_params
        if: _root.version >= 1.0700000524520874
  rectf:
    -class: "VOR2_RECTF"
    seq:
      - id: first
        type: tuple_2
      - id: second
        type: tuple_2
  rigid:
    -class: "VOR2_RIGID"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: num_mapping_channels
        type: u4
      - id: mapping_channels
        type: u4
        repeat: expr
        repeat-expr: num_mapping_channels
        doc: "entry i names the channel of entry i of every vertex's `uvs`"
      - id: num_vertices
        type: u4
      - id: vertices
        type: rigid_vert
        repeat: expr
        repeat-expr: num_vertices
      - id: num_sub_objects
        type: u4
      - id: sub_objects
        type: tri_sub_object
        repeat: expr
        repeat-expr: num_sub_objects
        doc: "in the order in which their materials first occurred"
      - id: object_word
        type: u4
        doc: "kept and nothing else"
  rigid_bezier_curve:
    -class: "VOR2_RIGID_BEZIER_CURVE"
    seq:
      - id: degree
        type: u4
        doc: "the curve has `degree` + 1 control points"
      - id: length
        type: f4
        doc: "as stored; nothing here works it out"
  rigid_bezier_spline:
    -class: "VOR2_RIGID_BEZIER_SPLINE"
    seq:
      - id: num_points
        type: u4
      - id: points
        type: tuple_3
        repeat: expr
        repeat-expr: num_points
      - id: num_curves
        type: u4
      - id: curves
        type: rigid_bezier_curve
        repeat: expr
        repeat-expr: num_curves
  rigid_vert:
    -class: "VOR2_RIGID_VERT"
    seq:
      - id: position
        type: tuple_3
      - id: normal
        type: tuple_3
      - id: colour
        type: colour
      - id: num_uvs
        type: u4
      - id: uvs
        type: tuple_3
        repeat: expr
        repeat-expr: num_uvs
        doc: "entry i belongs to entry i of the object's `mapping_channels`; z is W"
      - id: num_binormal_tangents
        type: u4
        if: _root.version >= 1.0299999713897705
      - id: binormal_tangents
        type: binormal_tangent
        if: _root.version >= 1.0299999713897705
        repeat: expr
        repeat-expr: num_binormal_tangents
        -default: []
  shader_light_param:
    -class: "VOR2_SHADER_LIGHT_PARAM"
    seq:
      - id: name
        type: text
      - id: light_word_0
        type: u4
      - id: light_word_1
        type: u4
  shader_material:
    -class: "VOR2_SHADER_MATERIAL"
    seq:
      - id: name
        type: text
      - id: material_text
        type: text
        if: _root.version >= 1.0800000429153442
        -default: ""
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.1499999761581421
        doc: "not moved by the clock"
      - id: shader_name
        type: text
      - id: shader_word
        type: u4
      - id: num_string_params
        type: u4
      - id: string_params
        type: shader_string_param
        repeat: expr
        repeat-expr: num_string_params
      - id: num_light_params
        type: u4
      - id: light_params
        type: shader_light_param
        repeat: expr
        repeat-expr: num_light_params
      - id: num_float_params
        type: u4
      - id: float_params
        type: named_float32
        repeat: expr
        repeat-expr: num_float_params
      - id: num_int_params
        type: u4
      - id: int_params
        type: named_int32
        repeat: expr
        repeat-expr: num_int_params
      - id: num_vector_3_params
        type: u4
      - id: vector_3_params
        type: named_vector_3
        repeat: expr
        repeat-expr: num_vector_3_params
      - id: num_vector_4_params
        type: u4
      - id: vector_4_params
        type: named_vector_4
        repeat: expr
        repeat-expr: num_vector_4_params
      - id: shader_tail_word
        type: u4
        if: _root.version >= 1.1399999856948853
        -default: 0
  shader_string_param:
    -class: "VOR2_SHADER_STRING_PARAM"
    seq:
      - id: name
        type: text
      - id: value
        type: text
  spot_light:
    -class: "VOR2_SPOT_LIGHT"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: state_track
        type: optional_int32
        if: _root.version >= 1.0700000524520874
        -default: null
      - id: colour_track_1
        type: optional_colour
      - id: colour_track_2
        type: optional_colour
      - id: colour_track_3
        type: optional_colour
      - id: vector_track
        type: optional_vector_3
      - id: float_track
        type: optional_float32
      - id: map
        type: optional_material_map
      - id: max_params
        type: max_light_params
        if: _root.version >= 1.0499999523162842
      - id: shadow_params
        type: light_shadow_params
        if: _root.version >= 1.0700000524520874
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
      - id: linked_index
        type: s4
  standard_material:
    -class: "VOR2_STANDARD_MATERIAL"
    seq:
      - id: name
        type: text
      - id: material_text
        type: text
        if: _root.version >= 1.0800000429153442
        -default: ""
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.1499999761581421
        doc: "not moved by the clock"
      - id: ambient_colour
        type: optional_colour
      - id: colour_track_1
        type: optional_colour
      - id: colour_track_2
        type: optional_colour
      - id: colour_track_3
        type: optional_colour
      - id: transparency
        type: optional_float32
      - id: float_track_1
        type: optional_float32
      - id: float_track_2
        type: optional_float32
      - id: float_track_3
        type: optional_float32
      - id: material_flag
        type: u4
      - id: material_word
        type: u4
      - id: num_maps
        type: u4
      - id: maps
        type: optional_material_map
        repeat: expr
        repeat-expr: num_maps
        doc: "an entry may be absent"
  target_vert:
    -class: "VOR2_TARGET_VERT"
    seq:
      - id: offset
        type: tuple_3
      - id: target_index
        type: s4
        doc: "in the mesh's `morph_targets`; outside of it, it does nothing"
  tri_sub_object:
    -class: "VOR2_TRI_SUB_OBJECT"
    seq:
      - id: num_triangles
        type: u4
      - id: triangles
        type: card32_triple
        repeat: expr
        repeat-expr: num_triangles
      - id: material_id
        type: u4
        doc: "index into the root's `materials`; all bits set means none"
  uv_material_wrap_mode:
    -class: "VOR2_UV_MATERIAL_WRAP_MODE"
    seq:
      - id: u_mode
        type: u4
      - id: v_mode
        type: u4
  weighted_mesh:
    -class: "VOR2_WEIGHTED_MESH"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: num_mapping_channels
        type: u4
      - id: mapping_channels
        type: u4
        repeat: expr
        repeat-expr: num_mapping_channels
        doc: "entry i names the channel of entry i of every vertex's `uvs`"
      - id: num_vertices
        type: u4
      - id: vertices
        type: weighted_mesh_vert
        repeat: expr
        repeat-expr: num_vertices
      - id: num_sub_objects
        type: u4
      - id: sub_objects
        type: tri_sub_object
        repeat: expr
        repeat-expr: num_sub_objects
        doc: "in the order in which their materials first occurred"
      - id: object_word
        type: u4
        doc: "kept and nothing else"
  weighted_mesh_vert:
    -class: "VOR2_WEIGHTED_MESH_VERT"
    seq:
      - id: position
        type: tuple_3
      - id: normal
        type: tuple_3
      - id: colour
        type: colour
      - id: num_uvs
        type: u4
      - id: uvs
        type: tuple_3
        repeat: expr
        repeat-expr: num_uvs
        doc: "entry i belongs to entry i of the object's `mapping_channels`; z is W"
      - id: num_binormal_tangents
        type: u4
        if: _root.version >= 1.0299999713897705
      - id: binormal_tangents
        type: binormal_tangent
        if: _root.version >= 1.0299999713897705
        repeat: expr
        repeat-expr: num_binormal_tangents
        -default: []
      - id: num_bone_weights
        type: u4
      - id: bone_weights
        type: bone_weight_data
        repeat: expr
        repeat-expr: num_bone_weights
      - id: rest_position
        type: tuple_3
        doc: "in world space at the start of the scene's time range"
      - id: rest_normal
        type: tuple_3
  xref_15:
    -class: "VOR2_XREF<15>"
    seq:
      - id: file_name
        type: text
        doc: "as stored; found by `resolve_path` beside the referring file"
  xref_20:
    -class: "VOR2_XREF<20>"
    seq:
      - id: file_name
        type: text
        doc: "as stored; found by `resolve_path` beside the referring file"
  xref_object:
    -class: "VOR2_XREF_OBJECT"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: scale_track
        type: optional_vector_3
        if: _root.version >= 1.1200000047683716 and _root.version <= 1.1299998760223389
        -read-over: true
      - id: xref_name
        type: text
      - id: xref_number
        type: u4
      - id: xref_text
        type: text
  xref_speedtree:
    -class: "VOR2_XREF_SPEEDTREE"
    seq:
      - id: name
        type: text
      - id: text_1
        type: text
        doc: "kept and nothing else"
      - id: text_2
        type: text
        doc: "kept and nothing else"
      - id: matrix_index
        type: u4
        doc: "the object's node in `VOR2_MATRIX_HIERARCHY::nodes` of the same root"
      - id: extended_properties
        type: extended_properties
        if: _root.version >= 1.0399999618530273
      - id: box_track
        type: optional_bounding_box
        if: _root.version >= 1.1299999952316284
        doc: "the object's bounding box over time"
        -default: null
      - id: scale_track
        type: optional_vector_3
        if: _root.version <= 1.1299998760223389
        -read-over: true
      - id: num_light_refs
        type: u4
      - id: light_refs
        type: u4
        repeat: expr
        repeat-expr: num_light_refs
      - id: speedtree_name
        type: text
enums:
  chunk_type:
    0: inf
    1: array_lengths
    2: environment
    3: global_light_tint
    4: ambient_light
    5: lights
    6: cameras
    7: rigids
    8: anim_meshes
    9: morph_meshes
    10: weighted_meshes
    11: bezier_spline_objects
    12: matrix_hierarchy
    13: materials
    14: instance
    15: xrefs_15
    16: geom_instance
    17: helpers
    18: geom_instance_differing_materials
    19: geom_instance_differing_sub_objects
    20: xrefs_20
    21: xref_objects
    22: camera_man
    23: xref_speedtrees
  instance_kind:
    0: anim_mesh_instances
    1: bezier_spline_instances
    2: camera_instances
    3: light_instances
    4: morph_mesh_instances
    5: rigid_instances
    6: weighted_mesh_instances
    7: helper_instances
    8: xref_object_instances
    9: speedtree_instances
