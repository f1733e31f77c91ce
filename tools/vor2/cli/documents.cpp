#include "tools/vor2/cli/documents.h"

#include "inspect/json_writer.h"
#include "tools/vor2/cli/command_line.h"
#include "tools/vor2/cli/messages.h"

#include <algorithm>

namespace tool {
namespace {

constexpr std::size_t line_width = 79;

/// Lines of at most `line_width` characters, each behind `indent` blanks; empty lines part paragraphs.
std::string wrapped(std::string_view text, std::size_t indent) {
    std::string out;
    std::string line(indent, ' ');
    const auto break_line = [&] {
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out += line + "\n";
        line.assign(indent, ' ');
    };
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == '\n') {
            if (line.size() > indent) break_line();
            if (text.substr(i, 2) == "\n\n") break_line();
            i += text.substr(i, 2) == "\n\n" ? 2 : 1;
            continue;
        }
        const std::size_t end = std::min(text.find_first_of(" \n", i), text.size());
        const std::string_view word = text.substr(i, end - i);
        if (line.size() > indent && line.size() + word.size() > line_width) break_line();
        line.append(word).append(" ");
        i = end < text.size() && text[end] == ' ' ? end + 1 : end;
    }
    if (line.size() > indent) break_line();
    return out;
}

/// "-o, --output FILE"
std::string row_title(const OptionRow& row) {
    if (row.is_positional()) return row.value_name + (row.repeated ? "..." : "");
    std::string title;
    for (const std::string& name : row.name_list()) title += (title.empty() ? "" : ", ") + name;
    return row.kind == ValueKind::none ? title : title + " " + row.value_name;
}

std::string usage_line(const Verb& verb, const Syntax& syntax) {
    std::string line = "vor2 " + std::string(verb.name()) + " [options]";
    for (const OptionRow& row : syntax.rows()) {
        if (!row.is_positional()) continue;
        line += row.required ? " " + row_title(row) : " [" + row_title(row) + "]";
    }
    return line;
}

std::string rows_text(const Syntax& syntax, bool positional) {
    constexpr std::size_t column = 28;
    std::string out;
    for (const OptionRow& row : syntax.rows()) {
        if (row.is_positional() != positional) continue;
        std::string title = "  " + row_title(row);
        std::string help =
            wrapped(row.help + (row.repeated && !positional ? " (may be given many times)" : ""), column);
        if (title.size() + 1 < column) {
            help.replace(0, title.size(), title);
        } else {
            title += '\n';
            help.insert(0, title);
        }
        out += help;
    }
    return out;
}

