#include "headless/files/reference_edits.h"

#include "headless/script/statement_reader.h"

#include <charconv>
#include <optional>

namespace headless {
namespace {

using Kind = ReferenceEdit::Kind;
using Ends = ReferenceEdit::Ends;
using Role = ReferenceEdit::Field::Role;

// What stands behind the number of a kind, "n" for a name and "t" for a text; null for no kind.
const char* fields_of(Kind kind) {
    switch (kind) {
    case Kind::parent:
    case Kind::disconnect:
        return "nnt";
    case Kind::add_attribute:
        return "nttt";
    case Kind::set:
    case Kind::delete_attribute:
        return "ntt";
    case Kind::relate:
        return "tn";
    case Kind::lock:
    case Kind::unlock:
        return "nt";
    case Kind::connect: // goes by its ends
        return "";
    }
    return nullptr;
}

// The tokens of a value, in the form that a statement has them in.
class EditParser {
public:
    explicit EditParser(std::span<const Word> words) : words_(words) {}

    Result<std::vector<ReferenceEditGroup>> parse() {
        std::vector<ReferenceEditGroup> out;
        std::string_view owner;
        if (!take(owner)) return out;
        while (at_ < words_.size()) {
            ReferenceEditGroup group;
            const bool named = words_[at_].quoted || !number_of_word(words_[at_]);
            std::string_view name;
            if (!named || !take(name)) return Error{"More edits follow than are counted"};
            group.reference = name;
            const auto count = take_number();
            if (!count || *count < 0) return Error{"The edits of '" + group.reference + "' aren't counted"};
            for (std::int64_t i = 0; i < *count; ++i) {
                Result<ReferenceEdit> edit = take_edit();
                if (!edit) return edit.error();
                group.edits.push_back(std::move(*edit));
            }
            out.push_back(std::move(group));
        }
        return out;
    }

private:
    static std::optional<std::int64_t> number_of_word(const Word& word) {
        std::int64_t out = 0;
        const auto [end, error] = std::from_chars(word.text.data(), word.text.data() + word.text.size(), out);
        if (word.quoted || error != std::errc() || end != word.text.data() + word.text.size()) return {};
        return out;
    }

    bool take(std::string_view& out) {
        if (at_ == words_.size()) return false;
        out = words_[at_++].text;
        return true;
    }

    std::optional<std::int64_t> take_number() {
        const auto out = at_ < words_.size() ? number_of_word(words_[at_]) : std::nullopt;
        if (out) ++at_;
        return out;
    }

    bool take_field(ReferenceEdit& edit, Role role) {
        std::string_view word;
        if (!take(word)) return false;
        edit.fields.push_back({role, std::string(word)});
        return true;
    }

    bool take_fields(ReferenceEdit& edit, std::string_view roles) {
        for (const char role : roles) {
            if (!take_field(edit, role == 'n' ? Role::name : Role::text)) return false;
        }
        return true;
    }

    bool take_counted(ReferenceEdit& edit) {
        const auto count = take_number();
        if (!count || *count < 0) return false;
        edit.fields.push_back({Role::number, std::to_string(*count)});
        for (std::int64_t i = 0; i < *count; ++i) {
            if (!take_field(edit, Role::name)) return false;
        }
        return true;
    }

    Result<ReferenceEdit> take_edit() {
        const auto number = take_number();
        if (!number && at_ == words_.size()) return Error{"Fewer edits are there than are counted"};
        const char* roles = number && *number >= 0 && *number <= 9 ? fields_of(static_cast<Kind>(*number)) : nullptr;
        if (!roles)
            return Error{"There is no kind of edit '" +
                         std::string(number ? words_[at_ - 1].text : words_[at_].text.substr(0, 100)) + "'"};
        ReferenceEdit edit;
        edit.kind = static_cast<Kind>(*number);
        bool whole = take_fields(edit, roles);
        if (whole && edit.kind == Kind::connect) whole = take_connection(edit);
        if (whole && edit.kind == Kind::relate) whole = take_counted(edit) && take_counted(edit);
        if (!whole) return Error{"An edit ends before its last word"};
        return edit;
    }

    // The reference node, the ends and their place holders, and where the source went before.
    bool take_connection(ReferenceEdit& edit) {
        const auto ends = take_number();
        if (!ends || *ends < 0 || *ends > 4) return false;
        edit.ends = *ends == 0 ? Ends::both : *ends % 2 == 1 ? Ends::source : Ends::destination;
        edit.fields.push_back({Role::number, std::to_string(*ends)});
        return take_fields(edit, edit.ends == Ends::both ? "nnnnnn" : "nnnn");
    }

    std::span<const Word> words_;
    std::size_t at_ = 0;
};

} // namespace

Result<std::vector<ReferenceEditGroup>> parse_reference_edits(const std::vector<std::string>& tokens) {
    std::string text = "edits";
    for (const std::string& token : tokens) text.append(" ").append(token);
    text += ';';
    StatementReader reader(text);
    if (!reader.next()) return Error{"The edits can't be told apart"};
    return EditParser(reader.words().subspan(1)).parse();
}

void append_tokens(const ReferenceEditGroup& group, std::vector<std::string>& out) {
    out.push_back(headless::quoted(group.reference));
    out.push_back(std::to_string(group.edits.size()));
    for (const ReferenceEdit& edit : group.edits) {
        out.push_back(std::to_string(static_cast<int>(edit.kind)));
        for (const ReferenceEdit::Field& field : edit.fields)
            out.push_back(field.role == Role::number ? field.value : headless::quoted(field.value));
    }
}

std::string with_prefix(std::string_view name, std::string_view prefix) {
    const std::size_t last_bar = name.rfind('|');
    const std::size_t dot = name.find('.', last_bar == std::string_view::npos ? 0 : last_bar);
    const std::string_view plug = dot == std::string_view::npos ? std::string_view() : name.substr(dot);
    name.remove_suffix(plug.size());
    std::string out;
    while (true) {
        const std::size_t bar = std::min(name.find('|'), name.size());
        const std::string_view piece = name.substr(0, bar);
        if (!piece.empty() && piece.front() != ':') out += prefix;
        out += piece;
        if (bar == name.size()) break;
        out += '|';
        name.remove_prefix(bar + 1);
    }
    return out.append(plug);
}

void put_prefix(ReferenceEditGroup& group, std::string_view prefix) {
    group.reference = with_prefix(group.reference, prefix);
    for (ReferenceEdit& edit : group.edits) {
        for (ReferenceEdit::Field& field : edit.fields) {
            if (field.role == Role::name) field.value = with_prefix(field.value, prefix);
        }
    }
}

} // namespace headless
