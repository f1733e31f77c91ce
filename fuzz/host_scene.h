#pragma once

/// What every target that fills the embedded host's scene does with it.

#include "headless/graph/scene.h"

#include <cstddef>

namespace fuzz {

/// A session that says nothing, with a new scene.
headless::Scene& quiet_scene();
/// Asks for all that is worked out, at several times: matrices, driven plugs, meshes.
void look_at(headless::Scene& scene);
/// Ends the run unless the scene, written as Maya ASCII and read back, is written to the same lines. A scene that
/// can't be written, because of numbers that aren't finite, is left at that.
void check_writing(headless::Scene& scene);

} // namespace fuzz
