// Scenes that the real host saved hold some of its answers: a constraint keeps the rotation that it gave last. They are
// compared as rotations, at the time that the scene was saved at.
#include "headless/session.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace headless {
namespace {

struct Sheet {
    const char* scene;
    int constraints; ///< that keep an answer
    int stale = 0;   ///< of those, not asked again by the host since something above them changed
};

class AnswerSheet : public testing::TestWithParam<Sheet> {};

double farthest(const Matrix& a, const Matrix& b) {
    double out = 0.0;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) out = std::max(out, std::abs(a.m[r][c] - b.m[r][c]));
    }
    return out;
}

TEST_P(AnswerSheet, constraints_turn_as_the_host_had_them) {
    const std::string path = std::string(VOR2_SHARED_DATA) + "/production/scenes/" + GetParam().scene;
    if (!std::filesystem::exists(path)) GTEST_SKIP();
    Session& session = Session::current();
    session.set_message_sink([](MessageKind, const std::string&) {});
    ASSERT_TRUE(session.open_file(path));
    Scene& scene = session.scene();
    int asked = 0;
    std::vector<std::string> others;
    for (Node* node : scene.nodes()) {
        const AttributeId kept = node->type().find("lastTargetRotate");
        if (kept == no_attribute || node->get({kept, 0, {}}).vector() == Vector3{}) continue;
        const auto order = rotate_order(scene.evaluate(node->find_plug("cro")).integer());
        const Matrix here = euler_to_matrix(scene.evaluate(node->find_plug("cr")).vector(), order);
        ++asked;
        if (farthest(here, euler_to_matrix(node->get({kept, 0, {}}).vector(), order)) > 1e-4)
            others.push_back(node->name());
    }
    EXPECT_EQ(asked, GetParam().constraints);
    EXPECT_EQ(static_cast<int>(others.size()), GetParam().stale) << testing::PrintToString(others);
    session.set_message_sink(nullptr);
    session.new_scene();
}

INSTANTIATE_TEST_SUITE_P(Production, AnswerSheet,
                         testing::Values(Sheet{"Ultimate_Walker_IK_v1.0.1.ma", 53},
                                         Sheet{"Ultimate_Walker_FK_v1.0.1.ma", 50}, Sheet{"Rigging1/lamp_rig.ma", 9},
                                         Sheet{"Rigging1/Finger_Rig.ma", 13}, Sheet{"Rigging1/RobotArm_Rig.ma", 18},
                                         Sheet{"Rigging1/turtle_rig.ma", 47, 1},
                                         Sheet{"Ultimate_Handy_v1.0.2.ma", 40, 2}, Sheet{"BouncyStretchBall.ma", 2}));

} // namespace
} // namespace headless
