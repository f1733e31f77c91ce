#pragma once

#include "headless/graph/plug.h"
#include "headless/graph/result.h"

#include <map>
#include <memory>
#include <optional>

namespace headless {

class Scene;
struct TransformState;

/// Names a node across edits: resolves to null once the node is gone, also after the scene was replaced.
struct NodeHandle {
    std::uint32_t slot = 0;
    std::uint32_t serial = 0; ///< 0 for no node; never used twice in a process

    bool operator==(const NodeHandle&) const = default;
    explicit operator bool() const { return serial != 0; }
};

/// How an attribute of one node is marked; matters to writers and to `Scene::set`.
struct AttributeFlags {
    bool locked = false;
    std::optional<bool> keyable, channel_box;
};

/// A node: its type, its values where they differ from the defaults, its connections and, for a DAG node, its
/// parents and children. Structure (name, connections, parents) is changed through the scene alone.
class Node {
public:
    Node(Scene& scene, const NodeType& type, NodeHandle handle);
    ~Node();
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    Scene& scene() const { return scene_; }
    const NodeType& type() const { return *type_; }
    NodeHandle handle() const { return handle_; }
    const std::string& name() const { return name_; } ///< with namespaces, without a path
    std::string_view short_name() const;              ///< without namespaces
    bool default_node() const { return default_; }    ///< one that every new scene has
    bool is_world() const { return parents_.empty() && type_->api_type() == MFn::kWorld; }
    std::string uuid; ///< as a file gave it; empty otherwise

    // Attributes.
    AttributeId attribute_count() const;
    const Attribute& attribute(AttributeId id) const;
    /// By long or short name, the node's dynamic ones included; `no_attribute` when there is none.
    AttributeId find_attribute(std::string_view name) const;
    /// Adds a dynamic attribute; refused when a name is taken or none that an attribute may have, the parent is
    /// no dynamic compound, or the arrays nest too deep.
    Result<AttributeId> add_attribute(Attribute attribute);
    /// A plug by path (".t", ".translateX", ".target[0].targetWeight", ".wm[0]"); null when there is none.
    /// An array element that the path leaves out on the way is element 0.
    Plug find_plug(std::string_view path) const;
    /// The same, adding what the node lacks as untyped dynamic attributes; one of these that is then named with an
    /// index turns into an array, in which what it had is of element 0. Null for a malformed path, and for one that
    /// hangs a new name into what was declared or a name that the node has elsewhere into another attribute.
    Plug find_or_add_plug(std::string_view path);
    Plug plug(AttributeId id) { return {this, PlugKey{id, 0, {}}}; }

    // Stored values; no connection is followed. See Scene for values as evaluated.
    /// What is stored, or else the default. A compound of numbers gives a triple (or a list, when not of three).
    Value get(const PlugKey& key) const;
    /// Stores a value, converted to the attribute's kind; a triple set on a compound goes to its children.
    /// False when the value can't be one of that attribute's.
    bool set(const PlugKey& key, const Value& value);
    /// Back to the default; of an array or an element, everything within.
    void reset(const PlugKey& key);
    /// The plugs with a stored value of their own, in order of attribute and index.
    std::vector<PlugKey> stored() const;
    /// Which elements of an array have a value or a connection, ascending.
    std::vector<int> existing_indices(const PlugKey& array) const;
    int next_free_index(const PlugKey& array) const; ///< one past the last existing

    AttributeFlags flags(AttributeId id) const;
    void set_flags(AttributeId id, const AttributeFlags& flags);

    /// What the node's type keeps in a form of its own; null when it keeps nothing so.
    NodeData* data() const;
    /// Rises with each change of a value, a connection or an attribute of this node.
    std::uint64_t edit_count() const { return edits_; }
    /// To be called by node data that changes by another road than `set`.
    void touch();

    // Connections.
    const std::map<PlugKey, Plug>& inputs() const { return inputs_; } ///< by destination plug of this node
    const std::multimap<PlugKey, Plug>& outputs() const { return outputs_; }
    /// The source connected to exactly that plug; null when there is none.
    Plug source_of(const PlugKey& destination) const;

    // The DAG.
    const std::vector<Node*>& parents() const { return parents_; }
    const std::vector<Node*>& children() const { return children_; }
    Node* parent() const { return parents_.empty() ? nullptr : parents_.front(); }

private:
    friend class Scene;
    friend class EvaluationContext;
    struct CachedOutput {
        PlugKey key;
        std::uint64_t generation = 0;
        bool computing = false;
        Value value;
    };

    AttributeId add_raw_attribute(std::string_view name, AttributeId parent, bool array);
    AttributeId make_raw_array(AttributeId id);
    std::vector<std::pair<PlugKey, Value>> stored_values_of(AttributeId id) const;
    std::vector<std::pair<Plug, Plug>> links_of(AttributeId id); ///< source and destination
    AttributeId find_child_attribute(std::string_view name, AttributeId parent) const;
    Plug follow(const std::vector<PathSegment>& segments) const;
    std::vector<AttributeId> with_descendants(AttributeId id) const;
    bool set_children(const PlugKey& key, const Attribute& at, const Value& value);
    const Value* stored_value(const PlugKey& key) const;
    void store(const PlugKey& key, Value value);
    bool covers(const PlugKey& outer, const PlugKey& inner) const;

    Scene& scene_;
    const NodeType* type_;
    NodeHandle handle_;
    std::string name_;
    bool default_ = false;
    std::uint64_t edits_ = 1;

    std::vector<Attribute> dynamic_;
    NameMap<AttributeId> dynamic_by_name_;
    std::vector<std::int32_t> value_at_; // by attribute id, where its value stands in `values_`; -1 for nowhere
    std::vector<Value> values_;
    std::map<PlugKey, Value> elements_;
    std::map<AttributeId, AttributeFlags> flags_;
    std::unique_ptr<NodeData> data_;

    std::map<PlugKey, Plug> inputs_;
    std::multimap<PlugKey, Plug> outputs_;
    std::vector<Node*> parents_, children_;

    std::vector<CachedOutput> cache_;
    std::unique_ptr<TransformState> transform_;
    // Values set on plugs that a curve drives: they hold until the clock next moves.
    std::vector<std::pair<PlugKey, std::uint64_t>> overrides_;
};

} // namespace headless
