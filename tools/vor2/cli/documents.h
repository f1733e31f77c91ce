#pragma once

/// Everything that is written about the verbs, from their table: help, the man page, the shells' completions.

#include "tools/vor2/verbs/verb.h"

namespace tool {

std::string version_text();
std::string help_text(const VerbList& verbs);
std::string help_text(Verb& verb);
std::string man_page(const VerbList& verbs);
std::string bash_completion(const VerbList& verbs);
std::string zsh_completion(const VerbList& verbs);
std::string fish_completion(const VerbList& verbs);

/// Prints the document of that kind ("man", "bash", "zsh", "fish"), as the build installs it. Gives the exit code.
int write_documents(const VerbList& verbs, std::string_view kind);

} // namespace tool
