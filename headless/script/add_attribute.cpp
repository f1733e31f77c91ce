#include "headless/script/add_attribute.h"

#include <cmath>

namespace headless {
namespace {

enum class Flag {
    long_name,
    short_name,
    parent,
    kind,
    data_type,
    default_value,
    enum_names,
    multi,
    keyable,
    one,
    none
};

Flag flag_of(std::string_view word) {
    static constexpr std::pair<std::string_view, Flag> table[] = {
        {"-ln", Flag::long_name},     {"-longName", Flag::long_name},
        {"-sn", Flag::short_name},    {"-shortName", Flag::short_name},
        {"-p", Flag::parent},         {"-parent", Flag::parent},
        {"-at", Flag::kind},          {"-attributeType", Flag::kind},
        {"-dt", Flag::data_type},     {"-dataType", Flag::data_type},
        {"-dv", Flag::default_value}, {"-defaultValue", Flag::default_value},
        {"-en", Flag::enum_names},    {"-enumName", Flag::enum_names},
        {"-m", Flag::multi},          {"-multi", Flag::multi},
        {"-k", Flag::keyable},        {"-keyable", Flag::keyable},
        {"-uac", Flag::multi},        {"-usedAsColor", Flag::multi},
        {"-uap", Flag::multi},        {"-usedAsProxy", Flag::multi}};
    for (const auto& [name, flag] : table) {
        if (word == name) return flag;
    }
    for (const std::string_view name : {"-ci",  "-cachedInternally",
                                        "-h",   "-hidden",
                                        "-is",  "-internalSet",
                                        "-s",   "-storable",
                                        "-r",   "-readable",
                                        "-w",   "-writable",
                                        "-min", "-minValue",
                                        "-max", "-maxValue",
                                        "-hnv", "-hasMinValue",
                                        "-hxv", "-hasMaxValue",
                                        "-smn", "-softMinValue",
                                        "-smx", "-softMaxValue",
                                        "-hsn", "-hasSoftMinValue",
                                        "-hsx", "-hasSoftMaxValue",
                                        "-nc",  "-numberOfChildren",
                                        "-nn",  "-niceName",
                                        "-ct",  "-category",
                                        "-im",  "-indexMatters",
                                        "-dcb", "-disconnectBehaviour",
                                        "-pxy", "-proxy",
                                        "-bt",  "-binaryTag",
                                        "-uaf", "-usedAsFilename"}) {
        if (word == name) return Flag::one;
    }
    return Flag::none;
}

AttributeKind kind_of(std::string_view type) {
    static constexpr std::pair<std::string_view, AttributeKind> table[] = {
        {"bool", AttributeKind::boolean},         {"long", AttributeKind::integer},
        {"short", AttributeKind::integer},        {"byte", AttributeKind::integer},
        {"char", AttributeKind::integer},         {"int", AttributeKind::integer},
        {"enum", AttributeKind::enumeration},     {"float", AttributeKind::number},
        {"double", AttributeKind::number},        {"doubleLinear", AttributeKind::distance},
        {"floatLinear", AttributeKind::distance}, {"doubleAngle", AttributeKind::angle},
        {"floatAngle", AttributeKind::angle},     {"time", AttributeKind::time},
        {"message", AttributeKind::message},      {"matrix", AttributeKind::matrix},
        {"fltMatrix", AttributeKind::matrix},     {"compound", AttributeKind::compound},
        {"double2", AttributeKind::compound},     {"double3", AttributeKind::compound},
        {"float2", AttributeKind::compound},      {"float3", AttributeKind::compound},
        {"long2", AttributeKind::compound},       {"long3", AttributeKind::compound},
        {"short2", AttributeKind::compound},      {"short3", AttributeKind::compound},
        {"reflectance", AttributeKind::compound}, {"spectrum", AttributeKind::compound},
        {"string", AttributeKind::text}};
    for (const auto& [name, kind] : table) {
        if (type == name) return kind;
    }
    return AttributeKind::untyped;
}

std::vector<std::string> split_names(std::string_view list) {
    std::vector<std::string> out;
    while (!list.empty()) {
        const std::size_t colon = std::min(list.find(':'), list.size());
        out.emplace_back(list.substr(0, colon));
        list.remove_prefix(std::min(colon + 1, list.size()));
    }
    return out;
}

Value in_units(AttributeKind kind, double number, const ValueUnits& units) {
    switch (kind) {
    case AttributeKind::boolean:
        return number != 0.0;
    case AttributeKind::integer:
    case AttributeKind::enumeration:
        return Value(number).integer();
    case AttributeKind::number:
        return number;
    case AttributeKind::distance:
        return number * units.centimetres;
    case AttributeKind::angle:
        return number * units.radians;
    case AttributeKind::time:
        return number / units.per_second;
    case AttributeKind::text:
        return "";
    default:
        return {};
    }
}

Result<Value> default_of(AttributeKind kind, std::string_view word, const ValueUnits& units) {
    auto number = number_of(word);
    if (const auto truth = truth_of(word); truth && !number) number = *truth ? 1.0 : 0.0;
    const Value value = in_units(kind, number.value_or(0.0), units);
    if (!number || !std::isfinite(*number) || (value.is_number() && !std::isfinite(value.number())))
        return Error{"'" + std::string(word) + "' can't be a default value"};
    return value;
}

bool takes_argument(Flag flag) {
    return flag != Flag::multi;
}

// Whether a flag without arguments is given a truth all the same, as in "-uac true".
bool is_truth(std::span<const Word> words, std::size_t at) {
    return at < words.size() && truth_of(words[at].text).has_value();
}

} // namespace

Result<AttributeAddition> parse_attribute_addition(std::span<const Word> words, const ValueUnits& units) {
    AttributeAddition out;
    out.attribute.kind = AttributeKind::number; // what goes without saying
    std::string_view default_value = "0";
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i].text;
        if (word.size() < 2 || word[0] != '-' || !starts_identifier(word[1])) {
            out.nodes.push_back(words[i]);
            continue;
        }
        const Flag flag = flag_of(word);
        if (flag == Flag::none) return Error{"Invalid flag '" + std::string(word) + "'"};
        if (!takes_argument(flag)) {
            if (word == "-m" || word == "-multi") out.attribute.array = true;
            if (is_truth(words, i + 1)) ++i;
            continue;
        }
        if (++i == words.size()) return Error{"Flag '" + std::string(word) + "' needs an argument"};
        const std::string_view value = words[i].text;
        if (flag == Flag::long_name) out.attribute.long_name = value;
        if (flag == Flag::short_name) out.attribute.short_name = value;
        if (flag == Flag::parent) out.parent = value;
        if (flag == Flag::kind || flag == Flag::data_type) {
            out.attribute.kind = flag == Flag::data_type && value != "string" && value != "matrix"
                                     ? AttributeKind::untyped
                                     : kind_of(value);
            out.attribute.data_type = value;
        }
        if (flag == Flag::default_value) default_value = value;
        if (flag == Flag::enum_names) out.attribute.enum_names = split_names(value);
        if (flag == Flag::keyable) out.keyable = truth_of(value);
    }
    if (out.attribute.long_name.empty() && out.attribute.short_name.empty())
        return Error{"New attribute needs either a long or a short name"};
    Result<Value> value = default_of(out.attribute.kind, default_value, units);
    if (!value) return value.error();
    out.attribute.default_value = std::move(*value);
    return out;
}

Result<void> add_attribute(Node& node, const AttributeAddition& addition) {
    Attribute attribute = addition.attribute;
    // What the type already has under the same name is declared again by files of other versions.
    const AttributeId present = node.find_attribute(attribute.long_name);
    if (present != no_attribute && node.attribute(present).long_name == attribute.long_name) return {};
    if (!addition.parent.empty()) {
        attribute.parent = node.find_attribute(addition.parent);
        if (attribute.parent == no_attribute)
            return Error{"No attribute '" + addition.parent + "' on node '" + node.name() + "'"};
    }
    const Result<AttributeId> added = node.add_attribute(std::move(attribute));
    if (!added) return added.error();
    if (addition.keyable) node.set_flags(*added, {.locked = false, .keyable = addition.keyable, .channel_box = {}});
    return {};
}

} // namespace headless
