#pragma once

#include <maya/MObject.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>

/// Opening, saving, importing and exporting of whole files.
class MFileIO {
public:
    enum ReferenceMode { kLoadDefault, kLoadAllReferences, kLoadNoReferences };

    static MString currentFile(); ///< full name; empty for a scene that has no file yet
    static MStatus newFile(bool force = false);
    static MStatus open(const MString& fileName, const char* type = nullptr, bool force = false,
                        ReferenceMode = kLoadDefault, bool ignoreVersion = false);
    static MStatus save(bool force = false);
    static MStatus saveAs(const MString& fileName, const char* type = nullptr, bool force = false);
    /// Through the translator of that type; of none, the one that takes the file for its own.
    static MStatus importFile(const MString& fileName, const char* type = nullptr, bool preserveReferences = false,
                              const char* nameSpace = nullptr, bool ignoreVersion = false);
    static MStatus exportSelected(const MString& fileName, const char* type = nullptr, bool preserveReferences = false);
    static bool isReadingFile();
    static bool isWritingFile();
};
