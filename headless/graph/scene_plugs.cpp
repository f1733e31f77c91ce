// Values as scripts set them, and connections.
#include "headless/graph/scene.h"

#include <algorithm>

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
        if (source == destination && free < last_index) destination = wanted.element(free + 1);
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

} // namespace headless
