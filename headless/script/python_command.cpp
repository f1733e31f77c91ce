#include "headless/script/python_command.h"

#include "headless/script/mel_values.h"

#include <algorithm>
#include <deque>

namespace headless {
namespace {

bool is_true(const CommandResult& value) {
    if (value.kind == CommandResult::Kind::none) return false;
    if (mel_is_list(value)) return mel_size(value) > 0;
    return mel_is_text(value) ? !mel_text(value).empty() : mel_number(value) != 0.0;
}

bool is_query(const PythonArgument& argument) {
    return argument.keyword == "q" || argument.keyword == "query";
}

class CommandWords {
public:
    CommandWords(const SyntaxTable& syntax, bool query) : syntax_(syntax), query_(query) {
        if (query) add("-q", 0, false);
    }

    std::span<const Word> words() const { return words_; }

    void add_objects(const PythonArgument& argument) {
        for (std::string& piece : argument.value.value.pieces()) add(std::move(piece), argument.offset, true);
    }

    Result<void> add_flag(const PythonArgument& argument) {
        const std::string& name = argument.keyword;
        if (is_query(argument)) return {};
        if (syntax_.edit && (name == "e" || name == "edit")) return add_bare(argument);
        const int found = syntax_.find(name);
        if (found < 0) return Error{"TypeError: Invalid flag '" + name + "'"};
        const FlagRule& rule = syntax_.flags[found];
        if (rule.arguments.empty() || (query_ && !rule.full_query)) return add_bare(argument);
        std::vector<std::string> pieces = argument.value.value.pieces();
        // A pair of times is a range.
        if (argument.value.tuple && pieces.size() == 2 && rule.arguments.size() == 1 && rule.short_name == "t")
            pieces = {pieces[0] + ":" + pieces[1]};
        const bool many = rule.multi_use && rule.arguments.size() == 1;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (i == 0 || many) add("-" + name, argument.offset, false);
            add(std::move(pieces[i]), argument.offset, true);
        }
        return {};
    }

private:
    void add(std::string text, std::size_t offset, bool quoted) {
        texts_.push_back(std::move(text));
        words_.push_back({texts_.back(), offset, quoted});
    }

    Result<void> add_bare(const PythonArgument& argument) {
        if (is_true(argument.value.value)) add("-" + argument.keyword, argument.offset, false);
        return {};
    }

    const SyntaxTable& syntax_;
    bool query_;
    std::deque<std::string> texts_; // what the words are views of
    std::vector<Word> words_;
};

} // namespace

Result<CommandResult> run_python_command(Session& session, const std::string& name,
                                         std::span<const PythonArgument> given) {
    const CommandRow* row = find_command(name);
    MSyntax plugin_syntax;
    const SyntaxTable* syntax = row ? &syntax_of(*row) : nullptr;
    if (const auto entry = session.commands.find(name); !row && entry != session.commands.end()) {
        if (entry->second.syntax) plugin_syntax = entry->second.syntax();
        syntax = &Access::syntax(plugin_syntax);
    }
    if (!syntax) return Error{"AttributeError: 'module' object has no attribute '" + name + "'"};
    CommandWords command(*syntax, std::ranges::any_of(given, [](const PythonArgument& argument) {
        return is_query(argument) && is_true(argument.value.value);
    }));
    // Flags first, then what was given by place.
    for (const PythonArgument& argument : given) {
        if (argument.keyword.empty()) continue;
        if (const Result<void> done = command.add_flag(argument); !done) return done.error();
    }
    for (const PythonArgument& argument : given) {
        if (argument.keyword.empty()) command.add_objects(argument);
    }
    return run_words(session, name, command.words());
}

} // namespace headless
