#pragma once

#include <maya/MString.h>
#include <maya/MStringArray.h>

namespace VOR2_EXPORTER_MAYA {

/// What the commands leave for the export. The translator reads it too: a save that reaches it without
/// the export command finds what the last command left.
struct EXPORT_SETTINGS {
    MString file_name;             ///< the command's argument; the export itself is told its file by the host
    bool strip_namespace = true;   ///< cut namespaces from node names
    bool rotate_180 = true;        ///< turn the top-level nodes half around once more
    bool update_view = true;       ///< move the clock through the view, not through the time node
    double sample_at = 60.0;       ///< samples per second
    double start_frame;            ///< first frame, in the host's unit of time
    double stop_frame;             ///< last frame
    MString use_node_origin;       ///< name of the node whose position is the origin of the export
    MStringArray export_node_list; ///< names to export; when empty, the active selection

    /// The range is the host's playback range.
    EXPORT_SETTINGS();
};

/// The one instance. It is made at the first call, which is the plug-in's start.
[[nodiscard]] EXPORT_SETTINGS& export_settings();

} // namespace VOR2_EXPORTER_MAYA
