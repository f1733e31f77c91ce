#include "headless/script/mel_program.h"

#include <charconv>

namespace headless {
namespace {

// Operators by how strongly they bind, the weakest first.
constexpr std::string_view operators[][4] = {{"||"},     {"&&"},         {"==", "!="}, {"<=", ">=", "<", ">"},
                                             {"+", "-"}, {"*", "/", "%"}};
constexpr int levels = std::size(operators);
constexpr int max_chain = 256; // operators in a row

bool is_type(std::string_view word) {
    return word == "int" || word == "float" || word == "string" || word == "vector" || word == "matrix";
}

// A recursive walk, its depth counted. Every function that reads leaves the scanner failed when it gives false.
class MelParser {
public:
    MelParser(MelProgram& program, bool of_node) : program_(program), scanner_(program.text), of_node_(of_node) {}

    Result<void> parse() {
        while (skip() && !scanner_.at_end()) {
            MelStatement statement;
            if (!parse_statement(statement)) break;
            if (statement.kind != MelStatement::Kind::nothing) program_.statements.push_back(std::move(statement));
        }
        return scanner_.failed() ? Result<void>(scanner_.error()) : Result<void>();
    }

private:
    // Counts a level for as long as it stands.
    class Level {
    public:
        explicit Level(MelParser& parser) : depth_(parser.depth_) { ++depth_; }
        ~Level() { --depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        int& depth_;
    };

    bool too_deep() {
        if (depth_ <= max_mel_depth) return false;
        scanner_.fail(scanner_.at(), "Syntax error: the script nests too deep");
        return true;
    }

    bool skip() { return scanner_.skip_blanks(); }
    bool fail_here(const std::string& what) {
        if (scanner_.at_end()) return scanner_.fail(scanner_.at(), "Syntax error: " + what + " at the end");
        return scanner_.fail(scanner_.at(), "Syntax error: " + what + " at '" + scanner_.peek() + "'");
    }
    bool expect(std::string_view token) {
        if (!skip()) return false;
        return scanner_.take(token) || fail_here("'" + std::string(token) + "' is missing");
    }
    std::string_view identifier() {
        const std::size_t begin = scanner_.at();
        if (!starts_identifier(scanner_.peek())) return {};
        while (continues_identifier(scanner_.peek())) scanner_.advance();
        return scanner_.text().substr(begin, scanner_.at() - begin);
    }
    // The word that stands here, if it is this one.
    bool take_word(std::string_view word) {
        const std::size_t begin = scanner_.at();
        if (identifier() == word) return true;
        scanner_.go_to(begin);
        return false;
    }
    bool variable_name(std::string& out) {
        if (!expect("$")) return false;
        out = identifier();
        return !out.empty() || fail_here("a variable's name is missing");
    }

    // Statements.
    bool end_of_statement() {
        if (!skip()) return false;
        if (scanner_.at_end() || scanner_.peek() == '}') return true;
        return expect(";");
    }

    bool parse_statement(MelStatement& out) {
        const Level level(*this);
        if (too_deep() || !skip()) return false;
        out.offset = scanner_.at();
        const char c = scanner_.peek();
        if (scanner_.take(";")) return true;
        if (c == '{') return parse_block(out);
        if (c == '$' || c == '`' || c == '(' || c == '+' || c == '-' || at_port()) return parse_value_statement(out);
        if (!starts_identifier(c)) return fail_here("a statement can't begin");
        const std::size_t begin = scanner_.at();
        const std::string_view word = identifier();
        if (word == "if") return parse_if(out);
        if (word == "while") return parse_while(out);
        if (word == "for") return parse_for(out);
        if (word == "break" || word == "continue" || word == "return") return parse_leave(out, word);
        if (word == "global" || word == "proc") return parse_global(out, word);
        if (is_type(word) && skip() && scanner_.peek() == '$') return parse_declaration(out, word);
        const bool call = scanner_.at() == begin + word.size() && scanner_.peek() == '(';
        scanner_.go_to(begin);
        return call ? parse_value_statement(out) : parse_command_statement(out);
    }

    bool parse_value_statement(MelStatement& out) {
        out.kind = MelStatement::Kind::expression;
        return parse_expression(out.expressions.emplace_back()) && end_of_statement();
    }

