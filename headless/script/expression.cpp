#include "headless/script/expression.h"

#include "headless/script/mel_functions.h"
#include "headless/script/mel_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

namespace headless {
namespace {

// Some hundredths of a second: an expression is run for every sample of an export.
constexpr std::size_t most_work = 100'000;
// Inputs and outputs that a text may number.
constexpr int max_port = 1 << 16;
constexpr int max_walk_depth = 400;

std::string input_name(int index) {
    return ".I[" + std::to_string(index) + "]";
}
std::string output_name(int index) {
    return ".O[" + std::to_string(index) + "]";
}

// Walks over a program in the order in which it runs, and finds what it reads and sets, and what keeps it from
// following from its inputs alone. What only some of the ways through the program set doesn't count as set.
class Survey {
public:
    std::set<int> inputs, outputs;
    std::string shortfall;
    bool loops = false;

    void walk(const MelProgram& program) {
        if (!program.procedures.empty()) return fall_short("it has procedures of its own");
        for (const MelStatement& statement : program.statements) walk(statement);
        leave_with(known_);
    }
    bool gives(int output) const { return at_end_ && at_end_->contains(output_name(output)); }

private:
    // Names that have a value; nothing where no way leads.
    using Known = std::optional<std::set<std::string>>;

    static Known common(const Known& a, const Known& b) {
        if (!a || !b) return a ? a : b;
        Known out(std::in_place);
        std::ranges::set_intersection(*a, *b, std::inserter(*out, out->end()));
        return out;
    }
    void leave_with(const Known& known) { at_end_ = common(at_end_, known); }
    void fall_short(std::string why) {
        if (shortfall.empty()) shortfall = std::move(why);
    }

    void walk(const MelStatement& statement) {
        if (++depth_ > max_walk_depth) fall_short("it nests too deep");
        if (shortfall.empty()) step(statement);
        --depth_;
    }

    void step(const MelStatement& statement) {
        using Kind = MelStatement::Kind;
        switch (statement.kind) {
        case Kind::nothing:
            return;
        case Kind::command:
            return call(*statement.command);
        case Kind::expression:
            return walk(statement.expressions[0]);
        case Kind::declare:
            if (statement.type.starts_with("global ")) fall_short("it shares '$" + statement.name + "' with scripts");
            for (const MelExpression& value : statement.expressions) walk(value);
            return learn(statement.name);
        case Kind::block:
            for (const MelStatement& inner : statement.body) walk(inner);
            return;
        case Kind::branch: {
            walk(statement.expressions[0]);
            const Known before = known_;
            walk(statement.body[0]);
            const Known after = std::exchange(known_, before);
            if (statement.body.size() > 1) walk(statement.body[1]);
            known_ = common(known_, after);
            return;
        }
        case Kind::loop:
        case Kind::for_each: {
            loops = true;
            walk(statement.expressions[0]);
            const Known before = known_;
            if (statement.kind == Kind::for_each) learn(statement.name);
            for (const MelStatement& inner : statement.body) walk(inner);
            known_ = before;
            return;
        }
        case Kind::give_back:
            for (const MelExpression& value : statement.expressions) walk(value);
            leave_with(known_);
            known_.reset();
            return;
        case Kind::leave:
        case Kind::go_on:
            known_.reset();
            return;
        }
    }

    void walk(const MelExpression& expression) {
        if (++depth_ > max_walk_depth) fall_short("it nests too deep");
        if (shortfall.empty()) step(expression);
        --depth_;
    }

