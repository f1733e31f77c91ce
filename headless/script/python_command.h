#pragma once

#include "headless/script/commands.h"

namespace headless {

struct PythonValue {
    CommandResult value{};
    bool tuple = false;
};

struct PythonArgument {
    std::string keyword; ///< empty for one by place
    PythonValue value;
    std::size_t offset = 0; ///< in the text
};

/// Runs a command of `maya.cmds`: of the host or of a plug-in. Arguments with a name are its flags, the others its
/// objects; a tuple of two times is a range. A name or a flag that isn't known is an error.
Result<CommandResult> run_python_command(Session& session, const std::string& name,
                                         std::span<const PythonArgument> given);

} // namespace headless
