// Point, pole vector, orient, parent, aim and scale constraints. Other kinds aren't evaluated.
//
// Row vectors, leftmost acts first. For each target i (an element of `target`, `tg` in short):
// - its pivot in the world: (tt + trp + trt) through tpm;
// - its orientation in the world: the rotation part of R(tr by tro) JO(tjo) IS tpm, where IS is the inverse of
//   `targetInverseScale` when `targetScaleCompensate` is on.
// Inputs that nothing is connected to count as stored. A weight that isn't positive and finite counts as 0.
//
// - pointConstraint: the weighted mean of the pivots, plus `offset` along the world's axes (minus, where
//   `constraintOffsetPolarity` is on), brought into the parent's space through cpim, less crp and crt.
// - poleVectorConstraint: the same mean, seen from crp + crt through `pivotSpace`, as a direction in the space of cpim.
// - orientConstraint: the mean of the orientations as `interpType` says (see `RotationBlend`), with `offset` (by cro)
//   acting before it, brought into the parent's space; then freed of the joint orient cjo and told by cro.
// - parentConstraint: both, where a target's orientation has its `targetOffsetRotate` (always xyz) acting before it,
// and
//   its point is `targetOffsetTranslate` in the space around its pivot: S(ts) R JO IS.
// - aimConstraint: turns `aimVector` from the constrained node's pivot toward the mean of the targets' pivots, and
//   `upVector` as near as can be to the world's y (`worldUpType` 0), the place of `worldUpMatrix` (1), its turn of
//   `worldUpVector` (2), or `worldUpVector` (3); with 4 by the shortest turn. Then `offset`, cjo and cro as for the
//   orientConstraint. With no direction to aim in, `aimVector` keeps its own in the world.
// - scaleConstraint: the weighted mean of the targets' world scales (the lengths of the rows of S(ts) tpm), times
//   `offset`, over the scale of the parent. An axis on which the parent has no scale is left as in the world.
//
// When no weight counts (or their sum is beyond numbers): the rest position (`restTranslate`, `restRotate`,
// `restScale`) if `enableRestPosition` is on; else the value stored in the attribute that the output drives, as if the
// constraint weren't there.
#include "headless/animation/aim.h"
#include "headless/animation/rotation_blend.h"
#include "headless/graph/scene.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <array>
#include <cmath>

namespace headless {
namespace {

// What one kind of constraint has of the attributes; `no_attribute` for those it lacks.
struct ConstraintAttributes {
    AttributeId target, weight, parent_matrix;
    AttributeId translate, pivot, pivot_translate;
    AttributeId rotate, rotate_order, joint_orient;
    AttributeId scale, scale_compensate, inverse_scale, offset_translate, offset_rotate;
    AttributeId parent_inverse, rest_enabled, offset, offset_polarity;
    AttributeId own_pivot, own_pivot_translate, pivot_space, own_rotate_order, own_joint_orient, blend;
    AttributeId aim, up, world_up, world_up_matrix, world_up_type, own_translate;
    AttributeId rest_translate, rest_rotate, rest_scale, out_translate, out_rotate, out_scale;

    explicit ConstraintAttributes(const NodeType& type)
        : target(type.find("tg")), weight(type.find("tw")), parent_matrix(type.find("tpm")), translate(type.find("tt")),
          pivot(type.find("trp")), pivot_translate(type.find("trt")), rotate(type.find("tr")),
          rotate_order(type.find("tro")), joint_orient(type.find("tjo")), scale(type.find("ts")),
          scale_compensate(type.find("tsc")), inverse_scale(type.find("tis")), offset_translate(type.find("tot")),
          offset_rotate(type.find("tor")), parent_inverse(type.find("cpim")), rest_enabled(type.find("erp")),
          offset(type.find("offset")), offset_polarity(type.find("cop")), own_pivot(type.find("crp")),
          own_pivot_translate(type.find("crt")), pivot_space(type.find("ps")), own_rotate_order(type.find("cro")),
          own_joint_orient(type.find("cjo")), blend(type.find("int")), aim(type.find("a")), up(type.find("u")),
          world_up(type.find("wu")), world_up_matrix(type.find("wum")), world_up_type(type.find("wut")),
          own_translate(type.find("ct")), rest_translate(type.find("rst")), rest_rotate(type.find("rsrr")),
          rest_scale(type.find("rs")), out_translate(output(type, "ct")), out_rotate(output(type, "cr")),
          out_scale(output(type, "cs")) {}

private:
    // An aim has its node's translation as an input.
    static AttributeId output(const NodeType& type, const char* name) {
        const AttributeId id = type.find(name);
        return id != no_attribute && type.attributes()[id].output ? id : no_attribute;
    }
};

// The pose is worked out once for the six numbers that are asked for one by one.
class ConstraintData final : public NodeData {
public:
    explicit ConstraintData(const NodeType& type) : ids(type) {}
    bool set(const Plug&, const Value&) override { return false; }
    bool get(const Plug&, Value&) const override { return false; }
    bool indices(const Plug&, std::vector<int>&) const override { return false; }

