// MFileObject, MFileIO and MPxFileTranslator.
#include "headless/api/access.h"
#include "headless/api/held.h"

#include "headless/api/translators.h"
#include "support/platform/native_path.h"

#include <maya/MFileIO.h>
#include <maya/MFileObject.h>
#include <maya/MPxFileTranslator.h>

#include <filesystem>

using namespace headless;
using VOR2_LOADER::platform::native_path;

template class headless::Held<MString>;

MStatus MFileObject::setRawName(const MString& name) {
    *name_ = name;
    return MStatus::kSuccess;
}

MStatus MFileObject::setRawPath(const MString& path) {
    std::string folder = forward_slashes(Access::text(path));
    if (!folder.empty() && !folder.ends_with('/')) folder += '/';
    *path_ = text(folder);
    return MStatus::kSuccess;
}

MStatus MFileObject::setRawFullName(const MString& full) {
    const std::string whole = forward_slashes(Access::text(full));
    const std::size_t slash = whole.rfind('/');
    const std::size_t split = slash == std::string::npos ? 0 : slash + 1;
    *path_ = text(whole.substr(0, split));
    *name_ = text(whole.substr(split));
    return MStatus::kSuccess;
}

MStatus MFileObject::setName(const MString& name) {
    return setRawName(name);
}
MStatus MFileObject::setFullName(const MString& fullName) {
    return setRawFullName(fullName);
}
MString MFileObject::rawName() const {
    return *name_;
}
MString MFileObject::rawPath() const {
    return *path_;
}
MString MFileObject::rawFullName() const {
    return *path_ + *name_;
}
MString MFileObject::name() const {
    return *name_;
}

MString MFileObject::path() const {
    std::error_code ignored;
    const std::filesystem::path absolute = std::filesystem::absolute(native_path(Access::text(*path_)), ignored);
    const std::string whole =
        path_->length() > 0 ? absolute.generic_string() : std::filesystem::current_path(ignored).generic_string();
    return text(whole.ends_with('/') ? whole : whole + "/");
}

MString MFileObject::fullName() const {
    return name_->length() > 0 ? path() + *name_ : MString();
}
MString MFileObject::resolvedName() const {
    return name();
}
MString MFileObject::resolvedPath() const {
    return path();
}
MString MFileObject::resolvedFullName() const {
    return fullName();
}

bool MFileObject::exists() {
    std::error_code ignored;
    return name_->length() > 0 && std::filesystem::exists(native_path(Access::text(fullName())), ignored);
}

namespace {

MStatus told(const Result<void>& done) {
    if (!done) Session::current().error(done.error().text());
    return done ? MStatus::kSuccess : MStatus::kFailure;
}

} // namespace

MString MFileIO::currentFile() {
    return text(Access::scene().file_name);
}

MStatus MFileIO::newFile(bool force) {
    if (Access::scene().modified && !force) return MStatus::kFailure;
    Session::current().new_scene();
    return MStatus::kSuccess;
}

MStatus MFileIO::open(const MString& fileName, const char*, bool force, ReferenceMode, bool) {
    if (Access::scene().modified && !force) return MStatus::kFailure;
    return told(Session::current().open_file(Access::text(fileName)));
}

MStatus MFileIO::save(bool) {
    const std::string name = Access::scene().file_name;
    return name.empty() ? MStatus(MStatus::kFailure) : told(Session::current().save_as(name));
}

MStatus MFileIO::saveAs(const MString& fileName, const char*, bool) {
    return told(Session::current().save_as(Access::text(fileName)));
}

MStatus MFileIO::importFile(const MString& fileName, const char* type, bool, const char*, bool) {
    return told(Session::current().import_file(Access::text(fileName), type ? type : ""));
}

MStatus MFileIO::exportSelected(const MString& fileName, const char* type, bool) {
    return told(Session::current().export_selected(Access::text(fileName), type ? type : ""));
}

bool MFileIO::isReadingFile() {
    const MPxFileTranslator::FileAccessMode mode = MPxFileTranslator::fileAccessMode();
    return mode == MPxFileTranslator::kOpenAccessMode || mode == MPxFileTranslator::kImportAccessMode ||
           mode == MPxFileTranslator::kReferenceAccessMode;
}

bool MFileIO::isWritingFile() {
    const MPxFileTranslator::FileAccessMode mode = MPxFileTranslator::fileAccessMode();
    return mode >= MPxFileTranslator::kSaveAccessMode;
}

MStatus MPxFileTranslator::reader(const MFileObject&, const MString&, FileAccessMode) {
    return MStatus::kFailure;
}
MStatus MPxFileTranslator::writer(const MFileObject&, const MString&, FileAccessMode) {
    return MStatus::kFailure;
}

MPxFileTranslator::MFileKind MPxFileTranslator::identifyFile(const MFileObject&, const char*, short) const {
    return kNotMyFileType;
}

MPxFileTranslator::FileAccessMode MPxFileTranslator::fileAccessMode() {
    return current_access_mode();
}
