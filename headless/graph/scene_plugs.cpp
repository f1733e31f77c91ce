// Values as scripts set them, and connections.
#include "headless/graph/scene.h"

#include <algorithm>
#include <limits>
#include <set>
#include <unordered_set>

namespace headless {
namespace {

bool locked_in_part(const Plug& plug) {
    if (plug.is_locked()) return true;
    const auto& children = plug.attribute().children;
    return std::ranges::any_of(children, [&](AttributeId id) { return plug.node->flags(id).locked; });
}

} // namespace

Result<void> Scene::check_settable(const Plug& plug) const {
    const auto refuse = [&plug] {
        return Error{"The attribute '" + plug.name() + "' is locked or connected and cannot be modified"};
    };
    if (locked_in_part(plug)) return refuse();
    if (plug.node->inputs().empty()) return {};
    const auto driven_by_other = [this](const Plug& at) {
        const Plug origin = EvaluationContext(const_cast<Scene&>(*this)).origin(at);
        return origin != at && !origin.node->type().derives_from("animCurve");
    };
    if (driven_by_other(plug)) return refuse();
    for (const AttributeId id : plug.attribute().children) {
        if (!plug.is_array() && driven_by_other(plug.child(id))) return refuse();
    }
    return {};
}

Result<void> Scene::set(const Plug& plug, const Value& value) {
    if (Result<void> allowed = check_settable(plug); !allowed) return allowed;
    if (!plug.node->set(plug.key, value)) return Error{"The attribute '" + plug.name() + "' doesn't take that value"};
    modified = true;
    if (!plug.node->inputs().empty()) hold_until_clock_moves(plug);
    return {};
}

void Scene::hold_until_clock_moves(const Plug& plug) {
    auto& held = plug.node->overrides_;
    std::erase_if(held, [this](const auto& entry) { return entry.second != clock_moves_; });
    const auto hold = [&](const Plug& at) {
        if (!is_overridden(at)) held.emplace_back(at.key, clock_moves_);
    };
    hold(plug);
    if (plug.is_array()) return;
    for (const AttributeId id : plug.attribute().children) hold(plug.child(id));
}

bool Scene::is_overridden(const Plug& plug) const {
    return std::ranges::any_of(plug.node->overrides_, [&](const auto& entry) {
        return entry.second == clock_moves_ && entry.first == plug.key;
    });
}

Result<void> Scene::connect(const Plug& source, const Plug& wanted, bool force) {
    Plug destination = wanted;
    if (wanted.is_array()) {
        const int free = wanted.node->next_free_index(wanted.key);
        destination = wanted.element(free);
        if (source == destination && free < std::numeric_limits<int>::max()) destination = wanted.element(free + 1);
    }
    if (source == destination) return Error{"'" + source.name() + "' can't feed itself"};
    if (destination.attribute().output) return Error{"'" + destination.name() + "' can't be a destination"};
    if (destination.node->source_of(destination.key) == source) return {};
    if (destination.node->source_of(destination.key)) {
        if (!force) return Error{"The attribute '" + destination.name() + "' already has an incoming connection"};
        disconnect(destination);
    }
    destination.node->inputs_[destination.key] = source;
    source.node->outputs_.emplace(source.key, destination);
    destination.node->touch();
    modified = true;
    return {};
}

bool Scene::disconnect(const Plug& destination) {
    Node& node = *destination.node;
    const auto at = node.inputs_.find(destination.key);
    if (at == node.inputs_.end()) return false;
    auto& outputs = at->second.node->outputs_;
    const auto [first, last] = outputs.equal_range(at->second.key);
    const auto same = std::find_if(first, last, [&](const auto& entry) { return entry.second == destination; });
    if (same != last) outputs.erase(same);
    node.inputs_.erase(at);
    node.touch();
    modified = true;
    return true;
}

namespace {

bool is_transformation(const Plug& plug) {
    const TransformAttributes& ids = TransformAttributes::ids();
    if (!plug.node->type().is_transform() || plug.node->type().derives_from("constraint")) return false;
    return plug.key.attribute >= ids.translate && plug.key.attribute <= ids.inherits_transform;
}

bool solves_for_joints(const Node& node) {
    return node.type().derives_from("ikHandle") && node.source_of(node.find_plug("startJoint").key);
}

// Whether a connection to `destination` reaches a stored value at `key`: it ends there, around it or within it.
bool reaches(const Node& node, const PlugKey& destination, const PlugKey& key) {
    if (destination.index != key.index) return false;
    return destination.attribute == key.attribute || node.attribute(destination.attribute).parent == key.attribute ||
           node.attribute(key.attribute).parent == destination.attribute;
}

// Walks from plugs that move transforms back to all that they follow from.
class DriverSearch {
public:
    void look_at(const Plug& source) {
        const NodeType& type = source.node->type();
        if (type.unevaluated_driver || !type.known()) drivers_.insert(source.node);
        if (needs_all_inputs(source) ? seen_nodes_.insert(source.node).second : seen_plugs_.insert(source).second)
            open_.push_back(source);
    }

    void add(const Node& driver) { drivers_.insert(&driver); }

    void run() {
        while (!open_.empty()) {
            const Plug plug = open_.back();
            open_.pop_back();
            const Node& node = *plug.node;
            const bool all = needs_all_inputs(plug);
            // What a transform's own matrices follow from is looked at for every transform.
            if (all && node.type().is_transform() && !node.type().derives_from("constraint")) continue;
            for (const auto& [destination, source] : node.inputs()) {
                if (all || reaches(node, destination, plug.key)) look_at(source);
            }
        }
    }

    bool found(const Node& node) const { return drivers_.contains(&node); }

private:
    // A value that is merely stored follows from what is connected to it; how one of an unknown node comes about
    // nobody knows.
    static bool needs_all_inputs(const Plug& plug) {
        const NodeType& type = plug.node->type();
        return plug.attribute().output || type.unevaluated_driver || !type.known();
    }

    struct Order {
        bool operator()(const Plug& a, const Plug& b) const {
            return a.node != b.node ? std::less<>()(a.node, b.node) : a.key < b.key;
        }
    };

    std::unordered_set<const Node*> drivers_, seen_nodes_;
    std::set<Plug, Order> seen_plugs_;
    std::vector<Plug> open_;
};

} // namespace

std::vector<Node*> Scene::unevaluated_drivers() const {
    DriverSearch search;
    for (const Node* node : nodes()) {
        if (solves_for_joints(*node)) search.add(*node);
        for (const auto& [destination, source] : node->inputs()) {
            if (is_transformation({const_cast<Node*>(node), destination})) search.look_at(source);
        }
    }
    search.run();
    std::vector<Node*> out;
    for (Node* node : nodes()) {
        if (search.found(*node)) out.push_back(node);
    }
    return out;
}

} // namespace headless
