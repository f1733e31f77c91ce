#include "headless/api/arguments.h"

#include "headless/graph/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace headless {

int SyntaxTable::find(std::string_view name) const {
    if (name.starts_with('-')) name.remove_prefix(1);
    if (name.empty()) return -1;
    for (std::size_t i = 0; i < flags.size(); ++i) {
        if (flags[i].short_name == name || flags[i].long_name == name) return static_cast<int>(i);
    }
    return -1;
}

const std::vector<std::size_t>* ParsedArguments::places_of(std::string_view flag) const {
    const auto wanted = static_cast<std::size_t>(syntax.find(flag)); // -1 for none
    return wanted < places.size() ? &places[wanted] : nullptr;
}

const ParsedArguments::Use* ParsedArguments::use_of(std::string_view flag, int which) const {
    const std::vector<std::size_t>* found = places_of(flag);
    if (!found || found->empty()) return nullptr;
    if (which < 0) return &uses[found->back()];
    const auto at = static_cast<std::size_t>(which);
    return at < found->size() ? &uses[(*found)[at]] : nullptr;
}

std::optional<bool> as_boolean(const MString& word) {
    const MString lower = MString(word).toLowerCase();
    for (const char* yes : {"1", "true", "on", "yes"}) {
        if (lower == yes) return true;
    }
    for (const char* no : {"0", "false", "off", "no"}) {
        if (lower == no) return false;
    }
    return {};
}

namespace {

// The number at the front of a word, and what stands behind it.
struct NumberAndRest {
    double number;
    std::string_view rest;
};

std::optional<NumberAndRest> leading_number(std::string_view word) {
    word = without_plus(word);
    double number = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return {};
    return NumberAndRest{number, word.substr(end - word.data())};
}

template<typename Unit>
std::optional<double> measured(const MString& word, double plain_size, double Unit::*size) {
    const auto found = leading_number(Access::text(word));
    if (!found) return {};
    if (found->rest.empty()) return found->number * plain_size;
    const std::optional<Unit> unit = Unit::by_name(found->rest);
    if (!unit) return {};
    return found->number * ((*unit).*size);
}

} // namespace

std::optional<double> as_number(const MString& word) {
    const auto found = leading_number(Access::text(word));
    if (!found || !found->rest.empty()) return {};
    return found->number;
}

std::optional<int> as_integer(const MString& word) {
    const auto number = as_number(word);
    if (!number || *number != std::trunc(*number) || std::abs(*number) > 2147483647.0) return {};
    return static_cast<int>(*number);
}

std::optional<double> as_centimetres(const MString& word) {
    return measured(word, Access::scene().linear_unit.centimetres, &LinearUnit::centimetres);
}

std::optional<double> as_radians(const MString& word) {
    return measured(word, Access::scene().angle_unit.radians, &AngleUnit::radians);
}

std::optional<double> as_seconds(const MString& word) {
    const auto found = leading_number(Access::text(word));
    if (!found) return {};
    if (found->rest.empty()) return Access::scene().time_unit.to_seconds(found->number);
    const auto unit = TimeUnit::by_name(found->rest);
    if (!unit) return {};
    return unit->to_seconds(found->number);
}

