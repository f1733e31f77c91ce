#pragma once

#include <maya/MApiVersion.h>
#include <maya/MDGContext.h>
#include <maya/MFnBase.h>
#include <maya/MFnData.h>
#include <maya/MIOStreamFwd.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

/// How a plug-in makes itself known, from `initializePlugin` and `uninitializePlugin`, and there alone.
class MFnPlugin : public MFnBase {
public:
    MFnPlugin() {}
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
                                   MString dataStorageLocation = MFnPlugin::kDefaultDataLocation);
    MStatus deregisterFileTranslator(const MString& translatorName);
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    MStatus deregisterCommand(const MString& commandName);

    static const MString kDefaultDataLocation;

private:
    MFnPlugin(const MFnPlugin&);
    MFnPlugin& operator=(const MFnPlugin&);
    MFnPlugin* operator&() const;

    MString vendor_, version_, api_version_;
};
