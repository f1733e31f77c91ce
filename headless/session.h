#pragma once

#include "headless/files/file_search.h"
#include "headless/graph/scene.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

class MObject;
class MStatus;
class MSyntax;

namespace headless {

class Session;

enum class MessageKind { info, warning, error, result };

/// What a command gave back; `kind` says which of the members counts.
struct CommandResult {
    enum class Kind { none, text, texts, number, numbers, integer, integers } kind = Kind::none;
    std::vector<std::string> texts;
    std::vector<double> numbers;
    std::vector<std::int64_t> integers;

    std::vector<std::string> pieces() const; ///< each value as text
    /// As a script shows it: values with blanks between them.
    std::string text() const;
};

/// Reads a scene file into a scene, adding to what is there.
using SceneReader = std::function<Result<void>(Scene& scene, const std::string& path)>;
using SceneWriter = std::function<Result<void>(Scene& scene, const std::string& path)>;

/// Stands while a plug-in works on the scene. At the end of the outermost one the host warns of what moves the nodes
/// that the plug-in asked about and isn't evaluated, and of evaluations that came to no end: what was made of these
/// isn't the scene's motion.
class PluginWork {
public:
    explicit PluginWork(Session& session);
    ~PluginWork();
    PluginWork(const PluginWork&) = delete;
    PluginWork& operator=(const PluginWork&) = delete;

private:
    Session& session_;
};

/// The embedded host: one scene, the plug-ins loaded into it, and where its messages go. The public API's static
/// classes speak to the current session; one is made at the first question. Everything runs on one thread.
class Session {
public:
    static Session& current();

    Scene& scene() { return *scene_; }
    /// Drops the scene for one with the default nodes alone; units go back to film, centimetres and degrees.
    void new_scene();

    // Messages: to standard output and, for warnings and errors, to standard error, unless told otherwise.
    using Sink = std::function<void(MessageKind, const std::string&)>;
    void set_message_sink(Sink sink);
    void message(MessageKind kind, const std::string& text);
    void info(const std::string& text) { message(MessageKind::info, text); }
    void warning(const std::string& text) { message(MessageKind::warning, text); }
    void error(const std::string& text) { message(MessageKind::error, text); }

    // Scene files, by extension in lower case and without a dot.
    void register_reader(std::string extension, SceneReader reader);
    void register_writer(std::string extension, SceneWriter writer);
    /// In place of the scene. A file that isn't there, or that nothing here reads, leaves the scene as it is; one
    /// that can't be read to its end leaves a new one.
    Result<void> open_file(const std::string& path);
    Result<void> save_as(const std::string& path);
    /// Where files are looked for that scenes name, from the next one on that is opened.
    FileSearch file_search;
    /// Through the plug-in translator of that type; an empty type picks a translator or reader by the file.
    Result<void> import_file(const std::string& path, const std::string& type);
    /// Through the plug-in translator of that type, with the selection as what is exported. An empty one is refused,
    /// but for a plug-in's command, which may name what it exports itself.
    Result<void> export_selected(const std::string& path, const std::string& type);

    // Scripts. The interpreter is installed by headless/script; without one a line is an error.
    using Interpreter = std::function<Result<CommandResult>(Session&, const std::string&)>;
    void set_mel(Interpreter interpreter) { mel_ = std::move(interpreter); }
    void set_python(Interpreter interpreter) { python_ = std::move(interpreter); }
    Result<CommandResult> run_mel(const std::string& text);
    Result<CommandResult> run_python(const std::string& text);

    // Plug-ins.
    using PluginFunction = MStatus (*)(MObject);
    Result<void> load_plugin(const std::string& name, PluginFunction initialize, PluginFunction uninitialize);
    /// Loads a plug-in that was loaded or offered before; one that is loaded already stays so.
    Result<void> load_plugin(const std::string& name);
    /// Lets scripts load a plug-in by its name.
    void offer_plugin(const std::string& name, PluginFunction initialize, PluginFunction uninitialize);
    Result<void> unload_plugin(const std::string& name);
    std::vector<std::string> loaded_plugins() const;
    bool is_plugin_loaded(std::string_view name) const;
    bool has_command(std::string_view name) const;
    /// Runs a command of a plug-in: parses the arguments by its syntax, then `doIt`.
    Result<CommandResult> run_command(const std::string& name, const std::vector<std::string>& arguments);

    // For the API classes.
    struct Translator {
        std::string plugin;
        void* (*creator)() = nullptr;
    };
    struct Command {
        std::string plugin;
        void* (*creator)() = nullptr;
        MSyntax (*syntax)() = nullptr;
    };
    std::map<std::string, Translator, std::less<>> translators;
    std::map<std::string, Command, std::less<>> commands;
    /// The warnings at the end of the last work of a plug-in.
    const std::vector<std::string>& doubts() const { return doubts_; }
    /// Takes down that a plug-in asked where a node stands; of no effect while none is working.
    void note_asked(const Node& node);

    std::string registering_plugin; ///< whose initialize or uninitialize is running; empty outside of both
    CommandResult command_result;   ///< of the plug-in command that is running

private:
    friend class PluginWork;
    Session();
    Result<void> read(const std::string& path, const std::string& type, bool import);
    void forget_plugin(const std::string& name);

    std::unique_ptr<Scene> scene_;
    Sink sink_;
    std::map<std::string, SceneReader, std::less<>> readers_;
    std::map<std::string, SceneWriter, std::less<>> writers_;
    Interpreter mel_, python_;
    int plugins_at_work_ = 0;
    std::unordered_set<std::uint32_t> asked_serials_;
    std::vector<NodeHandle> asked_;
    std::vector<std::string> doubts_;
    struct Plugin {
        PluginFunction initialize = nullptr, uninitialize = nullptr;
    };
    std::map<std::string, Plugin, std::less<>> plugins_, offered_;
};

} // namespace headless
