#include "headless/session.h"

#include "headless/api/translators.h"
#include "headless/files/formats.h"
#include "headless/graph/drivers.h"
#include "headless/script/interpreter.h"
#include "support/platform/native_path.h"
#include "support/text/ascii.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>

namespace headless {

using VOR2_LOADER::platform::native_path;
namespace {

std::string shortest(double value) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return error == std::errc() ? std::string(buffer, end) : std::string();
}

std::string lower_extension(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return {};
    return VOR2_LOADER::lowered(path.substr(dot + 1));
}

std::string full_name(const std::string& path) {
    std::error_code ignored;
    return forward_slashes(std::filesystem::absolute(native_path(path), ignored).generic_string());
}

void print(MessageKind kind, const std::string& text) {
    const bool trouble = kind == MessageKind::warning || kind == MessageKind::error;
    const char* prefix = kind == MessageKind::warning  ? "Warning: "
                         : kind == MessageKind::error  ? "Error: "
                         : kind == MessageKind::result ? "Result: "
                                                       : "";
    (void)std::fprintf(trouble ? stderr : stdout, "%s%s\n", prefix, text.c_str());
}

} // namespace

std::vector<std::string> CommandResult::pieces() const {
    std::vector<std::string> out = texts;
    for (const double value : numbers) out.push_back(shortest(value));
    for (const std::int64_t value : integers) out.push_back(std::to_string(value));
    return out;
}

std::string CommandResult::text() const {
    std::string out;
    for (const std::string& piece : pieces()) out += (out.empty() ? "" : " ") + piece;
    return out;
}

Session::Session() : sink_(print) {
    register_file_formats(*this);
    install_interpreters(*this);
    scene_ = std::make_unique<Scene>();
}

Session& Session::current() {
    static Session session;
    return session;
}

void Session::new_scene() {
    scene_ = std::make_unique<Scene>();
}

void Session::set_message_sink(Sink sink) {
    sink_ = sink ? std::move(sink) : Sink(print);
}
void Session::message(MessageKind kind, const std::string& text) {
    sink_(kind, text);
}

void Session::register_reader(std::string extension, SceneReader reader) {
    readers_[std::move(extension)] = std::move(reader);
}

void Session::register_writer(std::string extension, SceneWriter writer) {
    writers_[std::move(extension)] = std::move(writer);
}

Result<void> Session::read(const std::string& path, const std::string& type, bool import) {
    const auto reader = readers_.find(lower_extension(path));
    if (type.empty() && reader != readers_.end()) return reader->second(*scene_, path);
    const auto mode = import ? MPxFileTranslator::kImportAccessMode : MPxFileTranslator::kOpenAccessMode;
    return read_through_translator(*this, path, type, mode);
}

Result<void> Session::open_file(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(native_path(path), ignored)) return Error{"File not found", path};
    if (const std::string why = VOR2_LOADER::platform::why_unreadable(path); !why.empty()) return Error{why, path};
    if (!readers_.contains(lower_extension(path)) && identify(*this, path).empty())
        return Error{"Unrecognized file type", path};
    new_scene();
    Result<void> done = read(path, "", false);
    if (!done) {
        new_scene();
        return done;
    }
    scene_->file_name = full_name(path);
    scene_->modified = false;
    return {};
}

Result<void> Session::save_as(const std::string& path) {
    const auto writer = writers_.find(lower_extension(path));
    if (writer == writers_.end()) return Error{"No scene is saved as this kind of file", path};
    if (Result<void> done = writer->second(*scene_, path); !done) return done;
    scene_->file_name = full_name(path);
    scene_->modified = false;
    return {};
}

Result<void> Session::import_file(const std::string& path, const std::string& type) {
    return read(path, type, true);
}

Result<void> Session::export_selected(const std::string& path, const std::string& type) {
    if (scene_->selection.items().empty()) return Error{"Nothing is selected to be exported"};
    return write_through_translator(*this, path, type, MPxFileTranslator::kExportActiveAccessMode);
}

void Session::note_asked(const Node& node) {
    if (plugins_at_work_ > 0 && asked_serials_.insert(node.handle().serial).second) asked_.push_back(node.handle());
}

PluginWork::PluginWork(Session& session) : session_(session) {
    if (++session_.plugins_at_work_ > 1) return;
    session_.doubts_.clear();
    session_.scene().forget_evaluation_errors();
}

PluginWork::~PluginWork() {
    if (--session_.plugins_at_work_ > 0) return;
    Scene& scene = session_.scene();
    std::vector<Node*> moving;
    for (const NodeHandle handle : session_.asked_) {
        if (Node* node = scene.find(handle)) moving.push_back(node);
    }
    session_.asked_.clear();
    session_.asked_serials_.clear();
    for (const Unevaluated& found : find_unevaluated(scene, moving)) session_.doubts_.push_back(told(found));
    for (std::string& error : scene.take_evaluation_errors()) session_.doubts_.push_back(std::move(error));
    for (const std::string& doubt : session_.doubts_) session_.warning(doubt);
}

Result<CommandResult> Session::run_mel(const std::string& text) {
    if (!mel_) return Error{"No interpreter of scripts is installed"};
    return mel_(*this, text);
}

Result<CommandResult> Session::run_python(const std::string& text) {
    if (!python_) return Error{"No interpreter of scripts is installed"};
    return python_(*this, text);
}

} // namespace headless
