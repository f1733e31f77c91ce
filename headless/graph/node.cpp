#include "headless/graph/node.h"

#include "headless/graph/evaluation.h"
#include "headless/graph/names.h"
#include "headless/graph/scene.h"
#include "headless/graph/transform_state.h"

#include <algorithm>
#include <limits>

namespace headless {

Node::Node(Scene& scene, const NodeType& type, NodeHandle handle) : scene_(scene), type_(&type), handle_(handle) {
    if (type.make_data) data_ = type.make_data(*this);
}

Node::~Node() = default;

std::string_view Node::short_name() const {
    return without_namespaces(name_);
}

void Node::touch() {
    ++edits_;
    if (type_->turner) ++scene_.turner_edits_;
    scene_.touch();
}

AttributeId Node::attribute_count() const {
    return static_cast<AttributeId>(type_->attributes().size() + dynamic_.size());
}

const Attribute& Node::attribute(AttributeId id) const {
    const auto& own = type_->attributes();
    return id < own.size() ? own[id] : dynamic_[id - own.size()];
}

AttributeId Node::find_attribute(std::string_view name) const {
    const AttributeId id = type_->find(name);
    if (id != no_attribute || dynamic_.empty()) return id;
    const auto at = dynamic_by_name_.find(name);
    return at == dynamic_by_name_.end() ? no_attribute : at->second;
}

Result<AttributeId> Node::add_attribute(Attribute attribute) {
    if (attribute.short_name.empty()) attribute.short_name = attribute.long_name;
    if (attribute.long_name.empty()) attribute.long_name = attribute.short_name;
    if (attribute.long_name.empty()) return Error{"An attribute needs a name"};
    for (const std::string& name : {attribute.long_name, attribute.short_name}) {
        if (!is_attribute_name(name)) return Error{"'" + name + "' can't be the name of an attribute"};
        if (find_attribute(name) != no_attribute)
            return Error{"Found an existing attribute '" + name + "' on node '" + name_ + "'"};
    }
    int levels = attribute.array ? 1 : 0;
    const std::size_t own = type_->attributes().size();
    if (attribute.parent != no_attribute) {
        // The type's own are shared by all nodes of the type, so none of them grows a child here.
        const bool added = attribute.parent >= own && attribute.parent < attribute_count();
        const Attribute* parent = added ? &dynamic_[attribute.parent - own] : nullptr;
        if (!parent || parent->raw || parent->kind != AttributeKind::compound)
            return Error{"The parent of attribute '" + attribute.long_name + "' is no compound that was added"};
        levels += parent->array_levels;
    }
    if (levels > max_array_levels) return Error{"Arrays nest too deep in '" + attribute.long_name + "'"};
    attribute.array_levels = static_cast<std::uint8_t>(levels);
    attribute.dynamic = true;
    const AttributeId id = attribute_count();
    if (attribute.parent != no_attribute) dynamic_[attribute.parent - own].children.push_back(id);
    dynamic_by_name_.emplace(attribute.long_name, id);
    dynamic_by_name_.emplace(attribute.short_name, id);
    dynamic_.push_back(std::move(attribute));
    touch();
    return id;
}

NodeData* Node::data() const {
    return data_.get();
}

const Value* Node::stored_value(const PlugKey& key) const {
    if (key.depth == 0) {
        const bool set = key.attribute < value_at_.size() && value_at_[key.attribute] >= 0;
        return set ? &values_[value_at_[key.attribute]] : nullptr;
    }
    const auto at = elements_.find(key);
    return at == elements_.end() ? nullptr : &at->second;
}

void Node::store(const PlugKey& key, Value value) {
    if (key.depth > 0) {
        elements_[key] = std::move(value);
        return;
    }
    if (key.attribute >= value_at_.size()) value_at_.resize(key.attribute + 1, -1);
    std::int32_t& at = value_at_[key.attribute];
    if (at >= 0) {
        values_[at] = std::move(value);
    } else {
        at = static_cast<std::int32_t>(values_.size());
        values_.push_back(std::move(value));
    }
}

namespace {

// A triple where there are three, else a list of numbers; nothing when a child is no number.
Value gather(const Node& node, const PlugKey& key, const std::vector<AttributeId>& children) {
    Value::Doubles numbers;
    numbers.reserve(children.size());
    for (const AttributeId id : children) {
        if (node.attribute(id).kind == AttributeKind::compound || node.attribute(id).array) return {};
        const Value value = node.get(key.with_attribute(id));
        if (!value.is_number()) return {};
        numbers.push_back(value.number());
    }
    if (numbers.size() == 3) return Vector3{numbers[0], numbers[1], numbers[2]};
    return numbers;
}

// The value as an attribute of that kind keeps it; an empty value when it can't be one.
Value converted(AttributeKind kind, const Value& value) {
    switch (kind) {
    case AttributeKind::boolean:
        return value.is_number() ? Value(value.boolean()) : Value();
    case AttributeKind::integer:
    case AttributeKind::enumeration:
        return value.is_number() ? Value(value.integer()) : Value();
    case AttributeKind::number:
    case AttributeKind::distance:
    case AttributeKind::angle:
    case AttributeKind::time:
        return value.is_number() ? Value(value.number()) : Value();
    case AttributeKind::text:
        return value.get_if<std::string>() ? value : Value();
    case AttributeKind::matrix:
        break;
    case AttributeKind::compound:
    case AttributeKind::message:
        return {};
    case AttributeKind::untyped:
        return value;
    }
    if (value.get_if<Matrix>()) return value;
    const auto* numbers = value.get_if<Value::Doubles>();
    if (!numbers || numbers->size() != 16) return {};
    Matrix out;
    std::copy(numbers->begin(), numbers->end(), &out.m[0][0]);
    return out;
}

} // namespace

Value Node::get(const PlugKey& key) const {
    if (Value out; data_ && data_->get({const_cast<Node*>(this), key}, out)) return out;
    if (const Value* stored = stored_value(key)) return *stored;
    const Attribute& at = attribute(key.attribute);
    if (!at.children.empty() && key.depth == at.array_levels) return gather(*this, key, at.children);
    return at.default_value;
}

bool Node::set_children(const PlugKey& key, const Attribute& at, const Value& value) {
    Value::Doubles numbers;
    if (const auto* triple = value.get_if<Vector3>()) numbers = {triple->x, triple->y, triple->z};
    if (const auto* list = value.get_if<Value::Doubles>()) numbers = *list;
    if (numbers.empty() || numbers.size() != at.children.size()) return false;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (attribute(at.children[i]).array || attribute(at.children[i]).kind == AttributeKind::compound) return false;
    }
    bool good = true;
    for (std::size_t i = 0; i < numbers.size(); ++i) good &= set(key.with_attribute(at.children[i]), numbers[i]);
    return good;
}

bool Node::set(const PlugKey& key, const Value& value) {
    const Attribute& at = attribute(key.attribute);
    if (at.output) {
        if (this != &scene_.time_node() || !value.is_number()) return false;
        scene_.set_current_time(value.number());
        return true;
    }
    if (data_ && data_->set({this, key}, value)) {
        touch();
        return true;
    }
    if (data_ && data_->keeps_alone({this, key})) return false;
    if (key.depth < at.array_levels) return false;
    if (!at.children.empty()) return set_children(key, at, value);
    Value kept = converted(at.kind, value);
    if (kept.empty()) return false;
    store(key, std::move(kept));
    touch();
    return true;
}

AttributeFlags Node::flags(AttributeId id) const {
    const auto at = flags_.find(id);
    return at == flags_.end() ? AttributeFlags{} : at->second;
}

void Node::set_flags(AttributeId id, const AttributeFlags& flags) {
    flags_[id] = flags;
}

Plug Node::source_of(const PlugKey& destination) const {
    const auto at = inputs_.find(destination);
    return at == inputs_.end() ? Plug{} : at->second;
}

} // namespace headless