namespace {

const char* kind_name(MSyntax::MArgType type) {
    switch (type) {
    case MSyntax::kBoolean:
        return "a boolean";
    case MSyntax::kLong:
        return "an int";
    case MSyntax::kUnsigned:
        return "an unsigned int";
    case MSyntax::kDouble:
        return "a double";
    case MSyntax::kDistance:
        return "a distance";
    case MSyntax::kAngle:
        return "an angle";
    case MSyntax::kTime:
        return "a time";
    case MSyntax::kSelectionItem:
        return "an object";
    default:
        return "a string";
    }
}

bool is_of_kind(const MString& word, MSyntax::MArgType type) {
    switch (type) {
    case MSyntax::kBoolean:
        return as_boolean(word).has_value();
    case MSyntax::kLong:
        return as_integer(word).has_value();
    case MSyntax::kUnsigned:
        return as_integer(word).value_or(-1) >= 0;
    case MSyntax::kDouble:
        return as_number(word).has_value();
    case MSyntax::kDistance:
        return as_centimetres(word).has_value();
    case MSyntax::kAngle:
        return as_radians(word).has_value();
    case MSyntax::kTime:
        return as_seconds(word).has_value();
    case MSyntax::kSelectionItem:
        return static_cast<bool>(Access::scene().resolve(Access::text(word)));
    default:
        return true;
    }
}

bool looks_like_flag(const MString& word) {
    const std::string& text = Access::text(word);
    if (text.size() < 2 || text[0] != '-') return false;
    const char c = text[1];
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// One walk over the words.
class Sorter {
public:
    Sorter(const SyntaxTable& syntax, const std::vector<MString>& words) : words_(words) { out_.syntax = syntax; }

    Result<ParsedArguments> sort() {
        while (at_ < words_.size()) {
            const Result<void> taken = looks_like_flag(words_[at_]) ? take_flag() : take_plain();
            if (!taken) return taken.error();
        }
        if (Result<void> complete = check_plain(); !complete) return complete.error();
        out_.places.resize(out_.syntax.flags.size());
        for (std::size_t i = 0; i < out_.uses.size(); ++i)
            out_.places[static_cast<std::size_t>(out_.uses[i].flag)].push_back(i);
        return std::move(out_);
    }

private:
    Result<void> take_flag() {
        const MString& word = words_[at_++];
        if (out_.syntax.query && (word == "-q" || word == "-query")) {
            out_.query = true;
            return {};
        }
        if (out_.syntax.edit && (word == "-e" || word == "-edit")) {
            out_.edit = true;
            return {};
        }
        const int flag = out_.syntax.find(Access::text(word));
        if (flag < 0) return Error{"Invalid flag '" + Access::text(word) + "'"};
        const FlagRule& rule = out_.syntax.flags[flag];
        ParsedArguments::Use use{flag, static_cast<unsigned int>(at_), {}};
        const bool spared = out_.query && (!rule.full_query || (rule.query_optional && !word_fits(rule.arguments)));
        if (!spared) {
            for (const MSyntax::MArgType type : rule.arguments) {
                if (!word_fits(type))
                    return Error{"Flag '" + Access::text(word) + "' must be passed " + kind_name(type) + " argument"};
                use.arguments.push_back(words_[at_++]);
            }
        }
        if (!rule.multi_use) std::erase_if(out_.uses, [flag](const auto& earlier) { return earlier.flag == flag; });
        out_.uses.push_back(std::move(use));
        return {};
    }

    // Of a flag's arguments, the first.
    bool word_fits(const std::vector<MSyntax::MArgType>& types) const { return !types.empty() && word_fits(types[0]); }
    bool word_fits(MSyntax::MArgType type) const {
        if (at_ >= words_.size()) return false;
        const MString& word = words_[at_];
        if (looks_like_flag(word) && out_.syntax.find(Access::text(word)) >= 0) return false;
        return is_of_kind(word, type);
    }

    Result<void> take_plain() {
        const MString& word = words_[at_++];
        if (out_.arguments.size() < out_.syntax.arguments.size())
            out_.arguments.push_back(word);
        else
            out_.objects.push_back(word);
        return {};
    }

    Result<void> check_plain() const {
        const SyntaxTable& syntax = out_.syntax;
        if (out_.arguments.size() < syntax.arguments.size()) return Error{"Wrong number of arguments on call"};
        for (std::size_t i = 0; i < out_.arguments.size(); ++i) {
            if (!is_of_kind(out_.arguments[i], syntax.arguments[i]))
                return Error{"Argument " + std::to_string(i + 1) + " must be " + kind_name(syntax.arguments[i])};
        }
        const bool takes_objects =
            syntax.object_format == MSyntax::kStringObjects || syntax.object_format == MSyntax::kSelectionList;
        if (out_.objects.size() > (takes_objects ? syntax.max_objects : 0u))
            return Error{"Too many arguments: '" + Access::text(out_.objects.back()) + "'"};
        if (takes_objects && out_.objects.size() < syntax.min_objects && !syntax.selection_as_default)
            return Error{"Too few objects named"};
        if (syntax.object_format == MSyntax::kSelectionList) {
            for (const MString& name : out_.objects) {
                const auto found = Access::scene().resolve(Access::text(name));
                if (!found) return found.error();
            }
        }
        return {};
    }

    const std::vector<MString>& words_;
    std::size_t at_ = 0;
    ParsedArguments out_;
};

} // namespace

Result<ParsedArguments> parse_arguments(const SyntaxTable& syntax, const std::vector<MString>& words) {
    return Sorter(syntax, words).sort();
}

} // namespace headless
