// IK handles of the single chain and the rotate plane solver.
//
// A handle's chain runs from its start joint (joint.message to `startJoint`) down to what its effector stands under
// (effector.handlePath to `endEffector`); its solver (solver.message to `ikSolver`) says how it is solved. The goal is
// the handle's rotate pivot in the world, what reaches it the effector's; a pole vector is a direction in the space
// that the handle stands in. The solution replaces the joints' rotate values, whatever these are stored as or driven
// by; with `ikBlend` below 1 it is mixed with them, each joint along the shorter arc.
//
// `weight`, `poWeight`, `stickiness` and `snapEnable` are those of other solvers or of work by hand, and change nothing
// here. Handles act in order of `priority`.
#include "headless/animation/ik_chain.h"
#include "headless/animation/rotation_blend.h"
#include "headless/graph/joint_turner.h"
#include "headless/graph/scene.h"
#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include <algorithm>
#include <cmath>

namespace headless {

using enum AttributeKind;

namespace {

struct HandleAttributes {
    AttributeId start, effector, solver, blend, priority, pole, twist;

    static const HandleAttributes& ids() {
        static const HandleAttributes made = [] {
            const NodeType& type = *NodeTypes::all().find("ikHandle");
            return HandleAttributes{type.find("startJoint"), type.find("endEffector"), type.find("ikSolver"),
                                    type.find("ikBlend"),    type.find("priority"),    type.find("poleVector"),
                                    type.find("twist")};
        }();
        return made;
    }
};

struct JointAttributes {
    AttributeId preferred, turns[3];

    static const JointAttributes& ids() {
        static const JointAttributes made = [] {
            const NodeType& type = *NodeTypes::all().find("joint");
            return JointAttributes{type.find("preferredAngle"),
                                   {type.find("jointTypeX"), type.find("jointTypeY"), type.find("jointTypeZ")}};
        }();
        return made;
    }
};

// The chain as assigned, and its solution at one time.
class HandleData final : public NodeData {
public:
    bool set(const Plug&, const Value&) override { return false; }
    bool get(const Plug&, Value&) const override { return false; }
    bool indices(const Plug&, std::vector<int>&) const override { return false; }

    std::vector<Node*> joints;
    Node* effector = nullptr;
    std::uint64_t generation = 0;
    bool evaluated = false, solving = false, solved = false;
    IkChain chain;
    IkGoal goal;
    std::vector<Vector3> rotations;
};

Node* source_node(const Node& handle, AttributeId id) {
    return handle.source_of({id, 0, {}}).node;
}

void complain(Scene& scene, const Node& handle, const std::string& what) {
    scene.report_evaluation_error("The IK handle '" + handle.name() + "' moves nothing: " + what);
}

// From the start joint to the last above the effector; what else stands between is part of the bones.
std::vector<Node*> joints_between(Node& start, const Node& effector) {
    std::vector<Node*> out;
    for (Node* at = effector.parent(); at; at = at->parent()) {
        if (at->type().is_joint()) out.push_back(at);
        if (at == &start) {
            std::ranges::reverse(out);
            return out;
        }
    }
    return {};
}

std::string shortfall(const Node& handle) {
    const Node* solver = source_node(handle, HandleAttributes::ids().solver);
    if (!solver) return {};
    for (const char* known : {"ikRPsolver", "ikSCsolver", "ik2Bsolver"}) {
        if (solver->type().name() == known) return {};
    }
    return "handles of the solver '" + solver->type().name() + "' aren't";
}

std::vector<Node*> find_chain(EvaluationContext& context, Node& handle) {
    auto& data = static_cast<HandleData&>(*handle.data());
    data.joints.clear();
    data.generation = 0;
    data.evaluated = shortfall(handle).empty();
    const HandleAttributes& ids = HandleAttributes::ids();
    Node* const start = source_node(handle, ids.start);
    data.effector = source_node(handle, ids.effector);
    if (!start || !start->type().is_joint()) {
        complain(context.scene(), handle, "it has no start joint");
    } else if (!data.effector || !data.effector->type().is_transform()) {
        complain(context.scene(), handle, "it has no end effector");
    } else if (!source_node(handle, ids.solver)) {
        complain(context.scene(), handle, "it has no solver");
    } else {
        data.joints = joints_between(*start, *data.effector);
        if (data.joints.empty())
            complain(context.scene(), handle,
                     "its end effector '" + data.effector->name() + "' doesn't stand under its start joint '" +
                         start->name() + "'");
    }
    return data.joints;
}

int priority_of(const Node& handle) {
    const std::int64_t priority = handle.get({HandleAttributes::ids().priority, 0, {}}).integer();
    return static_cast<int>(std::clamp<std::int64_t>(priority, -1'000'000, 1'000'000));
}

constexpr std::array<bool, 3> all_axes{true, true, true};

class HandleSolver {
public:
    HandleSolver(EvaluationContext& context, Node& handle, HandleData& data)
        : context_(context), handle_(handle), data_(data) {}

    bool solve() {
        gather_chain();
        gather_goal();
        // What is scaled away to nothing has no pose, and needs none.
        if (determinant(space_) == 0.0) return false;
        if (solve_ik(data_.chain, data_.goal, data_.rotations)) return true;
        complain(context_.scene(), handle_, "its chain has no length or its goal no place");
        return false;
    }

private:
    // What plain transforms between a node and the joint above it do.
    Matrix between(const Node& node, const Node* joint_above) {
        Matrix out;
        for (Node* at = node.parent(); at && at != joint_above; at = at->parent())
            out = out * context_.local_matrix(*at);
        return out;
    }