    bool parse_block(MelStatement& out) {
        out.kind = MelStatement::Kind::block;
        scanner_.advance();
        while (skip() && !scanner_.take("}")) {
            if (scanner_.at_end()) return fail_here("'}' is missing");
            if (!parse_statement(out.body.emplace_back())) return false;
        }
        return !scanner_.failed();
    }

    bool parse_condition(MelStatement& out) {
        return expect("(") && parse_expression(out.expressions.emplace_back()) && expect(")");
    }

    bool parse_if(MelStatement& out) {
        out.kind = MelStatement::Kind::branch;
        if (!parse_condition(out) || !parse_statement(out.body.emplace_back()) || !skip()) return false;
        return !take_word("else") || parse_statement(out.body.emplace_back());
    }

    bool parse_while(MelStatement& out) {
        out.kind = MelStatement::Kind::loop;
        out.body.resize(2);
        return parse_condition(out) && parse_statement(out.body[0]);
    }

    bool parse_for(MelStatement& out) {
        if (!expect("(") || !skip()) return false;
        const std::size_t begin = scanner_.at();
        if (scanner_.take("$") && !identifier().empty() && skip() && take_word("in")) return parse_for_in(out, begin);
        if (scanner_.failed()) return false;
        scanner_.go_to(begin);
        out.kind = MelStatement::Kind::block;
        MelStatement& loop = (out.body.resize(2), out.body[1]);
        if (!parse_list_until(out.body[0], ";")) return false;
        loop.kind = MelStatement::Kind::loop;
        loop.offset = out.offset;
        loop.body.resize(2);
        if (!skip()) return false;
        if (scanner_.peek() == ';') {
            loop.expressions.emplace_back().value = integer_result(1);
        } else if (!parse_expression(loop.expressions.emplace_back())) {
            return false;
        }
        return expect(";") && parse_list_until(loop.body[1], ")") && parse_statement(loop.body[0]);
    }

    bool parse_for_in(MelStatement& out, std::size_t begin) {
        const std::size_t after = scanner_.at();
        scanner_.go_to(begin);
        if (!variable_name(out.name)) return false;
        scanner_.go_to(after);
        out.kind = MelStatement::Kind::for_each;
        return parse_expression(out.expressions.emplace_back()) && expect(")") &&
               parse_statement(out.body.emplace_back());
    }

    // "int $i = 0, $j = 1;" or "$i++" in the head of a loop.
    bool parse_list_until(MelStatement& out, std::string_view end) {
        out.kind = MelStatement::Kind::block;
        while (skip() && !scanner_.take(end)) {
            MelStatement& part = out.body.emplace_back();
            part.offset = scanner_.at();
            const std::string_view word = identifier();
            if (is_type(word) && skip()) {
                if (!parse_variable(part, word)) return false;
            } else {
                scanner_.go_to(part.offset);
                part.kind = MelStatement::Kind::expression;
                if (!parse_expression(part.expressions.emplace_back())) return false;
            }
            if (!skip() || scanner_.at_end()) return fail_here("'" + std::string(end) + "' is missing");
            scanner_.take(",");
        }
        return !scanner_.failed();
    }

    bool parse_leave(MelStatement& out, std::string_view word) {
        out.kind = word == "break"      ? MelStatement::Kind::leave
                   : word == "continue" ? MelStatement::Kind::go_on
                                        : MelStatement::Kind::give_back;
        if (!skip()) return false;
        if (word == "return" && scanner_.peek() != ';' && !scanner_.at_end()) {
            if (!parse_expression(out.expressions.emplace_back())) return false;
        }
        return end_of_statement();
    }

    bool parse_declaration(MelStatement& out, std::string_view type) {
        MelStatement first;
        first.offset = out.offset;
        if (!parse_variable(first, type) || !skip()) return false;
        if (scanner_.peek() != ',') {
            out = std::move(first);
            return end_of_statement();
        }
        out.kind = MelStatement::Kind::block;
        out.body.push_back(std::move(first));
        while (scanner_.take(",")) {
            if (!parse_variable(out.body.emplace_back(), type) || !skip()) return false;
        }
        return end_of_statement();
    }

