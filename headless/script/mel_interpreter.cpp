#include "headless/script/interpreter.h"
#include "headless/script/mel_values.h"
#include "headless/script/python.h"
#include "headless/script/script_work.h"

#include <deque>

namespace headless {
namespace {

// Levels of statements and expressions that may be at work, over all scripts that run within each other.
constexpr int max_run_depth = 400;
// Rounds of all loops of a script: beyond them it isn't about to end.
constexpr std::int64_t max_rounds = 1'000'000;
// Lists may grow by assigning behind their end, this far.
constexpr std::int64_t max_list = 1 << 24;

struct Variable {
    std::string type;
    CommandResult value;
};
using Variables = NameMap<Variable>;

enum class Flow { on, leave, go_on, give_back };

// Keeps what scripts leave behind, and the scripts themselves: an import sends the same few lines at every key.
class MelInterpreter {
public:
    explicit MelInterpreter(std::shared_ptr<ScriptWork> work) : work_(std::move(work)) {}

    Result<CommandResult> run(Session& session, const std::string& text) {
        const Result<std::shared_ptr<const MelProgram>> program = program_of(text);
        if (!program) return program.error();
        for (const auto& procedure : (*program)->procedures) procedures_[procedure->name] = procedure;
        Frame frame{*this, session, **program};
        CommandResult last;
        const ScriptWork::Run running(*work_);
        if (depth_ == 0) rounds_ = 0;
        for (const MelStatement& statement : (*program)->statements) {
            Result<CommandResult> value = frame.value_of(statement);
            if (!value) return value;
            last = std::move(*value);
            if (frame.flow != Flow::on) break;
        }
        return last;
    }

private:
    // A running script or procedure with variables of its own.
    struct Frame {
        MelInterpreter& interpreter;
        Session& session;
        const MelProgram& program;
        Variables variables{};
        Flow flow = Flow::on;
        CommandResult returned{};

        Result<CommandResult> value_of(const MelStatement& statement);
        Result<void> execute(const MelStatement& statement);
        Result<CommandResult> evaluate(const MelExpression& expression);
        Result<CommandResult> run_command(const MelCommand& command);

    private:
        Result<void> body(const MelStatement& statement);
        Result<void> declare(const MelStatement& statement);
        Result<void> branch(const MelStatement& statement);
        Result<void> loop(const MelStatement& statement);
        Result<void> for_each(const MelStatement& statement);
        bool leaves_loop();
        Result<CommandResult> computed(const MelExpression& expression);
        Result<CommandResult> binary(const MelExpression& expression);
        Result<CommandResult> assign(const MelExpression& expression);
        Result<CommandResult> assign_to(const MelExpression& place, CommandResult value);
        Result<CommandResult> part(const MelExpression& expression);
        Result<CommandResult> call(const MelProcedure& procedure, const std::vector<CommandResult>& arguments);
        Result<std::vector<CommandResult>> arguments_of(const MelCommand& command);
        Result<CommandResult> run_constant(const MelCommand& command);
        Result<CommandResult> run_evaluated(const MelCommand& command);
        Variable* find(const std::string& name);
        Error at(std::size_t offset, Error error) const;
        Error failed(std::size_t offset, std::string message) const { return at(offset, Error{std::move(message)}); }
    };

    class Level {
    public:
        explicit Level(MelInterpreter& interpreter) : depth_(interpreter.depth_) { ++depth_; }
        ~Level() { --depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        int& depth_;
    };

    Result<std::shared_ptr<const MelProgram>> program_of(const std::string& text) {
        static constexpr std::size_t longest = 512, most = 256;
        if (const auto at = programs_.find(text); at != programs_.end()) return at->second;
        Result<std::shared_ptr<const MelProgram>> program = parse_mel(text);
        if (!program || text.size() > longest) return program;
        if (programs_.size() == most) programs_.clear();
        programs_[text] = *program;
        return program;
    }

