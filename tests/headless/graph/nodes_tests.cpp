#include "headless/graph/scene.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

class Nodes : public testing::Test {
protected:
    Scene scene;
    Node& node = **scene.create_node("parentConstraint", "c");
    Node& odd = **scene.create_node("vendorNode", "odd");
};

TEST_F(Nodes, find_plugs_by_long_and_short_names_and_paths) {
    const std::pair<const char*, const char*> cases[] = {
        {"tx", ".translate.translateX"},
        {".translate.translateX", ".translate.translateX"},
        {"t.tx", ".translate.translateX"},
        {"tg[2].tw", ".target[2].targetWeight"},
        {"target[2].tot.totx", ".target[2].targetOffsetTranslate.targetOffsetTranslateX"},
        {"totx", ".target[0].targetOffsetTranslate.targetOffsetTranslateX"}, // an element left out is the first
        {"tg", ".target"},
        {"iog[1].og[3].gid", ".instObjGroups[1].objectGroups[3].objectGroupId"},
    };
    for (const auto& [path, name] : cases) {
        const Plug plug = node.find_plug(path);
        ASSERT_TRUE(plug) << path;
        EXPECT_EQ(plug.path(), name);
    }
    for (const char* path : {"", ".", "nothing", "t.rx", "tx[0]", "tg[-1]", "tg[0", "tg[x].tw", "tg[0:1].tw", "tx.",
                             "tg[99999999999].tw", "tg[*].tw", "a.b.c.d.e.f.g"})
        EXPECT_FALSE(node.find_plug(path)) << path;
}

TEST_F(Nodes, values_are_kept_by_kind_and_defaults_answer_for_the_rest) {
    EXPECT_EQ(node.get(node.find_plug("s").key), Value(Vector3{1, 1, 1}));
    EXPECT_TRUE(node.set(node.find_plug("t").key, Vector3{1, 2, 3}));
    EXPECT_EQ(node.get(node.find_plug("ty").key), Value(2.0));
    EXPECT_TRUE(node.set(node.find_plug("r").key, Value::Doubles{4, 5, 6}));
    EXPECT_EQ(node.get(node.find_plug("r").key), Value(Vector3{4, 5, 6}));
    EXPECT_TRUE(node.set(node.find_plug("ro").key, 3.9));
    EXPECT_EQ(node.get(node.find_plug("ro").key), Value(3));
    EXPECT_TRUE(node.set(node.find_plug("v").key, 0));
    EXPECT_EQ(node.get(node.find_plug("v").key), Value(false));
    EXPECT_TRUE(node.set(node.find_plug("tg[4].tpm").key, Matrix::translate({7, 8, 9})));
    EXPECT_EQ(node.get(node.find_plug("tg[4].tpm").key).matrix().translation(), (Vector3{7, 8, 9}));
    for (const auto& [path, value] : {std::pair<const char*, Value>{"tx", "text"},
                                      {"t", Value::Doubles{1, 2}},
                                      {"t", "text"},
                                      {"tg[0].tpm", 1.0},
                                      {"msg", 1.0},
                                      {"wm[0]", Matrix()},
                                      {"tg", 1.0}})
        EXPECT_FALSE(node.set(node.find_plug(path).key, value)) << path;
    node.reset(node.find_plug("tg[4]").key);
    EXPECT_TRUE(node.existing_indices(node.find_plug("tg").key).empty());
}

TEST_F(Nodes, arrays_are_sparse_and_know_their_elements) {
    const Plug targets = node.find_plug("tg");
    EXPECT_EQ(node.next_free_index(targets.key), 0);
    EXPECT_TRUE(node.set(node.find_plug("tg[7].tw").key, 0.5));
    EXPECT_TRUE(node.set(node.find_plug("tg[1000000000].tw").key, 0.5));
    ASSERT_TRUE(scene.connect(odd.find_or_add_plug("x"), node.find_plug("tg[3].ttx")));
    EXPECT_EQ(node.existing_indices(targets.key), (std::vector{3, 7, 1000000000}));
    EXPECT_EQ(node.next_free_index(targets.key), 1000000001);
    EXPECT_TRUE(node.set(node.find_plug("iog[2].og[5].gid").key, 1));
    EXPECT_EQ(node.existing_indices(node.find_plug("iog").key), std::vector{2});
    EXPECT_EQ(node.next_free_index(node.find_plug("iog[2].og").key), 6);
    EXPECT_EQ(node.next_free_index(node.find_plug("iog[1].og").key), 0);
}

