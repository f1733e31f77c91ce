#pragma once

#include "format/scene/root.h"

#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// The export's last step before the save: tidies the root and lets the user decide about the problems
/// found in it. False when the user cancels. A root that holds only a hierarchy has nothing to tidy and
/// nothing that could be a problem.
[[nodiscard]] bool finalise_scene(VOR2& root, const MString& path);

/// The report's file: `path` without its last three characters, which are the extension's, plus "txt".
[[nodiscard]] MString report_file_name(const MString& path);

/// With `problems` empty, true and no question. Otherwise asks the user whether to cancel the export:
/// false on yes; on no `file_info` is marked as forced and the export goes on.
[[nodiscard]] bool settle_problems(VOR2& root, const NARROW_TEXT& problems, const MString& report_file);

} // namespace VOR2_EXPORTER_MAYA
