#include "tools/vor2/cli/syntax.h"

#include <charconv>
#include <cmath>

namespace tool {
namespace {

OptionRow text_row(std::string names, ValueKind kind, std::string value_name, std::string help, std::string& target) {
    OptionRow row{std::move(names), kind, std::move(value_name), std::move(help)};
    row.set = [&target](const std::string& value) {
        target = value;
        return std::string();
    };
    return row;
}

} // namespace

std::vector<std::string> OptionRow::name_list() const {
    std::vector<std::string> list;
    for (std::size_t start = 0; start <= names.size();) {
        const std::size_t comma = std::min(names.find(',', start), names.size());
        list.push_back(names.substr(start, comma - start));
        start = comma + 1;
    }
    return list;
}

void Syntax::flag(std::string names, std::string help, bool& target) {
    OptionRow row{std::move(names), ValueKind::none, {}, std::move(help)};
    row.set = [&target](const std::string&) {
        target = true;
        return std::string();
    };
    add(std::move(row));
}

void Syntax::text(std::string names, std::string value_name, std::string help, std::string& target) {
    add(text_row(std::move(names), ValueKind::text, std::move(value_name), std::move(help), target));
}

void Syntax::texts(std::string names, std::string value_name, std::string help, std::vector<std::string>& target) {
    OptionRow row{std::move(names), ValueKind::text, std::move(value_name), std::move(help)};
    row.repeated = true;
    row.set = [&target](const std::string& value) {
        target.push_back(value);
        return std::string();
    };
    add(std::move(row));
}

void Syntax::number(std::string names, std::string value_name, std::string help, std::optional<double>& target) {
    OptionRow row{std::move(names), ValueKind::number, std::move(value_name), std::move(help)};
    row.set = [&target](const std::string& value) {
        target = parse_number(value);
        return target ? std::string() : "'" + value + "' is no number";
    };
    add(std::move(row));
}

void Syntax::choice(std::string names, std::vector<std::string> choices, std::string help, std::string& target) {
    OptionRow row{std::move(names), ValueKind::choice, {}, std::move(help), std::move(choices)};
    for (const std::string& word : row.choices) row.value_name += (row.value_name.empty() ? "" : "|") + word;
    row.set = [&target, words = row.choices, all = row.value_name](const std::string& value) {
        for (const std::string& word : words) {
            if (word != value) continue;
            target = value;
            return std::string();
        }
        return "'" + value + "' is none of " + all;
    };
    add(std::move(row));
}

void Syntax::file(std::string names, std::string value_name, std::string help, std::string& target) {
    add(text_row(std::move(names), ValueKind::file, std::move(value_name), std::move(help), target));
}

void Syntax::folder(std::string names, std::string value_name, std::string help, std::string& target) {
    add(text_row(std::move(names), ValueKind::folder, std::move(value_name), std::move(help), target));
}

void Syntax::required_file(std::string names, std::string value_name, std::string help, std::string& target) {
    file(std::move(names), std::move(value_name), std::move(help), target);
    rows_.back().required = true;
}

void Syntax::required_files(std::string names, std::string value_name, std::string help,
                            std::vector<std::string>& target) {
    texts(std::move(names), std::move(value_name), std::move(help), target);
    rows_.back().kind = ValueKind::file;
    rows_.back().required = true;
}

void Syntax::jobs(unsigned& target) {
    OptionRow row{"-j,--jobs", ValueKind::number, "N", "work on N files at a time (default: one for each processor)"};
    row.set = [&target](const std::string& value) {
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), target);
        const bool good = error == std::errc() && end == value.data() + value.size() && target >= 1 && target <= 1024;
        return good ? std::string() : "'" + value + "' is no number from 1 to 1024";
    };
    add(std::move(row));
}

void Syntax::json(bool& target) {
    flag("--json", "print JSON for programs to read", target);
}

void Syntax::allow_outside(bool& target) {
    flag("--allow-outside", "let scenes that the file refers to be saved outside OUT's folder", target);
}

std::optional<double> parse_number(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return {};
    return number;
}

} // namespace tool
