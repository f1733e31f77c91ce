#pragma once

/// What the values of a standard material are taken to mean, here and wherever scenes are converted. The format itself
/// gives most of them no meaning.
///
/// | in the scene | meaning |
/// |---|---|
/// | `ambient_colour` | ambient colour; the base colour too, where there is no diffuse one and this isn't black |
/// | `colour_track_1` | diffuse colour |
/// | `colour_track_2` | specular colour |
/// | `colour_track_3` | emission |
/// | `transparency` | 0 opaque to 1 clear |
/// | `float_track_1` | gloss from 0 to 1; above 1, a cosine power |
/// | `float_track_2` | strength of the highlight |
/// | `float_track_3` | strength of the emission |
/// | a map's `map_text` | what it is a picture of: colour, transparency, opacity, normal, emission, metallic,
/// roughness, metallic_roughness (roughness in green, metallic in blue), occlusion | | `map_value` | its strength | |
/// `uv_track_0`, `uv_track_1`, `uvw_track` | offset, repeat, and rotation about w in radians of a map's placement | |
/// `u_mode`, `v_mode` | beyond the picture: 0 its edge, 2 mirrored, any other number repeated |
///
/// The extended properties `metallic`, `roughness`, `alpha_mode`, `alpha_cutoff` and `double_sided` say what the format
/// has no field for. A map without a `map_text` is a colour, or a normal when it is of that kind. Numbers go over as
/// they are, without a change of colour space.
///
/// A material that the plug-in's own translation makes has no diffuse colour and a `transparency` that is 1 whatever
/// the shader says: it is taken as opaque.

#include "format/vor2.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vor2::convert {

enum class AlphaMode { opaque, mask, blend };

enum class TextureWrap { edge, repeated, mirrored };

/// Where a picture lies, with V upward as the host has it. A point's place in the picture is its UV times `repeat` plus
/// `offset`, then turned counterclockwise about the picture's middle, as the host's 2D placement does it.
struct TexturePlacement {
    std::array<double, 2> offset{0, 0}, repeat{1, 1};
    double rotation = 0; ///< in radians
    TextureWrap wrap_u = TextureWrap::repeated, wrap_v = TextureWrap::repeated;

    bool operator==(const TexturePlacement&) const = default;
};

struct TextureUse {
    std::string name; ///< of the picture, as the scene has it
    double strength = 1;
    std::size_t uv_set = 0; ///< place in the meshes' `mapping_channels`
    TexturePlacement placement;
};

struct MaterialValues {
    std::string name;
    std::array<double, 3> base_colour{0.8, 0.8, 0.8};
    double opacity = 1;
    std::array<double, 3> emission{0, 0, 0};
    double metallic = 0, roughness = 1;
    std::optional<AlphaMode> alpha_mode; ///< where the scene says so
    double alpha_cutoff = 0.5;
    bool double_sided = true; ///< as the host draws surfaces
    std::optional<TextureUse> colour, normal, emission_map, metallic_roughness, occlusion;
    std::optional<TextureUse> transparency; ///< white where the surface is clear
    std::optional<TextureUse> opacity_map;  ///< white where it is opaque; its alpha, where it has one, says it instead
    std::optional<TextureUse> metallic_map, roughness_map; ///< each by its brightness, where they are apart
    std::vector<std::string> unused_maps;                  ///< names of pictures that none of these is
};

/// The values at the time that the material's clock stands at.
MaterialValues material_values(const VOR2_LOADER::VOR2_MATERIAL& material);
VOR2_LOADER::OWNED<VOR2_LOADER::VOR2_MATERIAL> make_material(const MaterialValues& values);

} // namespace vor2::convert
