#include "headless/api/translators.h"

#include "headless/api/access.h"
#include "support/platform/native_path.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace headless {

using VOR2_LOADER::platform::native_path;
using VOR2_LOADER::platform::why_unreadable;

namespace {

MPxFileTranslator::FileAccessMode access_mode = MPxFileTranslator::kUnknownAccessMode;

// Says what is going on for as long as it stands; a translator may start another.
class ModeScope {
public:
    explicit ModeScope(MPxFileTranslator::FileAccessMode mode) : before_(std::exchange(access_mode, mode)) {}
    ~ModeScope() { access_mode = before_; }
    ModeScope(const ModeScope&) = delete;
    ModeScope& operator=(const ModeScope&) = delete;

private:
    MPxFileTranslator::FileAccessMode before_;
};

using TranslatorPointer = std::unique_ptr<MPxFileTranslator>;

TranslatorPointer make(const Session::Translator& entry) {
    return TranslatorPointer(static_cast<MPxFileTranslator*>(entry.creator()));
}

Result<TranslatorPointer> make(Session& session, const std::string& type) {
    const auto entry = session.translators.find(type);
    if (entry == session.translators.end()) return Error{"No such file type: '" + type + "'"};
    TranslatorPointer made = make(entry->second);
    if (!made) return Error{"The translator of file type '" + type + "' couldn't be made"};
    return made;
}

MFileObject file_of(const std::string& path) {
    MFileObject out;
    out.setRawFullName(text(path));
    return out;
}

bool has_extension(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::size_t dot = path.rfind('.');
    return dot != std::string::npos && (slash == std::string::npos || dot > slash + 1) && dot + 1 < path.size();
}

} // namespace

std::string forward_slashes(std::string path) {
    std::ranges::replace(path, '\\', '/');
    return path;
}

MPxFileTranslator::FileAccessMode current_access_mode() {
    return access_mode;
}

std::string identify(Session& session, const std::string& path) {
    if (!why_unreadable(path).empty()) return {};
    std::array<char, 1024> start{};
    std::ifstream file(native_path(path), std::ios::binary);
    file.read(start.data(), start.size() - 1);
    const short size = static_cast<short>(file.gcount());
    std::string possible;
    for (const auto& [type, entry] : session.translators) {
        const TranslatorPointer translator = make(entry);
        if (!translator || !translator->haveReadMethod()) continue;
        const auto kind = translator->identifyFile(file_of(path), start.data(), size);
        if (kind == MPxFileTranslator::kIsMyFileType) return type;
        if (kind == MPxFileTranslator::kCouldBeMyFileType && possible.empty()) possible = type;
    }
    return possible;
}

Result<void> read_through_translator(Session& session, const std::string& path, const std::string& wanted,
                                     MPxFileTranslator::FileAccessMode mode) {
    if (const std::string why = why_unreadable(path); !why.empty()) return Error{why, path};
    const std::string type = wanted.empty() ? identify(session, path) : wanted;
    if (type.empty()) return Error{"Unrecognized file type", path};
    const Result<TranslatorPointer> translator = make(session, type);
    if (!translator) return translator.error();
    if (!(*translator)->haveReadMethod()) return Error{"File type '" + type + "' can't be read"};
    if (!std::ifstream(native_path(path))) return Error{"File not found", path};
    const ModeScope scope(mode);
    const MStatus status = (*translator)->reader(file_of(path), MString(), mode);
    if (!status) return Error{"Error reading file", path};
    return {};
}

Result<void> write_through_translator(Session& session, const std::string& path, const std::string& type,
                                      MPxFileTranslator::FileAccessMode mode) {
    const Result<TranslatorPointer> translator = make(session, type);
    if (!translator) return translator.error();
    if (!(*translator)->haveWriteMethod()) return Error{"File type '" + type + "' can't be written"};
    if (path.empty()) return Error{"A file name is needed"};
    std::string whole = path;
    const MString extension = (*translator)->defaultExtension();
    if (!has_extension(path) && extension.length() > 0) whole += "." + Access::text(extension);
    const ModeScope scope(mode);
    const PluginWork work(session);
    const MStatus status = (*translator)->writer(file_of(whole), MString(), mode);
    if (!status) return Error{"Error saving file", whole};
    return {};
}

} // namespace headless
