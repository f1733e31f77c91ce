#pragma once

#include "format/scene/root.h"

#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// The export's last step before the save: tidies instances and materials, prepares the weighted meshes and
/// lets the user decide about the problems that the check finds. False when the user cancels: no file is
/// written then. A root that holds only a hierarchy passes through unchanged.
[[nodiscard]] bool finalise_scene(VOR2& root, const MString& path);

/// Checks and repairs the scene. With problems, their report lies in `report_file_name` and the user is
/// asked whether to cancel: on yes the result is false, on no the export record is marked as forced. In the
/// host's batch mode nobody is asked, unless the platform layer was told how to answer: the export is
/// cancelled and an error says so.
[[nodiscard]] bool check_problems(VOR2& root, const MString& path);

/// The report's file: `path` without its last three characters, which are the extension's, plus "txt".
[[nodiscard]] MString report_file_name(const MString& path);

/// A position itself, by way of the host's points: the host shows what the file holds.
[[nodiscard]] VECTOR_3 same_position(VECTOR_3 position);

} // namespace VOR2_EXPORTER_MAYA