TEST_F(Nodes, take_any_attribute_that_a_file_sets) {
    const Plug deep = odd.find_or_add_plug(".outer[2].inner[5].leaf");
    ASSERT_TRUE(deep);
    EXPECT_TRUE(odd.set(deep.key, RawTokens{"polyFaces", {"f", "4"}}));
    EXPECT_EQ(odd.get(odd.find_plug("outer[2].inner[5].leaf").key).get_if<RawTokens>()->tokens[0], "f");
    EXPECT_EQ(odd.existing_indices(odd.find_plug("outer[2].inner").key), std::vector{5});
    // Met first without an index, then with one.
    ASSERT_TRUE(odd.find_or_add_plug("list"));
    EXPECT_TRUE(odd.find_or_add_plug("list[3]"));
    // On a known type, too, but never inside an attribute that all nodes of the type share, and no name twice.
    EXPECT_TRUE(node.find_or_add_plug("userThing"));
    EXPECT_FALSE(odd.find_or_add_plug("outer[1].list"));
    EXPECT_FALSE(node.find_or_add_plug("translate.odd"));
    EXPECT_FALSE(odd.find_or_add_plug("a[0].b[0].c[0].d[0].e[0].f"));
    EXPECT_FALSE(odd.find_or_add_plug("a..b"));
}

TEST_F(Nodes, added_attributes_refuse_taken_names_and_deep_arrays) {
    Attribute weight;
    weight.long_name = "weightW0";
    weight.short_name = "w0";
    weight.kind = AttributeKind::number;
    weight.default_value = 1.0;
    ASSERT_TRUE(node.add_attribute(weight));
    EXPECT_EQ(node.get(node.find_plug("w0").key), Value(1.0));
    EXPECT_FALSE(node.add_attribute(weight));
    weight.long_name = "translateX";
    weight.short_name = "";
    EXPECT_FALSE(node.add_attribute(weight));
    EXPECT_FALSE(node.add_attribute({}));
    // What a path would take for an element, another node's or nothing.
    for (const char* name : {".s", "s.t", "s[0]", "a|s", "a:s", "s t", "\xc3\xa4"}) {
        weight.long_name = name;
        EXPECT_FALSE(node.add_attribute(weight)) << name;
    }
    for (const char* path : {"a|s", "a:s", "s t", "s]", "s.\xc3\xa4"})
        EXPECT_FALSE(node.find_or_add_plug(path)) << path;
}

TEST_F(Nodes, connections_have_one_source_and_many_destinations) {
    Node& other = **scene.create_node("joint", "j");
    const Plug source = other.find_plug("tx"), destination = node.find_plug("ty");
    ASSERT_TRUE(scene.connect(source, destination));
    EXPECT_TRUE(scene.connect(source, destination)); // once more is no harm
    EXPECT_EQ(other.outputs().size(), 1u);
    EXPECT_FALSE(scene.connect(other.find_plug("tz"), destination));
    EXPECT_TRUE(scene.connect(other.find_plug("tz"), destination, true));
    EXPECT_EQ(node.source_of(destination.key), other.find_plug("tz"));
    EXPECT_EQ(other.outputs().size(), 1u);
    EXPECT_TRUE(scene.disconnect(destination));
    EXPECT_FALSE(scene.disconnect(destination));
    EXPECT_TRUE(other.outputs().empty());
    EXPECT_FALSE(scene.connect(source, source));
    EXPECT_FALSE(scene.connect(source, node.find_plug("wm[0]")));
    Node& set = **scene.create_node("objectSet", "set");
    ASSERT_TRUE(scene.connect(node.find_plug("iog"), set.find_plug("dsm")));
    ASSERT_TRUE(scene.connect(other.find_plug("iog"), set.find_plug("dsm")));
    EXPECT_EQ(set.existing_indices(set.find_plug("dsm").key), (std::vector{0, 1}));
}

} // namespace
} // namespace headless
