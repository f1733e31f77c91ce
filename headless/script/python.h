#pragma once

#include "headless/script/commands.h"

namespace headless {

/// Runs Python lines; see `install_interpreters` for what is understood. Imports and variables live on from run to run.
class PythonInterpreter {
public:
    Result<CommandResult> run(Session& session, const std::string& text);

private:
    friend class PythonRun;

    NameMap<std::string> modules_; ///< by the name that a script calls it, what was imported ("maya.cmds")
    NameMap<CommandResult> variables_;
    int depth_ = 0;
};

} // namespace headless
