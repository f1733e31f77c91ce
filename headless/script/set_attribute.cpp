#include "headless/script/set_attribute.h"

#include "headless/graph/number_text.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace headless {

std::optional<double> number_of(std::string_view word) {
    word = without_plus(word);
    double out = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), out);
    if (error == std::errc::invalid_argument || end != word.data() + word.size()) return {};
    // Beyond what a double holds: the nearest there is.
    if (error == std::errc::result_out_of_range) out = std::strtod(std::string(word).c_str(), nullptr);
    return out;
}

std::optional<bool> truth_of(std::string_view word) {
    for (const std::string_view yes : {"yes", "on", "true", "1"}) {
        if (word == yes) return true;
    }
    for (const std::string_view no : {"no", "off", "false", "0"}) {
        if (word == no) return false;
    }
    return {};
}

namespace {

// Flags of setAttr: by either name, and what stands behind them.
enum class SetFlag { none, locked, keyable, channel_box, type, bare, skipped_value };

SetFlag set_flag_of(std::string_view word) {
    static constexpr std::pair<std::string_view, SetFlag> table[] = {
        {"-k", SetFlag::keyable},        {"-keyable", SetFlag::keyable},
        {"-l", SetFlag::locked},         {"-lock", SetFlag::locked},
        {"-cb", SetFlag::channel_box},   {"-channelBox", SetFlag::channel_box},
        {"-s", SetFlag::skipped_value},  {"-size", SetFlag::skipped_value},
        {"-ch", SetFlag::skipped_value}, {"-capacityHint", SetFlag::skipped_value},
        {"-ca", SetFlag::skipped_value}, {"-caching", SetFlag::skipped_value},
        {"-av", SetFlag::bare},          {"-alteredValue", SetFlag::bare},
        {"-c", SetFlag::bare},           {"-clamp", SetFlag::bare},
        {"-typ", SetFlag::type},         {"-type", SetFlag::type}};
    for (const auto& [name, flag] : table) {
        if (word == name) return flag;
    }
    return SetFlag::none;
}

bool looks_like_flag(std::string_view word) {
    return word.size() > 1 && word[0] == '-' && starts_identifier(word[1]) && !number_of(word);
}

} // namespace

Result<void> parse_attribute_setting(std::span<const Word> words, AttributeSetting& out) {
    out.name = out.type = {};
    out.locked = out.keyable = out.channel_box = {};
    out.values.clear();
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Word& word = words[i];
        // Strings may look like flags; behind "-type" they are what they seem, texts.
        if (!looks_like_flag(word.text) || (word.quoted && !out.type.empty())) {
            if (out.name.empty())
                out.name = word.text;
            else
                out.values.push_back(word);
            continue;
        }
        const SetFlag flag = set_flag_of(word.text);
        if (flag == SetFlag::none) return Error{"Invalid flag '" + std::string(word.text) + "'"};
        if (flag == SetFlag::bare) continue;
        if (++i == words.size()) return Error{"SetFlag '" + std::string(word.text) + "' needs an argument"};
        const std::string_view value = words[i].text;
        if (flag == SetFlag::type) out.type = value;
        if (flag == SetFlag::type || flag == SetFlag::skipped_value) continue;
        const auto truth = truth_of(value);
        if (!truth) return Error{"SetFlag '" + std::string(word.text) + "' must be passed a boolean argument"};
        (flag == SetFlag::locked ? out.locked : flag == SetFlag::keyable ? out.keyable : out.channel_box) = truth;
    }
    if (out.name.empty()) return Error{"setAttr needs the name of an attribute"};
    return {};
}

void apply_marks(const Plug& plug, const AttributeSetting& setting) {
    if (!setting.locked && !setting.keyable && !setting.channel_box) return;
    AttributeFlags flags = plug.node->flags(plug.key.attribute);
    if (setting.locked) flags.locked = *setting.locked;
    if (setting.keyable) flags.keyable = setting.keyable;
    if (setting.channel_box) flags.channel_box = setting.channel_box;
    plug.node->set_flags(plug.key.attribute, flags);
}

namespace {

// The range that a path ends in: 2 and 6 of ".ktv[2:6]", and what stands before its bracket.
struct RangeAtEnd {
    std::string_view before;
    std::int32_t first;
    std::int64_t count;
};

std::optional<RangeAtEnd> range_at_end(std::string_view path) {
    const std::size_t bracket = path.rfind('[');
    if (bracket == std::string_view::npos || !path.ends_with(']')) return {};
    const std::string_view inside = path.substr(bracket + 1, path.size() - bracket - 2);
    PathSegment piece;
    if (inside.find(':') == std::string_view::npos || !read_range(inside, piece)) return {};
    return RangeAtEnd{path.substr(0, bracket), piece.first, std::int64_t{piece.last} - piece.first + 1};
}

} // namespace

