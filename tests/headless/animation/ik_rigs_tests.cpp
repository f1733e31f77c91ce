// Rigs that other people made. The rotations which the host's solver left in a file are the answers to its own scene.
#include "network.h"

#include "headless/files/ma_reader.h"
#include "headless/graph/drivers.h"
#include "headless/graph/transform.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace headless {
namespace {

namespace fs = std::filesystem;

struct Chain {
    Node* handle;
    Node* effector;
    std::vector<Node*> joints;
};

// Those that are worked out, and whose goal and place hang on nothing that isn't.
std::vector<Chain> chains_of(Scene& scene) {
    std::vector<Chain> out;
    for (Node* node : scene.nodes()) {
        if (!node->type().derives_from("ikHandle")) continue;
        Chain chain{node, node->source_of(node->find_plug("hee").key).node, {}};
        const Node* start = node->source_of(node->find_plug("hsj").key).node;
        if (!chain.effector || !start) continue;
        for (Node* at = chain.effector->parent(); at && at != start->parent(); at = at->parent())
            chain.joints.insert(chain.joints.begin(), at);
        Node* end = chain.effector;
        if (find_unevaluated(scene, {&end, 1}).empty()) out.push_back(chain);
    }
    return out;
}

// The files that have to do with IK, by themselves or through what they refer to.
std::vector<fs::path> files_with_handles() {
    std::vector<fs::path> out;
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(VOR2_SHARED_DATA) / "production", ignored)) {
        if (entry.path().extension() != ".ma") continue;
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        if (text.find("ikHandle") != text.npos || text.find("file -r ") != text.npos) out.push_back(entry.path());
    }
    std::ranges::sort(out);
    return out;
}

double angle_between(const Vector3& a, const Vector3& b, RotateOrder order) {
    const Quaternion q = to_quaternion(euler_to_matrix(a, order) * transposed(euler_to_matrix(b, order)));
    return 2 * std::atan2(std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z), std::abs(q.w)) / degree;
}

Vector3 pivot(EvaluationContext& context, Node& node) {
    return transform_point(pivot_in_parent(context.current_values(node)), context.parent_matrix(node));
}

// How many joints were compared.
int compare_rotations(EvaluationContext& context, const Chain& chain) {
    int out = 0;
    for (Node* joint : chain.joints) {
        const Plug rotate = joint->find_plug("r");
        // What a referenced rig was saved with isn't the pose that this scene gives it.
        if (joint->name().find(':') != std::string::npos) continue;
        // What is connected is left out of a file.
        const auto driven = [&](const Plug& plug) { return bool(joint->source_of(plug.key)); };
        if (driven(rotate) || driven(rotate.child(0)) || driven(rotate.child(1)) || driven(rotate.child(2))) continue;
        const Vector3 left = joint->get(rotate.key).vector();
        joint->reset(rotate.key);
        const TransformValues found = context.transform_values(*joint);
        EXPECT_LT(angle_between(found.rotate, left, found.order), .05) << joint->name();
        ++out;
    }
    return out;
}

// Whether the goal was in reach.
bool expect_reached(EvaluationContext& context, const Chain& chain) {
    const Vector3 end = pivot(context, *chain.effector), goal = pivot(context, *chain.handle);
    const Vector3 start = context.world_matrix(*chain.joints[0]).translation();
    double limb = 0.0;
    Vector3 at = end;
    for (auto joint = chain.joints.rbegin(); joint != chain.joints.rend(); ++joint) {
        const Vector3 next = context.world_matrix(**joint).translation();
        limb += length(at - next);
        at = next;
    }
    const bool blended = context.number(chain.handle->find_plug("ikb")) < 1.0;
    if (blended || chain.joints.size() < 2 || length(goal - start) > limb) return false;
    EXPECT_LT(length(end - goal), 1e-4 * limb) << chain.handle->name();
    if (chain.joints.size() > 2 || context.number(chain.handle->find_plug("twi")) != 0.0) return true;
    const Vector3 knee = context.world_matrix(*chain.joints[1]).translation() - start;
    const Vector3 pole =
        transform_direction(context.vector(chain.handle->find_plug("pv")), context.parent_matrix(*chain.handle));
    const Vector3 normal = cross(goal - start, pole);
    EXPECT_LT(std::abs(dot(knee, normal)), 1e-6 * limb * length(normal)) << chain.handle->name();
    return true;
}

TEST(IkRigs, rotations_taken_out_of_files_are_found_again_and_limbs_reach_their_handles_at_every_frame) {
    const std::vector<fs::path> files = files_with_handles();
    if (files.empty()) GTEST_SKIP();
    int compared = 0, reached = 0;
    for (const fs::path& file : files) {
        SCOPED_TRACE(file.string());
        Scene scene;
        if (!read_maya_ascii(scene, file.string())) continue;
        EvaluationContext context(scene);
        const std::vector<Chain> chains = chains_of(scene);
        for (const Chain& chain : chains) compared += compare_rotations(context, chain);
        if (chains.empty()) continue;
        for (double time = scene.playback.min; time <= scene.playback.max; time += 1.0 / 24) {
            scene.set_current_time(time);
            for (const Chain& chain : chains) reached += expect_reached(context, chain);
        }
        EXPECT_EQ(scene.take_evaluation_errors(), std::vector<std::string>());
    }
    EXPECT_GE(compared, 18);
    EXPECT_GE(reached, 1000);
}

} // namespace
} // namespace headless
