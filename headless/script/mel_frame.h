#pragma once

#include "headless/script/mel_program.h"
#include "headless/script/script_work.h"

namespace headless {

struct MelVariable {
    std::string type; ///< empty for one that takes whatever it is given
    CommandResult value;
};
using MelVariables = NameMap<MelVariable>;

/// What running scripts share: procedures, global variables, and how far they have gone.
struct MelWorld {
    std::shared_ptr<ScriptWork> work;
    NameMap<std::shared_ptr<const MelProcedure>> procedures{};
    MelVariables globals{};
    int depth = 0; ///< levels of statements and expressions at work, over all scripts that run within each other
    std::int64_t rounds = 0; ///< of all loops of the outermost script
};

/// A running script or procedure, with variables of its own. World and program must outlive it.
class MelFrame {
public:
    /// Without a session no command can run, only procedures and functions.
    MelFrame(MelWorld& world, Session* session, const MelProgram& program)
        : world_(world), session_(session), program_(program) {}

    MelVariables variables{};

    /// Runs the program's statements; the value of the last.
    Result<CommandResult> run();

private:
    enum class Flow { on, leave, go_on, give_back };

    Result<CommandResult> value_of(const MelStatement& statement);
    Result<void> execute(const MelStatement& statement);
    Result<void> body(const MelStatement& statement);
    Result<void> declare(const MelStatement& statement);
    Result<void> branch(const MelStatement& statement);
    Result<void> loop(const MelStatement& statement);
    Result<void> for_each(const MelStatement& statement);
    bool leaves_loop();
    Result<CommandResult> evaluate(const MelExpression& expression);
    Result<CommandResult> computed(const MelExpression& expression);
    Result<CommandResult> binary(const MelExpression& expression);
    Result<CommandResult> assign(const MelExpression& expression);
    Result<CommandResult> assign_to(const MelExpression& place, CommandResult value);
    Result<CommandResult> part(const MelExpression& expression);
    Result<CommandResult> run_command(const MelCommand& command);
    Result<CommandResult> run_constant(const MelCommand& command);
    Result<CommandResult> run_evaluated(const MelCommand& command);
    Result<CommandResult> call(const MelProcedure& procedure, const std::vector<CommandResult>& arguments);
    Result<std::vector<CommandResult>> arguments_of(const MelCommand& command);
    MelVariable* find(const std::string& name);
    Error at(std::size_t offset, Error error) const;
    Error failed(std::size_t offset, std::string message) const { return at(offset, Error{std::move(message)}); }

    MelWorld& world_;
    Session* session_;
    const MelProgram& program_;
    Flow flow_ = Flow::on;
    CommandResult returned_{};
};

} // namespace headless
