#include "headless/graph/node_type.h"

#include "headless/graph/standard_types.h"

namespace headless {

NodeType::NodeType(std::string name, const NodeType* base, MFn::Type api_type)
    : name_(std::move(name)), base_(base), api_type_(api_type) {
    if (base) {
        compute = base->compute;
        make_data = base->make_data;
        shortfall = base->shortfall;
        rules_ = base->rules_;
        rule_at_ = base->rule_at_;
        turner = base->turner;
        attributes_ = base->attributes_;
        by_name_ = base->by_name_;
    }
    is_dag_ = name_ == "dagNode" || (base && base->is_dag_);
    is_transform_ = name_ == "transform" || (base && base->is_transform_);
    is_joint_ = name_ == "joint" || (base && base->is_joint_);
    is_shape_ = name_ == "shape" || (base && base->is_shape_);
}

bool NodeType::has_fn(MFn::Type type) const {
    if (type == MFn::kBase || type == MFn::kNamedObject) return true;
    for (const NodeType* t = this; t; t = t->base_) {
        if (t->api_type_ == type) return true;
    }
    return false;
}

bool NodeType::derives_from(std::string_view type_name) const {
    for (const NodeType* t = this; t; t = t->base_) {
        if (t->name_ == type_name) return true;
    }
    return false;
}

AttributeId NodeType::find(std::string_view name) const {
    const auto at = by_name_.find(name);
    return at == by_name_.end() ? no_attribute : at->second;
}

namespace {

Value zero_of(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::boolean:
        return false;
    case AttributeKind::integer:
    case AttributeKind::enumeration:
        return 0;
    case AttributeKind::number:
    case AttributeKind::distance:
    case AttributeKind::angle:
    case AttributeKind::time:
        return 0.0;
    case AttributeKind::text:
        return "";
    default:
        return {};
    }
}

} // namespace

std::string_view type_word(const Attribute& attribute) {
    if (!attribute.data_type.empty()) return attribute.data_type;
    switch (attribute.kind) {
    case AttributeKind::boolean:
        return "bool";
    case AttributeKind::integer:
        return "long";
    case AttributeKind::enumeration:
        return "enum";
    case AttributeKind::number:
        return "double";
    case AttributeKind::distance:
        return "doubleLinear";
    case AttributeKind::angle:
        return "doubleAngle";
    case AttributeKind::time:
        return "time";
    case AttributeKind::text:
        return "string";
    case AttributeKind::matrix:
        return "matrix";
    case AttributeKind::message:
        return "message";
    case AttributeKind::compound:
        return "compound";
    case AttributeKind::untyped:
        break;
    }
    return "double";
}

AttributeId NodeType::add(std::string_view long_name, std::string_view short_name, AttributeKind kind, Value value,
                          AttributeId parent) {
    const auto id = static_cast<AttributeId>(attributes_.size());
    Attribute attribute;
    attribute.long_name = long_name;
    attribute.short_name = short_name;
    attribute.kind = kind;
    attribute.default_value = value.empty() ? zero_of(kind) : std::move(value);
    attribute.parent = parent;
    if (parent != no_attribute) {
        attributes_[parent].children.push_back(id);
        attribute.array_levels = attributes_[parent].array_levels;
        attribute.output = attributes_[parent].output;
    }
    attributes_.push_back(std::move(attribute));
    by_name_.emplace(long_name, id);
    by_name_.emplace(short_name, id);
    return id;
}

AttributeId NodeType::add_vector(std::string_view long_name, std::string_view short_name, AttributeKind kind,
                                 double value, AttributeId parent) {
    const AttributeId id = add(long_name, short_name, AttributeKind::compound, {}, parent);
    for (const char* suffix : {"Xx", "Yy", "Zz"})
        add(std::string(long_name) + suffix[0], std::string(short_name) + suffix[1], kind, value, id);
    return id;
}

void NodeType::make_array(AttributeId id) {
    attributes_[id].array = true;
    attributes_[id].array_levels += 1;
}

void NodeType::make_output(AttributeId id) {
    attributes_[id].output = true;
    for (const AttributeId child : attributes_[id].children) make_output(child);
}

void NodeType::add_rule(OutputRule rule) {
    const AttributeId output = rule.output;
    make_output(output);
    const auto place = static_cast<std::int16_t>(rules_.size());
    rules_.push_back(std::move(rule));
    rule_at_.resize(attributes_.size(), -1);
    rule_at_[output] = place;
    for (const AttributeId child : attributes_[output].children) rule_at_[child] = place;
}

const OutputRule* NodeType::rule_of(AttributeId id) const {
    return id < rule_at_.size() && rule_at_[id] >= 0 ? &rules_[static_cast<std::size_t>(rule_at_[id])] : nullptr;
}

NodeTypes& NodeTypes::all() {
    static NodeTypes& types = *[] {
        auto* made = new NodeTypes; // lives as long as the process, so nodes may outlast static objects
        add_standard_types(*made);
        return made;
    }();
    return types;
}

const NodeType* NodeTypes::find(std::string_view name) const {
    const auto at = by_name_.find(name);
    return at == by_name_.end() ? nullptr : at->second;
}

NodeType& NodeTypes::find_or_add_unknown(std::string_view name, bool dag) {
    // One name can be met both in and outside the DAG; the two are types of their own.
    if (const auto at = by_name_.find(name); at != by_name_.end()) {
        if (at->second->known() || at->second->is_dag() == dag) return *at->second;
    }
    const std::string key = dag ? std::string(name) + " (DAG)" : std::string(name);
    if (const auto at = by_name_.find(key); at != by_name_.end() && at->second->is_dag() == dag) return *at->second;
    const NodeType* base = find(dag ? "dagNode" : "node");
    NodeType& made = types_.emplace_back(std::string(name), base, MFn::kUnknown);
    by_name_[key] = &made;
    return made;
}

NodeType& NodeTypes::add(std::string_view name, std::string_view base, MFn::Type api_type) {
    NodeType& made = types_.emplace_back(std::string(name), find(base), api_type);
    by_name_[std::string(name)] = &made;
    return made;
}

} // namespace headless