    const ConstraintAttributes ids;
    std::uint64_t edits = 0, generation = 0;
    std::vector<int> targets;
    bool rests = false; ///< no weight counts
    Vector3 translate, rotate, scale;
};

class ConstraintSolver {
public:
    ConstraintSolver(EvaluationContext& context, Node& node, ConstraintData& data)
        : context_(context), node_(node), data_(data), ids_(data.ids) {}

    void solve();

private:
    Plug at(AttributeId id) const { return node_.plug(id); }
    Plug at(AttributeId id, int target) const { return {&node_, PlugKey{id, 1, {target}}}; }
    Vector3 vector(AttributeId id, int target) { return context_.vector(at(id, target)); }
    Matrix rotation(AttributeId id, int target);
    void add_target(int target, double weight);
    Vector3 compensation(int target);
    Vector3 carried_offset(int target, const Matrix& turned);
    void set_translate(const Matrix& parent_inverse);
    void set_rotate(const Matrix& parent_inverse);
    void set_scale(const Matrix& parent_inverse);
    Matrix mean_rotation();
    Matrix aimed(const Matrix& parent_inverse);
    void rest();

    EvaluationContext& context_;
    Node& node_;
    ConstraintData& data_;
    const ConstraintAttributes& ids_;
    double total_ = 0.0;
    Vector3 point_, scale_;
    std::vector<WeightedRotation> rotations_;
};

RotateOrder order_of(EvaluationContext& context, const Plug& plug) {
    return rotate_order(context.evaluate(plug).integer());
}

Matrix upper_block(Matrix matrix) {
    matrix.set_row(3, {});
    return matrix;
}

// R JO of a target that turns.
Matrix ConstraintSolver::rotation(AttributeId id, int target) {
    const Matrix turned = euler_to_matrix(vector(id, target), order_of(context_, at(ids_.rotate_order, target)));
    const Vector3 orient = vector(ids_.joint_orient, target);
    return orient == Vector3{} ? turned : turned * euler_to_matrix(orient, RotateOrder::xyz);
}

void ConstraintSolver::add_target(int target, double weight) {
    total_ += weight;
    const Matrix parent = context_.matrix(at(ids_.parent_matrix, target));
    Matrix turned;
    if (ids_.rotate != no_attribute) {
        turned = rotation(ids_.rotate, target);
        Matrix world = turned * Matrix::scale(compensation(target)) * upper_block(parent);
        if (ids_.offset_rotate != no_attribute)
            world = euler_to_matrix(vector(ids_.offset_rotate, target), RotateOrder::xyz) * rotation_part(world);
        rotations_.push_back({to_quaternion(rotation_part(world)), weight});
    }
    if (ids_.out_scale != no_attribute) {
        const Vector3 own = vector(ids_.scale, target);
        for (int i = 0; i < 3; ++i) scale_[i] += weight * own[i] * length(parent.row(i));
    }
    if (ids_.translate == no_attribute) return;
    const Vector3 pivot =
        vector(ids_.translate, target) + vector(ids_.pivot, target) + vector(ids_.pivot_translate, target);
    const Vector3 offset = ids_.offset_translate != no_attribute ? carried_offset(target, turned) : Vector3{};
    point_ = point_ + transform_point(pivot + offset, parent) * weight;
}

// What a joint that compensates takes out of the scale above it.
Vector3 ConstraintSolver::compensation(int target) {
    Vector3 out{1, 1, 1};
    if (ids_.scale_compensate == no_attribute || !context_.evaluate(at(ids_.scale_compensate, target)).boolean())
        return out;
    const Vector3 above = vector(ids_.inverse_scale, target);
    for (int i = 0; i < 3; ++i) out[i] = above[i] != 0.0 ? 1.0 / above[i] : 1.0;
    return out;
}

// What the target's scale and turn make of the offset, seen from its pivot in its parent's space.
Vector3 ConstraintSolver::carried_offset(int target, const Matrix& turned) {
    Vector3 out = vector(ids_.offset_translate, target);
    const Vector3 scale = vector(ids_.scale, target);
    for (int i = 0; i < 3; ++i) out[i] *= scale[i];
    return transform_direction(transform_direction(out, turned), Matrix::scale(compensation(target)));
}

void ConstraintSolver::set_translate(const Matrix& parent_inverse) {
    Vector3 point = point_ * (1.0 / total_);
    if (ids_.offset_polarity != no_attribute) {
        const double sign = context_.evaluate(at(ids_.offset_polarity)).boolean() ? -1.0 : 1.0;
        point = point + context_.vector(at(ids_.offset)) * sign;
    }
    const Vector3 pivot = context_.vector(at(ids_.own_pivot)) + context_.vector(at(ids_.own_pivot_translate));
    if (ids_.pivot_space == no_attribute) {
        data_.translate = transform_point(point, parent_inverse) - pivot;
    } else {
        const Vector3 from = transform_point(pivot, context_.matrix(at(ids_.pivot_space)));
        data_.translate = transform_direction(point - from, parent_inverse);
    }
}

Matrix ConstraintSolver::mean_rotation() {
    const auto how = static_cast<RotationBlend>(context_.evaluate(at(ids_.blend)).integer() & 0xff);
    return to_matrix(blend(rotations_, how));
}

Matrix ConstraintSolver::aimed(const Matrix& parent_inverse) {
    const Vector3 own = context_.vector(at(ids_.own_translate)) + context_.vector(at(ids_.own_pivot)) +
                        context_.vector(at(ids_.own_pivot_translate));
    const Vector3 from = transform_point(own, inverse(parent_inverse));
    Aim aim;
    aim.axis = context_.vector(at(ids_.aim));
    aim.up_axis = context_.vector(at(ids_.up));
    aim.direction = point_ * (1.0 / total_) - from;
    const std::int64_t type = context_.evaluate(at(ids_.world_up_type)).integer();
    if (type == 1) aim.up = context_.matrix(at(ids_.world_up_matrix)).translation() - from;
    if (type == 2)
        aim.up = transform_direction(context_.vector(at(ids_.world_up)), context_.matrix(at(ids_.world_up_matrix)));
    if (type == 3) aim.up = context_.vector(at(ids_.world_up));
    return type == 4 ? shortest_turn(aim.axis, aim.direction) : aim_rotation(aim);
}

void ConstraintSolver::set_scale(const Matrix& parent_inverse) {
    const Matrix parent = inverse(parent_inverse);
    const Vector3 offset = context_.vector(at(ids_.offset));
    for (int i = 0; i < 3; ++i) {
        const double above = length(parent.row(i));
        data_.scale[i] = scale_[i] / total_ * offset[i] / (above > 0.0 ? above : 1.0);
    }
}

void ConstraintSolver::set_rotate(const Matrix& parent_inverse) {
    const RotateOrder order = order_of(context_, at(ids_.own_rotate_order));
    Matrix world = ids_.aim != no_attribute ? aimed(parent_inverse) : mean_rotation();
    if (ids_.offset != no_attribute) world = euler_to_matrix(context_.vector(at(ids_.offset)), order) * world;
    const Matrix local = rotation_part(world * upper_block(parent_inverse));
    const Matrix orient = euler_to_matrix(context_.vector(at(ids_.own_joint_orient)), RotateOrder::xyz);
    data_.rotate = matrix_to_euler(local * inverse(orient), order);
}

void ConstraintSolver::rest() {
    const auto value = [&](AttributeId rest_id) {
        return rest_id == no_attribute ? Vector3{} : context_.vector(at(rest_id));
    };
    data_.translate = value(ids_.rest_translate);
    data_.rotate = value(ids_.rest_rotate);
    data_.scale = value(ids_.rest_scale);
}

void ConstraintSolver::solve() {
    if (data_.edits != node_.edit_count()) {
        data_.targets = node_.existing_indices({ids_.target, 0, {}});
        data_.edits = node_.edit_count();
    }
    const std::uint64_t generation = context_.scene().generation();
    for (const int target : data_.targets) {
        const double weight = context_.number(at(ids_.weight, target));
        if (weight > 0.0 && std::isfinite(weight)) add_target(target, weight);
    }
    data_.rests = !(total_ > 0.0) || !std::isfinite(total_);
    if (data_.rests) {
        rest();
    } else {
        const Matrix parent_inverse = context_.matrix(at(ids_.parent_inverse));
        if (ids_.out_translate != no_attribute) set_translate(parent_inverse);
        if (ids_.out_rotate != no_attribute) set_rotate(parent_inverse);
        if (ids_.out_scale != no_attribute) set_scale(parent_inverse);
    }
    data_.generation = generation;
}

// What the attribute behind an output has stored: there is no rest position, and no target to follow.
double stored_behind(const Node& node, const Plug& output) {
    const auto [first, last] = node.outputs().equal_range(output.key);
    if (first != last) return first->second.node->get(first->second.key).number();
    const Plug around = output.parent();
    const auto [whole, end] = node.outputs().equal_range(around.key);
    if (whole == end) return 0.0;
    for (int i = 0; i < 3; ++i) {
        if (around.child(i) == output) return whole->second.node->get(whole->second.key).vector()[i];
    }
    return 0.0;
}

Value compute_constraint(EvaluationContext& context, Node& node, const Plug& plug) {
    auto* data = static_cast<ConstraintData*>(node.data());
    if (!data) return node.attribute(plug.key.attribute).default_value;
    if (data->generation != context.scene().generation()) ConstraintSolver(context, node, *data).solve();
    const bool held = data->rests && !context.evaluate(node.plug(data->ids.rest_enabled)).boolean();
    for (const auto& [id, value] : {std::pair{data->ids.out_translate, data->translate},
                                    {data->ids.out_rotate, data->rotate},
                                    {data->ids.out_scale, data->scale}}) {
        if (id == no_attribute) continue;
        const auto& children = node.attribute(id).children;
        Vector3 stored;
        for (int i = 0; i < 3; ++i) {
            const Plug child = node.plug(children[static_cast<std::size_t>(i)]);
            if (held) stored[i] = stored_behind(node, child);
            if (plug == child) return held ? stored[i] : value[i];
        }
        if (plug.key.attribute == id) return held ? stored : value;
    }
    return {};
}

using enum AttributeKind;

void tell_position(NodeKind& kind) {
    // clang-format off
    kind.vector("constraintRotatePivot", "crp", distance)
        .vector("constraintRotateTranslate", "crt", distance)
        .vector("constraintTranslate", "ct", distance).output()
        .vector("restTranslate", "rst", distance);
    // clang-format on
}

void tell_rotation(NodeKind& kind) {
    // clang-format off
    kind.enumeration("constraintRotateOrder", "cro")
        .vector("constraintJointOrient", "cjo", angle)
        .vector("inverseScale", "is", number, 1.0)
        .boolean("scaleCompensate", "sc")
        .vector("constraintRotate", "cr", angle).output()
        .vector("restRotate", "rsrr", angle)
        .vector("lastTargetRotate", "lr", angle)
        .enumeration("interpType", "int", 1);
    // clang-format on
}

// The list of targets, open for what a kind adds to each.
NodeKind& begin_targets(NodeKind& kind) {
    return kind.array_of_compounds("target", "tg")
        .matrix("targetParentMatrix", "tpm")
        .number("targetWeight", "tw", 1.0);
}
NodeKind& tell_target_position(NodeKind& kind) {
    return kind.vector("targetTranslate", "tt", distance)
        .vector("targetRotatePivot", "trp", distance)
        .vector("targetRotateTranslate", "trt", distance);
}
NodeKind& tell_target_rotation(NodeKind& kind) {
    return kind.vector("targetRotate", "tr", angle)
        .enumeration("targetRotateOrder", "tro")
        .vector("targetJointOrient", "tjo", angle);
}

NodeKind evaluated(NodeTypes& types, const char* name, MFn::Type api_type) {
    NodeKind kind(types, name, "constraint", api_type);
    kind.computes(compute_constraint).keeps([](Node& node) -> std::unique_ptr<NodeData> {
        return std::make_unique<ConstraintData>(node.type());
    });
    return kind;
}

void add_aim(NodeTypes& types) {
    // clang-format off
    NodeKind aim = evaluated(types, "aimConstraint", MFn::kAimConstraint);
    tell_target_position(begin_targets(aim)).end();
    aim.vector("constraintTranslate", "ct", distance)
        .vector("constraintRotatePivot", "crp", distance)
        .vector("constraintRotateTranslate", "crt", distance)
        .enumeration("constraintRotateOrder", "cro")
        .vector("constraintJointOrient", "cjo", angle)
        .parts("aimVector", "a", number, {"Xx", "Yy", "Zz"}, {1, 0, 0})
        .parts("upVector", "u", number, {"Xx", "Yy", "Zz"}, {0, 1, 0})
        .parts("worldUpVector", "wu", number, {"Xx", "Yy", "Zz"}, {0, 1, 0})
        .matrix("worldUpMatrix", "wum")
        .enumeration("worldUpType", "wut", 3)
        .vector("offset", "o", angle)
        .vector("restRotate", "rsrr", angle)
        .vector("constraintRotate", "cr", angle).output();
    // clang-format on
}

} // namespace

void add_constraint_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "constraint", "transform", MFn::kConstraint)
        .matrix("constraintParentInverseMatrix", "cpim")
        .boolean("enableRestPosition", "erp", true);

    NodeKind point = evaluated(types, "pointConstraint", MFn::kPointConstraint);
    tell_target_position(begin_targets(point)).end();
    tell_position(point);
    point.vector("offset", "o", distance).boolean("constraintOffsetPolarity", "cop");

    NodeKind orient = evaluated(types, "orientConstraint", MFn::kOrientConstraint);
    tell_target_rotation(begin_targets(orient)).end();
    tell_rotation(orient);
    orient.vector("offset", "o", angle);

    NodeKind parent = evaluated(types, "parentConstraint", MFn::kParentConstraint);
    tell_target_rotation(tell_target_position(begin_targets(parent)))
        .vector("targetScale", "ts", number, 1.0)
        .boolean("targetScaleCompensate", "tsc")
        .vector("targetInverseScale", "tis", number, 1.0)
        .vector("targetOffsetTranslate", "tot", distance)
        .vector("targetOffsetRotate", "tor", angle)
        .end();
    tell_position(parent);
    tell_rotation(parent);

    add_aim(types);

    NodeKind scale = evaluated(types, "scaleConstraint", MFn::kScaleConstraint);
    begin_targets(scale).vector("targetScale", "ts", number, 1.0).end();
    scale.vector("offset", "o", number, 1.0)
        .vector("restScale", "rs", number, 1.0)
        .vector("constraintScale", "cs", number, 1.0).output();

    NodeKind(types, "poleVectorConstraint", "pointConstraint", MFn::kPoleVectorConstraint).matrix("pivotSpace", "ps");

    for (const auto& [name, type] : {std::pair{"geometryConstraint", MFn::kGeometryConstraint},
                                     {"normalConstraint", MFn::kNormalConstraint},
                                     {"tangentConstraint", MFn::kTangentConstraint},
                                     {"symmetryConstraint", MFn::kSymmetryConstraint}})
        NodeKind(types, name, "constraint", type).falls_short([](const Node&) {
            return std::string("constraints of its kind aren't");
        });
    // clang-format on
}

} // namespace headless