    NameMap<std::shared_ptr<const MelProgram>> programs_;
    NameMap<std::shared_ptr<const MelProcedure>> procedures_;
    Variables globals_;
    std::shared_ptr<ScriptWork> work_;
    int depth_ = 0;
    std::int64_t rounds_ = 0;
};

// The place is told where there is more than one line to look through.
Error MelInterpreter::Frame::at(std::size_t offset, Error error) const {
    if (error.line == 0 && error.file.empty() && program.text.find('\n') != std::string::npos) {
        const Place place = place_in(program.text, offset);
        error.line = place.line;
        error.column = place.column;
    }
    return error;
}

Variable* MelInterpreter::Frame::find(const std::string& name) {
    if (const auto at = variables.find(name); at != variables.end()) {
        if (!at->second.type.starts_with("global ")) return &at->second;
        return &interpreter.globals_[name];
    }
    return nullptr;
}

Result<CommandResult> MelInterpreter::Frame::value_of(const MelStatement& statement) {
    if (statement.kind == MelStatement::Kind::command) return run_command(*statement.command);
    if (statement.kind == MelStatement::Kind::expression) return evaluate(statement.expressions[0]);
    if (Result<void> done = execute(statement); !done) return done.error();
    return std::exchange(returned, {});
}

Result<void> MelInterpreter::Frame::execute(const MelStatement& statement) {
    const Level level(interpreter);
    if (interpreter.depth_ > max_run_depth) return failed(statement.offset, "The script nests too deep");
    if (!interpreter.work_->step()) return failed(statement.offset, ScriptWork::refusal);
    switch (statement.kind) {
    case MelStatement::Kind::nothing:
        return {};
    case MelStatement::Kind::command:
    case MelStatement::Kind::expression: {
        const Result<CommandResult> value = value_of(statement);
        return value ? Result<void>() : value.error();
    }
    case MelStatement::Kind::declare:
        return declare(statement);
    case MelStatement::Kind::block:
        return body(statement);
    case MelStatement::Kind::branch:
        return branch(statement);
    case MelStatement::Kind::loop:
        return loop(statement);
    case MelStatement::Kind::for_each:
        return for_each(statement);
    case MelStatement::Kind::leave:
        flow = Flow::leave;
        return {};
    case MelStatement::Kind::go_on:
        flow = Flow::go_on;
        return {};
    case MelStatement::Kind::give_back:
        flow = Flow::give_back;
        if (statement.expressions.empty()) return {};
        Result<CommandResult> value = evaluate(statement.expressions[0]);
        if (!value) return value.error();
        returned = std::move(*value);
        return {};
    }
    return {};
}

Result<void> MelInterpreter::Frame::body(const MelStatement& statement) {
    for (const MelStatement& inner : statement.body) {
        if (Result<void> done = execute(inner); !done) return done;
        if (flow != Flow::on) break;
    }
    return {};
}

Result<void> MelInterpreter::Frame::declare(const MelStatement& statement) {
    const bool global = statement.type.starts_with("global ");
    variables[statement.name] = {statement.type, mel_converted({}, statement.type)};
    Variable& variable = *find(statement.name);
    const std::string type = global ? statement.type.substr(7) : statement.type;
    if (variable.type != type && global) variable = {type, mel_converted({}, type)};
    if (statement.expressions.empty()) return {};
    const Result<CommandResult> value = evaluate(statement.expressions[0]);
    if (!value) return value.error();
    if (!interpreter.work_->make(*value)) return failed(statement.offset, ScriptWork::refusal);
    find(statement.name)->value = mel_converted(*value, type);
    return {};
}

Result<void> MelInterpreter::Frame::branch(const MelStatement& statement) {
    Result<CommandResult> condition = evaluate(statement.expressions[0]);
    if (!condition) return condition.error();
    if (mel_truth(*condition)) return execute(statement.body[0]);
    return statement.body.size() > 1 ? execute(statement.body[1]) : Result<void>();
}

bool MelInterpreter::Frame::leaves_loop() {
    if (flow == Flow::give_back) return true;
    return std::exchange(flow, Flow::on) == Flow::leave;
}

Result<void> MelInterpreter::Frame::loop(const MelStatement& statement) {
    while (true) {
        Result<CommandResult> condition = evaluate(statement.expressions[0]);
        if (!condition) return condition.error();
        if (!mel_truth(*condition)) return {};
        if (++interpreter.rounds_ > max_rounds) return failed(statement.offset, "The loop doesn't end");
        if (Result<void> done = execute(statement.body[0]); !done) return done;
        if (leaves_loop()) return {};
        if (Result<void> done = execute(statement.body[1]); !done) return done;
    }
}

Result<void> MelInterpreter::Frame::for_each(const MelStatement& statement) {
    const Result<CommandResult> list = evaluate(statement.expressions[0]);
    if (!list) return list.error();
    for (std::size_t i = 0, count = mel_is_list(*list) ? mel_size(*list) : 1; i < count; ++i) {
        variables[statement.name] = {"", mel_element(*list, i)};
        if (++interpreter.rounds_ > max_rounds) return failed(statement.offset, "The loop doesn't end");
        if (Result<void> done = execute(statement.body[0]); !done) return done;
        if (leaves_loop()) return {};
    }
    return {};
}

Result<CommandResult> MelInterpreter::Frame::part(const MelExpression& expression) {
    return evaluate(expression.parts[0]);
}

Result<CommandResult> MelInterpreter::Frame::evaluate(const MelExpression& expression) {
    Result<CommandResult> value = computed(expression);
    if (!value) return value;
    using Kind = MelExpression::Kind;
    const bool makes = expression.kind == Kind::list || expression.kind == Kind::binary ||
                       expression.kind == Kind::assign || expression.kind == Kind::step ||
                       expression.kind == Kind::step_after;
    ScriptWork& work = *interpreter.work_;
    if (!(makes ? work.make(*value) : work.pass(*value))) return failed(expression.offset, ScriptWork::refusal);
    return value;
}

Result<CommandResult> MelInterpreter::Frame::computed(const MelExpression& expression) {
    const Level level(interpreter);
    if (interpreter.depth_ > max_run_depth) return failed(expression.offset, "The script nests too deep");
    switch (expression.kind) {
    case MelExpression::Kind::literal:
        return expression.value;
    case MelExpression::Kind::variable:
    case MelExpression::Kind::element: {
        if (!find(expression.name))
            return failed(expression.offset, "\"$" + expression.name + "\" is an undeclared variable");
        if (expression.kind == MelExpression::Kind::variable) return find(expression.name)->value;
        Result<CommandResult> index = part(expression);
        if (!index) return index;
        const Variable& variable = *find(expression.name);
        const CommandResult found = mel_element(variable.value, static_cast<std::size_t>(mel_integer(*index)));
        if (found.kind != CommandResult::Kind::none || !variable.type.ends_with("[]")) return found;
        return mel_converted({}, std::string_view(variable.type).substr(0, variable.type.size() - 2));
    }
    case MelExpression::Kind::list: {
        std::vector<CommandResult> values;
        for (const MelExpression& inner : expression.parts) {
            Result<CommandResult> value = evaluate(inner);
            if (!value) return value;
            values.push_back(std::move(*value));
        }
        return mel_list(values);
    }
    case MelExpression::Kind::command:
        return run_command(*expression.command);
    case MelExpression::Kind::negate: {
        const Result<CommandResult> value = part(expression);
        return value ? *mel_binary("-", integer_result(0), *value) : value;
    }
    case MelExpression::Kind::complement: {
        const Result<CommandResult> value = part(expression);
        return value ? integer_result(mel_truth(*value) ? 0 : 1) : value;
    }
    case MelExpression::Kind::binary:
        return binary(expression);
    case MelExpression::Kind::conditional: {
        Result<CommandResult> condition = part(expression);
        if (!condition) return condition;
        return evaluate(expression.parts[mel_truth(*condition) ? 1 : 2]);
    }
    case MelExpression::Kind::assign:
    case MelExpression::Kind::step:
    case MelExpression::Kind::step_after:
        return assign(expression);
    }
    return CommandResult();
}

Result<CommandResult> MelInterpreter::Frame::binary(const MelExpression& expression) {
    Result<CommandResult> a = part(expression);
    if (!a) return a;
    const bool either = expression.name == "||", both = expression.name == "&&";
    if (either || both) {
        if (mel_truth(*a) == either) return integer_result(either ? 1 : 0);
        Result<CommandResult> b = evaluate(expression.parts[1]);
        return b ? integer_result(mel_truth(*b) ? 1 : 0) : b;
    }
    Result<CommandResult> b = evaluate(expression.parts[1]);
    if (!b) return b;
    const auto value = mel_binary(expression.name, *a, *b);
    if (!value) return failed(expression.offset, "Division by zero");
    return *value;
}

Result<CommandResult> MelInterpreter::Frame::assign(const MelExpression& expression) {
    const MelExpression& place = expression.parts[0];
    if (expression.kind == MelExpression::Kind::assign && expression.name == "=") {
        Result<CommandResult> value = evaluate(expression.parts[1]);
        return value ? assign_to(place, std::move(*value)) : value;
    }
    Result<CommandResult> before = evaluate(place);
    if (!before) return before;
    const bool step = expression.kind != MelExpression::Kind::assign;
    Result<CommandResult> by = step ? Result<CommandResult>(integer_result(1)) : evaluate(expression.parts[1]);
    if (!by) return by;
    auto value = mel_binary(std::string_view(expression.name).substr(0, 1), *before, *by);
    if (!value) return failed(expression.offset, "Division by zero");
    Result<CommandResult> after = assign_to(place, std::move(*value));
    return after && expression.kind == MelExpression::Kind::step_after ? before : after;
}

Result<CommandResult> MelInterpreter::Frame::assign_to(const MelExpression& place, CommandResult value) {
    if (place.kind == MelExpression::Kind::variable) {
        Variable* variable = find(place.name);
        if (!variable) variable = &(variables[place.name] = {"", {}});
        variable->value = variable->type.empty() ? std::move(value) : mel_converted(std::move(value), variable->type);
        return variable->value;
    }
    Result<CommandResult> index = part(place);
    if (!index) return index;
    const std::int64_t i = mel_integer(*index);
    if (i < 0 || i >= max_list) return failed(place.offset, "The index is out of range");
    Variable* variable = find(place.name);
    if (!variable) variable = &(variables[place.name] = {mel_is_text(value) ? "string[]" : "float[]", {}});
    CommandResult& list = variable->value;
    const auto put = [i](auto& values, auto one) {
        if (values.size() <= static_cast<std::size_t>(i)) values.resize(static_cast<std::size_t>(i) + 1);
        values[static_cast<std::size_t>(i)] = std::move(one);
    };
    const auto end = static_cast<std::size_t>(i) + 1;
    if (const std::size_t size = mel_size(list);
        end > size && !interpreter.work_->make((end - size) * sizeof(std::string)))
        return failed(place.offset, ScriptWork::refusal);
    if (!mel_is_list(list)) list = mel_converted(list, variable->type.empty() ? "string[]" : variable->type);
    if (list.kind == CommandResult::Kind::texts) put(list.texts, mel_text(value));
    if (list.kind == CommandResult::Kind::numbers) put(list.numbers, mel_number(value));
    if (list.kind == CommandResult::Kind::integers) put(list.integers, mel_integer(value));
    return value;
}

Result<std::vector<CommandResult>> MelInterpreter::Frame::arguments_of(const MelCommand& command) {
    std::vector<CommandResult> out;
    for (const MelExpression& word : command.words) {
        Result<CommandResult> value = evaluate(word);
        if (!value) return value.error();
        out.push_back(std::move(*value));
    }
    return out;
}

Result<CommandResult> MelInterpreter::Frame::run_command(const MelCommand& command) {
    const Level level(interpreter);
    if (interpreter.depth_ > max_run_depth) return failed(command.offset, "The script nests too deep");
    Result<CommandResult> done =
        command.constant && command.row && command.row->run ? run_constant(command) : run_evaluated(command);
    if (!done) return at(command.offset, done.error());
    return done;
}

Result<CommandResult> MelInterpreter::Frame::run_constant(const MelCommand& command) {
    if (!command.sorted) {
        std::vector<MString> words;
        for (const MelExpression& word : command.words) words.push_back(text(mel_text(word.value)));
        Result<ParsedArguments> sorted = parse_arguments(syntax_of(*command.row), words);
        if (!sorted) return sorted.error();
        command.sorted = std::move(*sorted);
    }
    return command.row->run(session, Arguments(*command.sorted));
}

Result<CommandResult> MelInterpreter::Frame::run_evaluated(const MelCommand& command) {
    const Result<std::vector<CommandResult>> values = arguments_of(command);
    if (!values) return values.error();
    if (!command.row) {
        const auto procedure = interpreter.procedures_.find(command.name);
        if (procedure != interpreter.procedures_.end()) {
            const auto held = procedure->second; // it may be defined anew while it runs
            return call(*held, *values);
        }
        if (command.name == "size" && values->size() == 1)
            return integer_result(static_cast<std::int64_t>(mel_size(values->front())));
    }
    std::deque<std::string> texts;
    std::vector<Word> words;
    for (std::size_t i = 0; i < values->size(); ++i) {
        for (std::string& piece : (*values)[i].pieces()) {
            texts.push_back(std::move(piece));
            words.push_back({texts.back(), command.words[i].offset, command.quoted[i]});
        }
    }
    return run_words(session, command.name, words);
}

Result<CommandResult> MelInterpreter::Frame::call(const MelProcedure& procedure,
                                                  const std::vector<CommandResult>& arguments) {
    if (arguments.size() != procedure.parameters.size())
        return Error{"Wrong number of arguments on call to " + procedure.name};
    Frame frame{interpreter, session, program};
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& [type, name] = procedure.parameters[i];
        if (!interpreter.work_->make(arguments[i])) return Error{ScriptWork::refusal};
        frame.variables[name] = {type, mel_converted(arguments[i], type)};
    }
    if (Result<void> done = frame.execute(procedure.body); !done) return done.error();
    return std::move(frame.returned);
}

} // namespace

void install_interpreters(Session& session) {
    const auto work = std::make_shared<ScriptWork>();
    const auto mel = std::make_shared<MelInterpreter>(work);
    session.set_mel([mel](Session& host, const std::string& text) { return mel->run(host, text); });
    const auto python = std::make_shared<PythonInterpreter>(work);
    session.set_python([python](Session& host, const std::string& text) { return python->run(host, text); });
}

} // namespace headless
