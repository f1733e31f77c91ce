#pragma once

#include <maya/MFileObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

/// The base of a plug-in's file types. The host makes one by the creator when it reads or writes a file.
class MPxFileTranslator {
public:
    enum MFileKind { kIsMyFileType, kCouldBeMyFileType, kNotMyFileType };
    enum FileAccessMode {
        kUnknownAccessMode,
        kOpenAccessMode,
        kReferenceAccessMode,
        kImportAccessMode,
        kSaveAccessMode,
        kExportAccessMode,
        kExportActiveAccessMode
    };

    MPxFileTranslator() = default;
    virtual ~MPxFileTranslator() = default;
    virtual MStatus reader(const MFileObject& file, const MString& options, FileAccessMode mode);
    virtual MStatus writer(const MFileObject& file, const MString& options, FileAccessMode mode);
    virtual bool haveReadMethod() const { return false; }
    virtual bool haveWriteMethod() const { return false; }
    virtual bool haveNamespaceSupport() const { return false; }
    virtual bool haveReferenceMethod() const { return false; }
    virtual bool allowMultipleFileOptimization() const { return false; }
    virtual MString defaultExtension() const { return MString(); }
    virtual MString filter() const { return "*.*"; }
    virtual bool canBeOpened() const { return true; }
    virtual MFileKind identifyFile(const MFileObject& file, const char* buffer, short size) const;
    static FileAccessMode fileAccessMode();
};