    bool parse_variable(MelStatement& out, std::string_view type) {
        out.kind = MelStatement::Kind::declare;
        out.type = type;
        if (!variable_name(out.name) || !skip()) return false;
        if (scanner_.take("[")) {
            out.type += "[]";
            while (scanner_.peek() >= '0' && scanner_.peek() <= '9') scanner_.advance();
            if (!expect("]") || !skip()) return false;
        }
        if (scanner_.peek() != '=' || scanner_.peek(1) == '=') return true;
        scanner_.advance();
        return parse_expression(out.expressions.emplace_back());
    }

    // "global string $x;" or "global proc string[] name(int $a) { ... }"; "proc" may stand alone.
    bool parse_global(MelStatement& out, std::string_view word) {
        if (!skip()) return false;
        if (word == "global" && !take_word("proc")) {
            const std::string_view type = identifier();
            if (!is_type(type)) return fail_here("a type is missing");
            return skip() && parse_declaration(out, type) && mark_global(out);
        }
        if (!skip()) return false;
        auto procedure = std::make_shared<MelProcedure>();
        std::string_view name = identifier();
        if (is_type(name)) {
            if (!skip() || (scanner_.take("[") && !expect("]")) || !skip()) return false;
            name = identifier();
        }
        if (name.empty()) return fail_here("a procedure's name is missing");
        procedure->name = name;
        if (!expect("(") || !skip()) return false;
        while (!scanner_.take(")")) {
            MelStatement parameter;
            const std::string_view type = identifier();
            if (!is_type(type)) return fail_here("a parameter's type is missing");
            if (!skip() || !parse_variable(parameter, type) || !skip()) return false;
            procedure->parameters.emplace_back(parameter.type, parameter.name);
            if (scanner_.take(",") && !skip()) return false;
        }
        if (!skip() || !parse_statement(procedure->body)) return false;
        program_.procedures.push_back(std::move(procedure));
        return true;
    }

    static bool mark_global(MelStatement& out) {
        if (out.kind == MelStatement::Kind::declare) out.type.insert(0, "global ");
        for (MelStatement& part : out.body) mark_global(part);
        return true;
    }

    // Commands.
    bool parse_command_statement(MelStatement& out) {
        out.kind = MelStatement::Kind::command;
        auto command = std::make_shared<MelCommand>();
        if (!parse_command(*command, ';')) return false;
        out.command = std::move(command);
        return end_of_statement();
    }

    bool parse_command(MelCommand& out, char end) {
        const Level level(*this);
        if (too_deep() || !skip()) return false;
        out.offset = scanner_.at();
        out.name = identifier();
        if (out.name.empty()) return fail_here("a command's name is missing");
        out.row = find_command(out.name);
        if (scanner_.peek() == '(') return parse_call_arguments(out);
        while (skip() && !scanner_.at_end() && scanner_.peek() != end && scanner_.peek() != ';') {
            if (out.words.size() == max_statement_words) return fail_here("too many words");
            if (!parse_word(out)) return false;
        }
        return !scanner_.failed();
    }

    bool parse_call_arguments(MelCommand& out) {
        scanner_.advance();
        while (skip() && !scanner_.take(")")) {
            MelExpression& argument = out.words.emplace_back();
            out.constant = false;
            if (!parse_expression(argument) || !skip()) return false;
            out.quoted.push_back(true);
            if (scanner_.peek() != ')' && !expect(",")) return false;
        }
        return !scanner_.failed();
    }

    bool parse_word(MelCommand& out) {
        MelExpression& word = out.words.emplace_back();
        word.offset = scanner_.at();
        const char c = scanner_.peek();
        out.quoted.push_back(c == '"');
        if (c == '"') return parse_string(word);
        if (c == '$' || c == '(' || c == '{' || c == '`') {
            out.constant = false;
            return parse_primary(word);
        }
        const std::string_view rest = scanner_.text().substr(scanner_.at());
        const std::size_t length = std::min(rest.find_first_of(" \t\r\n\f\v;\"(){}`$"), rest.size());
        if (length == 0) return fail_here("unexpected character");
        word.value = text_result(std::string(rest.substr(0, length)));
        scanner_.advance(length);
        return true;
    }

