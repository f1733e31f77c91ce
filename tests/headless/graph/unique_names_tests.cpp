#include "headless/graph/unique_names.h"

#include <gtest/gtest.h>

#include <random>

namespace headless {
namespace {

// Trees of few names, some of them with instances, in which most of a path is needed to tell a node from its namesakes.
TEST(UniqueNames, lead_back_to_their_nodes_and_are_those_that_the_scene_gives) {
    std::minstd_rand random(7);
    for (int run = 0; run < 40; ++run) {
        Scene scene;
        std::vector<Node*> nodes{&scene.world()};
        for (int i = 0; i < 60; ++i) {
            Node* parent = nodes[random() % nodes.size()];
            const char* names[] = {"a", "b", "persp", "c1"};
            nodes.push_back(*scene.create_node("transform", names[random() % 4], parent));
        }
        for (int i = 0; i < run / 4; ++i)
            (void)scene.add_parent(*nodes[1 + random() % 60], *nodes[random() % nodes.size()]); // cycles are refused
        const UniqueNames names(scene);
        for (const Node* node : scene.nodes()) {
            const std::string name = names.of(*node);
            EXPECT_EQ(name, scene.unique_name_of(*node));
            const Result<Node*> found = scene.find_node(name);
            ASSERT_TRUE(found) << name;
            EXPECT_EQ(*found, node) << name;
            // No shorter one would do, but for the bare name of an instance.
            const std::size_t bar = name.find('|');
            EXPECT_TRUE(bar == name.npos || scene.has_instances() || !scene.find_node(name.substr(bar + 1))) << name;
        }
    }
}

TEST(UniqueNames, count_each_way_of_an_instance) {
    Scene scene;
    Node &a = **scene.create_node("transform", "a"), &b = **scene.create_node("transform", "b");
    Node &c = **scene.create_node("transform", "c", &a), &d = **scene.create_node("transform", "d", &c);
    Node& other = **scene.create_node("transform", "d", &b);
    ASSERT_TRUE(scene.add_parent(c, b));
    const UniqueNames names(scene);
    EXPECT_EQ(names.of(d), "a|c|d");
    EXPECT_EQ(names.of(other), "b|d");
    EXPECT_EQ(names.of(c), "a|c");
    EXPECT_EQ(scene.partial_name(scene.paths_to(d)[1]), "b|c|d");
}

} // namespace
} // namespace headless