    void gather_chain() {
        const auto& joints = data_.joints;
        data_.chain.joints.resize(joints.size());
        for (std::size_t i = 0; i < joints.size(); ++i) {
            const TransformValues& values = context_.unturned_values(*joints[i]);
            const JointFactors factors = joint_factors(values);
            IkJoint& joint = data_.chain.joints[i];
            joint.order = values.order;
            joint.before = factors.before;
            joint.after = factors.orient;
            if (i == 0)
                space_ = factors.place * context_.parent_matrix(*joints[0]);
            else
                joint.after = joint.after * factors.place * between(*joints[i], joints[i - 1]);
            const JointAttributes& ids = JointAttributes::ids();
            joint.preferred = context_.vector(joints[i]->plug(ids.preferred));
            for (std::size_t k = 0; k < 3; ++k)
                joint.turns[k] = context_.evaluate(joints[i]->plug(ids.turns[k])).boolean();
            if (joint.turns != all_axes) joint.rotate = context_.rotate_before(*joints[i], handle_);
        }
        const Node& effector = *data_.effector;
        data_.chain.effector = context_.local_matrix(*data_.effector);
        data_.chain.effector.set_row(3, pivot_in_parent(context_.current_values(*data_.effector)));
        data_.chain.effector = data_.chain.effector * between(effector, joints.back());
    }

    void gather_goal() {
        const HandleAttributes& ids = HandleAttributes::ids();
        const Matrix around = context_.parent_matrix(handle_), to_chain = inverse(space_);
        IkGoal& goal = data_.goal;
        goal.point = transform_point(pivot_in_parent(context_.current_values(handle_)), around * to_chain);
        goal.rotate_plane = source_node(handle_, ids.solver)->type().name() != "ikSCsolver";
        if (goal.rotate_plane) {
            goal.pole = transform_direction(context_.vector(handle_.plug(ids.pole)), around * to_chain);
            goal.twist = context_.number(handle_.plug(ids.twist));
        } else {
            goal.orientation = rotation_part(context_.world_matrix(handle_)) * transposed(rotation_part(space_));
            goal.orientation.set_row(3, {});
        }
    }

    EvaluationContext& context_;
    Node& handle_;
    HandleData& data_;
    Matrix space_; // of the chain, in the world
};

Vector3 blended(const Vector3& from, const Vector3& to, double part, RotateOrder order) {
    const Quaternion a = to_quaternion(euler_to_matrix(from, order)), b = to_quaternion(euler_to_matrix(to, order));
    return matrix_to_euler(to_matrix(slerp(a, b, part)), order);
}

Vector3 turned(EvaluationContext& context, Node& handle, std::size_t place, const Vector3& before) {
    auto& data = static_cast<HandleData&>(*handle.data());
    if (!data.evaluated) return before;
    const double blend = context.number(handle.plug(HandleAttributes::ids().blend));
    if (!(blend > 0.0)) return before;
    const std::uint64_t generation = context.scene().generation();
    if (data.generation != generation) {
        if (data.solving) {
            context.scene().report_evaluation_error("The IK handle '" + handle.name() +
                                                    "' follows what its own joints move");
            return before;
        }
        data.solving = true;
        data.solved = HandleSolver(context, handle, data).solve();
        data.solving = false;
        data.generation = generation;
    }
    if (!data.solved) return before;
    const Vector3& solution = data.rotations[place];
    return blend < 1.0 ? blended(before, solution, blend, data.chain.joints[place].order) : solution;
}

constexpr JointTurner handle_turner{find_chain, priority_of, turned};

} // namespace

void add_ik_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "ikHandle", "transform", MFn::kIkHandle)
        .message("startJoint", "hsj")
        .message("endEffector", "hee")
        .message("ikSolver", "hsv")
        .boolean("snapEnable", "hsh", true)
        .enumeration("stickiness", "hs")
        .integer("priority", "hpr", 1)
        .number("weight", "hw", 1.0)
        .number("poWeight", "hpo", 1.0)
        .parts("poleVector", "pv", number, {"Xx", "Yy", "Zz"}, {0, 0, 1})
        .number("offset", "off")
        .angle("roll", "rol")
        .angle("twist", "twi")
        .boolean("rootOnCurve", "roc")
        .enumeration("twistType", "twt")
        .boolean("rootTwistMode", "rtm")
        .number("ikBlend", "ikb", 1.0)
        .boolean("ikFkManipulation", "eik")
        .boolean("splineIkOldStyle", "sio")
        .keeps([](Node&) -> std::unique_ptr<NodeData> { return std::make_unique<HandleData>(); })
        .turns(handle_turner)
        .falls_short(shortfall);
    NodeKind(types, "ikEffector", "transform", MFn::kIkEffector)
        .message("handlePath", "hp")
        .boolean("hideDisplay", "hd");

    NodeKind(types, "ikSolver", "node", MFn::kDependencyNode)
        .integer("maxIterations", "mi", 1000)
        .number("tolerance", "tol", 1e-5);
    for (const auto& [name, base] : {std::pair{"ikSCsolver", "ikSolver"}, {"ikRPsolver", "ikSCsolver"},
                                     {"ik2Bsolver", "ikSolver"}, {"ikMCsolver", "ikSolver"},
                                     {"ikSplineSolver", "ikSolver"}})
        NodeKind(types, name, base, MFn::kDependencyNode);
    // clang-format on
}

} // namespace headless
