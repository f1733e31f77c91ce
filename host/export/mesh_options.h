#pragma once

namespace VOR2_EXPORTER_MAYA {

/// What an export takes along beside the hierarchy. The commands never ask for any of it: a program around the
/// plug-in does.
struct MESH_OPTIONS {
    bool meshes = false;         ///< the meshes of the exported nodes
    bool include_bones = false;  ///< and the bones of their skins that aren't among the nodes
    bool skin_and_morph = false; ///< of a mesh with a skin and blend shapes both, where the skin alone goes otherwise
    bool moving_points = false;  ///< what other deformers move, with a key for each vertex at each sample
};
[[nodiscard]] MESH_OPTIONS& mesh_options();

} // namespace VOR2_EXPORTER_MAYA
