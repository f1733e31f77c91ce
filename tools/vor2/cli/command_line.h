#pragma once

#include "tools/vor2/verbs/verb.h"

namespace tool {

/// The options that every verb has.
struct CommonOptions {
    bool quiet = false;
};
/// The rows of a verb with the common ones behind them.
Syntax syntax_of(Verb& verb, CommonOptions& common);

/// Sets the members of a verb from the words behind its name. Gives the exit code where it isn't to be run: its help
/// was asked for and printed, or the words aren't understood, which the user is told.
std::optional<int> read_words(Verb& verb, CommonOptions& common, std::vector<std::string> words);

/// Runs the verb of that name with the words behind it, and gives the exit code; whatever it throws is told to the
/// user.
int run_verb(const VerbList& verbs, const std::string& word, std::vector<std::string> words);

/// Reads the command line and runs the verb that it names. Gives the exit code: 2, told to the user, for a line that
/// isn't understood.
int run_command_line(int argument_count, char** arguments);

} // namespace tool
