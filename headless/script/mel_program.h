#pragma once

#include "headless/script/commands.h"

#include <memory>

namespace headless {

struct MelCommand;

/// A piece of a script that gives a value.
struct MelExpression {
    enum class Kind {
        literal,  ///< `value`
        variable, ///< `name`
        element,  ///< `name` at the index `parts[0]`
        list,     ///< the values of `parts` in one
        command,  ///< what `command` gives
        negate,
        complement,
        binary,      ///< `name` is the operator
        conditional, ///< `parts[0]` ? `parts[1]` : `parts[2]`
        assign,      ///< `name` is the operator ("=", "+="), `parts[0]` a variable or an element
        step,        ///< "++" or "--" in `name`, on `parts[0]`; gives the new value
        step_after,  ///< the same, and gives the value before
    };

    Kind kind = Kind::literal;
    std::size_t offset = 0;
    std::string name{};
    CommandResult value{};
    std::vector<MelExpression> parts{};
    std::shared_ptr<const MelCommand> command{};
};

/// A command and its words. Where every word is a literal, the words stand ready and their sorting by flags, once
/// done, is kept: a line that is run again costs neither parsing.
struct MelCommand {
    std::string name;
    std::size_t offset = 0;
    std::vector<MelExpression> words;
    std::vector<bool> quoted; ///< for each word that is a literal
    bool constant = true;
    const CommandRow* row = nullptr; ///< null for a plug-in's command, a procedure, or no command at all
    mutable std::optional<ParsedArguments> sorted{};
};

struct MelStatement {
    enum class Kind {
        nothing,
        expression, ///< `expressions[0]`
        command,    ///< `command`
        declare,    ///< variable `name` of `type`, "[]" behind it for a list, with the value `expressions[0]` if any
        block,
        branch,   ///< if `expressions[0]` then `body[0]` else `body[1]`
        loop,     ///< while `expressions[0]`, `body[0]`, and `body[1]` before each further round
        for_each, ///< `body[0]` with `name` as each value of `expressions[0]`
        leave,    ///< break
        go_on,    ///< continue
        give_back ///< return
    };

    Kind kind = Kind::nothing;
    std::size_t offset = 0;
    std::string name{}, type{};
    std::vector<MelExpression> expressions{};
    std::vector<MelStatement> body{};
    std::shared_ptr<const MelCommand> command{};
};

/// A procedure of a script.
struct MelProcedure {
    std::string name;
    std::vector<std::pair<std::string, std::string>> parameters; ///< type and name
    MelStatement body;
};

/// A script taken apart.
struct MelProgram {
    std::string text;
    std::vector<MelStatement> statements;
    std::vector<std::shared_ptr<const MelProcedure>> procedures;
};

/// Statements and expressions within each other that a script may have.
inline constexpr int max_mel_depth = 64;

/// Takes a script apart: commands with bare words, strings, "$variables", back-quoted commands, "(expressions)" and
/// "{lists}" as arguments; declarations, assignments, if, for, while, procedures. The last statement may go without
/// its ";". An error says line and column.
Result<std::shared_ptr<const MelProgram>> parse_mel(std::string text);

/// The same for what an expression node runs: variables called ".I[3]" and ".O[0]" are its inputs and outputs, ".time"
/// and ".frame" the clock, which the text names without the dot.
Result<std::shared_ptr<const MelProgram>> parse_mel_expression(std::string text);

} // namespace headless
