#include "headless/graph/unique_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace headless {
namespace {

// The shortest end of the first path that no other path has; all of it at last.
std::string expected_name(const Scene& scene, const Node& node, const std::vector<std::string>& full_names) {
    const std::string full = scene.full_name(scene.path_to(node));
    for (std::size_t bar = full.rfind('|'); bar != full.npos && bar > 0; bar = full.rfind('|', bar - 1)) {
        const std::string_view end = std::string_view(full).substr(bar);
        const auto has_end = [end](const std::string& name) { return name.ends_with(end); };
        if (std::ranges::count_if(full_names, has_end) == 1) return full.substr(bar + 1);
    }
    const auto has_end = [&](const std::string& name) { return name.ends_with(full); };
    return std::ranges::count_if(full_names, has_end) == 1 ? full.substr(1) : full;
}

void expect_names(const Scene& scene) {
    std::vector<std::string> full_names;
    for (const Node* node : scene.nodes()) {
        if (!node->type().is_dag()) continue;
        for (const DagPath& path : scene.paths_to(*node)) full_names.push_back(scene.full_name(path));
    }
    const UniqueNames at_once(scene);
    for (const Node* node : scene.nodes()) {
        if (!node->type().is_dag()) continue;
        const std::string name = expected_name(scene, *node, full_names);
        EXPECT_EQ(at_once.of(*node), name);
        EXPECT_EQ(scene.unique_name_of(*node), name);
        const Result<Node*> found = scene.find_node(name);
        ASSERT_TRUE(found) << name;
        EXPECT_EQ(*found, node) << name;
    }
}

// Trees of few names, some with instances, in which most of a path is needed to tell a node from its namesakes.
TEST(UniqueNames, lead_back_to_their_nodes_whether_asked_one_by_one_or_worked_out_at_once) {
    std::mt19937 random(7);
    for (int run = 0; run < 20; ++run) {
        Scene scene;
        std::vector<Node*> nodes{&scene.world()};
        for (int i = 0; i < 60; ++i) {
            Node* parent = nodes[random() % nodes.size()];
            const char* names[] = {"a", "b", "persp", "c1"};
            nodes.push_back(*scene.create_node("transform", names[random() % 4], parent));
        }
        for (int i = 0; i < run / 2; ++i)
            (void)scene.add_parent(*nodes[1 + random() % 60], *nodes[random() % nodes.size()]); // cycles are refused
        expect_names(scene);
        ASSERT_TRUE(scene.rename(*nodes[1 + random() % 60], "b"));
        (void)scene.reparent(*nodes[1 + random() % 60], nodes[random() % nodes.size()]);
        expect_names(scene); // what was worked out before holds no longer
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
