// Messages, scripts within scripts, plug-ins, and what a script sets around its work.
#include "headless/files/text_file.h"

#include "headless/script/commands.h"
#include "support/platform/native_path.h"

#include <filesystem>

namespace headless {

using VOR2_LOADER::platform::native_path;
namespace {

std::string joined(std::span<const Word> words) {
    std::string out;
    for (const Word& word : words) {
        if (!out.empty()) out += ' ';
        out += word.text;
    }
    return out;
}

std::string without_line_end(std::string text) {
    while (text.ends_with('\n')) text.pop_back();
    return text;
}

Result<CommandResult> print(Session& session, std::span<const Word> words) {
    session.info(without_line_end(joined(words)));
    return CommandResult();
}

Result<CommandResult> warning(Session& session, std::span<const Word> words) {
    session.warning(without_line_end(joined(words)));
    return CommandResult();
}

// An error that a script raises ends it.
Result<CommandResult> error(Session&, std::span<const Word> words) {
    return Error{without_line_end(joined(words))};
}

Result<CommandResult> eval(Session& session, std::span<const Word> words) {
    return session.run_mel(joined(words));
}

Result<CommandResult> python(Session& session, std::span<const Word> words) {
    return session.run_python(joined(words));
}

Result<CommandResult> source(Session& session, const Arguments& arguments) {
    if (arguments.count() != 1) return Error{"source needs a file"};
    const Result<std::string> text = read_text_file(arguments[0]);
    if (!text) return text.error();
    Result<CommandResult> done = session.run_mel(*text);
    if (done) return done;
    Error error = done.error();
    if (error.file.empty()) error.file = arguments[0];
    return error;
}

// The name of a plug-in in a path: "plug-ins/vor2.mll" is vor2.
std::string plugin_name(const std::string& path) {
    std::string tidy = path;
    for (char& c : tidy) c = c == '\\' ? '/' : c;
    return native_path(tidy).stem().string();
}

Result<CommandResult> load_plugin(Session& session, const Arguments& arguments) {
    std::vector<std::string> loaded;
    for (const std::string& path : arguments.names()) {
        const std::string name = plugin_name(path);
        if (Result<void> done = session.load_plugin(name); !done) return done.error();
        loaded.push_back(name);
    }
    if (loaded.empty()) return Error{"loadPlugin needs a plug-in"};
    return texts_result(std::move(loaded));
}

Result<CommandResult> unload_plugin(Session& session, const Arguments& arguments) {
    std::vector<std::string> unloaded;
    for (const std::string& path : arguments.names()) {
        const std::string name = plugin_name(path);
        if (Result<void> done = session.unload_plugin(name); !done) return done.error();
        unloaded.push_back(name);
    }
    if (unloaded.empty()) return Error{"unloadPlugin needs a plug-in"};
    return texts_result(std::move(unloaded));
}

template<typename Registry>
std::vector<std::string> registered_by(const std::string& plugin, const Registry& registry) {
    std::vector<std::string> out;
    for (const auto& [name, entry] : registry) {
        if (entry.plugin == plugin) out.push_back(name);
    }
    return out;
}

Result<CommandResult> plugin_info(Session& session, const Arguments& arguments) {
    if (arguments.has("ls")) return texts_result(session.loaded_plugins());
    if (arguments.count() != 1) return Error{"pluginInfo needs a plug-in"};
    const std::string name = plugin_name(arguments[0]);
    const bool loaded = session.is_plugin_loaded(name);
    if (arguments.has("l")) return integer_result(loaded ? 1 : 0);
    if (!loaded) return Error{"The plug-in '" + name + "' isn't loaded"};
    if (arguments.has("n")) return text_result(name);
    if (arguments.has("c")) return texts_result(registered_by(name, session.commands));
    if (arguments.has("t")) return texts_result(registered_by(name, session.translators));
    return Error{"pluginInfo needs a flag that says what is asked"};
}

Result<CommandResult> about(Session&, const Arguments& arguments) {
    if (arguments.has("b")) return integer_result(1);
    if (arguments.has("api")) return integer_result(201610);
    return text_result("2016");
}

// What only a window, an undo list or a project would notice.
Result<CommandResult> nothing(Session&, std::span<const Word>) {
    return CommandResult();
}

constexpr CommandRow session_rows[] = {
    {"print", "", nullptr, print},
    {"warning", "", nullptr, warning},
    {"error", "", nullptr, error},
    {"eval", "", nullptr, eval},
    {"evalDeferred", "", nullptr, eval},
    {"python", "", nullptr, python},
    {"source", "", source},
    {"loadPlugin", "qt,quiet", load_plugin},
    {"unloadPlugin", "f,force", unload_plugin},
    {"pluginInfo", "l,loaded ls,listPlugins n,name c,command t,translator", plugin_info},
    {"about", "v,version b,batch api,apiVersion", about},
    {"fileInfo", "", nullptr, nothing},
    {"requires", "", nullptr, nothing},
    {"refresh", "su,suspend=b f,force cv,currentView", nullptr, nothing},
    {"undoInfo", "st,state=b swf,stateWithoutFlush=b ock,openChunk cck,closeChunk", nullptr, nothing},
    {"cycleCheck", "e,evaluation=b", nullptr, nothing},
};

} // namespace

std::span<const CommandRow> session_commands() {
    return session_rows;
}

} // namespace headless
