// MFnPlugin and MPxCommand, and how the session runs them.
#include "headless/api/arguments.h"
#include "headless/api/held.h"

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#define MNoVersionString
#define MNoPluginEntry
#include <maya/MFnPlugin.h>

using namespace headless;

template class headless::Held<MSyntax>;

const MString MFnPlugin::kDefaultDataLocation("");

MFnPlugin::MFnPlugin(MObject& plugin, const char* vendor, const char* version, const char* requiredApiVersion,
                     MStatus* status)
    : vendor_(vendor), version_(version), api_version_(requiredApiVersion) {
    attach(plugin, status);
}

MString MFnPlugin::name(MStatus* status) const {
    return succeed(status, text(Session::current().registering_plugin));
}
MString MFnPlugin::vendor(MStatus* status) const {
    return succeed(status, vendor_);
}
MString MFnPlugin::version(MStatus* status) const {
    return succeed(status, version_);
}
MString MFnPlugin::apiVersion(MStatus* status) const {
    return succeed(status, api_version_);
}

MStatus MFnPlugin::setVersion(const MString& version) {
    version_ = version;
    return MStatus::kSuccess;
}

namespace {

template<typename Entry>
MStatus add(std::map<std::string, Entry, std::less<>>& registry, const MString& name, Entry entry) {
    if (entry.plugin.empty() || name.length() == 0 || !entry.creator) return MStatus::kInvalidParameter;
    return registry.emplace(Access::text(name), std::move(entry)).second ? MStatus::kSuccess : MStatus::kFailure;
}

// A plug-in takes away what is its own.
template<typename Entry>
MStatus remove(std::map<std::string, Entry, std::less<>>& registry, const MString& name) {
    const auto at = registry.find(Access::text(name));
    if (at == registry.end() || at->second.plugin != Session::current().registering_plugin) return MStatus::kFailure;
    registry.erase(at);
    return MStatus::kSuccess;
}

} // namespace

MStatus MFnPlugin::registerFileTranslator(const MString& name, const char*, MCreatorFunction creator, const char*,
                                          const char*, bool, MString) { // NOLINT(performance-unnecessary-value-param)
    Session& session = Session::current();
    return add(session.translators, name, Session::Translator{session.registering_plugin, creator});
}

MStatus MFnPlugin::deregisterFileTranslator(const MString& name) {
    return remove(Session::current().translators, name);
}

MStatus MFnPlugin::registerCommand(const MString& name, MCreatorFunction creator, MCreateSyntaxFunction syntax) {
    Session& session = Session::current();
    return add(session.commands, name, Session::Command{session.registering_plugin, creator, syntax});
}

MStatus MFnPlugin::deregisterCommand(const MString& name) {
    return remove(Session::current().commands, name);
}

Result<void> Session::load_plugin(const std::string& name, PluginFunction initialize, PluginFunction uninitialize) {
    if (name.empty() || !initialize) return Error{"A plug-in needs a name and an entry"};
    if (plugins_.contains(name)) return {};
    const std::string before = std::exchange(registering_plugin, name);
    const MStatus status = initialize(Access::plugin_object());
    registering_plugin = before;
    if (!status) {
        forget_plugin(name);
        return Error{"The plug-in '" + name + "' refused to start: " + Access::text(status.errorString())};
    }
    plugins_[name] = {initialize, uninitialize};
    offered_[name] = plugins_[name];
    return {};
}

Result<void> Session::load_plugin(const std::string& name) {
    const auto at = offered_.find(name);
    if (at == offered_.end()) return Error{"The plug-in '" + name + "' was not found"};
    return load_plugin(name, at->second.initialize, at->second.uninitialize);
}

void Session::offer_plugin(const std::string& name, PluginFunction initialize, PluginFunction uninitialize) {
    offered_[name] = {initialize, uninitialize};
}

std::vector<std::string> Session::loaded_plugins() const {
    std::vector<std::string> out;
    for (const auto& [name, plugin] : plugins_) out.push_back(name);
    return out;
}

Result<void> Session::unload_plugin(const std::string& name) {
    const auto at = plugins_.find(name);
    if (at == plugins_.end()) return Error{"The plug-in '" + name + "' isn't loaded"};
    const std::string before = std::exchange(registering_plugin, name);
    const MStatus status = at->second.uninitialize ? at->second.uninitialize(Access::plugin_object()) : MStatus();
    registering_plugin = before;
    plugins_.erase(at);
    forget_plugin(name);
    if (!status) return Error{"The plug-in '" + name + "' failed to stop: " + Access::text(status.errorString())};
    return {};
}

// Nothing that a plug-in left registered may outlive it.
void Session::forget_plugin(const std::string& name) {
    const auto of_plugin = [&name](const auto& entry) { return entry.second.plugin == name; };
    std::erase_if(translators, of_plugin);
    std::erase_if(commands, of_plugin);
}

