#pragma once

#include "headless/graph/name_map.h"
#include "headless/graph/value.h"

#include <maya/MFn.h>

#include <deque>
#include <functional>

namespace headless {

class EvaluationContext;
class Node;
struct JointTurner;
struct Plug;

/// What values an attribute takes, and so in which units a file or a script states them.
enum class AttributeKind : std::uint8_t {
    untyped, ///< any value is kept as it comes
    boolean,
    integer,
    enumeration,
    number,
    distance, ///< centimetres inside
    angle,    ///< radians inside
    time,     ///< seconds inside
    text,
    matrix,
    compound, ///< its children hold the values
    message,  ///< holds nothing; only connected
};

/// The place of an attribute in its node's list: the type's own come first, then the node's dynamic ones.
using AttributeId = std::uint32_t;
inline constexpr AttributeId no_attribute = ~AttributeId{0};
/// Arrays within arrays that a plug can address.
inline constexpr int max_array_levels = 4;

struct Attribute {
    std::string long_name;
    std::string short_name;
    AttributeKind kind = AttributeKind::untyped;
    bool array = false;
    bool output = false; ///< worked out by the node, never stored
    bool dynamic = false;
    bool raw = false;              ///< made because a file or a script set it, not because anything declared it
    std::uint8_t array_levels = 0; ///< arrays on the way to it, itself included
    AttributeId parent = no_attribute;
    std::vector<AttributeId> children; ///< of a compound, in order
    Value default_value;
    std::string data_type;               ///< of a dynamic attribute: the type word of `addAttr` ("double", "string")
    std::vector<std::string> enum_names; ///< of an enumeration, where known
};

/// The type word of an attribute as scripts and files have it: what it was declared with, else by its kind.
std::string_view type_word(const Attribute& attribute);

/// Works out an output plug of a node at the context's time. Ask for inputs through the context.
using Compute = Value (*)(EvaluationContext& context, Node& node, const Plug& plug);

/// Values of a node kept in a form of their own instead of one by one: a curve's keys, a mesh's points.
/// A node of a type with such data asks it first, and stores the plug itself only when it declines.
class NodeData {
public:
    virtual ~NodeData() = default;
    /// Takes a value; false when the plug isn't one of this data's.
    virtual bool set(const Plug& plug, const Value& value) = 0;
    /// Whether the plug is this data's alone, so that a value which `set` declines is refused and not stored elsewhere.
    virtual bool keeps_alone(const Plug&) const { return false; }
    /// Gives a value into `out`; false when the plug isn't one of this data's.
    virtual bool get(const Plug& plug, Value& out) const = 0;
    /// The indices that an array plug of this data has, ascending; false when it isn't one of this data's.
    virtual bool indices(const Plug& array, std::vector<int>& out) const = 0;
};
using MakeNodeData = std::unique_ptr<NodeData> (*)(Node& node);

/// What one output of a kind of node is, told beside its attributes: the inputs it follows from, and the formula.
struct OutputRule {
    AttributeId output = no_attribute;
    std::vector<AttributeId> inputs;
    /// Each child of a compound output follows from the same children of its inputs, so each is worked out by itself.
    bool by_component = false;
    /// The output's value; with a component that of one child.
    std::function<Value(EvaluationContext& context, Node& node, int component)> value;
};

/// Why a node isn't evaluated though its kind is; empty where it is.
using Shortfall = std::string (*)(const Node& node);

/// A kind of node: its name, its place in the tree of kinds, and the attributes that every such node has.
/// A derived type's attributes begin with its base's, under the same ids.
class NodeType {
public:
    NodeType(std::string name, const NodeType* base, MFn::Type api_type);

    const std::string& name() const { return name_; }
    const NodeType* base() const { return base_; }
    MFn::Type api_type() const { return api_type_; }
    bool known() const { return api_type_ != MFn::kUnknown; }
    bool has_fn(MFn::Type type) const;
    bool derives_from(std::string_view type_name) const;
    bool is_dag() const { return is_dag_; }
    bool is_transform() const { return is_transform_; }
    bool is_joint() const { return is_joint_; }
    bool is_shape() const { return is_shape_; }

    const std::vector<Attribute>& attributes() const { return attributes_; }
    /// By long or short name; `no_attribute` when there is none.
    AttributeId find(std::string_view name) const;

    Compute compute = nullptr;           ///< inherited from the base at construction, replaced by registration
    MakeNodeData make_data = nullptr;    ///< likewise
    Shortfall shortfall = nullptr;       ///< likewise
    const JointTurner* turner = nullptr; ///< likewise; null for a kind that turns no joints

    /// The rule of an output or of a child of one; null when it has none.
    const OutputRule* rule_of(AttributeId id) const;
    /// Whether what that output gives is worked out.
    bool evaluates(AttributeId output) const { return compute || rule_of(output); }

    // Building the table of types.
    AttributeId add(std::string_view long_name, std::string_view short_name, AttributeKind kind, Value value = {},
                    AttributeId parent = no_attribute);
    /// A compound of three with the suffixes X, Y, Z (x, y, z in short), each `value` unless said otherwise.
    AttributeId add_vector(std::string_view long_name, std::string_view short_name, AttributeKind kind,
                           double value = 0.0, AttributeId parent = no_attribute);
    void make_array(AttributeId id);
    void make_output(AttributeId id);
    void add_rule(OutputRule rule);

private:
    std::string name_;
    const NodeType* base_;
    MFn::Type api_type_;
    bool is_dag_ = false, is_transform_ = false, is_joint_ = false, is_shape_ = false;
    std::vector<Attribute> attributes_;
    NameMap<AttributeId> by_name_;
    std::vector<OutputRule> rules_;
    std::vector<std::int16_t> rule_at_; // by attribute id; -1 and beyond the end for none
};

/// All types of nodes of the process. Types are never removed, so a pointer to one stays good.
class NodeTypes {
public:
    /// The table with the standard types in it.
    static NodeTypes& all();

    const NodeType* find(std::string_view name) const;
    /// The type of that name, made as an unknown one (no attributes but those set on its nodes) if need be.
    NodeType& find_or_add_unknown(std::string_view name, bool dag = false);
    NodeType& add(std::string_view name, std::string_view base, MFn::Type api_type);

private:
    std::deque<NodeType> types_;
    NameMap<NodeType*> by_name_;
};

} // namespace headless
