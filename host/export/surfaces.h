#pragma once

/// Host shaders as materials with all that they say.

#include "format/scene/root.h"

#include <maya/MObject.h>

#include <map>
#include <string>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// The materials of a root as one list without gaps, in the order in which meshes first use them.
///
/// | in the material | lambert, phong, blinn | standard surfaces |
/// |---|---|---|
/// | `ambient_colour` | ambient colour | black |
/// | `colour_track_1` | colour | base colour times base |
/// | `colour_track_2` | specular colour | specular colour |
/// | `colour_track_3` | incandescence | emission colour |
/// | `transparency` | mean of the transparency, 1 for clear | 1 minus the mean of the opacity |
/// | `float_track_1` | blinn: 1 minus eccentricity; phong: cosine power | 1 minus the roughness |
/// | `float_track_2` | blinn: roll-off; phong: 1 | specular |
/// | `float_track_3` | 1 | emission |
///
/// All with one key at time 0, as they are at the start of the range. Further numbers and colours go among the extended
/// properties under the host's names, with "shader" for the kind; standard surfaces have "metallic" and "roughness".
///
/// A file texture on any of these, behind a bump node too, is a bitmap map named like its node, with the picture's name
/// as the host has it, what it is for (`map_text`), offset and repeat of its placement (`uv_track_0`, `uv_track_1`),
/// its rotation about w in radians (`uvw_track`), and 1 where it wraps, 2 where it mirrors, 0 where neither. A colour
/// that has a picture is white. A picture of how clear the surface is says whether it is one of opacity or of
/// transparency. A placement's frame, stagger and noise have no field: they are named in a warning.
///
/// A shader of any other kind becomes a material with its name, its kind, its numbers and its textures, with a warning.
class SURFACES {
public:
    explicit SURFACES(VOR2& root) : my_root(root) {}
    /// The place of the material of a shading group; `NO_MATERIAL` for a group without a shader.
    [[nodiscard]] u32 place_of(const MObject& group);

private:
    VOR2& my_root;
    std::map<std::string, u32> my_places; ///< by the shader's name
};

} // namespace VOR2_EXPORTER_MAYA
