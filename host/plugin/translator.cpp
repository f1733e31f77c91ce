#include "host/plugin/translator.h"

#include "host/export/export_entry.h"
#include "host/import/import_driver.h"
#include "host/plugin/guarded.h"
#include "support/text/ascii.h"

#include <new>
#include <string_view>

namespace VOR2_EXPORTER_MAYA {
namespace {

MStatus status_of(bool done) {
    return done ? MStatus::kSuccess : MStatus::kFailure;
}

} // namespace

void* TRANSLATOR::creator() {
    return new (std::nothrow) TRANSLATOR;
}

MStatus TRANSLATOR::reader(const MFileObject& file, const MString& /*options*/, FileAccessMode /*mode*/) {
    return guarded([&] { return status_of(import_scene(file.fullName())); });
}

MStatus TRANSLATOR::writer(const MFileObject& file, const MString& /*options*/, FileAccessMode /*mode*/) {
    return guarded([&] { return status_of(build_and_save(file.fullName())); });
}

MPxFileTranslator::MFileKind TRANSLATOR::identifyFile(const MFileObject& file, const char* /*buffer*/,
                                                      short /*size*/) const {
    constexpr std::string_view ENDING = ".vr2";
    const MString whole = file.name();
    const std::string_view name = whole.asChar();
    if (name.size() <= ENDING.size()) return kNotMyFileType;
    const std::string_view ending = name.substr(name.size() - ENDING.size());
    for (std::size_t i = 0; i < ENDING.size(); ++i) {
        if (VOR2_LOADER::lower(ending[i]) != ENDING[i]) return kNotMyFileType;
    }
    return kIsMyFileType;
}

} // namespace VOR2_EXPORTER_MAYA
