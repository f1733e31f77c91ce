// What mesh nodes take from files, give back, and make of it.
#include "tests/headless/api/api_test.h"

#include "headless/files/ma_reader.h"
#include "headless/files/ma_writer.h"
#include "headless/geometry/mesh_history.h"

#include <filesystem>
#include <fstream>

using namespace headless;

namespace {

std::string in_scene(const std::string& lines) {
    return "requires maya \"2016\";\ncreateNode transform -n \"t\";\ncreateNode mesh -n \"m\" -p \"t\";\n" + lines;
}

// Two quads side by side, the second with its shared edge gone along backwards.
const std::string two_quads = R"(
    setAttr ".uvst[0].uvsn" -type "string" "map1";
    setAttr -s 4 ".uvst[0].uvsp[0:3]" -type "float2" 0 0 1 0 0 1 1 1;
    setAttr ".cuvs" -type "string" "map1";
    setAttr ".ccls" -type "string" "paint";
    setAttr ".clst[0].clsn" -type "string" "paint";
    setAttr -s 2 ".clst[0].clsp[0:1]"  1 0 0 1 0 0 1 0.5;
    setAttr ".pt[5]" -type "float3" 0 0 0.25;
    setAttr -s 6 ".vt[0:2]"  0 0 0 1 0 0 2 0 0;
    setAttr ".vt[3:5]"  0 1 0 1 1 0 2 1 0.1;
    setAttr -s 7 ".ed[0:6]"  0 1 0 1 4 1 4 3 0 3 0 0 1 2 0 2 5 0 5 4 0;
    setAttr -s 2 -ch 8 ".fc[0:1]" -type "polyFaces"
        f 4 0 1 2 3
        mu 0 4 0 1 3 2
        mc 0 4 0 0 0 0
        f 4 4 5 6 -2
        mc 0 4 1 1 -1 0;
)";

class MeshListsTest : public ApiTest {
protected:
    std::shared_ptr<const Mesh> read(const std::string& lines) {
        session.new_scene();
        const Result<void> done = read_maya_ascii_text(scene(), in_scene(lines), "test.ma", {});
        EXPECT_TRUE(done) << (done ? "" : done.error().text());
        return mesh_of(scene(), **scene().find_node("m"));
    }
};

} // namespace

TEST_F(MeshListsTest, makes_points_faces_uvs_and_colours_of_a_files_lists) {
    const auto mesh = read(two_quads);
    ASSERT_EQ(mesh->points.size(), 6u);
    EXPECT_EQ(mesh->points[5], (Float3{2.0f, 1.0f, 0.1f + 0.25f}));
    EXPECT_EQ(mesh->corner_vertex, (std::vector<int>{0, 1, 4, 3, 1, 2, 5, 4}));
    EXPECT_TRUE(mesh->edges[1].smooth);
    EXPECT_FALSE(mesh->edges[0].smooth);
    ASSERT_EQ(mesh->uv_sets.size(), 1u);
    EXPECT_EQ(mesh->uv_sets[0].of_corner, (std::vector<int>{0, 1, 3, 2, -1, -1, -1, -1}));
    ASSERT_EQ(mesh->colour_sets.size(), 1u);
    EXPECT_EQ(mesh->colour_sets[0].of_corner, (std::vector<int>{0, 0, 0, 0, 1, 1, -1, 0}));
    EXPECT_TRUE(mesh->notes.empty());
}

