#include "headless/script/python.h"

#include "headless/script/mel_values.h"
#include "headless/script/python_command.h"
#include "headless/script/python_text.h"
#include "headless/script/set_attribute.h"

namespace headless {
namespace {

constexpr int max_python_depth = 64; // brackets and calls within each other
constexpr int max_scripts_in_scripts = 32;

} // namespace

// One text, walked twice: first without doing anything, so that a fault of syntax is found before the first call.
class PythonRun {
public:
    PythonRun(PythonInterpreter& interpreter, Session& session, std::string_view text)
        : interpreter_(interpreter), session_(session), text_(text) {}

    Result<CommandResult> run() {
        for (const bool doing : {false, true}) {
            doing_ = doing;
            text_.go_to(0);
            last_ = {};
            while (!text_.at_end()) {
                if (!statement()) return *text_.error();
            }
        }
        return last_;
    }

private:
    bool made(const CommandResult& value) { return interpreter_.work_->make(value) || too_much(); }
    bool too_much() { return text_.fail(text_.at(), Error{"MemoryError: " + std::string(ScriptWork::refusal)}, false); }

    // Statements.
    bool statement() {
        text_.skip();
        if (text_.peek() == '\n' || text_.peek() == ';') {
            text_.advance();
            return true;
        }
        if (text_.at_end()) return true;
        const std::size_t begin = text_.at();
        const std::string_view word = text_.identifier();
        bool good = false;
        if (word == "import") {
            good = import();
        } else if (word == "from") {
            good = import_from();
        } else if (word == "pass") {
            good = true;
        } else if (word == "print" && (text_.skip(), text_.peek() != '(')) {
            good = print_statement();
        } else {
            good = !word.empty() && text_.at_assignment() ? assignment(word) : (text_.go_to(begin), value_statement());
        }
        if (!good) return false;
        text_.skip();
        return text_.at_statement_end() || text_.syntax_error("the statement isn't understood");
    }

    bool assignment(std::string_view name) {
        text_.advance();
        PythonValue value;
        if (!expression(value) || !made(value.value)) return false;
        if (doing_) interpreter_.variables_[std::string(name)] = std::move(value.value);
        return true;
    }

    bool value_statement() {
        PythonValue value;
        if (!expression(value)) return false;
        last_ = std::move(value.value);
        return true;
    }

    bool print_statement() {
        PythonValue value;
        if (!text_.at_statement_end() && !expression(value)) return false;
        if (doing_) session_.info(mel_text(value.value));
        return true;
    }

    bool known_module(const std::string& name, std::size_t offset) {
        for (const char* known : {"maya", "maya.cmds", "maya.mel", "os", "sys", "math"}) {
            if (name == known) return true;
        }
        return text_.fail(offset, Error{"ImportError: No module named " + name}, false);
    }

    bool import() {
        do {
            std::string name, alias;
            text_.skip();
            const std::size_t begin = text_.at();
            if (!text_.dotted_name(name) || !as_name(alias)) return false;
            if (!known_module(name, begin)) return false;
            const std::string top = name.substr(0, name.find('.'));
            if (doing_) interpreter_.modules_[alias.empty() ? top : alias] = alias.empty() ? top : name;
        } while (text_.take(','));
        return true;
    }

    bool import_from() {
        std::string module;
        text_.skip();
        const std::size_t begin = text_.at();
        if (!text_.dotted_name(module)) return false;
        if (text_.identifier() != "import") return text_.syntax_error("'import' is missing");
        do {
            std::string alias;
            const std::string name(text_.identifier());
            if (name.empty()) return text_.syntax_error("a name is missing");
            if (!as_name(alias) || !known_module(module + "." + name, begin)) return false;
            if (doing_) interpreter_.modules_[alias.empty() ? name : alias] = module + "." + name;
        } while (text_.take(','));
        return true;
    }

    bool as_name(std::string& alias) {
        const std::size_t before = text_.at();
        if (text_.identifier() != "as") {
            text_.go_to(before);
            return true;
        }
        alias = text_.identifier();
        return !alias.empty() || text_.syntax_error("a name is missing");
    }

