#include "headless/graph/scene.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

std::vector<std::string> resolved(const Scene& scene, std::string_view name) {
    std::vector<std::string> out;
    const auto found = scene.resolve(name);
    if (!found) return {found.error().message};
    for (const SelectionItem& item : *found)
        out.push_back(item.path ? scene.full_name(item.path) : scene.find(item.node)->name());
    return out;
}

using Names = std::vector<std::string>;

TEST(Names, are_made_legal_the_way_the_host_does) {
    const std::pair<const char*, const char*> cases[] = {{"Exporter Inserted Root", "Exporter_Inserted_Root"},
                                                         {"a.b|c-d", "a_b_c_d"},
                                                         {"1abc", "_abc"},
                                                         {"ns:2x", "ns:_x"},
                                                         {":a::b", "a:b"},
                                                         {"", ""},
                                                         {"...", ""},
                                                         {"ns:", ""},
                                                         {"\xc3\xa4x", "__x"}};
    for (const auto& [wanted, legal] : cases) EXPECT_EQ(legal_name(wanted), legal) << wanted;
}

TEST(Names, patterns_do_not_cross_namespaces) {
    EXPECT_TRUE(matches_pattern("a*c", "abbc"));
    EXPECT_TRUE(matches_pattern("*", "x"));
    EXPECT_TRUE(matches_pattern("*:j?", "ns:j1"));
    EXPECT_FALSE(matches_pattern("*", "ns:x"));
    EXPECT_FALSE(matches_pattern("ns?x", "ns:x"));
    EXPECT_FALSE(matches_pattern("a*c", "abd"));
    EXPECT_FALSE(matches_pattern(std::string(40, '*') + "b", std::string(4000, 'a')));
}

TEST(Names, clashing_ones_count_on_and_freed_numbers_are_used_again) {
    Scene scene;
    const auto made = [&scene](const char* name, Node* parent = nullptr) {
        return (*scene.create_node("joint", name, parent))->name();
    };
    EXPECT_EQ(made("arm"), "arm");
    EXPECT_EQ(made("arm"), "arm1");
    EXPECT_EQ(made("arm"), "arm2");
    EXPECT_EQ(made("arm1"), "arm3");
    EXPECT_EQ(made("leg09"), "leg09");
    EXPECT_EQ(made("leg09"), "leg10");
    scene.remove_node(**scene.find_node("arm1"));
    EXPECT_EQ(made("arm"), "arm1");
    EXPECT_EQ(made("lambert1"), "lambert2"); // a node outside the DAG has that name
    Node& other = **scene.create_node("joint", "other");
    EXPECT_EQ(made("arm", &other), "arm");
    EXPECT_EQ(made("", &other), "joint1");
    EXPECT_EQ(made(""), "joint2"); // names that nobody asked for are unique in all of the scene
    EXPECT_EQ((*scene.create_node("mesh"))->name(), "meshShape1");
}

TEST(Names, resolve_by_name_namespace_path_and_pattern) {
    Scene scene;
    Node& a = **scene.create_node("transform", "a");
    Node& b = **scene.create_node("transform", "b");
    (void)scene.create_node("joint", "c", &a);
    Node& bc = **scene.create_node("joint", "c", &b);
    (void)scene.create_node("joint", "ns:sub:d", &bc);
    EXPECT_EQ(resolved(scene, "a"), Names{"|a"});
    EXPECT_EQ(resolved(scene, "a|c"), Names{"|a|c"});
    EXPECT_EQ(resolved(scene, "|b|c"), Names{"|b|c"});
    EXPECT_EQ(resolved(scene, "|c"), Names{"No object matches name: |c"});
    EXPECT_EQ(resolved(scene, "c"), Names{"More than one object matches name: c"});
    EXPECT_EQ(resolved(scene, "x"), Names{"No object matches name: x"});
    EXPECT_EQ(resolved(scene, "ns:sub:d"), Names{"|b|c|ns:sub:d"});
    EXPECT_EQ(resolved(scene, ":a"), Names{"|a"});
    EXPECT_EQ(resolved(scene, "c|ns:sub:d"), Names{"|b|c|ns:sub:d"});
    EXPECT_EQ(resolved(scene, "*|c"), (Names{"|a|c", "|b|c"}));
    EXPECT_EQ(resolved(scene, "*:*:d"), Names{"|b|c|ns:sub:d"});
    EXPECT_EQ(resolved(scene, "time1"), Names{"time1"});
    EXPECT_EQ(resolved(scene, ""), Names{"No object matches name: "});
    EXPECT_EQ(scene.unique_name_of(bc), "b|c");
    EXPECT_EQ(scene.unique_name_of(a), "a");
    EXPECT_TRUE(scene.namespaces().contains("ns:sub"));
    EXPECT_TRUE(scene.namespaces().contains("ns"));
}

TEST(Names, a_plug_or_components_stand_behind_a_dot) {
    Scene scene;
    Node& a = **scene.create_node("transform", "a");
    EXPECT_EQ((*scene.find_plug("|a.tx")).path(), ".translate.translateX");
    EXPECT_EQ((*scene.find_plug("a.worldMatrix[0]")).path(true), ".wm[0]");
    EXPECT_EQ((*scene.resolve("a.vtx[0:3]"))[0].components, "vtx[0:3]");
    EXPECT_FALSE(scene.resolve("a.nothing"));
    EXPECT_FALSE(scene.find_plug("a"));
    (void)a;
}

TEST(Names, renaming_keeps_the_index_right) {
    Scene scene;
    Node& a = **scene.create_node("transform", "a");
    Node& child = **scene.create_node("transform", "child", &a);
    EXPECT_EQ(*scene.rename(a, "a"), "a");
    EXPECT_EQ(*scene.rename(a, "persp"), "persp1");
    EXPECT_FALSE(scene.find_node("a"));
    EXPECT_EQ(scene.full_name(scene.path_to(child)), "|persp1|child");
    EXPECT_FALSE(scene.rename(a, "|||"));
    EXPECT_EQ(a.name(), "persp1");
    EXPECT_FALSE(scene.rename(scene.world(), "w"));
}

} // namespace
} // namespace headless
