#include "headless/script/python.h"

#include "headless/script/mel_values.h"

#include <algorithm>
#include <charconv>
#include <deque>

namespace headless {
namespace {

constexpr int max_python_depth = 64; // brackets and calls within each other
constexpr int max_scripts_in_scripts = 32;

struct PythonValue {
    CommandResult value{};
    bool tuple = false;
};

struct Argument {
    std::string keyword; ///< empty for one by place
    PythonValue value;
    std::size_t offset = 0;
};

bool is_true(const CommandResult& value) {
    if (value.kind == CommandResult::Kind::none) return false;
    if (mel_is_list(value)) return mel_size(value) > 0;
    return mel_is_text(value) ? !mel_text(value).empty() : mel_number(value) != 0.0;
}

void append_utf8(std::string& out, unsigned code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xc0 | code >> 6);
        out += static_cast<char>(0x80 | (code & 0x3f));
    } else {
        out += static_cast<char>(0xe0 | code >> 12);
        out += static_cast<char>(0x80 | (code >> 6 & 0x3f));
        out += static_cast<char>(0x80 | (code & 0x3f));
    }
}

} // namespace

// One text, walked twice: first without doing anything, so that a fault of syntax is found before the first call.
class PythonRun {
public:
    PythonRun(PythonInterpreter& interpreter, Session& session, std::string_view text)
        : interpreter_(interpreter), session_(session), text_(text) {}

    Result<CommandResult> run() {
        for (const bool doing : {false, true}) {
            doing_ = doing;
            at_ = 0;
            last_ = {};
            while (!at_end()) {
                if (!statement()) return *error_;
            }
        }
        return last_;
    }

private:
    // The text.
    bool at_end() const { return at_ >= text_.size(); }
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