/// Text that troff takes as it stands.
std::string roff(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool line_start = i == 0 || text[i - 1] == '\n';
        if (line_start && (text[i] == '.' || text[i] == '\'')) out += "\\&";
        if (text[i] == '\\') {
            out += "\\e";
        } else if (text[i] == '-') {
            out += "\\-";
        } else if (text.substr(i, 2) == "\n\n") {
            out += "\n.PP\n";
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string man_section(Verb& verb) {
    CommonOptions common;
    const Syntax syntax = syntax_of(verb, common);
    std::string out = ".SS " + roff(usage_line(verb, syntax)) + "\n" + roff(verb.description()) + "\n";
    for (const OptionRow& row : syntax.rows()) {
        if (row.is_positional() || row.names.find("--quiet") != std::string::npos) continue;
        out += ".TP\n.B " + roff(row_title(row)) + "\n" + roff(row.help) + "\n";
    }
    out += ".PP\nExamples:\n.PP\n.nf\n";
    for (const std::string& example : verb.examples()) out += "    " + roff(example) + "\n";
    return out + ".fi\n";
}

/// In single quotes for a POSIX shell, zsh or fish.
std::string shell_quoted(std::string_view text) {
    std::string out = "'";
    for (const char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

std::string words_of(const std::vector<std::string>& words) {
    std::string out;
    for (const std::string& word : words) out += (out.empty() ? "" : " ") + word;
    return out;
}

/// What zsh's `_arguments` needs backslashes before.
std::string zsh_escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == ':' || c == '[' || c == ']' || c == '\\') out += '\\';
        out += c;
    }
    return out;
}

std::string zsh_value(const OptionRow& row) {
    const std::string title = ":" + zsh_escaped(row.value_name) + ":";
    switch (row.kind) {
    case ValueKind::none:
        return "";
    case ValueKind::file:
        return title + "_files";
    case ValueKind::folder:
        return title + "_files -/";
    case ValueKind::choice:
        return title + "(" + words_of(row.choices) + ")";
    default:
        return title + " ";
    }
}

std::string zsh_rows(const OptionRow& row) {
    if (row.is_positional()) {
        return " " + shell_quoted((row.repeated ? "*" : "") + zsh_value(row));
    }
    std::string out;
    for (const std::string& name : row.name_list()) {
        const std::string others = row.repeated ? "*" : "(" + words_of(row.name_list()) + ")";
        out += " " + shell_quoted(others + name + "[" + zsh_escaped(row.help) + "]" + zsh_value(row));
    }
    return out;
}

std::string fish_row(const std::string& verb, const OptionRow& row) {
    std::string out = "complete -c vor2 -n '__fish_seen_subcommand_from " + verb + "'";
    for (const std::string& name : row.name_list()) {
        out += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (row.kind == ValueKind::file) out += " -r -F";
    if (row.kind == ValueKind::folder) out += " -x -a '(__fish_complete_directories)'";
    if (row.kind == ValueKind::text || row.kind == ValueKind::number) out += " -x";
    if (row.kind == ValueKind::choice) out += " -x -a " + shell_quoted(words_of(row.choices));
    return out + " -d " + shell_quoted(row.help) + "\n";
}

} // namespace

std::string version_text() {
    return "vor2 " VOR2_VERSION "\n" VOR2_BUILD_TEXT "\n";
}

std::string help_text(const VerbList& verbs) {
    std::string out = "vor2: scenes of the .vr2 format on the command line\n\n"
                      "Usage: vor2 VERB ...\n       vor2 VERB --help\n       vor2 --version\n\nVerbs:\n";
    for (const std::unique_ptr<Verb>& verb : verbs) {
        std::string name = "  " + std::string(verb->name());
        name.resize(14, ' ');
        out += name + std::string(verb->summary()) + "\n";
    }
    return out + "\n" +
           wrapped("Results go to standard output, problems as lines 'vor2: FILE: why' to standard error. Exits with 0 "
                   "when all is done, 1 when something was refused or found, 2 for a command line that isn't "
                   "understood. An output file appears whole or not at all.",
                   0);
}

std::string help_text(Verb& verb) {
    CommonOptions common;
    const Syntax syntax = syntax_of(verb, common);
    std::string out = "vor2 " + std::string(verb.name()) + ": " + std::string(verb.summary()) +
                      "\n\nUsage: " + usage_line(verb, syntax) + "\n\n" + wrapped(verb.description(), 0) + "\n" +
                      rows_text(syntax, true) + "\nOptions:\n" + rows_text(syntax, false) +
                      "  -h, --help                this text\n\nExamples:\n";
    for (const std::string& example : verb.examples()) out += "  " + example + "\n";
    return out;
}

std::string man_page(const VerbList& verbs) {
    std::string out = ".TH VOR2 1 \"\" \"vor2 " VOR2_VERSION "\" \"User Commands\"\n"
                      ".SH NAME\nvor2 \\- scenes of the .vr2 format on the command line\n"
                      ".SH SYNOPSIS\n.B vor2\n.I VERB\n[options] ...\n"
                      ".SH DESCRIPTION\n";
    out +=
        roff("Exports animated scenes to .vr2 files and brings them back, shows what is in such files, compares them "
             "and makes old ones new. Each verb answers to --help.") +
        "\n";
    out += ".SH VERBS\n";
    for (const std::unique_ptr<Verb>& verb : verbs) out += man_section(*verb);
    out +=
        ".SH OPTIONS OF ALL VERBS\n.TP\n.B \\-q, \\-\\-quiet\nTell problems alone: no notes, no progress.\n"
        ".TP\n.B \\-h, \\-\\-help\nThe verb's help.\n"
        ".SH EXIT STATUS\n.TP\n.B 0\nDone.\n.TP\n.B 1\nRefused, or problems found; each is a line on standard error.\n"
        ".TP\n.B 2\nThe command line isn't understood.\n"
        ".SH FILES\nAn output file is written beside its target and renamed, so that it appears whole or not at all.\n"
        ".SH ENVIRONMENT\n.TP\n.B SOURCE_DATE_EPOCH\nSeconds since 1970 that stand for the present time in exports.\n";
    return out;
}

std::string bash_completion(const VerbList& verbs) {
    std::string names, flags, values;
    for (const std::unique_ptr<Verb>& verb : verbs) {
        CommonOptions common;
        const Syntax syntax = syntax_of(*verb, common);
        const std::string name(verb->name());
        names += name + " ";
        std::string words = "--help";
        for (const OptionRow& row : syntax.rows()) {
            if (row.is_positional()) continue;
            std::string pattern;
            for (const std::string& option : row.name_list()) {
                words += " " + option;
                if (!pattern.empty()) pattern += '|';
                pattern += name;
                pattern += ":" + option;
            }
            if (row.kind == ValueKind::choice) {
                values += "    " + pattern + ") COMPREPLY=($(compgen -W '" + words_of(row.choices) +
                          "' -- \"$word\")); return ;;\n";
            } else if (row.kind == ValueKind::folder) {
                values += "    " + pattern +
                          ") compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$word\"); return ;;\n";
            } else if (row.kind != ValueKind::none) {
                values += "    " + pattern + ") return ;;\n";
            }
        }
        flags += "    " + name + ") COMPREPLY=($(compgen -W '";
        flags += words + "' -- \"$word\")) ;;\n";
    }
    return "# Completion of vor2 for bash; what isn't completed here falls back to names of files.\n"
           "_vor2() {\n"
           "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} verb=${COMP_WORDS[1]}\n"
           "  COMPREPLY=()\n"
           "  if ((COMP_CWORD == 1)); then\n"
           "    COMPREPLY=($(compgen -W '" +
           names +
           "--help --version' -- \"$word\"))\n    return\n  fi\n"
           "  case $verb:$before in\n" +
           values +
           "  esac\n"
           "  if [[ $word == -* ]]; then\n    case $verb in\n" +
           flags +
           "    esac\n  fi\n}\n"
           "complete -o default -F _vor2 vor2\n";
}

std::string zsh_completion(const VerbList& verbs) {
    std::string list, cases;
    for (const std::unique_ptr<Verb>& verb : verbs) {
        CommonOptions common;
        const Syntax syntax = syntax_of(*verb, common);
        const std::string name(verb->name());
        list += "    " + shell_quoted(name + ":" + std::string(verb->summary())) + "\n";
        cases += "    " + name + ") _arguments '(- *)'{-h,--help}'[the help]'";
        for (const OptionRow& row : syntax.rows()) cases += zsh_rows(row);
        cases += " ;;\n";
    }
    return "#compdef vor2\n_vor2() {\n  local -a verbs\n  verbs=(\n" + list +
           "  )\n  if ((CURRENT == 2)); then\n    _describe verb verbs\n    return\n  fi\n"
           "  local verb=$words[2]\n  shift words\n  ((CURRENT--))\n  case $verb in\n" +
           cases + "  esac\n}\n_vor2 \"$@\"\n";
}

std::string fish_completion(const VerbList& verbs) {
    std::string out;
    for (const std::unique_ptr<Verb>& verb : verbs) {
        CommonOptions common;
        const Syntax syntax = syntax_of(*verb, common);
        const std::string name(verb->name());
        out +=
            "complete -c vor2 -n __fish_use_subcommand -f -a " + name + " -d " + shell_quoted(verb->summary()) + "\n";
        for (const OptionRow& row : syntax.rows()) {
            if (!row.is_positional()) out += fish_row(name, row);
        }
    }
    return out;
}

int write_documents(const VerbList& verbs, std::string_view kind) {
    static constexpr std::pair<std::string_view, std::string (*)(const VerbList&)> documents[] = {
        {"man", man_page}, {"bash", bash_completion}, {"zsh", zsh_completion}, {"fish", fish_completion}};
    for (const auto& [name, write] : documents) {
        if (name != kind) continue;
        vor2::inspect::TextOut out(stdout);
        out.put(write(verbs));
        return finish(out) ? exit_done : exit_refused;
    }
    problem("documents", "is one of man, bash, zsh, fish");
    return exit_usage;
}

} // namespace tool
