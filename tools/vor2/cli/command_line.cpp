#include "tools/vor2/cli/command_line.h"

#include "tools/vor2/cli/documents.h"
#include "tools/vor2/cli/messages.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <cstdio>
#include <map>
#include <new>

namespace tool {
namespace {

CLI::Option* add_option(CLI::App& app, const OptionRow& row) {
    if (row.kind == ValueKind::none) return app.add_flag(row.names);
    CLI::Option* option = app.add_option(row.names, [](const CLI::results_t&) { return true; });
    option->required(row.required);
    // One value for each use: "--node a --node b", so that a value can't swallow what follows it.
    option->type_size(1)->expected(1);
    if (row.repeated) {
        option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        if (row.is_positional()) {
            option->allow_extra_args(true)->expected(1, CLI::detail::expected_max_vector_size);
        } else {
            option->allow_extra_args(false)->expected(1, CLI::detail::expected_max_vector_size);
        }
    }
    return option;
}

// Where several values may stand, "[a,b]" is a list to the parser; to us it is the name of a file. A NUL behind it,
// which no word of a command line holds, makes it one to both, and ends what the parser says of the word, too.
void keep_brackets(std::string& word) {
    if (word.starts_with('[') && word.ends_with(']')) word += '\0';
}
std::string as_typed(std::string word) {
    if (word.ends_with('\0')) word.pop_back();
    return word;
}

/// Hands the values to the rows in the order in which they were typed.
void set_values(const CLI::App& app, const std::map<const CLI::Option*, const OptionRow*>& rows) {
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* option : app.parse_order()) {
        const OptionRow& row = *rows.at(option);
        const std::string wrong = row.set(as_typed(option->results().at(taken[option]++)));
        if (!wrong.empty()) throw CLI::ValidationError(row.name_list().back(), wrong);
    }
}

int refuse_usage(const std::string& verb, const std::string& why) {
    problem(verb, why + " (see 'vor2 " + (verb.empty() ? std::string() : verb + " ") + "--help')");
    return exit_usage;
}

int print(const std::string& text) {
    std::FILE* out = results();
    (void)std::fwrite(text.data(), 1, text.size(), out);
    const bool printed = std::fflush(out) == 0 && std::ferror(out) == 0;
    if (!printed) problem("standard output", "couldn't be written");
    return printed ? exit_done : exit_refused;
}

int run_verb(Verb& verb, std::vector<std::string> words) {
    CommonOptions common;
    if (const std::optional<int> ended = read_words(verb, common, std::move(words))) return *ended;
    set_quiet(common.quiet);
    return verb.run();
}

} // namespace

Syntax syntax_of(Verb& verb, CommonOptions& common) {
    Syntax syntax;
    verb.describe(syntax);
    syntax.flag("-q,--quiet", "tell problems alone: no notes, no progress", common.quiet);
    return syntax;
}

std::optional<int> read_words(Verb& verb, CommonOptions& common, std::vector<std::string> words) {
    const Syntax syntax = syntax_of(verb, common);
    CLI::App app;
    app.set_help_flag();
    app.allow_windows_style_options(false); // a path may begin with a slash on every system
    std::map<const CLI::Option*, const OptionRow*> rows;
    for (const OptionRow& row : syntax.rows()) rows.emplace(add_option(app, row), &row);
    for (const std::string& word : words) {
        if (word == "--") break;
        if (word == "-h" || word == "--help") return print(help_text(verb));
    }
    try {
        std::for_each(words.begin(), words.end(), keep_brackets);
        std::reverse(words.begin(), words.end());
        app.parse(std::move(words));
        set_values(app, rows);
    } catch (const CLI::ParseError& error) {
        return refuse_usage(std::string(verb.name()), error.what());
    }
    const std::string wrong = verb.check();
    if (!wrong.empty()) return refuse_usage(std::string(verb.name()), wrong);
    return {};
}

int run_verb(const VerbList& verbs, const std::string& word, std::vector<std::string> words) {
    for (const std::unique_ptr<Verb>& verb : verbs) {
        if (verb->name() != word) continue;
        try {
            return run_verb(*verb, std::move(words));
        } catch (const std::bad_alloc&) {
            problem(word, "memory ran out");
            return exit_refused;
        } catch (const std::exception& error) {
            problem(word, error.what());
            return exit_refused;
        }
    }
    return refuse_usage({}, "there is no verb '" + word + "'");
}

int run_command_line(int argument_count, char** arguments) {
    const VerbList verbs = make_verbs();
    if (argument_count < 2) {
        return refuse_usage({}, "no verb is given");
    }
    const std::string word = arguments[1];
    if (word == "--help" || word == "-h" || word == "help") return print(help_text(verbs));
    if (word == "--version") return print(version_text());
    if (word == "documents") return write_documents(verbs, argument_count > 2 ? arguments[2] : "");
    return run_verb(verbs, word, {arguments + 2, arguments + argument_count});
}

} // namespace tool
