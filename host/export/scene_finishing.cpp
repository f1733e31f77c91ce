#include "host/export/scene_finishing.h"

#include "host/export/host_text.h"
#include "support/platform/platform.h"

#include <maya/M3dView.h>
#include <maya/MGlobal.h>

#include <string>

namespace VOR2_EXPORTER_MAYA {

MString report_file_name(const MString& path) {
    const std::string_view name = path.asChar();
    return MString((std::string(name.substr(0, name.size() < 3 ? 0 : name.size() - 3)) + "txt").c_str());
}

bool settle_problems(VOR2& root, const NARROW_TEXT& problems, const MString& report_file) {
    if (problems.length() == 0) return true;
    const std::string words =
        std::string("Problems were found in your Maya file!! If problems were found with a weighted mesh, it is highly "
                    "likely some verts have zero weights or have not been applied to a valid bone. To check this you "
                    "can apply an animation in Maya to the mesh. See ") +
        report_file.asChar() +
        " for further details regarding any errors. It is highly recommended that you cancel export and fix any "
        "problems before exporting again. Do you wish to cancel export now?";
    void* const owner = static_cast<void*>(M3dView::applicationShell());
    if (platform::ask_yes_no(owner, words.c_str(), "Vor2 exporter") == platform::ANSWER::YES) return false;
    root.inf.file_info = join(TEXT(u"FORCED EXPORT WITH ERRORS!!\r\n"), root.inf.file_info);
    return true;
}

bool finalise_scene(VOR2& root, const MString& path) {
    MGlobal::displayInfo("Building vor2 - finalising vr2...");
    const NARROW_TEXT problems;
    return settle_problems(root, problems, report_file_name(path));
}

} // namespace VOR2_EXPORTER_MAYA
