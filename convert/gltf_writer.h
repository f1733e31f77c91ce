#pragma once

/// glTF 2.0 out of scenes: what a scene holds, as far as glTF has a word for it, and the rest in `extras`.
///
/// - Nodes keep their names and hierarchy; every track with more than one key is an animation channel, with each of its
///   keys, and with more where a straight run of glTF's would leave the file's by more than 0.05 degrees.
/// - A mesh becomes a primitive for each of its groups. A skinned mesh is written at rest, with a skin of the nodes
///   that move it, and stands at the top, where glTF wants it. Weights are brought to a sum of 1.
/// - Materials follow `convert/material_values.h`. Textures go into the file's buffer.
/// - Lights, cameras, splines (as line strips), helpers and instances stand under or at their nodes, and a referenced
///   scene under a node with the reference's name.

#include "convert/report.h"
#include "format/vor2.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace vor2::convert {

struct GltfOptions {
    bool binary = true;                  ///< one .glb file; else JSON with a buffer in a file of its own
    std::string buffer_name;             ///< what the JSON calls that file
    std::size_t most_influences = 0;     ///< of joints on a vertex, the strongest kept; 0 keeps all
    bool anim_meshes_as_targets = false; ///< a morph target for each key; else posed at `pose_time`
    std::optional<float> pose_time;      ///< the start of the scene when absent
    /// Gives the bytes of a texture by the name that the scene has for it; nothing when there is no such file. A
    /// texture that isn't there fails the conversion, unless `leave_out_textures`.
    std::function<std::optional<std::vector<std::uint8_t>>(const std::string& name)> texture;
    bool leave_out_textures = false;
};

/// A scene with the name of its animation.
struct Take {
    VOR2_LOADER::VOR2* scene; ///< its clock is moved
    std::string name;
};

struct GltfFile {
    std::string bytes;
    std::string buffer; ///< what the file beside it holds; empty for a .glb
};

/// The first take gives the scene; of the further ones only the motion is taken, node by node of the same path of
/// names, each as an animation of its own. Nodes of a further take that the first doesn't have, and the other way
/// round, are told in notes.
Report write_gltf(std::span<const Take> takes, const GltfOptions& options, GltfFile& out);

} // namespace vor2::convert
