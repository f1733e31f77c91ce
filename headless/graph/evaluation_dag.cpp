// Local and world matrices: the road that an export walks for each node at each sample.
#include "headless/graph/evaluation.h"
#include "headless/graph/scene.h"
#include "headless/graph/transform_state.h"

#include <algorithm>
#include <array>

namespace headless {
namespace {

// Driven values by number: three for each triple in this order, then the single ones.
constexpr std::array<Vector3 TransformValues::*, 11> triples = {
    &TransformValues::translate,    &TransformValues::rotate,
    &TransformValues::scale,        &TransformValues::shear,
    &TransformValues::rotate_pivot, &TransformValues::rotate_pivot_translate,
    &TransformValues::scale_pivot,  &TransformValues::scale_pivot_translate,
    &TransformValues::rotate_axis,  &TransformValues::joint_orient,
    &TransformValues::parent_scale};
constexpr std::uint8_t scale_field = 6, parent_scale_field = 30, order_field = 33, compensate_field = 34,
                       inherits_field = 35;

std::array<AttributeId, 11> triple_ids() {
    const TransformAttributes& ids = TransformAttributes::ids();
    return {ids.translate,    ids.rotate,
            ids.scale,        ids.shear,
            ids.rotate_pivot, ids.rotate_pivot_translate,
            ids.scale_pivot,  ids.scale_pivot_translate,
            ids.rotate_axis,  ids.joint_orient,
            ids.inverse_scale};
}

template<typename T>
void replace(T& held, const T& value, bool& local_valid) {
    if (held == value) return;
    held = value;
    local_valid = false;
}

void set_field(TransformState& state, std::uint8_t field, double value) {
    TransformValues& values = state.values;
    if (field < order_field) {
        replace((values.*triples[field / 3])[field % 3], value, state.local_valid);
    } else if (field == order_field) {
        replace(values.order, rotate_order(Value(value).integer()), state.local_valid);
    } else if (field == compensate_field) {
        replace(values.compensate_scale, value != 0.0, state.local_valid);
    } else {
        state.inherits = value != 0.0;
    }
}

class StateReader {
public:
    StateReader(Node& node, TransformState& state) : node_(node), state_(state) {}

    void read() {
        const TransformAttributes& ids = TransformAttributes::ids();
        const bool joint = node_.type().is_joint();
        state_.stored = {};
        state_.stored.joint = joint;
        state_.inputs.clear();
        state_.scale_of_parent = false;
        static const auto by_field = triple_ids();
        const int count = joint ? 11 : 9;
        for (int i = 0; i < count; ++i) read_triple(by_field[i], i);
        state_.stored.order = rotate_order(node_.get({ids.rotate_order, 0, {}}).integer());
        add_input(ids.rotate_order, order_field);
        state_.limits = limits_of(node_);
        state_.stored_inherits = node_.get({ids.inherits_transform, 0, {}}).boolean();
        add_input(ids.inherits_transform, inherits_field);
        if (!joint) return;
        state_.stored.compensate_scale = node_.get({ids.segment_scale_compensate, 0, {}}).boolean();
        add_input(ids.segment_scale_compensate, compensate_field);
        decide_parent_scale();
    }

private:
    void read_triple(AttributeId id, int which) {
        const auto& children = node_.attribute(id).children;
        for (int i = 0; i < 3; ++i) {
            (state_.stored.*triples[which])[i] = node_.get({children[i], 0, {}}).number();
            add_input(children[i], static_cast<std::uint8_t>(which * 3 + i));
        }
    }

    void add_input(AttributeId id, std::uint8_t field) {
        if (node_.inputs().empty()) return;
        const Plug plug = node_.plug(id);
        Plug source = node_.source_of(plug.key);
        if (const Plug around = plug.parent(); !source && around) {
            const Plug whole = node_.source_of(around.key);
            const Plug part = whole ? whole.child(field % 3) : Plug();
            source = part ? part : whole;
        }
        if (source) state_.inputs.push_back({field, source, plug.key});
    }

