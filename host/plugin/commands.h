#pragma once

#include <maya/MFnPlugin.h>

namespace VOR2_EXPORTER_MAYA {

/// The commands that the host's scripts call. Both take all settings afresh at every call, report success
/// whatever the export or import came to, and fail only on a flag or argument that their syntax doesn't
/// take.
///
/// "VOR2Export" exports the selection, or the nodes named, to a file. Its flags, with their defaults:
///     -f   -filename        string, empty      the file
///     -sns -stripNamespace  boolean, true      cut namespaces from node names
///     -rot -rotate180       boolean, true      turn top-level nodes half around about y once more
///     -st  -start           double, min time   first frame, in the host's unit of time
///     -end -stop            double, max time   last frame
///     -sAt -sampleAt        double, 60         samples per second
///     -u   -updateView      boolean, true      move the clock through the view, not the time node
///     -uno -useNodeOrigin   string, empty      the node whose position is the origin
///     -enl -exportNodeList  string, many times the nodes to export, in order
/// "VOR2Import" imports a file: -f -filename, string.
[[nodiscard]] MStatus register_commands(MFnPlugin& plugin);
[[nodiscard]] MStatus deregister_commands(MFnPlugin& plugin);

} // namespace VOR2_EXPORTER_MAYA