std::optional<ListRange> list_range(std::string_view path) {
    const std::size_t end = path.rfind(']');
    if (end == std::string_view::npos || end + 1 == path.size()) return {};
    const std::optional<RangeAtEnd> range = range_at_end(path.substr(0, end + 1));
    if (!range) return {};
    std::string first(range->before);
    first.append("[").append(std::to_string(range->first)).append("]").append(path.substr(end + 1)).append("[0]");
    return ListRange{std::move(first), range->count};
}

namespace {

Error bad_word(const Word& word, const Plug& plug) {
    return Error{"'" + std::string(word.text) + "' can't be a value of '" + plug.name() + "'"};
}

Error bad_count(const Plug& plug, std::size_t found) {
    return Error{"Error reading data element: '" + plug.name() + "' doesn't take " + std::to_string(found) +
                 (found == 1 ? " value" : " values")};
}

double scale_of(AttributeKind kind, const ValueUnits& units) {
    switch (kind) {
    case AttributeKind::distance:
        return units.centimetres;
    case AttributeKind::angle:
        return units.radians;
    default:
        return 1.0;
    }
}

// A number as an attribute of that kind keeps it. Words of truth are numbers too.
std::optional<double> number_in(AttributeKind kind, std::string_view word, const ValueUnits& units) {
    auto number = number_of(word);
    if (!number) {
        const auto truth = truth_of(word);
        if (!truth) return {};
        number = *truth ? 1.0 : 0.0;
    }
    if (kind == AttributeKind::time) return *number / units.per_second;
    return *number * scale_of(kind, units);
}

// One plug and its words.
class PlugWords {
public:
    PlugWords(const Plug& plug, std::string_view type, std::span<const Word> words, const ValueUnits& units)
        : plug_(plug), attribute_(plug.attribute()), type_(type), words_(words), units_(units) {}

    Result<Value> value() const {
        switch (attribute_.kind) {
        case AttributeKind::compound:
            return compound();
        case AttributeKind::matrix:
            return matrix();
        case AttributeKind::text:
            return words_.size() == 1 ? Result<Value>(std::string(words_[0].text)) : bad_count(plug_, words_.size());
        case AttributeKind::untyped:
        case AttributeKind::message:
            return untyped();
        default:
            return scalar();
        }
    }

private:
    Result<Value> scalar() const {
        if (words_.size() != 1) return bad_count(plug_, words_.size());
        const auto number = number_in(attribute_.kind, words_[0].text, units_);
        if (!number) return bad_word(words_[0], plug_);
        return Value(*number);
    }

    Result<Value> compound() const {
        const auto& children = attribute_.children;
        if (words_.size() != children.size()) return bad_count(plug_, words_.size());
        Value::Doubles numbers(words_.size());
        for (std::size_t i = 0; i < words_.size(); ++i) {
            const auto number = number_in(plug_.node->attribute(children[i]).kind, words_[i].text, units_);
            if (!number) return bad_word(words_[i], plug_);
            numbers[i] = *number;
        }
        return list(std::move(numbers));
    }

    static Value list(Value::Doubles numbers) {
        if (numbers.size() == 3) return Vector3{numbers[0], numbers[1], numbers[2]};
        return numbers;
    }

    std::optional<Value::Doubles> numbers() const {
        Value::Doubles out;
        out.reserve(words_.size());
        for (const Word& word : words_) {
            const auto number = word.quoted ? std::nullopt : number_of(word.text);
            if (!number) return {};
            out.push_back(*number);
        }
        return out;
    }

    Result<Value> matrix() const {
        auto found = numbers();
        if (!found || found->size() != 16) return bad_count(plug_, words_.size());
        Matrix out;
        std::ranges::copy(*found, &out.m[0][0]);
        return Value(out);
    }

    Result<Value> untyped() const {
        if (type_ == "string" && words_.size() == 1) return Value(std::string(words_[0].text));
        if (type_ == "matrix" && words_.size() == 16) return matrix();
        if (type_.empty() && words_.size() == 1) return bare_word();
        if (type_.empty() || is_tuple(type_)) {
            if (auto found = numbers()) return list(std::move(*found));
        }
        return raw();
    }

    // Two, three or four numbers: what any attribute of that many takes without being told the type.
    static bool is_tuple(std::string_view type) {
        if (type.empty() || type.back() < '2' || type.back() > '4') return false;
        const std::string_view stem = type.substr(0, type.size() - 1);
        return stem == "double" || stem == "float" || stem == "long" || stem == "short";
    }

