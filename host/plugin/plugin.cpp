// The plug-in's entries. MFnPlugin.h gives the third export, MApiVersion.
#include <maya/MFnPlugin.h>

#include "host/export/export_settings.h"
#include "host/plugin/commands.h"
#include "host/plugin/guarded.h"
#include "host/plugin/translator.h"

using namespace VOR2_EXPORTER_MAYA;

namespace {

MStatus initialize(MObject& object) {
    static_cast<void>(export_settings()); // its range is the playback range at this moment
    MFnPlugin plugin(object, "The Halden Foundry", "v2.03", "Any");
    // The commands are worth having even where the name of the file type is taken.
    const MStatus status = plugin.registerFileTranslator("Vor2", "vor2.ico", TRANSLATOR::creator, nullptr, nullptr,
                                                         false, MFnPlugin::kDefaultDataLocation);
    if (!status) status.perror("registerFileTranslator");
    return register_commands(plugin);
}

MStatus uninitialize(MObject& object) {
    MFnPlugin plugin(object);
    const MStatus status = plugin.deregisterFileTranslator("Vor2");
    if (!status) status.perror("deregisterFileTranslator");
    return deregister_commands(plugin);
}

} // namespace

PLUGIN_EXPORT MStatus initializePlugin(MObject object) {
    return guarded([&] { return initialize(object); });
}

PLUGIN_EXPORT MStatus uninitializePlugin(MObject object) {
    return guarded([&] { return uninitialize(object); });
}
