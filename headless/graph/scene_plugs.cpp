// Values as scripts set them, and connections.
#include "headless/graph/scene.h"

#include <algorithm>
#include <unordered_set>

namespace headless {
namespace {

bool locked(const Plug& plug) {
    for (Plug at = plug; at; at = at.parent()) {
        if (at.node->flags(at.key.attribute).locked) return true;
    }
    const auto& children = plug.attribute().children;
    return std::ranges::any_of(children, [&](AttributeId id) { return plug.node->flags(id).locked; });
}

} // namespace

Result<void> Scene::check_settable(const Plug& plug) const {
    const auto refuse = [&plug] {
        return Error{"The attribute '" + plug.name() + "' is locked or connected and cannot be modified"};
    };
    if (locked(plug)) return refuse();
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
    if (destination.is_array()) destination = destination.element(destination.node->next_free_index(destination.key));
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

} // namespace

std::vector<Node*> Scene::unevaluated_drivers() const {
    std::unordered_set<const Node*> drivers, seen;
    std::vector<const Node*> open;
    const auto look_at = [&](const Node& source) {
        const NodeType& type = source.type();
        if (type.unevaluated_driver || !type.known()) drivers.insert(&source);
        const bool passes_on = !type.is_transform() || type.derives_from("constraint");
        if (passes_on && seen.insert(&source).second) open.push_back(&source);
    };
    for (const Node* node : nodes()) {
        if (solves_for_joints(*node)) drivers.insert(node);
        for (const auto& [destination, source] : node->inputs()) {
            if (is_transformation({const_cast<Node*>(node), destination})) look_at(*source.node);
        }
    }
    while (!open.empty()) {
        const Node* node = open.back();
        open.pop_back();
        for (const auto& [destination, source] : node->inputs()) look_at(*source.node);
    }
    std::vector<Node*> out;
    for (Node* node : nodes()) {
        if (drivers.contains(node)) out.push_back(node);
    }
    return out;
}

} // namespace headless