TEST_F(MeshListsTest, gives_every_element_back_also_through_a_file) {
    read(two_quads +
         "setAttr \".vt[9]\" 7 7 7;\nsetAttr \".fc[4]\" -type \"polyFaces\" f 3 0 1 odd;\n"
         "setAttr -s 8 \".n[0:7]\" -type \"float3\" 0 0 1 0 0 1 1e+20 1e+20 1e+20 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1;");
    Node& node = **scene().find_node("m");
    EXPECT_EQ(node.get(node.find_plug("vt[9].vrtx").key), Value(7.0));
    EXPECT_EQ(node.existing_indices(node.find_plug("vt").key), (std::vector<int>{0, 1, 2, 3, 4, 5, 9}));
    EXPECT_EQ(node.existing_indices(node.find_plug("uvst").key), (std::vector<int>{0}));
    const std::string path = (std::filesystem::temp_directory_path() / "mesh_lists_test.ma").string();
    ASSERT_TRUE(write_maya_ascii(scene(), path));
    Scene again;
    ASSERT_TRUE(read_maya_ascii(again, path, {}));
    std::filesystem::remove(path);
    Node& other = **again.find_node("m");
    for (const char* list : {"vt", "pt", "ed", "n", "fc", "uvst[0].uvsp", "clst[0].clsp"}) {
        SCOPED_TRACE(list);
        const Plug array = node.find_plug(list), same = other.find_plug(list);
        const std::vector<int> indices = node.existing_indices(array.key);
        EXPECT_FALSE(indices.empty());
        EXPECT_EQ(indices, other.existing_indices(same.key));
        for (const int i : indices) EXPECT_EQ(node.get(array.element(i).key), other.get(same.element(i).key)) << i;
    }
    EXPECT_EQ(node.get(node.find_plug("fc[4]").key).get_if<RawTokens>()->tokens.back(), "odd");
}

TEST_F(MeshListsTest, elements_in_any_order_and_one_by_one_and_again) {
    const auto mesh = read(R"(
        setAttr ".vt[3]" 0 3 0; setAttr ".vt[1]" 1 0 0; setAttr ".vt[0].vrtz" 4; setAttr ".vt[2]" 2 2 0;
        setAttr -s 4 ".ed[0:3]" 0 1 0 1 2 0 2 3 0 3 0 0; setAttr ".uvst[0].uvsp[0].uvpv" 0.5;
        setAttr -s 2 ".fc[0:1]" -type "polyFaces" f 4 0 1 2 3 mu 0 4 0 0 0 0 f 4 0 1 2 3;
        setAttr ".fc[0]" -type "polyFaces" f 3 0 1 2; setAttr ".fc[0]" -type "polyFaces" f 4 -4 -3 -2 -1 mu 0 4 0 0 0 0;
        setAttr -s 2 ".n[0:1]" -type "float3" 0 0 1 0 0 1;)");
    EXPECT_EQ(mesh->points, (std::vector<Float3>{{0, 0, 4}, {1, 0, 0}, {2, 2, 0}, {0, 3, 0}}));
    EXPECT_EQ(mesh->corner_vertex, (std::vector<int>{0, 3, 2, 1, 0, 1, 2, 3}));
    EXPECT_EQ(mesh->uv_sets[0].values, (std::vector<Float2>{{0.0f, 0.5f}}));
    EXPECT_EQ(mesh->notes, Names{"its normals aren't as many as its faces have corners and are left out"});
    Node& node = **scene().find_node("m");
    for (const char* path : {"uvst[0].uvsp[0].uvpv", "vt[0].vrtz", "vt[0]", "uvst[0].uvsp[0]", "fc[0]"})
        EXPECT_FALSE(node.set(node.find_plug(path).key, "text")) << path;
    EXPECT_EQ(mesh_of(scene(), node)->points, mesh->points);
}

TEST_F(MeshListsTest, reads_lengths_in_the_files_unit) {
    session.new_scene();
    const std::string text = "currentUnit -l meter;\n" + in_scene(two_quads);
    ASSERT_TRUE(read_maya_ascii_text(scene(), text, "test.ma", {}));
    EXPECT_EQ(mesh_of(scene(), **scene().find_node("m"))->points[1], (Float3{100.0f, 0.0f, 0.0f}));
}