    // Values.
    bool expression(PythonValue& out) {
        if (!operand(out)) return false;
        while (text_.take('+')) {
            PythonValue other;
            if (!operand(other)) return false;
            out.value = mel_is_list(out.value) || mel_is_list(other.value)
                            ? mel_list({out.value, other.value})
                            : mel_binary("+", out.value, other.value).value_or(CommandResult());
            if (!made(out.value)) return false;
        }
        return true;
    }

    bool operand(PythonValue& out) {
        if (depth_ == max_python_depth) return text_.syntax_error("the line nests too deep");
        ++depth_;
        const bool good = primary(out) && trailers(out);
        --depth_;
        return good;
    }

    bool primary(PythonValue& out) {
        text_.skip();
        const char c = text_.peek();
        if (c == '-') {
            text_.advance();
            if (!operand(out)) return false;
            out.value = mel_binary("-", integer_result(0), out.value).value_or(CommandResult());
            return true;
        }
        if ((c >= '0' && c <= '9') || c == '.') return number(out);
        if (c == '[') return sequence(out, '[', ']');
        if (c == '(') return sequence(out, '(', ')');
        if (text_.at_string()) return string(out);
        if (!starts_identifier(c)) return text_.syntax_error("a value is missing");
        return name(out);
    }

    bool number(PythonValue& out) {
        PythonText::Number read;
        if (!text_.number(read)) return false;
        const auto* whole = std::get_if<std::int64_t>(&read);
        out.value = whole ? integer_result(*whole) : number_result(std::get<double>(read));
        return true;
    }

    bool string(PythonValue& out) {
        std::string whole;
        if (!text_.strings(whole)) return false;
        out.value = text_result(std::move(whole));
        return true;
    }

    bool sequence(PythonValue& out, char opening, char closing) {
        text_.open(opening);
        std::vector<CommandResult> values;
        bool comma = false;
        while (!text_.close(closing)) {
            PythonValue value;
            if (!expression(value)) return false;
            if (values.empty()) out = value;
            values.push_back(std::move(value.value));
            text_.skip();
            if (text_.peek() == closing) continue;
            if (!text_.take(',')) return text_.syntax_error(std::string("'") + closing + "' is missing");
            comma = true;
        }
        if (closing == ')' && !comma && values.size() == 1) return true; // only brackets around a value
        out.value = values.empty() ? texts_result({}) : mel_list(values);
        if (!made(out.value)) return false;
        out.tuple = closing == ')';
        return true;
    }

    // Names and calls.
    bool name(PythonValue& out) {
        const std::size_t begin = text_.at();
        std::string path;
        if (!text_.dotted_name(path)) return false;
        if (path == "True" || path == "False") {
            out.value = integer_result(path == "True" ? 1 : 0);
            return true;
        }
        if (path == "None") return true;
        text_.skip();
        if (text_.peek() == '(') return call(path, begin, out);
        if (!doing_) return true;
        const auto at = interpreter_.variables_.find(path);
        if (at == interpreter_.variables_.end()) return unknown_name(path, begin);
        out.value = at->second;
        return interpreter_.work_->pass(out.value) || too_much();
    }

    bool unknown_name(const std::string& path, std::size_t begin) {
        return text_.fail(begin, Error{"NameError: name '" + path.substr(0, path.find('.')) + "' is not defined"},
                          false);
    }

    bool trailers(PythonValue& out) {
        while (text_.open('[')) {
            PythonValue index;
            if (!expression(index)) return false;
            if (!text_.close(']')) return text_.syntax_error("']' is missing");
            if (!doing_) continue;
            std::int64_t i = mel_integer(index.value);
            if (i < 0) i += static_cast<std::int64_t>(mel_size(out.value));
            out.value = mel_element(out.value, static_cast<std::size_t>(i));
            if (out.value.kind == CommandResult::Kind::none)
                return text_.fail(text_.at(), Error{"IndexError: list index out of range"}, false);
        }
        return true;
    }

