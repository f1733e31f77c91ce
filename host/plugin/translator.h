#pragma once

#include <maya/MFileObject.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

/// The host's file type "Vor2". A file is known by its name alone, whatever it holds: one that ends in
/// ".vr2", in any case, and has more to it than that. Option strings and access modes are passed over.
class TRANSLATOR : public MPxFileTranslator {
public:
    /// Null when memory runs out.
    static void* creator();

    ~TRANSLATOR() override = default;
    /// Imports; see `import_scene`.
    MStatus reader(const MFileObject& file, const MString& options, FileAccessMode mode) override;
    /// Exports as `export_settings` say; see `build_and_save`.
    MStatus writer(const MFileObject& file, const MString& options, FileAccessMode mode) override;
    bool haveReadMethod() const override { return true; }
    bool haveWriteMethod() const override { return true; }
    bool haveNamespaceSupport() const override { return true; }
    MString defaultExtension() const override { return "vr2"; }
    MString filter() const override { return "*.vr2"; }
    MFileKind identifyFile(const MFileObject& file, const char* buffer, short size) const override;
};

} // namespace VOR2_EXPORTER_MAYA
