#include "headless/session.h"

#include <gtest/gtest.h>

#include <cmath>

namespace headless {
namespace {

class Example : public testing::Test {
protected:
    Example() {
        session.set_message_sink([this](MessageKind, const std::string& text) { messages.push_back(text); });
        const auto opened = session.open_file(std::string(VOR2_SOURCE_DIR) + "/examples/walking_biped.ma");
        EXPECT_TRUE(opened) << opened.error().text();
    }
    ~Example() override {
        session.new_scene();
        session.set_message_sink(nullptr);
    }
    Vector3 at(const char* name, double frame) {
        session.scene().set_current_time(frame / 24.0);
        return session.scene().world_matrix(**session.scene().find_node(name)).translation();
    }

    Session& session = Session::current();
    std::vector<std::string> messages;
};

TEST_F(Example, opens_without_a_word_and_is_what_it_says) {
    EXPECT_EQ(messages, std::vector<std::string>{});
    int joints = 0;
    for (const Node* node : session.scene().nodes()) {
        if (!node->type().is_joint()) continue;
        ++joints;
        EXPECT_TRUE(node->name().starts_with("biped:")) << node->name();
    }
    EXPECT_GE(joints, 25);
    EXPECT_EQ(session.scene().playback.max, 2.0);
    EXPECT_EQ(session.scene().time_unit.name, "film");
}

TEST_F(Example, walks_with_its_feet_planted_and_hands_the_lantern_over) {
    for (double frame = 2.0; frame <= 8.0; frame += 0.5) {
        for (const auto& [foot, shift] : {std::pair{"biped:left_foot", 0.0}, {"biped:right_foot", 12.0}}) {
            const Vector3 first = at(foot, 5.0 + shift), now = at(foot, frame + shift);
            EXPECT_LT(length(now - first), 0.3) << foot << " " << frame;
            EXPECT_NEAR(now.y, 8.0, 0.3) << foot << " " << frame;
        }
    }
    for (double frame = 0; frame <= 48; ++frame) {
        for (const char* toes : {"biped:left_toes", "biped:right_toes"}) EXPECT_GT(at(toes, frame).y, 1.0) << frame;
        const char* hand = frame <= 23 ? "biped:right_hand" : "biped:left_hand";
        const double reach = length(at("prop", frame) - at(hand, frame));
        if (frame > 23 && frame < 27) continue;
        EXPECT_NEAR(reach, std::hypot(8, 4), 1e-9) << frame;
    }
    EXPECT_NEAR(at("biped:hips", 48).z - at("biped:hips", 0).z, 201.6, 1e-9);
}

} // namespace
} // namespace headless
