#pragma once

#include <maya/MFnBase.h>
#include <maya/MPxCommand.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#define PLUGIN_EXPORT MAYA_PLUGIN_EXPORT_ATTRIBUTE

/// How a plug-in makes itself known, from `initializePlugin` and `uninitializePlugin`, and there alone.
class MFnPlugin : public MFnBase {
public:
    enum DataStorageLocation { kDefaultDataLocation = -1, kMoveOutOfFile = 0, kRawDataInFile = 1 };

    MFnPlugin() = default;
    MFnPlugin(MObject& plugin, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* status = nullptr);
    MFn::Type type() const override { return MFn::kPlugin; }

    MString name(MStatus* status = nullptr) const;
    MString vendor(MStatus* status = nullptr) const;
    MString version(MStatus* status = nullptr) const;
    MString apiVersion(MStatus* status = nullptr) const;
    MStatus setVersion(const MString& version);
    /// A name that is registered is refused; so is a null creator.
    MStatus registerFileTranslator(const MString& translatorName, const char* pixmapName,
                                   MCreatorFunction creatorFunction, const char* optionsScriptName = nullptr,
                                   const char* defaultOptionsString = nullptr, bool requiresFullMel = false,
                                   DataStorageLocation dataStorageLocation = kDefaultDataLocation);
    MStatus deregisterFileTranslator(const MString& translatorName);
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    MStatus deregisterCommand(const MString& commandName);

private:
    MString vendor_, version_, api_version_;
};

#ifndef MNoPluginEntry
PLUGIN_EXPORT MStatus initializePlugin(MObject object);
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object);
#endif
#ifndef MNoVersionString
extern PLUGIN_EXPORT const char MApiVersion[];
const char MApiVersion[] = "201610"; // exported as declared
#endif
