#include "headless/script/mel_frame.h"

#include "headless/script/mel_functions.h"
#include "headless/script/mel_values.h"

#include <deque>

namespace headless {
namespace {

// Levels of statements and expressions that may be at work.
constexpr int max_run_depth = 400;
// Rounds of all loops of a script: beyond them it isn't about to end.
constexpr std::int64_t max_rounds = 1'000'000;
// Lists may grow by assigning behind their end, this far.
constexpr std::int64_t max_list = 1 << 24;

class Level {
public:
    explicit Level(MelWorld& world) : depth_(world.depth) { ++depth_; }
    ~Level() { --depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    int& depth_;
};

} // namespace

Result<CommandResult> MelFrame::run() {
    CommandResult last;
    const ScriptWork::Run running(*world_.work);
    if (world_.depth == 0) world_.rounds = 0;
    for (const MelStatement& statement : program_.statements) {
        Result<CommandResult> value = value_of(statement);
        if (!value) return value;
        last = std::move(*value);
        if (flow_ != Flow::on) break;
    }
    return last;
}

// The place is told where there is more than one line to look through.
Error MelFrame::at(std::size_t offset, Error error) const {
    if (error.line == 0 && error.file.empty() && program_.text.find('\n') != std::string::npos) {
        const Place place = place_in(program_.text, offset);
        error.line = place.line;
        error.column = place.column;
    }
    return error;
}

MelVariable* MelFrame::find(const std::string& name) {
    if (const auto at = variables.find(name); at != variables.end()) {
        if (!at->second.type.starts_with("global ")) return &at->second;
        return &world_.globals[name];
    }
    return nullptr;
}

Result<CommandResult> MelFrame::value_of(const MelStatement& statement) {
    if (statement.kind == MelStatement::Kind::command) return run_command(*statement.command);
    if (statement.kind == MelStatement::Kind::expression) return evaluate(statement.expressions[0]);
    if (Result<void> done = execute(statement); !done) return done.error();
    return std::exchange(returned_, {});
}

Result<void> MelFrame::execute(const MelStatement& statement) {
    const Level level(world_);
    if (world_.depth > max_run_depth) return failed(statement.offset, "The script nests too deep");
    if (!world_.work->step()) return failed(statement.offset, ScriptWork::refusal);
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
        flow_ = Flow::leave;
        return {};
    case MelStatement::Kind::go_on:
        flow_ = Flow::go_on;
        return {};
    case MelStatement::Kind::give_back:
        flow_ = Flow::give_back;
        if (statement.expressions.empty()) return {};
        Result<CommandResult> value = evaluate(statement.expressions[0]);
        if (!value) return value.error();
        returned_ = std::move(*value);
        return {};
    }
    return {};
}

Result<void> MelFrame::body(const MelStatement& statement) {
    for (const MelStatement& inner : statement.body) {
        if (Result<void> done = execute(inner); !done) return done;
        if (flow_ != Flow::on) break;
    }
    return {};
}

Result<void> MelFrame::declare(const MelStatement& statement) {
    const bool global = statement.type.starts_with("global ");
    variables[statement.name] = {statement.type, mel_converted({}, statement.type)};
    MelVariable& variable = *find(statement.name);
    const std::string type = global ? statement.type.substr(7) : statement.type;
    if (variable.type != type && global) variable = {type, mel_converted({}, type)};
    if (statement.expressions.empty()) return {};
    const Result<CommandResult> value = evaluate(statement.expressions[0]);
    if (!value) return value.error();
    if (!world_.work->make(*value)) return failed(statement.offset, ScriptWork::refusal);
    find(statement.name)->value = mel_converted(*value, type);
    return {};
}

Result<void> MelFrame::branch(const MelStatement& statement) {
    Result<CommandResult> condition = evaluate(statement.expressions[0]);
    if (!condition) return condition.error();
    if (mel_truth(*condition)) return execute(statement.body[0]);
    return statement.body.size() > 1 ? execute(statement.body[1]) : Result<void>();
}

bool MelFrame::leaves_loop() {
    if (flow_ == Flow::give_back) return true;
    return std::exchange(flow_, Flow::on) == Flow::leave;
}

Result<void> MelFrame::loop(const MelStatement& statement) {
    while (true) {
        Result<CommandResult> condition = evaluate(statement.expressions[0]);
        if (!condition) return condition.error();
        if (!mel_truth(*condition)) return {};
        if (++world_.rounds > max_rounds) return failed(statement.offset, "The loop doesn't end");
        if (Result<void> done = execute(statement.body[0]); !done) return done;
        if (leaves_loop()) return {};
        if (Result<void> done = execute(statement.body[1]); !done) return done;
    }
}

Result<void> MelFrame::for_each(const MelStatement& statement) {
    const Result<CommandResult> list = evaluate(statement.expressions[0]);
    if (!list) return list.error();
    for (std::size_t i = 0, count = mel_is_list(*list) ? mel_size(*list) : 1; i < count; ++i) {
        variables[statement.name] = {"", mel_element(*list, i)};
        if (++world_.rounds > max_rounds) return failed(statement.offset, "The loop doesn't end");
        if (Result<void> done = execute(statement.body[0]); !done) return done;
        if (leaves_loop()) return {};
    }
    return {};
}

Result<CommandResult> MelFrame::part(const MelExpression& expression) {
    return evaluate(expression.parts[0]);
}

Result<CommandResult> MelFrame::evaluate(const MelExpression& expression) {
    Result<CommandResult> value = computed(expression);
    if (!value) return value;
    using Kind = MelExpression::Kind;
    const bool makes = expression.kind == Kind::list || expression.kind == Kind::binary ||
                       expression.kind == Kind::assign || expression.kind == Kind::step ||
                       expression.kind == Kind::step_after;
    ScriptWork& work = *world_.work;
    if (!(makes ? work.make(*value) : work.pass(*value))) return failed(expression.offset, ScriptWork::refusal);
    return value;
}

Result<CommandResult> MelFrame::computed(const MelExpression& expression) {
    const Level level(world_);
    if (world_.depth > max_run_depth) return failed(expression.offset, "The script nests too deep");
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
        const MelVariable& variable = *find(expression.name);
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

Result<CommandResult> MelFrame::binary(const MelExpression& expression) {
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

Result<CommandResult> MelFrame::assign(const MelExpression& expression) {
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

Result<CommandResult> MelFrame::assign_to(const MelExpression& place, CommandResult value) {
    if (place.kind == MelExpression::Kind::variable) {
        MelVariable* variable = find(place.name);
        if (!variable) variable = &(variables[place.name] = {"", {}});
        variable->value = variable->type.empty() ? std::move(value) : mel_converted(std::move(value), variable->type);
        return variable->value;
    }
    Result<CommandResult> index = part(place);
    if (!index) return index;
    const std::int64_t i = mel_integer(*index);
    if (i < 0 || i >= max_list) return failed(place.offset, "The index is out of range");
    MelVariable* variable = find(place.name);
    if (!variable) variable = &(variables[place.name] = {mel_is_text(value) ? "string[]" : "float[]", {}});
    CommandResult& list = variable->value;
    const auto put = [i](auto& values, auto one) {
        if (values.size() <= static_cast<std::size_t>(i)) values.resize(static_cast<std::size_t>(i) + 1);
        values[static_cast<std::size_t>(i)] = std::move(one);
    };
    const auto end = static_cast<std::size_t>(i) + 1;
    if (const std::size_t size = mel_size(list); end > size && !world_.work->make((end - size) * sizeof(std::string)))
        return failed(place.offset, ScriptWork::refusal);
    if (!mel_is_list(list)) list = mel_converted(list, variable->type.empty() ? "string[]" : variable->type);
    if (list.kind == CommandResult::Kind::texts) put(list.texts, mel_text(value));
    if (list.kind == CommandResult::Kind::numbers) put(list.numbers, mel_number(value));
    if (list.kind == CommandResult::Kind::integers) put(list.integers, mel_integer(value));
    return value;
}

Result<std::vector<CommandResult>> MelFrame::arguments_of(const MelCommand& command) {
    std::vector<CommandResult> out;
    for (const MelExpression& word : command.words) {
        Result<CommandResult> value = evaluate(word);
        if (!value) return value.error();
        out.push_back(std::move(*value));
    }
    return out;
}

Result<CommandResult> MelFrame::run_command(const MelCommand& command) {
    const Level level(world_);
    if (world_.depth > max_run_depth) return failed(command.offset, "The script nests too deep");
    Result<CommandResult> done = session_ && command.constant && command.row && command.row->run
                                     ? run_constant(command)
                                     : run_evaluated(command);
    if (!done) return at(command.offset, done.error());
    return done;
}

Result<CommandResult> MelFrame::run_constant(const MelCommand& command) {
    if (!command.sorted) {
        std::vector<MString> words;
        for (const MelExpression& word : command.words) words.push_back(text(mel_text(word.value)));
        Result<ParsedArguments> sorted = parse_arguments(syntax_of(*command.row), words);
        if (!sorted) return sorted.error();
        command.sorted = std::move(*sorted);
    }
    return command.row->run(*session_, Arguments(*command.sorted));
}

Result<CommandResult> MelFrame::run_evaluated(const MelCommand& command) {
    const Result<std::vector<CommandResult>> values = arguments_of(command);
    if (!values) return values.error();
    if (!command.row) {
        const auto procedure = world_.procedures.find(command.name);
        if (procedure != world_.procedures.end()) {
            const auto held = procedure->second; // it may be defined anew while it runs
            return call(*held, *values);
        }
        if (const MelFunction* function = find_mel_function(command.name)) return call_function(*function, *values);
    }
    if (!session_) return Error{"Cannot find procedure \"" + command.name + "\""};
    std::deque<std::string> texts;
    std::vector<Word> words;
    for (std::size_t i = 0; i < values->size(); ++i) {
        for (std::string& piece : (*values)[i].pieces()) {
            texts.push_back(std::move(piece));
            words.push_back({texts.back(), command.words[i].offset, command.quoted[i]});
        }
    }
    return run_words(*session_, command.name, words);
}

Result<CommandResult> MelFrame::call(const MelProcedure& procedure, const std::vector<CommandResult>& arguments) {
    if (arguments.size() != procedure.parameters.size())
        return Error{"Wrong number of arguments on call to " + procedure.name};
    MelFrame frame(world_, session_, program_);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& [type, name] = procedure.parameters[i];
        if (!world_.work->make(arguments[i])) return Error{ScriptWork::refusal};
        frame.variables[name] = {type, mel_converted(arguments[i], type)};
    }
    if (Result<void> done = frame.execute(procedure.body); !done) return done.error();
    return std::move(frame.returned_);
}

} // namespace headless
