#pragma once

#include "format/scene/root.h"

#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Exports the host's scene to the file with that full name, as `export_settings` say. True when the file
/// was written. Every other end is told to the user; a file whose writing failed half-way stays and can't
/// be read. The host's clock ends where it was.
[[nodiscard]] bool build_and_save(const MString& path);

/// Fills and finishes an empty root without saving it.
[[nodiscard]] bool build_scene(VOR2& root, const MString& path);

} // namespace VOR2_EXPORTER_MAYA
