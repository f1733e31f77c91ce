#define MNoPluginEntry
#define MNoVersionString
#include "host/plugin/commands.h"

#include "host/export/export_settings.h"
#include "host/plugin/guarded.h"

#include <maya/MAnimControl.h>
#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MFileIO.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTime.h>

#include <new>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr const char* EXPORT_COMMAND = "VOR2Export";
constexpr const char* IMPORT_COMMAND = "VOR2Import";

template<class VALUE>
VALUE argument_or(const MArgDatabase& arguments, const char* flag, VALUE value) {
    if (arguments.isFlagSet(flag)) arguments.getFlagArgument(flag, 0, value);
    return value;
}

double frame_of(const MTime& time) {
    return static_cast<double>(static_cast<float>(time.as(MTime::uiUnit())));
}

/// The host refuses to export an empty selection, also when the nodes to export are named. Where nothing is
/// selected, these are the selection for as long as this stands.
class NAMED_AS_SELECTION {
public:
    explicit NAMED_AS_SELECTION(const MStringArray& names) {
        MSelectionList active;
        MGlobal::getActiveSelectionList(active);
        if (active.length() == 0) my_names = names;
        for (unsigned int i = 0; i < my_names.length(); ++i) MGlobal::selectByName(my_names[i], MGlobal::kAddToList);
    }
    ~NAMED_AS_SELECTION() {
        // The last first, which moves no others up.
        for (unsigned int i = my_names.length(); i-- > 0;) MGlobal::selectByName(my_names[i], MGlobal::kRemoveFromList);
    }
    NAMED_AS_SELECTION(const NAMED_AS_SELECTION&) = delete;
    NAMED_AS_SELECTION& operator=(const NAMED_AS_SELECTION&) = delete;

private:
    MStringArray my_names;
};

class Exporter : public MPxCommand {
public:
    static void* creator() { return new (std::nothrow) Exporter; }
    static MSyntax make_syntax();

    ~Exporter() override = default;
    MStatus doIt(const MArgList& words) override {
        return guarded([&] { return export_by(words); });
    }

private:
    MStatus export_by(const MArgList& words) const;
    void take_settings(const MArgDatabase& arguments) const;
    void take_node_list(const MArgList& words) const;
};

MSyntax Exporter::make_syntax() {
    MSyntax syntax;
    syntax.addFlag("-f", "-filename", MSyntax::kString);
    syntax.addFlag("-sns", "-stripNamespace", MSyntax::kBoolean);
    syntax.addFlag("-rot", "-rotate180", MSyntax::kBoolean);
    syntax.addFlag("-st", "-start", MSyntax::kDouble);
    syntax.addFlag("-end", "-stop", MSyntax::kDouble);
    syntax.addFlag("-sAt", "-sampleAt", MSyntax::kDouble);
    syntax.addFlag("-u", "-updateView", MSyntax::kBoolean);
    syntax.addFlag("-uno", "-useNodeOrigin", MSyntax::kString);
    syntax.addFlag("-enl", "-exportNodeList", MSyntax::kString);
    syntax.makeFlagMultiUse("-enl");
    return syntax;
}

void Exporter::take_settings(const MArgDatabase& arguments) const {
    EXPORT_SETTINGS& settings = export_settings();
    settings.file_name = argument_or(arguments, "-f", MString());
    settings.strip_namespace = argument_or(arguments, "-sns", true);
    settings.rotate_180 = argument_or(arguments, "-rot", true);
    settings.start_frame = argument_or(arguments, "-st", frame_of(MAnimControl::minTime()));
    settings.stop_frame = argument_or(arguments, "-end", frame_of(MAnimControl::maxTime()));
    settings.sample_at = argument_or(arguments, "-sAt", 60.0);
    settings.update_view = argument_or(arguments, "-u", true);
    settings.use_node_origin = argument_or(arguments, "-uno", MString());
}

void Exporter::take_node_list(const MArgList& words) const {
    const MArgParser parser(syntax(), words);
    const unsigned int uses = parser.numberOfFlagUses("-enl");
    for (unsigned int use = 0; use < uses; ++use) {
        MArgList list;
        const MStatus status = parser.getFlagArgumentList("-enl", use, list);
        if (!status) status.perror("");
        export_settings().export_node_list.insert(list.asString(0), use);
    }
}

MStatus Exporter::export_by(const MArgList& words) const {
    MStatus status;
    const MArgDatabase arguments(syntax(), words, &status);
    if (!status) return status;
    export_settings().export_node_list.clear();
    take_settings(arguments);
    if (arguments.isFlagSet("-enl")) take_node_list(words);
    const MString line = MString("import maya.cmds as cmds;cmds.file(\"") + export_settings().file_name +
                         "\",f=True ,pr=1 ,typ=\"Vor2\",es=1)";
    const NAMED_AS_SELECTION selection(export_settings().export_node_list);
    MGlobal::executePythonCommand(line, false, false);
    return MStatus::kSuccess;
}

class Importer : public MPxCommand {
public:
    static void* creator() { return new (std::nothrow) Importer; }
    static MSyntax make_syntax() {
        MSyntax syntax;
        syntax.addFlag("-f", "-filename", MSyntax::kString);
        return syntax;
    }

    ~Importer() override = default;
    MStatus doIt(const MArgList& words) override {
        return guarded([&] { return import_by(words); });
    }

private:
    MStatus import_by(const MArgList& words) const {
        MStatus status;
        const MArgDatabase arguments(syntax(), words, &status);
        if (!status) return status;
        export_settings().file_name = argument_or(arguments, "-f", MString());
        MFileIO::importFile(export_settings().file_name, "Vor2", false, nullptr, false);
        return MStatus::kSuccess;
    }
};

} // namespace

MStatus register_commands(MFnPlugin& plugin) {
    MStatus status = plugin.registerCommand(EXPORT_COMMAND, Exporter::creator, Exporter::make_syntax);
    if (status) status = plugin.registerCommand(IMPORT_COMMAND, Importer::creator, Importer::make_syntax);
    if (!status) status.perror("Failed to register \"myCommand\"\n");
    return status;
}

MStatus deregister_commands(MFnPlugin& plugin) {
    MStatus status = plugin.deregisterCommand(EXPORT_COMMAND);
    if (!status) {
        status.perror("failed to deregister \"export\"\n");
        return status;
    }
    status = plugin.deregisterCommand(IMPORT_COMMAND);
    if (!status) status.perror("failed to deregister \"import\"\n");
    return status;
}

} // namespace VOR2_EXPORTER_MAYA
