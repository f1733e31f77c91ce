#include "host/export/export_entry.h"

#include "host/export/host_text.h"
#include "host/export/scene_finishing.h"
#include "host/export/scene_translation.h"

#include <maya/MGlobal.h>

namespace VOR2_EXPORTER_MAYA {

bool build_scene(VOR2& root, const MString& path) {
    return translate_scene(root, path) && finalise_scene(root, path);
}

bool build_and_save(const MString& path) {
    MGlobal::displayInfo("Building vor2...");
    VOR2 root;
    if (!build_scene(root, path)) return false;
    MGlobal::displayInfo(MString("Saving vor2 as ") + path + "...");
    VOR2_WRITE_STREAM stream(to_text(path), false, true);
    // Closing hands over what is still held, so that a full disk shows here at the latest.
    const bool saved = stream.good() && root.save(stream) && stream.close();
    if (!saved) {
        MGlobal::displayError(MString("Failed to write vor2 file: ") + path);
        return false;
    }
    MGlobal::displayInfo("Done.");
    return true;
}

} // namespace VOR2_EXPORTER_MAYA