TEST_F(MeshListsTest, keeps_a_place_for_a_face_that_makes_no_sense) {
    const struct {
        const char* faces;
        std::size_t faces_without_corners;
    } cases[] = {
        {"f 3 0 1 99 f 4 0 1 2 3", 1},              // an edge that isn't there
        {"f 3 0 1 -2147483648 f 4 0 1 2 3", 1},     // one far below
        {"f 999999999 0 1 f 4 0 1 2 3", 1},         // more edges than words
        {"f -3 f 4 0 1 2 3", 1},                    // fewer than none
        {"f 3 0 1 x f 4 0 1 2 3", 1},               // no number
        {"f 3 0 1 7 f 4 0 1 2 3", 1},               // an edge whose point isn't there
        {"f 4 0 1 2 3 mu 0 4 0 1 3 9 mu 5 1 1", 0}, // UVs and sets that aren't there
        {"f 4 0 1 2 3 h 3 0 1 99 f 4 0 1 2 3", 1},  // a hole that makes none
    };
    for (const auto& [faces, bad] : cases) {
        SCOPED_TRACE(faces);
        const auto mesh =
            read(two_quads.substr(0, two_quads.find("setAttr -s 2 -ch 8")) + "setAttr \".ed[7]\" 3 77 0;" +
                 "setAttr \".fc[0:1]\" -type \"polyFaces\" " + faces + ";");
        std::size_t without = 0;
        for (std::size_t face = 0; face < mesh->face_count(); ++face) without += mesh->corner_count(face) == 0;
        EXPECT_EQ(without, bad);
        EXPECT_EQ(mesh->corner_count(mesh->face_count() - 1), 4u);
        EXPECT_FALSE(mesh->notes.empty()); // at least the edge's
    }
}

TEST_F(MeshListsTest, takes_no_face_that_could_not_be_told_from_its_neighbours) {
    read(two_quads);
    Node& node = **scene().find_node("m");
    const PlugKey key = node.find_plug("fc[0]").key;
    const Value before = node.get(key);
    for (const RawTokens& words :
         {RawTokens{"componentList", {"f", "1"}}, RawTokens{"polyFaces", {}}, RawTokens{"polyFaces", {"mu", "0", "0"}}})
        EXPECT_FALSE(node.set(key, words)) << words.type;
    EXPECT_EQ(node.get(key), before);
}

TEST_F(MeshListsTest, stops_at_a_gap_and_reserves_nothing_for_it) {
    const auto mesh = read("setAttr \".vt[0:1]\" 0 0 0 1 0 0; setAttr \".vt[2000000000]\" 1 1 1;"
                           "setAttr \".uvst[1900000000].uvsp[1800000000]\" 0 0;");
    EXPECT_EQ(mesh->points.size(), 2u);
    ASSERT_EQ(mesh->notes.size(), 1u);
    EXPECT_EQ(mesh->notes[0], "its lists have gaps, and what stands behind one is left out");
}

TEST_F(MeshListsTest, takes_holes_and_normals_set_by_hand) {
    const auto mesh = read(R"(
        setAttr -s 8 ".vt[0:7]" 0 0 0 4 0 0 4 4 0 0 4 0 1 1 0 1 2 0 2 2 0 2 1 0;
        setAttr -s 8 ".ed[0:7]" 0 1 0 1 2 0 2 3 0 3 0 0 4 5 0 5 6 0 6 7 0 7 4 0;
        setAttr ".fc[0]" -type "polyFaces" f 4 0 1 2 3 h 4 4 5 6 7;
        setAttr -s 8 ".n[0:7]" -type "float3" 1 0 0 1e+20 1e+20 1e+20 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1 0 0 1;)");
    ASSERT_NE(mesh->holes_of(0), nullptr);
    EXPECT_EQ(mesh->holes_of(0)->lengths, (std::vector<std::size_t>{4}));
    EXPECT_EQ(area_vector(*mesh, 0), (Vector3{0.0, 0.0, 30.0}));
    const std::vector<Float3> normals = vertex_normals(*mesh);
    EXPECT_EQ(normals[0], (Float3{1.0f, 0.0f, 0.0f}));
    EXPECT_EQ(normals[1], (Float3{0.0f, 0.0f, 1.0f})); // not set: the face's own
}
