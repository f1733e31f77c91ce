#include "headless/graph/scene.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

TEST(Scene, a_new_scene_holds_the_default_cameras_under_the_world) {
    Scene scene;
    std::vector<std::string> names;
    for (const Node* node : scene.world().children()) names.push_back(node->name());
    EXPECT_EQ(names, (std::vector<std::string>{"persp", "top", "front", "side"}));
    EXPECT_TRUE(scene.find_node("|persp|perspShape"));
}

TEST(Scene, clashing_names_count_on) {
    Scene scene;
    EXPECT_EQ((*scene.create_node("joint", "arm"))->name(), "arm");
    EXPECT_EQ((*scene.create_node("joint", "arm"))->name(), "arm1");
    EXPECT_EQ((*scene.create_node("joint", "arm"))->name(), "arm2");
    EXPECT_EQ((*scene.create_node("joint", "leg09"))->name(), "leg09");
    EXPECT_EQ((*scene.create_node("joint", "leg09"))->name(), "leg10");
    scene.remove_node(**scene.find_node("arm1"));
    EXPECT_EQ((*scene.create_node("joint", "arm"))->name(), "arm1");
    Node& other = **scene.create_node("joint", "other");
    EXPECT_EQ((*scene.create_node("joint", "arm", &other))->name(), "arm");
    EXPECT_FALSE(scene.find_node("arm"));
    EXPECT_TRUE(scene.find_node("other|arm"));
}

} // namespace
} // namespace headless
