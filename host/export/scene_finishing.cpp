#include "host/export/scene_finishing.h"

#include "format/geometry/scene_check.h"
#include "host/export/scene_tidying.h"
#include "support/platform/hooks.h"
#include "support/platform/platform.h"
#include "support/text/text_helpers.h"

#include <maya/M3dView.h>
#include <maya/MGlobal.h>
#include <maya/MPoint.h>

#include <string>

namespace VOR2_EXPORTER_MAYA {

MString report_file_name(const MString& path) {
    const std::string_view name = path.asChar();
    return MString((std::string(name.substr(0, name.size() < 3 ? 0 : name.size() - 3)) + "txt").c_str());
}

VECTOR_3 same_position(VECTOR_3 position) {
    const MPoint point(position.x, position.y, position.z);
    return {point.x, point.y, point.z};
}

namespace {

/// Without a window nobody can answer: that cancels.
bool is_cancelled(const char* words, const MString& report_file) {
    if (platform::ask_yes_no_hook == nullptr && MGlobal::mayaState() != MGlobal::kInteractive) {
        MGlobal::displayError(MString("The export was cancelled, since problems were found and nobody can be asked in "
                                      "batch mode. See ") +
                              report_file);
        return true;
    }
    void* const owner = reinterpret_cast<void*>(M3dView::applicationShell());
    return platform::ask_yes_no(owner, words, "Vor2 exporter") == platform::ANSWER::YES;
}

} // namespace

bool check_problems(VOR2& root, const MString& path) {
    const MString output_filename = report_file_name(path);
    const NARROW_TEXT report_file(output_filename.asChar());
    NARROW_TEXT problems;
    check_scene(root, problems, true, &report_file, false, same_position);
    if (problems.length() == 0) return true;
    const std::string words =
        std::string("Problems were found in your Maya file!! If problems were found with a weighted mesh, it is highly "
                    "likely some verts have zero weights or have not been applied to a valid bone. To check this you "
                    "can apply an animation in Maya to the mesh. See ") +
        output_filename.asChar() +
        " for further details regarding any errors. It is highly recommended that you cancel export and fix any "
        "problems before exporting again. Do you wish to cancel export now?";
    if (is_cancelled(words.c_str(), output_filename)) return false;
    root.inf.file_info = join(TEXT(u"FORCED EXPORT WITH ERRORS!!\r\n"), root.inf.file_info);
    return true;
}

bool finalise_scene(VOR2& root, const MString& path) {
    MGlobal::displayInfo("Building vor2 - finalising vr2...");
    simplify_instances(root);
    drop_unused_materials(root);
    root.prepare_weighted_meshes();
    return check_problems(root, path);
}

} // namespace VOR2_EXPORTER_MAYA
