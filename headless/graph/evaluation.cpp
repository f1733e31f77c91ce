#include "headless/graph/evaluation.h"

#include "headless/graph/scene.h"

#include <algorithm>

namespace headless {
namespace {

// Plain connections that one question follows; more can only be a ring.
constexpr int max_connection_hops = 4096;

// What is connected to the plug, or to the compound that holds it, at the same place within.
Plug source_feeding(const Plug& plug) {
    const Node& node = *plug.node;
    if (node.inputs().empty()) return {};
    if (const Plug direct = node.source_of(plug.key)) return direct;
    const Plug around = plug.parent();
    if (!around) return {};
    const Plug source = node.source_of(around.key);
    if (!source) return {};
    const auto& children = around.attribute().children;
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i] == plug.key.attribute) return source.child(static_cast<int>(i));
    }
    return {};
}

// One for the whole array of worldMatrix means its first element.
Plug first_of_output_array(const Plug& plug) {
    return plug.attribute().output && plug.is_array() ? plug.element(0) : plug;
}

} // namespace

double EvaluationContext::time() const {
    return scene_.current_time();
}

void EvaluationContext::report(const Plug& plug, std::string_view what) {
    scene_.report_evaluation_error(std::string(what) + " '" + plug.name() + "'");
}

template<typename Stops>
Plug EvaluationContext::follow(Plug plug, Stops stops) {
    const Plug start = plug;
    for (int hops = 0; hops < max_connection_hops; ++hops) {
        if (stops(plug)) return plug;
        const Plug source = source_feeding(plug);
        if (!source || scene_.is_overridden(plug)) return first_of_output_array(plug);
        plug = source;
    }
    report(start, "Cycle of connections at");
    return start;
}

Plug EvaluationContext::origin(Plug plug) {
    return follow(plug, [](const Plug&) { return false; });
}

Value EvaluationContext::evaluate(const Plug& plug) {
    const Plug from = follow(plug, [this](const Plug& at) { return is_turned(at); });
    if (is_turned(from)) return turned_value(from);
    if (const std::optional<Value> part = part_of_source(from)) return *part;
    const Attribute& attribute = from.attribute();
    if (attribute.output) return compute(from);
    const bool triple = attribute.children.size() == 3 && !from.is_array() && !from.node->inputs().empty();
    if (!triple) return from.node->get(from.key);
    Vector3 out;
    for (int i = 0; i < 3; ++i) {
        const Plug child = from.child(i);
        if (child.is_compound() || child.is_array()) return from.node->get(from.key);
        const Plug at = origin(child);
        out[i] = at.is_compound() ? 0.0 : at.attribute().output ? compute(at).number() : at.node->get(at.key).number();
    }
    return out;
}

// Of a child of a compound that a source without parts feeds as a whole, such as a conversion of a triple.
std::optional<Value> EvaluationContext::part_of_source(const Plug& plug) {
    if (plug.node->inputs().empty() || plug.attribute().parent == no_attribute) return {};
    const Plug around = plug.parent();
    const Plug whole = around ? plug.node->source_of(around.key) : Plug();
    if (!whole || whole.is_compound() || plug.node->source_of(plug.key) || scene_.is_overridden(plug)) return {};
    if (scene_.evaluation_depth_ >= max_evaluation_depth) {
        report(plug, "Evaluation goes too deep at");
        return {};
    }
    ++scene_.evaluation_depth_;
    const Value value = evaluate(whole);
    --scene_.evaluation_depth_;
    const auto& parts = around.attribute().children;
    const auto place = static_cast<int>(std::ranges::find(parts, plug.key.attribute) - parts.begin());
    return value.is_number() ? value : Value(value.vector()[std::min(place, 2)]);
}

Matrix EvaluationContext::matrix(const Plug& plug) {
    const Plug from = origin(plug);
    if (from.attribute().output && from.key.attribute == TransformAttributes::ids().world_matrix &&
        from.node->type().is_dag() && from.key.index[0] == 0)
        return world_matrix(*from.node);
    return evaluate(from).matrix();
}

Value EvaluationContext::builtin_output(const Plug& plug) {
    const TransformAttributes& ids = TransformAttributes::ids();
    Node& node = *plug.node;
    const AttributeId id = plug.key.attribute;
    if (id == ids.matrix) return local_matrix(node);
    if (id == ids.inverse_matrix) return inverse(local_matrix(node));
    // Only what is asked for: a constraint asks for the parent of the node it moves while that node is worked out.
    const bool of_world = id == ids.world_matrix || id == ids.world_inverse_matrix;
    const bool inverted = id == ids.world_inverse_matrix || id == ids.parent_inverse_matrix;
    Matrix out;
    if (const int instance = plug.key.index[0]; instance == 0) {
        out = of_world ? world_matrix(node) : parent_matrix(node);
    } else {
        const DagPath path = scene_.instance_path(node, instance);
        if (!path) return Matrix();
        out = of_world ? world_matrix(path) : parent_matrix(path);
    }
    return inverted ? inverse(out) : out;
}

Value EvaluationContext::by_rule(const OutputRule& rule, const Plug& plug) {
    Node& node = *plug.node;
    const auto& children = node.attribute(rule.output).children;
    if (plug.key.attribute != rule.output) {
        const auto component = static_cast<int>(std::ranges::find(children, plug.key.attribute) - children.begin());
        if (rule.by_component) return rule.value(*this, node, component);
        const Value whole = evaluate(plug.child(rule.output));
        const auto* many = whole.get_if<Value::Doubles>();
        return many ? (*many)[static_cast<std::size_t>(component)] : whole.vector()[component];
    }
    if (!rule.by_component || children.empty()) return rule.value(*this, node, -1);
    Value::Doubles out;
    for (int i = 0; i < static_cast<int>(children.size()); ++i) out.push_back(rule.value(*this, node, i).number());
    return out.size() == 3 ? Value(Vector3{out[0], out[1], out[2]}) : Value(std::move(out));
}

Value EvaluationContext::compute(const Plug& plug) {
    Node& node = *plug.node;
    if (&node == &scene_.time_node()) return time();
    if (node.type().is_dag() && plug.key.attribute <= TransformAttributes::ids().parent_inverse_matrix)
        return builtin_output(plug);
    const OutputRule* rule = node.type().rule_of(plug.key.attribute);
    if (!rule && !node.type().compute) return node.get(plug.key);

    std::size_t at = 0;
    while (at < node.cache_.size() && node.cache_[at].key != plug.key) ++at;
    if (at == node.cache_.size()) node.cache_.push_back({plug.key, 0, false, {}});
    if (node.cache_[at].generation == scene_.generation()) return node.cache_[at].value;
    if (node.cache_[at].computing || scene_.evaluation_depth_ >= max_evaluation_depth) {
        report(plug, node.cache_[at].computing ? "Cycle at" : "Evaluation goes too deep at");
        return node.get(plug.key);
    }
    node.cache_[at].computing = true;
    ++scene_.evaluation_depth_;
    const std::uint64_t generation = scene_.generation();
    Value value = rule ? by_rule(*rule, plug) : node.type().compute(*this, node, plug);
    --scene_.evaluation_depth_;
    // The function may have asked for further outputs of this node, and so moved the cache.
    Node::CachedOutput& entry = node.cache_[at];
    entry.computing = false;
    entry.generation = generation;
    entry.value = value;
    return value;
}

} // namespace headless
