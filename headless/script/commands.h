#pragma once

#include "headless/api/arguments.h"
#include "headless/script/statement_reader.h"
#include "headless/session.h"

namespace headless {

/// The arguments of a command as its code asks for them, flags by their short names.
class Arguments {
public:
    explicit Arguments(const ParsedArguments& parsed) : parsed_(parsed) {}

    bool query() const { return parsed_.query; }
    bool edit() const { return parsed_.edit; }
    bool has(std::string_view flag) const { return find(flag) != nullptr; }
    /// The last use's argument; null without one.
    const std::string* text(std::string_view flag) const;
    const std::string* text(std::string_view flag, std::size_t use) const; ///< of the use that comes so-manieth
    /// Every use's argument, or the arguments of the last use of a flag that takes several.
    std::vector<std::string> texts(std::string_view flag) const;
    std::optional<double> number(std::string_view flag) const;
    std::optional<Vector3> vector(std::string_view flag) const;
    /// A flag for truth: its argument, or that it is there when it takes none.
    std::optional<bool> truth(std::string_view flag) const;
    std::size_t count() const { return parsed_.objects.size(); }
    const std::string& operator[](std::size_t i) const { return Access::text(parsed_.objects[i]); }
    std::vector<std::string> names() const;

private:
    const ParsedArguments::Use* find(std::string_view flag) const;

    const ParsedArguments& parsed_;
};

/// A command of the host. `flags` lists "short,long" pairs with blanks between them; behind a pair stand "=" and a
/// letter for each argument (s text, b truth, i whole number, d number), "*" when it may be given many times, and "!"
/// when it takes its arguments in a query too. A command whose arguments don't follow from a table takes the words
/// itself.
struct CommandRow {
    const char* name;
    const char* flags;
    Result<CommandResult> (*run)(Session& session, const Arguments& arguments);
    Result<CommandResult> (*run_words)(Session& session, std::span<const Word> words) = nullptr;
};

std::span<const CommandRow> attribute_commands();
std::span<const CommandRow> constraint_commands();
std::span<const CommandRow> dag_commands();
std::span<const CommandRow> file_commands();
std::span<const CommandRow> key_commands();
std::span<const CommandRow> node_commands();
std::span<const CommandRow> selection_commands();
std::span<const CommandRow> session_commands();
std::span<const CommandRow> time_commands();
std::span<const CommandRow> xform_commands();

/// Null when the host has no such command; those of plug-ins are the session's.
const CommandRow* find_command(std::string_view name);
const SyntaxTable& syntax_of(const CommandRow& row);

/// Runs a command of the host or of a plug-in. A name that is neither is the error `Cannot find procedure "x"`.
Result<CommandResult> run_words(Session& session, std::string_view name, std::span<const Word> words);

// What commands give back.
CommandResult text_result(std::string value);
CommandResult texts_result(std::vector<std::string> values);
CommandResult number_result(double value);
CommandResult numbers_result(std::vector<double> values);
CommandResult integer_result(std::int64_t value);

/// The nodes that a command works on: those named, or else the selected ones. An unknown or ambiguous name is an
/// error, and so is an empty list.
Result<std::vector<Node*>> named_or_selected(Session& session, std::span<const std::string> names);
/// The entry as scripts name it: a path as short as is unique, with its plug or components.
std::string name_of(Scene& scene, const SelectionItem& item, bool full = false);
/// A time in seconds from "5" (in the scene's unit) or "2sec".
Result<double> time_of(const std::string& text);

} // namespace headless