    // The scale that compensation takes out comes through a connection, as a rule from the parent's own scale;
    // a joint that stands under a joint without one is meant the same way.
    void decide_parent_scale() {
        const TransformAttributes& ids = TransformAttributes::ids();
        const Node* parent = node_.parent();
        const bool under_joint = parent && parent->type().is_joint();
        const auto is_scale = [](const TransformState::Input& in) {
            return in.field >= parent_scale_field && in.field < order_field;
        };
        const Plug whole = node_.source_of({ids.inverse_scale, 0, {}});
        const bool driven = std::ranges::any_of(state_.inputs, is_scale);
        const bool by_parent = under_joint && (!driven || (whole.node == parent && whole.key.attribute == ids.scale));
        if (by_parent) std::erase_if(state_.inputs, is_scale);
        if (!driven) state_.stored.parent_scale = {1, 1, 1};
        state_.scale_of_parent = by_parent;
    }

    Node& node_;
    TransformState& state_;
};

} // namespace

TransformState& EvaluationContext::state_of(Node& node) {
    if (scene_.turners_assigned_ != scene_.turner_edits_) assign_turners();
    if (!node.transform_) node.transform_ = std::make_unique<TransformState>();
    TransformState& state = *node.transform_;
    if (state.edits != node.edit_count()) {
        state.edits = node.edit_count();
        if (node.type().is_transform()) StateReader(node, state).read();
        state.values = state.stored;
        state.inherits = state.stored_inherits;
        state.inputs_generation = state.values_generation = state.world_generation = 0;
        state.local_valid = false;
    }
    return state;
}

double EvaluationContext::driven_value(Node& node, const Plug& source, const PlugKey& destination, int part) {
    const bool held = !node.overrides_.empty() && scene_.is_overridden({&node, destination});
    if (held) return node.get(destination).number();
    const Value value = evaluate(source);
    const auto* triple = value.get_if<Vector3>();
    return triple ? (*triple)[part] : value.number();
}

// Only the scale is asked for: working out all of the parent's values would climb a long chain of joints one
// level of recursion a joint.
Vector3 EvaluationContext::scale_of(Node& parent) {
    const TransformState& state = state_of(parent);
    const bool settled = state.inputs.empty() && state.limits.empty();
    if (settled || state.values_generation == scene_.generation()) return state.values.scale;
    Vector3 out = state.stored.scale;
    for (const TransformState::Input& input : state.inputs) {
        if (input.field >= scale_field && input.field < scale_field + 3)
            out[input.field - scale_field] = driven_value(parent, input.source, input.destination, input.field % 3);
    }
    for (const TransformLimit& limit : state.limits) {
        if (limit.field >= scale_field)
            out[limit.field - scale_field] = limited(*this, limit, out[limit.field - scale_field]);
    }
    return out;
}

// All but what turns a joint, and the limits.
bool EvaluationContext::refresh_inputs(Node& node, TransformState& state) {
    if (state.inputs_generation == scene_.generation()) return true;
    if (state.busy || scene_.evaluation_depth_ >= max_evaluation_depth) {
        report(node.plug(TransformAttributes::ids().matrix), state.busy ? "Cycle at" : "Evaluation goes too deep at");
        return false;
    }
    const std::uint64_t generation = scene_.generation();
    // What a limit or a turner made of a stored value is no longer what it begins with.
    for (const TransformLimit& limit : state.limits)
        set_field(state, limit.field, (state.stored.*triples[limit.field / 3])[limit.field % 3]);
    if (!state.turned_by.empty()) {
        state.values.rotate = state.stored.rotate;
        state.local_valid = false;
    }
    if (!state.inputs.empty()) {
        state.busy = true;
        ++scene_.evaluation_depth_;
        for (const TransformState::Input& input : state.inputs)
            set_field(state, input.field, driven_value(node, input.source, input.destination, input.field % 3));
        --scene_.evaluation_depth_;
        state.busy = false;
    }
    if (state.scale_of_parent) replace(state.values.parent_scale, scale_of(*node.parent()), state.local_valid);
    state.unturned = state.values.rotate;
    state.inputs_generation = generation;
    return true;
}

void EvaluationContext::refresh_values(Node& node, TransformState& state) {
    if (state.values_generation == scene_.generation() || !refresh_inputs(node, state)) return;
    if (!state.turned_by.empty() && !turn(node, state)) return;
    if (!state.limits.empty()) hold_to_limits(state);
    state.values_generation = scene_.generation();
}

void EvaluationContext::hold_to_limits(TransformState& state) {
    for (const TransformLimit& limit : state.limits) {
        const double value = (state.values.*triples[limit.field / 3])[limit.field % 3];
        set_field(state, limit.field, limited(*this, limit, value));
    }
}

const TransformValues& EvaluationContext::current_values(Node& transform) {
    TransformState& state = state_of(transform);
    refresh_values(transform, state);
    return state.values;
}

const Matrix& EvaluationContext::local_matrix(Node& node) {
    static const Matrix identity;
    if (!node.type().is_transform()) return identity;
    TransformState& state = state_of(node);
    refresh_values(node, state);
    if (!state.local_valid) {
        state.local = headless::local_matrix(state.values);
        state.local_valid = true;
    }
    return state.local;
}

const Matrix& EvaluationContext::world_matrix(Node& node) {
    static const Matrix identity;
    // The nodes whose world matrices are stale, up to one that is known or to the top. A list in place spares
    // an allocation; hierarchies are seldom as deep.
    std::array<Node*, 64> few;
    std::vector<Node*> many;
    std::size_t count = 0;
    const Matrix* above = &identity;
    for (Node* at = &node; at && !at->is_world(); at = at->parent()) {
        const TransformState& state = state_of(*at);
        if (state.world_generation == scene_.generation()) {
            above = &state.world;
            break;
        }
        if (count >= few.size())
            many.push_back(at);
        else
            few[count] = at;
        ++count;
    }
    while (count > 0) {
        --count;
        Node& at = count >= few.size() ? *many[count - few.size()] : *few[count];
        const Matrix& local = local_matrix(at);
        TransformState& state = *at.transform_;
        state.world = state.inherits ? local * *above : local;
        state.world_generation = scene_.generation();
        above = &state.world;
    }
    return *above;
}

Matrix EvaluationContext::world_matrix(const DagPath& path) {
    if (!path.is_explicit()) {
        Node* leaf = scene_.find(path.leaf());
        return leaf ? world_matrix(*leaf) : Matrix();
    }
    Matrix out;
    for (Node* node : scene_.nodes_on(path)) {
        const Matrix& local = local_matrix(*node);
        out = inherits(*node) ? local * out : local;
    }
    return out;
}

bool EvaluationContext::inherits(Node& node) {
    if (!node.type().is_transform()) return true;
    TransformState& state = state_of(node);
    // The other values stay out of it unless this one is driven: they may wait for the answer.
    const auto drives_it = [](const TransformState::Input& input) { return input.field == inherits_field; };
    if (std::ranges::none_of(state.inputs, drives_it)) return state.stored_inherits;
    refresh_inputs(node, state);
    return state.inherits;
}

Matrix EvaluationContext::parent_matrix(Node& node) {
    Node* parent = node.parent();
    return parent && inherits(node) ? world_matrix(*parent) : Matrix();
}

Matrix EvaluationContext::parent_matrix(const DagPath& path) {
    Node* leaf = scene_.find(path.leaf());
    if (!leaf || !path.is_explicit()) return leaf ? parent_matrix(*leaf) : Matrix();
    if (!inherits(*leaf)) return {};
    std::vector<NodeHandle> above(path.way().begin(), path.way().end() - 1);
    return above.empty() ? Matrix() : world_matrix(DagPath(std::move(above)));
}

} // namespace headless