    // Within brackets a line end is a blank.
    void skip() {
        while (!at_end()) {
            const char c = peek();
            if (c == '#') {
                at_ = std::min(text_.find('\n', at_), text_.size());
            } else if (c == '\\' && (peek(1) == '\n' || (peek(1) == '\r' && peek(2) == '\n'))) {
                at_ += peek(1) == '\n' ? 2 : 3;
            } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || (c == '\n' && brackets_ > 0)) {
                ++at_;
            } else {
                return;
            }
        }
    }
    bool take(char c) {
        skip();
        if (peek() != c) return false;
        ++at_;
        return true;
    }
    std::string_view identifier() {
        skip();
        const std::size_t begin = at_;
        if (!starts_identifier(peek())) return {};
        while (continues_identifier(peek())) ++at_;
        return text_.substr(begin, at_ - begin);
    }

    bool fail(std::size_t offset, Error error, bool syntax) {
        if (error_) return false;
        if (error.line == 0 && error.file.empty() && (syntax || text_.find('\n') != std::string_view::npos)) {
            const Place place = place_in(text_, offset);
            error.line = place.line;
            error.column = place.column;
        }
        error_ = std::move(error);
        return false;
    }
    bool syntax_error(const std::string& what) {
        const std::string where = at_end() ? "the end" : "'" + std::string(1, peek()) + "'";
        return fail(at_, Error{"SyntaxError: " + what + " at " + where}, true);
    }

    bool made(const CommandResult& value) { return interpreter_.work_->make(value) || too_much(); }
    bool too_much() { return fail(at_, Error{"MemoryError: " + std::string(ScriptWork::refusal)}, false); }

    // Statements.
    bool statement() {
        skip();
        if (peek() == '\n' || peek() == ';') {
            ++at_;
            return true;
        }
        if (at_end()) return true;
        const std::size_t begin = at_;
        const std::string_view word = identifier();
        bool good = false;
        if (word == "import") {
            good = import();
        } else if (word == "from") {
            good = import_from();
        } else if (word == "pass") {
            good = true;
        } else if (word == "print" && (skip(), peek() != '(')) {
            good = print_statement();
        } else {
            good = !word.empty() && assigns() ? assignment(word) : (at_ = begin, value_statement());
        }
        if (!good) return false;
        skip();
        return at_end() || peek() == '\n' || peek() == ';' || syntax_error("the statement isn't understood");
    }

    bool assigns() {
        skip();
        return peek() == '=' && peek(1) != '=';
    }

    bool assignment(std::string_view name) {
        ++at_;
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
        if (peek() != ';' && peek() != '\n' && !at_end() && !expression(value)) return false;
        if (doing_) session_.info(mel_text(value.value));
        return true;
    }

    bool dotted_name(std::string& out) {
        out = identifier();
        if (out.empty()) return syntax_error("a name is missing");
        while (take('.')) {
            const std::string_view next = identifier();
            if (next.empty()) return syntax_error("a name is missing");
            out += '.';
            out += next;
        }
        return true;
    }

    bool known_module(const std::string& name, std::size_t offset) {
        for (const char* known : {"maya", "maya.cmds", "maya.mel", "os", "sys", "math"}) {
            if (name == known) return true;
        }
        return fail(offset, Error{"ImportError: No module named " + name}, false);
    }

    bool import() {
        do {
            std::string name, alias;
            const std::size_t begin = at_;
            if (!dotted_name(name) || !as_name(alias)) return false;
            if (!known_module(name, begin)) return false;
            const std::string top = name.substr(0, name.find('.'));
            if (doing_) interpreter_.modules_[alias.empty() ? top : alias] = alias.empty() ? top : name;
        } while (take(','));
        return true;
    }

    bool import_from() {
        std::string module;
        const std::size_t begin = at_;
        if (!dotted_name(module)) return false;
        if (identifier() != "import") return syntax_error("'import' is missing");
        do {
            std::string alias;
            const std::string name(identifier());
            if (name.empty()) return syntax_error("a name is missing");
            if (!as_name(alias) || !known_module(module + "." + name, begin)) return false;
            if (doing_) interpreter_.modules_[alias.empty() ? name : alias] = module + "." + name;
        } while (take(','));
        return true;
    }

    bool as_name(std::string& alias) {
        const std::size_t before = at_;
        if (identifier() != "as") {
            at_ = before;
            return true;
        }
        alias = identifier();
        return !alias.empty() || syntax_error("a name is missing");
    }

    // Values.
    bool expression(PythonValue& out) {
        if (!operand(out)) return false;
        while (take('+')) {
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
        if (depth_ == max_python_depth) return syntax_error("the line nests too deep");
        ++depth_;
        const bool good = primary(out) && trailers(out);
        --depth_;
        return good;
    }

    bool primary(PythonValue& out) {
        skip();
        const char c = peek();
        if (c == '-') {
            ++at_;
            if (!operand(out)) return false;
            out.value = mel_binary("-", integer_result(0), out.value).value_or(CommandResult());
            return true;
        }
        if (c == '"' || c == '\'') return strings(out);
        if ((c >= '0' && c <= '9') || c == '.') return number(out);
        if (c == '[') return sequence(out, ']');
        if (c == '(') return sequence(out, ')');
        if (!starts_identifier(c)) return syntax_error("a value is missing");
        if (is_string_prefix()) return strings(out);
        return name(out);
    }

    bool number(PythonValue& out) {
        const char* begin = text_.data() + at_;
        const char* end = text_.data() + text_.size();
        double value = 0.0;
        std::int64_t count = 0;
        const auto [stop, error] = std::from_chars(begin, end, value);
        if (error == std::errc::invalid_argument) return syntax_error("a value is missing");
        const auto [count_stop, count_error] = std::from_chars(begin, end, count);
        const bool whole = count_error == std::errc() && count_stop == stop;
        out.value = whole ? integer_result(count) : number_result(value);
        at_ += stop - begin;
        return true;
    }

    bool sequence(PythonValue& out, char closing) {
        ++at_;
        ++brackets_;
        std::vector<CommandResult> values;
        bool comma = false;
        while (!take(closing)) {
            PythonValue value;
            if (!expression(value)) return false;
            if (values.empty()) out = value;
            values.push_back(std::move(value.value));
            skip();
            if (peek() == closing) continue;
            if (!take(',')) return syntax_error(std::string("'") + closing + "' is missing");
            comma = true;
        }
        --brackets_;
        if (closing == ')' && !comma && values.size() == 1) return true; // only brackets around a value
        out.value = values.empty() ? texts_result({}) : mel_list(values);
        if (!made(out.value)) return false;
        out.tuple = closing == ')';
        return true;
    }

    // Strings.
    bool is_string_prefix() const {
        std::size_t length = 0;
        while (length < 2 && std::string_view("rRuUbB").find(peek(length)) != std::string_view::npos && peek(length))
            ++length;
        return length > 0 && (peek(length) == '"' || peek(length) == '\'');
    }

    bool strings(PythonValue& out) {
        std::string whole;
        do {
            if (!string(whole)) return false;
            skip();
        } while (peek() == '"' || peek() == '\'' || is_string_prefix());
        out.value = text_result(std::move(whole));
        return true;
    }

    bool string(std::string& out) {
        const std::size_t begin = at_;
        bool raw = false, unicode = false;
        for (; peek() != '"' && peek() != '\''; ++at_) {
            raw |= peek() == 'r' || peek() == 'R';
            unicode |= peek() == 'u' || peek() == 'U';
        }
        const char quote = peek();
        const bool triple = peek(1) == quote && peek(2) == quote;
        const std::string closing(triple ? 3 : 1, quote);
        at_ += closing.size();
        while (text_.substr(std::min(at_, text_.size()), closing.size()) != closing) {
            if (at_end() || (!triple && peek() == '\n')) {
                at_ = begin;
                return fail(begin, Error{"SyntaxError: a string has no end"}, true);
            }
            if (peek() != '\\') {
                out += text_[at_++];
            } else if (raw) {
                out += text_[at_++];
                if (!at_end()) out += text_[at_++];
            } else if (!escape(out, unicode)) {
                return false;
            }
        }
        at_ += closing.size();
        return true;
    }

    bool escape(std::string& out, bool unicode) {
        static constexpr std::pair<char, char> simple[] = {{'\\', '\\'}, {'\'', '\''}, {'"', '"'},  {'a', '\a'},
                                                           {'b', '\b'},  {'f', '\f'},  {'n', '\n'}, {'r', '\r'},
                                                           {'t', '\t'},  {'v', '\v'}};
        const char c = peek(1);
        for (const auto& [letter, meant] : simple) {
            if (c != letter) continue;
            out += meant;
            at_ += 2;
            return true;
        }
        if (c == '\n') {
            at_ += 2;
            return true;
        }
        if (c >= '0' && c <= '7') {
            out += static_cast<char>(digits(at_ + 1, 1, 3, 8));
            return true;
        }
        if (c == 'x') return coded(out, 2, false);
        if (c == 'u' && unicode) return coded(out, 4, true);
        out += text_[at_++]; // one that means nothing stays as it is
        return true;
    }

    bool coded(std::string& out, int length, bool unicode) {
        const std::size_t begin = at_;
        const unsigned code = digits(at_ + 2, length, length, 16);
        if (at_ == begin) return fail(begin, Error{"SyntaxError: a character's number isn't hexadecimal"}, true);
        if (unicode)
            append_utf8(out, code);
        else
            out += static_cast<char>(code);
        return true;
    }

    // So many digits from an offset on, and goes behind them; stays where it is when there are too few.
    unsigned digits(std::size_t begin, int least, int most, int base) {
        const std::size_t end = std::min(begin + static_cast<std::size_t>(most), text_.size());
        unsigned code = 0;
        const auto [stop, error] = std::from_chars(text_.data() + begin, text_.data() + end, code, base);
        const auto found = static_cast<std::size_t>(stop - text_.data()) - begin;
        if (error == std::errc() && found >= static_cast<std::size_t>(least)) at_ = begin + found;
        return code;
    }

    // Names and calls.
    bool name(PythonValue& out) {
        const std::size_t begin = at_;
        std::string path;
        if (!dotted_name(path)) return false;
        if (path == "True" || path == "False") {
            out.value = integer_result(path == "True" ? 1 : 0);
            return true;
        }
        if (path == "None") return true;
        skip();
        if (peek() == '(') return call(path, begin, out);
        if (!doing_) return true;
        const auto at = interpreter_.variables_.find(path);
        if (at == interpreter_.variables_.end()) return unknown_name(path, begin);
        out.value = at->second;
        return interpreter_.work_->pass(out.value) || too_much();
    }

    bool unknown_name(const std::string& path, std::size_t begin) {
        return fail(begin, Error{"NameError: name '" + path.substr(0, path.find('.')) + "' is not defined"}, false);
    }

    bool trailers(PythonValue& out) {
        while (take('[')) {
            ++brackets_;
            PythonValue index;
            if (!expression(index)) return false;
            if (!take(']')) return syntax_error("']' is missing");
            --brackets_;
            if (!doing_) continue;
            std::int64_t i = mel_integer(index.value);
            if (i < 0) i += static_cast<std::int64_t>(mel_size(out.value));
            out.value = mel_element(out.value, static_cast<std::size_t>(i));
            if (out.value.kind == CommandResult::Kind::none)
                return fail(at_, Error{"IndexError: list index out of range"}, false);
        }
        return true;
    }

    bool arguments(std::vector<Argument>& out) {
        ++at_;
        ++brackets_;
        while (!take(')')) {
            Argument argument;
            skip();
            argument.offset = at_;
            const std::string_view word = identifier();
            if (!word.empty() && assigns()) {
                argument.keyword = word;
                ++at_;
            } else {
                at_ = argument.offset;
                if (!out.empty() && !out.back().keyword.empty())
                    return syntax_error("an argument without a name behind one with a name");
            }
            if (!expression(argument.value)) return false;
            out.push_back(std::move(argument));
            skip();
            if (peek() != ')' && !take(',')) return syntax_error("')' is missing");
        }
        --brackets_;
        return true;
    }

    bool call(const std::string& path, std::size_t begin, PythonValue& out) {
        std::vector<Argument> given;
        if (!arguments(given)) return false;
        if (!doing_) return true;
        const Result<CommandResult> done = run_call(path, begin, given);
        if (error_) return false;
        if (!done) return fail(begin, done.error(), false);
        out.value = *done;
        return true;
    }

    Result<CommandResult> run_call(const std::string& path, std::size_t begin, const std::vector<Argument>& given) {
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
        return run_command(whole.substr(10), given);
    }

    Result<CommandResult> run_builtin(const std::string& name, std::size_t begin, const std::vector<Argument>& given) {
        if (name == "print") {
            std::string line;
            for (const Argument& argument : given) line += (line.empty() ? "" : " ") + mel_text(argument.value.value);
            session_.info(line);
            return CommandResult();
        }
        if (given.size() == 1) {
            const CommandResult& value = given[0].value.value;
            if (name == "str") return text_result(mel_text(value));
            if (name == "int") return integer_result(mel_integer(value));
            if (name == "float") return number_result(mel_number(value));
            if (name == "len") return integer_result(static_cast<std::int64_t>(mel_size(value)));
        }
        unknown_name(name, begin);
        return CommandResult();
    }

    // The command's words: flags first, then what was given by place.
    Result<CommandResult> run_command(const std::string& name, const std::vector<Argument>& given) {
        const CommandRow* row = find_command(name);
        MSyntax plugin_syntax;
        const SyntaxTable* syntax = row ? &syntax_of(*row) : nullptr;
        if (const auto entry = session_.commands.find(name); !row && entry != session_.commands.end()) {
            if (entry->second.syntax) plugin_syntax = entry->second.syntax();
            syntax = &Access::syntax(plugin_syntax);
        }
        if (!syntax) return Error{"AttributeError: 'module' object has no attribute '" + name + "'"};
        texts_.clear();
        words_.clear();
        const bool query = std::ranges::any_of(given, [](const Argument& argument) {
            return (argument.keyword == "q" || argument.keyword == "query") && is_true(argument.value.value);
        });
        if (query) add_word("-q", 0, false);
        for (const Argument& argument : given) {
            if (argument.keyword.empty()) continue;
            if (Result<void> done = add_flag(argument, *syntax, query); !done) return done.error();
        }
        for (const Argument& argument : given) {
            if (!argument.keyword.empty()) continue;
            for (std::string& piece : argument.value.value.pieces()) add_word(std::move(piece), argument.offset, true);
        }
        // The command may run Python of its own.
        const std::deque<std::string> texts = std::move(texts_);
        const std::vector<Word> words = std::move(words_);
        return run_words(session_, name, words);
    }

    void add_word(std::string text, std::size_t offset, bool quoted) {
        texts_.push_back(std::move(text));
        words_.push_back({texts_.back(), offset, quoted});
    }

    Result<void> add_flag(const Argument& argument, const SyntaxTable& syntax, bool query) {
        const std::string& name = argument.keyword;
        const CommandResult& value = argument.value.value;
        if (name == "q" || name == "query") return {};
        const std::string flag = "-" + name;
        if (syntax.edit && (name == "e" || name == "edit")) {
            if (is_true(value)) add_word(flag, argument.offset, false);
            return {};
        }
        const int found = syntax.find(name);
        if (found < 0) return Error{"TypeError: Invalid flag '" + name + "'"};
        const FlagRule& rule = syntax.flags[found];
        if (rule.arguments.empty() || (query && !rule.full_query)) {
            if (is_true(value)) add_word(flag, argument.offset, false);
            return {};
        }
        std::vector<std::string> pieces = value.pieces();
        // A pair of times is a range.
        if (argument.value.tuple && pieces.size() == 2 && rule.arguments.size() == 1 && rule.short_name == "t")
            pieces = {pieces[0] + ":" + pieces[1]};
        const bool many = rule.multi_use && rule.arguments.size() == 1;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (i == 0 || many) add_word(flag, argument.offset, false);
            add_word(std::move(pieces[i]), argument.offset, true);
        }
        return {};
    }

    PythonInterpreter& interpreter_;
    Session& session_;
    std::string_view text_;
    std::size_t at_ = 0;
    int brackets_ = 0, depth_ = 0;
    bool doing_ = false;
    CommandResult last_;
    std::optional<Error> error_;
    std::deque<std::string> texts_;
    std::vector<Word> words_;
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
