#pragma once

#include "headless/api/access.h"

#include <optional>

namespace headless {

/// A flag of a command: its names without "-", and the kinds of its arguments.
struct FlagRule {
    std::string short_name, long_name;
    std::vector<MSyntax::MArgType> arguments;
    bool multi_use = false;
    bool full_query = false;     ///< takes its arguments in a query too
    bool query_optional = false; ///< or goes without them there
};

/// What `MSyntax` collects.
struct SyntaxTable {
    std::vector<FlagRule> flags;
    std::vector<MSyntax::MArgType> arguments;
    MSyntax::MObjectFormat object_format = MSyntax::kNone;
    unsigned int min_objects = 0, max_objects = ~0u;
    bool selection_as_default = false, query = false, edit = false;

    /// By either name, with or without "-"; -1 when there is none.
    int find(std::string_view name) const;
};

/// A command's words by flag and place. Each word that an argument's kind was checked for is of that kind.
struct ParsedArguments {
    struct Use {
        int flag;           ///< in the syntax's list
        unsigned int first; ///< which of the words its arguments begin at
        std::vector<MString> arguments;
    };
    SyntaxTable syntax;
    std::vector<Use> uses;
    std::vector<std::vector<std::size_t>> places; ///< in `uses`, by flag
    std::vector<MString> arguments, objects;
    bool query = false, edit = false;

    /// The places of a flag's uses; null for a name that the syntax doesn't have.
    const std::vector<std::size_t>* places_of(std::string_view flag) const;
    /// The `which`-th use of a flag, the last for -1; null when there is none.
    const Use* use_of(std::string_view flag, int which = -1) const;
};

/// Sorts the words of a command. The error says what the host says: "Invalid flag '-x'", "Flag '-sAt' must be
/// passed a double argument". A word that begins with "-" and a letter is a flag, unless a text is due and no flag
/// has that name; so negative numbers are arguments. A flag given more than once counts the last time only, unless
/// it is made for many uses.
Result<ParsedArguments> parse_arguments(const SyntaxTable& syntax, const std::vector<MString>& words);

// A word as a value of a kind; nothing when it isn't one. Truth is 1, 0, true, false, on, off, yes or no in any
// case; lengths, angles and times are numbers in the scene's unit or with a unit's name behind them.
std::optional<bool> as_boolean(const MString& word);
std::optional<int> as_integer(const MString& word);
std::optional<double> as_number(const MString& word);
std::optional<double> as_centimetres(const MString& word);
std::optional<double> as_radians(const MString& word);
std::optional<double> as_seconds(const MString& word);

} // namespace headless
