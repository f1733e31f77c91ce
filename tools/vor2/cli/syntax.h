#pragma once

/// What a verb takes on its command line, told once as a table: parsing, `--help`, the man page and the
/// shells' completions all read it.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// What a value is, so that a shell can complete it.
enum class ValueKind { none, text, number, file, folder, choice };

struct OptionRow {
    std::string names; ///< "-o,--output"; a name without dashes is a place on the line
    ValueKind kind = ValueKind::none;
    std::string value_name; ///< as the help shows it: "FILE"
    std::string help;
    std::vector<std::string> choices{};
    bool required = false;
    bool repeated = false;
    /// Takes a value; gives what is wrong with it, or nothing. Called once for each value.
    std::function<std::string(const std::string&)> set{};

    bool is_positional() const { return names.front() != '-'; }
    /// The names one by one, as they are typed.
    std::vector<std::string> name_list() const;
};

/// A verb adds its rows here; each stores what it is given straight into the verb's own member, which must outlive
/// the parsing.
class Syntax {
public:
    void flag(std::string names, std::string help, bool& target);
    void text(std::string names, std::string value_name, std::string help, std::string& target);
    void texts(std::string names, std::string value_name, std::string help, std::vector<std::string>& target);
    void number(std::string names, std::string value_name, std::string help, std::optional<double>& target);
    void choice(std::string names, std::vector<std::string> choices, std::string help, std::string& target);
    void file(std::string names, std::string value_name, std::string help, std::string& target);
    void folder(std::string names, std::string value_name, std::string help, std::string& target);
    void required_file(std::string names, std::string value_name, std::string help, std::string& target);
    void required_files(std::string names, std::string value_name, std::string help, std::vector<std::string>& target);
    /// A row with a meaning of its own.
    void add(OptionRow row) { rows_.push_back(std::move(row)); }
    /// `--jobs N`, for a verb that takes many files.
    void jobs(unsigned& target);
    /// `--json`, for a verb whose result a program would read.
    void json(bool& target);

    /// `--allow-outside`, for a verb that saves scenes together with those they refer to.
    void allow_outside(bool& target);

    const std::vector<OptionRow>& rows() const { return rows_; }

private:
    std::vector<OptionRow> rows_;
};

/// The whole of `text` as a number; nothing for anything else. "nan" and "inf" are no numbers here.
std::optional<double> parse_number(std::string_view text);

} // namespace tool