    // Expressions.
    bool parse_expression(MelExpression& out) {
        const Level level(*this);
        if (too_deep() || !parse_binary(out, 0) || !skip()) return false;
        if (scanner_.peek() == '?') {
            scanner_.advance();
            MelExpression condition = std::exchange(out, {});
            out.kind = MelExpression::Kind::conditional;
            out.offset = condition.offset;
            out.parts.push_back(std::move(condition));
            return parse_expression(out.parts.emplace_back()) && expect(":") &&
                   parse_expression(out.parts.emplace_back());
        }
        for (const std::string_view assignment : {"=", "+=", "-=", "*=", "/="}) {
            if (scanner_.peek(assignment.size()) == '=' || !scanner_.take(assignment)) continue;
            if (!is_place(out)) return fail_here("nothing can be assigned to this");
            wrap(out, MelExpression::Kind::assign, assignment);
            return parse_expression(out.parts.emplace_back());
        }
        return true;
    }

    static bool is_place(const MelExpression& expression) {
        return expression.kind == MelExpression::Kind::variable || expression.kind == MelExpression::Kind::element;
    }

    static void wrap(MelExpression& out, MelExpression::Kind kind, std::string_view name) {
        MelExpression inner = std::exchange(out, {});
        out.kind = kind;
        out.offset = inner.offset;
        out.name = name;
        out.parts.push_back(std::move(inner));
    }

    std::string_view take_operator(int level) {
        for (const std::string_view op : operators[level]) {
            if (op.empty()) break;
            const char next = scanner_.peek(op.size());
            // "+=" and "++" are none of these.
            if (op.size() == 1 && (next == '=' || ((op == "+" || op == "-") && next == op[0]))) continue;
            if (scanner_.take(op)) return op;
        }
        return {};
    }

    bool parse_binary(MelExpression& out, int at) {
        if (at == levels) return parse_unary(out);
        if (!parse_binary(out, at + 1)) return false;
        for (int chain = 0; skip(); ++chain) {
            const std::string_view op = take_operator(at);
            if (op.empty()) return true;
            if (chain == max_chain) return fail_here("the expression is too long");
            wrap(out, MelExpression::Kind::binary, op);
            if (!parse_binary(out.parts.emplace_back(), at + 1)) return false;
        }
        return false;
    }

    bool parse_unary(MelExpression& out) {
        const Level level(*this);
        if (too_deep() || !skip()) return false;
        out.offset = scanner_.at();
        for (const std::string_view step : {"++", "--"}) {
            if (!scanner_.take(step)) continue;
            if (!parse_unary(out)) return false;
            if (!is_place(out)) return fail_here("nothing can be counted here");
            wrap(out, MelExpression::Kind::step, step);
            return true;
        }
        const char c = scanner_.peek();
        if (c == '-' || c == '!') {
            scanner_.advance();
            if (!parse_unary(out)) return false;
            wrap(out, c == '-' ? MelExpression::Kind::negate : MelExpression::Kind::complement, {});
            return true;
        }
        if (c == '+') scanner_.advance();
        if (!parse_primary(out)) return false;
        for (const std::string_view step : {"++", "--"}) {
            if (is_place(out) && scanner_.take(step)) wrap(out, MelExpression::Kind::step_after, step);
        }
        return true;
    }

    bool parse_primary(MelExpression& out) {
        if (!skip()) return false;
        out.offset = scanner_.at();
        const char c = scanner_.peek();
        if (c == '"') return parse_string(out);
        if (c == '$') return parse_variable_use(out);
        if (c == '{') return parse_list(out);
        if (c == '(') {
            scanner_.advance();
            return parse_expression(out) && expect(")");
        }
        if (c == '`') {
            scanner_.advance();
            out.kind = MelExpression::Kind::command;
            auto command = std::make_shared<MelCommand>();
            if (!parse_command(*command, '`')) return false;
            out.command = std::move(command);
            return expect("`");
        }
        if (at_port()) return parse_port(out);
        if ((c >= '0' && c <= '9') || c == '.') return parse_number(out);
        if (starts_identifier(c)) return parse_name(out);
        return fail_here("a value is missing");
    }

