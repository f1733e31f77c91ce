#pragma once

#include "headless/session.h"

namespace headless {

/// Gives a session its interpreters of MEL and Python lines.
///
/// MEL: see `parse_mel` for the language. Every command of the host and of loaded plug-ins can be called, and a
/// script's own procedures. A script's value is that of its last statement. A script stops at its first error, which
/// names the line and column where the script has several lines or the fault is one of syntax. Variables live on in
/// the session once declared global, and else for the script alone.
///
/// Python: calls of the host's commands by `cmds.name(...)`, under whatever name the module was imported, with
/// arguments by place and by keyword (long or short flag names; a list gives a flag that may be given many times its
/// uses; True and False give and leave out a flag without arguments), `print`, assignments, and values made of
/// strings, numbers, lists, tuples, "+" and indices. Strings have the escapes of the host's Python, version 2: an
/// unknown one keeps its backslash.
///
/// No script recurses or loops without end: nesting, rounds of a loop and scripts within scripts are limited.
void install_interpreters(Session& session);

} // namespace headless
