// Joints that another node turns without a connection to them.
#include "headless/graph/evaluation.h"
#include "headless/graph/joint_turner.h"
#include "headless/graph/scene.h"
#include "headless/graph/transform_state.h"

#include <algorithm>

namespace headless {
namespace {

struct Claim {
    Node* turner;
    std::vector<Node*> joints;
    int rank = 0, depth = 0;
};

int depth_of(const Node& node) {
    int out = 0;
    for (const Node* at = node.parent(); at; at = at->parent()) ++out;
    return out;
}

} // namespace

// Told anew for all, so that a joint never remembers a node that is gone.
void EvaluationContext::assign_turners() {
    scene_.turners_assigned_ = scene_.turner_edits_;
    for (const NodeHandle handle : scene_.turned_) {
        Node* joint = scene_.find(handle);
        if (!joint || !joint->transform_) continue;
        joint->transform_->turned_by.clear();
        joint->transform_->edits = 0;
    }
    scene_.turned_.clear();
    std::vector<Claim> claims;
    for (Node* turner : scene_.turners_) {
        const JointTurner& how = *turner->type().turner;
        std::vector<Node*> joints = how.joints(*this, *turner);
        if (joints.empty()) continue;
        const int depth = depth_of(*joints.front());
        claims.push_back({turner, std::move(joints), how.rank(*turner), depth});
    }
    std::ranges::stable_sort(claims, {}, [](const Claim& claim) { return std::pair(claim.rank, claim.depth); });
    for (const Claim& claim : claims) {
        for (std::size_t i = 0; i < claim.joints.size(); ++i) {
            Node& joint = *claim.joints[i];
            if (!joint.transform_) joint.transform_ = std::make_unique<TransformState>();
            joint.transform_->turned_by.push_back({claim.turner, i});
            joint.transform_->edits = 0;
            scene_.turned_.push_back(joint.handle());
        }
    }
}

bool EvaluationContext::is_turned(const Plug& plug) {
    if (scene_.turners_.empty()) return false;
    const AttributeId rotate = TransformAttributes::ids().rotate, id = plug.key.attribute;
    // The three parts of a triple stand behind it.
    if (id < rotate || id > rotate + 3 || !plug.node->type().is_joint()) return false;
    return !state_of(*plug.node).turned_by.empty();
}

Value EvaluationContext::turned_value(const Plug& plug) {
    const AttributeId rotate = TransformAttributes::ids().rotate;
    const Vector3& turned = current_values(*plug.node).rotate;
    if (plug.key.attribute == rotate) return turned;
    return turned[static_cast<int>(plug.key.attribute - rotate) - 1];
}

std::vector<Node*> EvaluationContext::turners_of(Node& transform) {
    std::vector<Node*> out;
    for (const TransformState::Turning& turning : state_of(transform).turned_by) out.push_back(turning.by);
    return out;
}

const TransformValues& EvaluationContext::unturned_values(Node& joint) {
    TransformState& state = state_of(joint);
    refresh_inputs(joint, state);
    return state.values;
}

Vector3 EvaluationContext::rotate_before(Node& joint, const Node& turner) {
    TransformState& state = state_of(joint);
    if (!refresh_inputs(joint, state)) return state.values.rotate;
    Vector3 out = state.unturned;
    for (const TransformState::Turning& turning : state.turned_by) {
        if (turning.by == &turner) break;
        out = turning.by->type().turner->rotate(*this, *turning.by, turning.place, out);
    }
    return out;
}

// False when the joint's own pose is asked for on the way.
bool EvaluationContext::turn(Node& joint, TransformState& state) {
    if (state.turning || scene_.evaluation_depth_ >= max_evaluation_depth) {
        report(joint.plug(TransformAttributes::ids().matrix),
               state.turning ? "Cycle at" : "Evaluation goes too deep at");
        return false;
    }
    state.turning = true;
    ++scene_.evaluation_depth_;
    Vector3 rotate = state.unturned;
    for (const TransformState::Turning& turning : state.turned_by)
        rotate = turning.by->type().turner->rotate(*this, *turning.by, turning.place, rotate);
    --scene_.evaluation_depth_;
    state.turning = false;
    state.values.rotate = rotate;
    state.local_valid = false;
    // In a cycle the world may have been asked for before.
    state.world_generation = 0;
    return true;
}

} // namespace headless
