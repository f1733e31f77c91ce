#pragma once

#include "headless/graph/scene.h"

#include <string>

namespace headless {

/// Writes a scene as Maya ASCII: units, nodes with parents before children, dynamic attributes, values, marks, keys,
/// instances, connections, the playback range and the current time, in the scene's units. Read back it gives the same
/// scene. A file that came in through references is part of it from then on, with the changes that the scene made to
/// it; one that isn't loaded stays a reference, with its node, the changes that wait there and its connections. Values
/// that were kept without being understood are written as they came. The same scene always gives the same bytes. The
/// file appears whole or not at all. Errors: a target that can't be written, and a value that isn't finite (the message
/// names its plug).
Result<void> write_maya_ascii(const Scene& scene, const std::string& path);

} // namespace headless