    bool parse_string(MelExpression& out) {
        std::string buffer;
        std::string_view text;
        if (!scanner_.read_string(buffer, text)) return false;
        out.value = text_result(std::string(text));
        return true;
    }

    // An input or output of the node: ".I[3]".
    bool at_port() const {
        const char which = scanner_.peek(1);
        return of_node_ && scanner_.peek() == '.' && (which == 'I' || which == 'O') && scanner_.peek(2) == '[';
    }

    bool parse_port(MelExpression& out) {
        out.kind = MelExpression::Kind::variable;
        out.name = scanner_.text().substr(scanner_.at(), 3);
        scanner_.advance(3);
        while (scanner_.peek() >= '0' && scanner_.peek() <= '9') {
            out.name += scanner_.peek();
            scanner_.advance();
        }
        out.name += ']';
        return scanner_.take("]") || fail_here("']' is missing");
    }

    bool parse_variable_use(MelExpression& out) {
        out.kind = MelExpression::Kind::variable;
        if (!variable_name(out.name)) return false;
        if (scanner_.peek() != '[') return true;
        scanner_.advance();
        out.kind = MelExpression::Kind::element;
        return parse_expression(out.parts.emplace_back()) && expect("]");
    }

    bool parse_list(MelExpression& out) {
        const Level level(*this);
        if (too_deep()) return false;
        out.kind = MelExpression::Kind::list;
        scanner_.advance();
        while (skip() && !scanner_.take("}")) {
            if (!parse_expression(out.parts.emplace_back()) || !skip()) return false;
            if (scanner_.peek() != '}' && !expect(",")) return false;
        }
        return !scanner_.failed();
    }

    bool parse_number(MelExpression& out) {
        const char* begin = scanner_.text().data() + scanner_.at();
        const char* end = scanner_.text().data() + scanner_.text().size();
        double number = 0.0;
        const auto [stop, error] = std::from_chars(begin, end, number);
        if (error == std::errc::invalid_argument) return fail_here("a value is missing");
        std::int64_t count = 0;
        const auto [count_stop, count_error] = std::from_chars(begin, end, count);
        const bool whole = count_error == std::errc() && count_stop == stop;
        out.value = whole ? integer_result(count) : number_result(number);
        scanner_.advance(stop - begin);
        return true;
    }

    // A truth by name, the clock of a node, or a call of a command with its arguments in parentheses.
    bool parse_name(MelExpression& out) {
        const std::size_t begin = scanner_.at();
        const std::string_view word = identifier();
        if (const auto truth = truth_of(word)) {
            out.value = integer_result(*truth ? 1 : 0);
            return true;
        }
        if (of_node_ && (word == "time" || word == "frame")) {
            out.kind = MelExpression::Kind::variable;
            out.name = "." + std::string(word);
            return true;
        }
        if (scanner_.peek() != '(') {
            scanner_.go_to(begin);
            return fail_here("a value is missing");
        }
        scanner_.go_to(begin);
        out.kind = MelExpression::Kind::command;
        auto command = std::make_shared<MelCommand>();
        if (!parse_command(*command, ';')) return false;
        out.command = std::move(command);
        return true;
    }

    static std::optional<bool> truth_of(std::string_view word) {
        if (word == "true" || word == "on" || word == "yes") return true;
        if (word == "false" || word == "off" || word == "no") return false;
        return {};
    }

    MelProgram& program_;
    Scanner scanner_;
    bool of_node_;
    int depth_ = 0;
};

Result<std::shared_ptr<const MelProgram>> parsed(std::string text, bool of_node) {
    auto program = std::make_shared<MelProgram>();
    program->text = std::move(text);
    if (Result<void> done = MelParser(*program, of_node).parse(); !done) return done.error();
    return std::shared_ptr<const MelProgram>(std::move(program));
}

} // namespace

Result<std::shared_ptr<const MelProgram>> parse_mel(std::string text) {
    return parsed(std::move(text), false);
}

Result<std::shared_ptr<const MelProgram>> parse_mel_expression(std::string text) {
    return parsed(std::move(text), true);
}

} // namespace headless