    bool arguments(std::vector<PythonArgument>& out) {
        text_.open('(');
        while (!text_.close(')')) {
            PythonArgument argument;
            text_.skip();
            argument.offset = text_.at();
            const std::string_view word = text_.identifier();
            if (!word.empty() && text_.at_assignment()) {
                argument.keyword = word;
                text_.advance();
            } else {
                text_.go_to(argument.offset);
                if (!out.empty() && !out.back().keyword.empty())
                    return text_.syntax_error("an argument without a name behind one with a name");
            }
            if (!expression(argument.value)) return false;
            out.push_back(std::move(argument));
            text_.skip();
            if (text_.peek() != ')' && !text_.take(',')) return text_.syntax_error("')' is missing");
        }
        return true;
    }

    bool call(const std::string& path, std::size_t begin, PythonValue& out) {
        std::vector<PythonArgument> given;
        if (!arguments(given)) return false;
        if (!doing_) return true;
        const Result<CommandResult> done = run_call(path, begin, given);
        if (text_.error()) return false;
        if (!done) return text_.fail(begin, done.error(), false);
        out.value = *done;
        return true;
    }

    Result<CommandResult> run_call(const std::string& path, std::size_t begin,
                                   const std::vector<PythonArgument>& given) {
        const std::size_t dot = path.find('.');
        if (dot == std::string::npos) return run_builtin(path, begin, given);
        const auto module = interpreter_.modules_.find(path.substr(0, dot));
        if (module == interpreter_.modules_.end()) {
            unknown_name(path, begin);
            return CommandResult();
        }
        const std::string whole = module->second + path.substr(dot);
        if (whole == "maya.mel.eval" && given.size() == 1) return session_.run_mel(mel_text(given[0].value.value));
        if (!whole.starts_with("maya.cmds.") || whole.find('.', 10) != std::string::npos)
            return Error{"AttributeError: '" + path + "' is not known here"};
        return run_python_command(session_, whole.substr(10), given);
    }

    static Result<CommandResult> read_number(const std::string& type, std::string_view text) {
        const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
        const std::string_view word = text.substr(begin, text.find_last_not_of(" \t\r\n") + 1 - begin);
        const std::optional<double> number = number_of(word);
        if (type == "float" && number) return number_result(*number);
        if (number && word.find_first_not_of("+-0123456789") == std::string_view::npos)
            return integer_result(Value(*number).integer());
        const char* why = type == "int" ? "invalid literal for int() with base 10: '" : "could not convert to float: '";
        return Error{"ValueError: " + (why + std::string(text)) + "'"};
    }

    Result<CommandResult> run_builtin(const std::string& name, std::size_t begin,
                                      const std::vector<PythonArgument>& given) {
        if (name == "print") {
            std::string line;
            for (const PythonArgument& argument : given)
                line += (line.empty() ? "" : " ") + mel_text(argument.value.value);
            session_.info(line);
            return CommandResult();
        }
        if (given.size() == 1) {
            const CommandResult& value = given[0].value.value;
            if (mel_is_text(value) && (name == "int" || name == "float")) return read_number(name, mel_text(value));
            if (name == "str") return text_result(mel_text(value));
            if (name == "int") return integer_result(mel_integer(value));
            if (name == "float") return number_result(mel_number(value));
            if (name == "len") return integer_result(static_cast<std::int64_t>(mel_size(value)));
        }
        unknown_name(name, begin);
        return CommandResult();
    }

    PythonInterpreter& interpreter_;
    Session& session_;
    PythonText text_;
    int depth_ = 0;
    bool doing_ = false;
    CommandResult last_;
};

Result<CommandResult> PythonInterpreter::run(Session& session, const std::string& text) {
    if (depth_ == max_scripts_in_scripts) return Error{"RuntimeError: maximum recursion depth exceeded"};
    const ScriptWork::Run running(*work_);
    ++depth_;
    Result<CommandResult> done = PythonRun(*this, session, text).run();
    --depth_;
    return done;
}

} // namespace headless
