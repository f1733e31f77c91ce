#pragma once

#include "headless/script/commands.h"
#include "headless/script/script_work.h"

namespace headless {

/// Runs Python lines; see `install_interpreters` for what is understood. Imports and variables live on from run to run.
class PythonInterpreter {
public:
    explicit PythonInterpreter(std::shared_ptr<ScriptWork> work) : work_(std::move(work)) {}
    Result<CommandResult> run(Session& session, const std::string& text);

private:
    friend class PythonRun;

    NameMap<std::string> modules_; ///< by the name that a script calls it, what was imported ("maya.cmds")
    NameMap<CommandResult> variables_;
    std::shared_ptr<ScriptWork> work_;
    int depth_ = 0;
};

} // namespace headless
