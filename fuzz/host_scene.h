#pragma once

/// What every target that fills the embedded host's scene does with it.

#include "headless/graph/scene.h"

#include <cstddef>
#include <string_view>

namespace fuzz {

/// A session that says nothing, with a new scene.
headless::Scene& quiet_scene();
/// Of a text that holds several files with form feeds between them the first; the others are "rig.ma" and "deep.ma" in
/// the sandbox from then on.
std::string_view first_file(std::string_view text);
/// Asks for all that is worked out, at several times: matrices, driven plugs, meshes.
void look_at(headless::Scene& scene);
/// Ends the run unless the scene, written as Maya ASCII and read back, is written to the same lines. A scene that
/// can't be written, because of numbers that aren't finite, is left at that.
void check_writing(headless::Scene& scene);

} // namespace fuzz