bool Session::is_plugin_loaded(std::string_view name) const {
    return plugins_.find(name) != plugins_.end();
}
bool Session::has_command(std::string_view name) const {
    return commands.find(name) != commands.end();
}

Result<CommandResult> Session::run_command(const std::string& name, const std::vector<std::string>& arguments) {
    const auto entry = commands.find(name);
    if (entry == commands.end()) return Error{"Cannot find procedure \"" + name + "\""};
    const Command command = entry->second; // a copy: the command may unload its plug-in
    MArgList words;
    for (const std::string& argument : arguments) words.addArg(text(argument));
    MSyntax syntax;
    if (command.syntax) {
        syntax = command.syntax();
        const auto sorted = parse_arguments(Access::syntax(syntax), Access::words(words));
        if (!sorted) return sorted.error();
    }
    const std::unique_ptr<MPxCommand> made(static_cast<MPxCommand*>(command.creator()));
    if (!made) return Error{"The command '" + name + "' couldn't be made"};
    if (command.syntax) Access::set_syntax(*made, syntax);
    // A command may run further ones; each has a result of its own.
    CommandResult before = std::exchange(command_result, {});
    const MStatus status = [&] {
        const PluginWork work(*this);
        return made->doIt(words);
    }();
    CommandResult result = std::exchange(command_result, std::move(before));
    if (!status) return Error{"The command '" + name + "' failed"};
    return result;
}

namespace {

void give_result(CommandResult result) {
    Session::current().command_result = std::move(result);
}

CommandResult integers(CommandResult::Kind kind, std::vector<std::int64_t> values) {
    CommandResult out;
    out.kind = kind;
    out.integers = std::move(values);
    return out;
}

CommandResult numbers(CommandResult::Kind kind, std::vector<double> values) {
    CommandResult out;
    out.kind = kind;
    out.numbers = std::move(values);
    return out;
}

CommandResult texts(CommandResult::Kind kind, std::vector<std::string> values) {
    CommandResult out;
    out.kind = kind;
    out.texts = std::move(values);
    return out;
}

} // namespace

MPxCommand::MPxCommand() = default;
MPxCommand::~MPxCommand() = default;

bool MPxCommand::isUndoable() const {
    return false;
}
bool MPxCommand::hasSyntax() const {
    return syntax_.is_made();
}
MSyntax MPxCommand::syntax() const {
    return *syntax_;
}

MStatus MPxCommand::undoIt() {
    return MStatus::kFailure;
}
MStatus MPxCommand::redoIt() {
    return MStatus::kFailure;
}
void MPxCommand::setResult(bool value) {
    give_result(integers(CommandResult::Kind::integer, {value ? 1 : 0}));
}
void MPxCommand::setResult(int value) {
    give_result(integers(CommandResult::Kind::integer, {value}));
}
void MPxCommand::setResult(unsigned int value) {
    give_result(integers(CommandResult::Kind::integer, {value}));
}
void MPxCommand::setResult(double value) {
    give_result(numbers(CommandResult::Kind::number, {value}));
}
void MPxCommand::setResult(const MString& value) {
    give_result(texts(CommandResult::Kind::text, {Access::text(value)}));
}

void MPxCommand::setResult(const MIntArray& values) {
    clearResult();
    for (unsigned int i = 0; i < values.length(); ++i) appendToResult(values[i]);
}

void MPxCommand::setResult(const MDoubleArray& values) {
    clearResult();
    for (unsigned int i = 0; i < values.length(); ++i) appendToResult(values[i]);
}

void MPxCommand::setResult(const MStringArray& values) {
    clearResult();
    for (unsigned int i = 0; i < values.length(); ++i) appendToResult(values[i]);
}

void MPxCommand::appendToResult(const MString& value) {
    CommandResult& result = Session::current().command_result;
    if (result.kind != CommandResult::Kind::none && result.texts.empty()) return;
    result.kind = CommandResult::Kind::texts;
    result.texts.push_back(Access::text(value));
}

void MPxCommand::appendToResult(int value) {
    CommandResult& result = Session::current().command_result;
    if (result.kind != CommandResult::Kind::none && result.integers.empty()) return;
    result.kind = CommandResult::Kind::integers;
    result.integers.push_back(value);
}

void MPxCommand::appendToResult(double value) {
    CommandResult& result = Session::current().command_result;
    if (result.kind != CommandResult::Kind::none && result.numbers.empty()) return;
    result.kind = CommandResult::Kind::numbers;
    result.numbers.push_back(value);
}

void MPxCommand::clearResult() {
    give_result({});
}
void MPxCommand::displayInfo(const MString& text) {
    Session::current().info(Access::text(text));
}
void MPxCommand::displayWarning(const MString& text, bool) {
    Session::current().warning(Access::text(text));
}
void MPxCommand::displayError(const MString& text, bool) {
    Session::current().error(Access::text(text));
}
