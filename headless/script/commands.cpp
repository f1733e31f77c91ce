#include "headless/script/commands.h"

namespace headless {

namespace {

const std::string* first_text(const ParsedArguments::Use* use) {
    return use && !use->arguments.empty() ? &Access::text(use->arguments.front()) : nullptr;
}

} // namespace

const ParsedArguments::Use* Arguments::find(std::string_view flag) const {
    return parsed_.use_of(flag);
}

const std::string* Arguments::text(std::string_view flag) const {
    return first_text(find(flag));
}

const std::string* Arguments::text(std::string_view flag, std::size_t use) const {
    return first_text(parsed_.use_of(flag, static_cast<int>(use)));
}

std::vector<std::string> Arguments::texts(std::string_view flag) const {
    std::vector<std::string> out;
    const std::vector<std::size_t>* places = parsed_.places_of(flag);
    for (std::size_t i = 0; places && i < places->size(); ++i) {
        for (const MString& argument : parsed_.uses[(*places)[i]].arguments) out.push_back(Access::text(argument));
    }
    return out;
}

std::optional<double> Arguments::number(std::string_view flag) const {
    const auto* use = find(flag);
    return use && !use->arguments.empty() ? as_number(use->arguments.front()) : std::nullopt;
}

std::optional<Vector3> Arguments::vector(std::string_view flag) const {
    const auto* use = find(flag);
    if (!use || use->arguments.size() != 3) return {};
    Vector3 out;
    for (int i = 0; i < 3; ++i) out[i] = as_number(use->arguments[i]).value_or(0.0);
    return out;
}

std::optional<bool> Arguments::truth(std::string_view flag) const {
    const auto* use = find(flag);
    if (!use) return {};
    return use->arguments.empty() ? true : as_boolean(use->arguments.front());
}

std::vector<std::string> Arguments::names() const {
    std::vector<std::string> out;
    out.reserve(count());
    for (std::size_t i = 0; i < count(); ++i) out.push_back((*this)[i]);
    return out;
}

namespace {

MSyntax::MArgType type_of(char letter) {
    switch (letter) {
    case 'b':
        return MSyntax::kBoolean;
    case 'i':
        return MSyntax::kLong;
    case 'd':
        return MSyntax::kDouble;
    default:
        return MSyntax::kString;
    }
}

FlagRule flag_rule(std::string_view text) {
    FlagRule out;
    if (text.ends_with('!')) {
        out.full_query = true;
        text.remove_suffix(1);
    }
    if (text.ends_with('*')) {
        out.multi_use = true;
        text.remove_suffix(1);
    }
    const std::size_t equals = text.find('=');
    const std::string_view names = text.substr(0, equals);
    const std::size_t comma = names.find(',');
    out.short_name = names.substr(0, comma);
    out.long_name = names.substr(comma + 1);
    if (equals == std::string_view::npos) return out;
    for (const char letter : text.substr(equals + 1)) out.arguments.push_back(type_of(letter));
    return out;
}

SyntaxTable make_syntax(std::string_view flags) {
    SyntaxTable out;
    out.query = out.edit = true;
    out.object_format = MSyntax::kStringObjects;
    while (!flags.empty()) {
        const std::size_t end = std::min(flags.find(' '), flags.size());
        if (end > 0) out.flags.push_back(flag_rule(flags.substr(0, end)));
        flags.remove_prefix(std::min(end + 1, flags.size()));
    }
    return out;
}

struct Entry {
    const CommandRow* row;
    SyntaxTable syntax;
};

const std::unordered_map<std::string_view, Entry>& table() {
    static const auto entries = [] {
        std::unordered_map<std::string_view, Entry> out;
        for (const auto& rows :
             {attribute_commands(), constraint_commands(), dag_commands(), file_commands(), key_commands(),
              node_commands(), selection_commands(), session_commands(), time_commands(), xform_commands()}) {
            for (const CommandRow& row : rows) out.emplace(row.name, Entry{&row, make_syntax(row.flags)});
        }
        return out;
    }();
    return entries;
}

} // namespace

const CommandRow* find_command(std::string_view name) {
    const auto at = table().find(name);
    return at == table().end() ? nullptr : at->second.row;
}

const SyntaxTable& syntax_of(const CommandRow& row) {
    return table().at(row.name).syntax;
}

Result<CommandResult> run_words(Session& session, std::string_view name, std::span<const Word> words) {
    const CommandRow* row = find_command(name);
    if (row && row->run_words) return row->run_words(session, words);
    if (!row) {
        std::vector<std::string> texts;
        for (const Word& word : words) texts.emplace_back(word.text);
        return session.run_command(std::string(name), texts);
    }
    std::vector<MString> texts;
    texts.reserve(words.size());
    for (const Word& word : words) texts.push_back(text(std::string(word.text)));
    const Result<ParsedArguments> parsed = parse_arguments(syntax_of(*row), texts);
    if (!parsed) return parsed.error();
    return row->run(session, Arguments(*parsed));
}

CommandResult text_result(std::string value) {
    CommandResult out;
    out.kind = CommandResult::Kind::text;
    out.texts.push_back(std::move(value));
    return out;
}

CommandResult texts_result(std::vector<std::string> values) {
    CommandResult out;
    out.kind = CommandResult::Kind::texts;
    out.texts = std::move(values);
    return out;
}

CommandResult number_result(double value) {
    CommandResult out;
    out.kind = CommandResult::Kind::number;
    out.numbers.push_back(value);
    return out;
}

CommandResult numbers_result(std::vector<double> values) {
    CommandResult out;
    out.kind = CommandResult::Kind::numbers;
    out.numbers = std::move(values);
    return out;
}

CommandResult integer_result(std::int64_t value) {
    CommandResult out;
    out.kind = CommandResult::Kind::integer;
    out.integers.push_back(value);
    return out;
}

Result<std::vector<Node*>> named_or_selected(Session& session, std::span<const std::string> names) {
    Scene& scene = session.scene();
    std::vector<Node*> out;
    for (const std::string& name : names) {
        const auto found = scene.resolve(name);
        if (!found) return found.error();
        for (const SelectionItem& item : *found) out.push_back(scene.find(item.node));
    }
    if (names.empty()) {
        for (const SelectionItem& item : scene.selection.items()) out.push_back(scene.find(item.node));
    }
    if (out.empty()) return Error{"No object is named or selected"};
    return out;
}

std::string name_of(Scene& scene, const SelectionItem& item, bool full) {
    const Node* node = scene.find(item.node);
    if (!node) return {};
    std::string out = !item.path ? node->name() : full ? scene.full_name(item.path) : scene.partial_name(item.path);
    if (item.plug) out += Plug{const_cast<Node*>(node), *item.plug}.path();
    if (!item.components.empty()) out += "." + item.components;
    return out;
}

Result<double> time_of(const std::string& value) {
    const auto seconds = as_seconds(text(value));
    if (!seconds) return Error{"'" + value + "' is no time"};
    return *seconds;
}

} // namespace headless
