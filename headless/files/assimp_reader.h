#pragma once

#include "headless/graph/scene.h"

#include <string>

namespace headless {

/// Reads FBX, Collada and glTF through Assimp into a scene: a joint for each bone of a skin and for what stands between
/// bones, a transform for every other node, and a curve for each number that moves, in centimetres and upright whatever
/// the file's units and axes. A scale that is alike along all axes and never changes is worked into the places of what
/// is below, so that it isn't lost where scales count for nothing. Rotations get as many keys as make straight runs of
/// angles keep to the file's way. Of several animations the first one is taken, with a warning that names the others;
/// meshes stay in the file. A scene that held nothing of its own takes over the animation's range as the playback
/// range. An error leaves the scene as it was.
Result<void> read_with_assimp(Scene& scene, const std::string& path);

} // namespace headless
