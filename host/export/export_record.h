#pragma once

/// Who made a file, when, and from what: two texts in the file's scene information.

#include "format/scene/root.h"

#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Sets `creator` to the host's name and version and `file_info` to the record of this export to `path`.
/// The scene's name goes to standard output.
void fill_file_info(VOR2& root, const MString& path);

/// Four lines, each ended by "\r\n": user, time, the file written, the scene open in the host.
[[nodiscard]] TEXT export_record(const MString& path);
/// The account's name; one of 64 bytes or more is an "Unknown User".
[[nodiscard]] TEXT user_name_line();
/// Day, month and year, then the time of day, in coordinated universal time.
[[nodiscard]] TEXT export_time_line();

} // namespace VOR2_EXPORTER_MAYA