    void step(const MelExpression& expression) {
        using Kind = MelExpression::Kind;
        switch (expression.kind) {
        case Kind::command:
            return call(*expression.command);
        case Kind::variable:
        case Kind::element:
            for (const MelExpression& index : expression.parts) walk(index);
            return read(expression.name);
        case Kind::conditional: {
            walk(expression.parts[0]);
            const Known before = known_;
            walk(expression.parts[1]);
            const Known after = std::exchange(known_, before);
            walk(expression.parts[2]);
            known_ = common(known_, after);
            return;
        }
        case Kind::binary: {
            walk(expression.parts[0]);
            const Known before = known_;
            walk(expression.parts[1]);
            // The right side of these may go unread.
            if (expression.name == "&&" || expression.name == "||") known_ = before;
            return;
        }
        case Kind::assign:
            if (expression.name != "=") walk(expression.parts[0]);
            walk(expression.parts[1]);
            for (const MelExpression& index : expression.parts[0].parts) walk(index);
            return assign(expression.parts[0].name);
        case Kind::step:
        case Kind::step_after:
            walk(expression.parts[0]);
            return assign(expression.parts[0].name);
        case Kind::literal:
        case Kind::list:
        case Kind::negate:
        case Kind::complement:
            for (const MelExpression& inner : expression.parts) walk(inner);
            return;
        }
    }

    void call(const MelCommand& command) {
        if (!find_mel_function(command.name)) fall_short("it calls '" + command.name + "'");
        for (const MelExpression& word : command.words) walk(word);
    }

    std::optional<int> port(const std::string& name, const char* kind) {
        if (!name.starts_with(kind)) return {};
        int index = -1;
        const char* end = name.data() + name.size() - 1;
        const auto [stop, error] = std::from_chars(name.data() + 3, end, index);
        const bool plain = error == std::errc() && stop == end && name == kind + std::to_string(index) + "]";
        if (!plain || index >= max_port) fall_short("it has no input or output '" + name + "'");
        return index;
    }

    void read(const std::string& name) {
        if (const auto input = port(name, ".I[")) return void(inputs.insert(*input));
        if (name == ".time" || name == ".frame" || !known_ || known_->contains(name)) return;
        fall_short(name[0] == '.' ? "it goes on from what its output '" + name + "' was before"
                                  : "it reads '$" + name + "' before that has a value");
    }

    void assign(const std::string& name) {
        if (const auto output = port(name, ".O["))
            outputs.insert(*output);
        else if (name[0] == '.')
            fall_short("it sets '" + name + "', which is no output");
        learn(name);
    }
    void learn(const std::string& name) {
        if (known_) known_->insert(name);
    }

    Known known_{std::in_place};
    Known at_end_;
    int depth_ = 0;
};

} // namespace

Expression::Expression(const std::string& text) : world_{std::make_shared<ScriptWork>(most_work)} {
    const auto program = parse_mel_expression(text);
    if (!program) {
        shortfall_ = "its text isn't understood: " + program.error().text();
        return;
    }
    program_ = *program;
    Survey survey;
    survey.walk(*program_);
    shortfall_ = survey.shortfall;
    loops_ = survey.loops;
    inputs_.assign(survey.inputs.begin(), survey.inputs.end());
    outputs_.assign(survey.outputs.begin(), survey.outputs.end());
    if (!outputs_.empty()) given_.resize(static_cast<std::size_t>(outputs_.back()) + 1);
    for (const int output : outputs_) given_[static_cast<std::size_t>(output)] = survey.gives(output);
}

bool Expression::always_gives(int output) const {
    const auto at = static_cast<std::size_t>(output);
    return at < given_.size() && given_[at];
}

Result<std::vector<double>> Expression::run(double time, double frame, std::span<const double> inputs) {
    if (!shortfall_.empty()) return Error{shortfall_};
    MelFrame running(world_, nullptr, *program_);
    const auto declare = [&](std::string name, double value) {
        running.variables.emplace(std::move(name), MelVariable{"float", number_result(value)});
    };
    declare(".time", time);
    declare(".frame", frame);
    for (std::size_t i = 0; i < inputs_.size(); ++i) declare(input_name(inputs_[i]), inputs[i]);
    for (const int output : outputs_) declare(output_name(output), 0.0);
    if (const Result<CommandResult> done = running.run(); !done) return done.error();
    std::vector<double> out(given_.size());
    for (const int output : outputs_) {
        const double value = mel_number(running.variables[output_name(output)].value);
        if (!std::isfinite(value)) return Error{"Its output " + std::to_string(output) + " isn't finite"};
        out[static_cast<std::size_t>(output)] = value;
    }
    return out;
}

} // namespace headless