    // Counts stay counts and truth stays truth, so that a file written again holds the same words.
    Value bare_word() const {
        const std::string_view word = words_[0].text;
        if (words_[0].quoted) return std::string(word);
        std::int64_t count = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
        const bool is_count = error == std::errc() && end == word.data() + word.size();
        if (is_count && (count != 0 || word.front() != '-')) return count; // no count has a sign at its 0
        if (const auto number = number_of(word)) return *number;
        if (const auto truth = truth_of(word)) return *truth;
        return raw();
    }

    Value raw() const {
        RawTokens out;
        out.type = type_;
        out.tokens.reserve(words_.size());
        for (const Word& word : words_) out.tokens.push_back(word.quoted ? quoted(word.text) : std::string(word.text));
        return out;
    }

    const Plug& plug_;
    const Attribute& attribute_;
    std::string_view type_;
    std::span<const Word> words_;
    const ValueUnits& units_;
};

// Each face of "polyFaces" begins with "f" and runs to the next.
std::size_t face_length(std::span<const Word> words) {
    std::size_t end = 1;
    while (end < words.size() && words[end].text != "f") ++end;
    return std::min(end, words.size());
}

std::optional<std::int32_t> index_of(std::string_view word) {
    std::int32_t out = 0;
    return read_index(word, out) && word.empty() ? std::optional(out) : std::nullopt;
}

// Moves on to the next element of the array at a level of the plug.
Result<void> to_next(Plug& element, int level) {
    std::int32_t& index = element.key.index[level];
    if (index >= last_index) return Error{"Behind '" + element.name() + "' there is no element"};
    ++index;
    return {};
}

// The values of so many elements that begin at a plug, each taking an equal share of the words.
Result<void> store_words(const Plug& plug, std::int64_t count, std::string_view type, std::span<const Word> words,
                         const ValueUnits& units, StoreValue store) {
    if (words.empty()) return {};
    const bool faces = type == "polyFaces";
    const auto available = static_cast<std::int64_t>(words.size());
    // A lone element takes every word; more than there are words can't be filled.
    if (count > 1 && !faces && (count > available || available % count != 0)) return bad_count(plug, words.size());
    const std::size_t share = count > 1 && !faces ? words.size() / static_cast<std::size_t>(count) : words.size();
    Plug element = plug;
    while (!words.empty()) {
        const std::size_t length = faces ? face_length(words) : share;
        const Result<Value> value = PlugWords(element, type, words.first(length), units).value();
        if (!value) return value.error();
        if (Result<void> stored = store(element, *value); !stored) return stored;
        words = words.subspan(length);
        if (words.empty() || element.key.depth == 0) continue;
        if (Result<void> there = to_next(element, element.key.depth - 1); !there) return there;
    }
    return {};
}

// The arrays that so many elements hold: how many of its elements follow, and the index and the value of each.
Result<void> store_lists(const Plug& first, std::int64_t count, std::span<const Word> words, const ValueUnits& units,
                         StoreValue store) {
    if (words.empty()) return {};
    if (first.key.depth < 2) return Error{"'" + first.name() + "' stands in no range of elements"};
    Plug element = first;
    for (std::int64_t i = 0; i < count; ++i) {
        const auto length = words.empty() ? std::nullopt : index_of(words[0].text);
        if (!length || (words.size() - 1) / 2 < static_cast<std::size_t>(*length))
            return bad_count(first, words.size());
        const auto pairs = words.subspan(1, 2 * static_cast<std::size_t>(*length));
        for (std::size_t at = 0; at < pairs.size(); at += 2) {
            const auto index = index_of(pairs[at].text);
            if (!index) return bad_word(pairs[at], element);
            element.key.index[element.key.depth - 1] = *index;
            const Result<Value> value = PlugWords(element, {}, pairs.subspan(at + 1, 1), units).value();
            if (!value) return value.error();
            if (Result<void> stored = store(element, *value); !stored) return stored;
        }
        words = words.subspan(1 + pairs.size());
        if (i + 1 == count) break;
        if (Result<void> there = to_next(element, element.key.depth - 2); !there) return there;
    }
    return words.empty() ? Result<void>() : bad_count(first, words.size());
}

} // namespace

Result<void> store_values(const Plug& plug, const AttributeSetting& setting, const std::optional<ListRange>& lists,
                          const ValueUnits& units, StoreValue store) {
    if (lists) return store_lists(plug, lists->count, setting.values, units, store);
    const std::optional<RangeAtEnd> range = range_at_end(setting.name);
    return store_words(plug, range ? range->count : 1, setting.type, setting.values, units, store);
}

} // namespace headless
