#include "tests/headless/api/api_test.h"

#include "headless/files/ma_reader.h"
#include "headless/geometry/mesh_data.h"
#include "headless/geometry/mesh_history.h"
#include "headless/geometry/modifiers.h"
#include "headless/geometry/primitives.h"

#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>

#include <cmath>
#include <filesystem>
#include <set>
#include <utility>

using namespace headless;

namespace {

class MeshHistoryTest : public ApiTest {
protected:
    bool read(const char* file) {
        const std::string path = std::string(VOR2_SHARED_DATA) + "/" + file;
        if (!std::filesystem::exists(path)) return false;
        return static_cast<bool>(session.open_file(path));
    }
    std::shared_ptr<const Mesh> mesh(const char* name) {
        const Result<Node*> node = scene().find_node(name);
        return node ? mesh_of(scene(), **node) : nullptr;
    }
    void run(const std::string& line) {
        const auto done = session.run_mel(line);
        EXPECT_TRUE(done) << line;
    }
};

void expect_closed(const Mesh& mesh) {
    // Each edge of a closed surface is gone along once each way, and corners minus edges plus faces is 2.
    std::multiset<std::pair<int, int>> sides;
    for (std::size_t face = 0; face < mesh.face_count(); ++face) {
        const auto vertices = mesh.vertices_of(face);
        for (std::size_t i = 0; i < vertices.size(); ++i)
            sides.emplace(vertices[i], vertices[(i + 1) % vertices.size()]);
    }
    for (const auto& [a, b] : sides) ASSERT_EQ(sides.count({b, a}), 1u) << a << " to " << b;
    EXPECT_EQ(sides.size(), 2 * mesh.edges.size());
    EXPECT_EQ(mesh.points.size() + mesh.face_count(), mesh.edges.size() + 2);
}

// By the divergence theorem: positive when faces run counter-clockwise seen from outside.
double volume(const Mesh& mesh) {
    double sum = 0.0;
    for (std::size_t face = 0; face < mesh.face_count(); ++face) {
        const auto at = mesh.vertices_of(face);
        const auto p = [&](std::size_t i) { return wide(mesh.points[static_cast<std::size_t>(at[i])]); };
        for (std::size_t i = 1; i + 1 < at.size(); ++i) sum += dot(p(0), cross(p(i), p(i + 1))) / 6.0;
    }
    return sum;
}

} // namespace

TEST_F(MeshHistoryTest, makes_closed_outward_shapes) {
    const double area20 = 10.0 * std::sin(2.0 * 3.14159265358979 / 20.0); // of a ring of 20 and radius 1
    const struct {
        const char* what;
        Mesh mesh;
        std::size_t points;
        double volume;
    } cases[] = {
        {"cube", make_cube({}, true), 8, 1.0},
        {"box", make_cube({2.0, 3.0, 4.0, 3, 4, 5}, true), 4 * 2 * 9 + 2 * 3 * 4, 24.0},
        {"cylinder", make_cylinder({}, true), 40, 2.0 * area20},
        {"fine cylinder", make_cylinder({2.0, 12.0, 8, 12, 3}, true), 13 * 8 + 2 * 17,
         12.0 * 4.0 * 4.0 * std::sqrt(0.5)},
        {"cone", make_cone({1.0, 3.0, 20, 3, 1}, true), 62, area20},
    };
    for (const auto& [what, mesh, points, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(mesh.points.size(), points);
        EXPECT_NEAR(volume(mesh), expected, 1e-5);
        expect_closed(mesh);
        for (const int uv : mesh.uv_sets[0].of_corner) {
            ASSERT_GE(uv, 0);
            ASSERT_LT(static_cast<std::size_t>(uv), mesh.uv_sets[0].values.size());
        }
    }
    const Mesh sphere = make_sphere(2.0, 12, 7, false);
    expect_closed(sphere);
    EXPECT_EQ(sphere.points.size(), 6u * 12 + 2);
    EXPECT_GT(volume(sphere), 0.0);
    for (const Float3& point : sphere.points) EXPECT_NEAR(length(wide(point)), 2.0, 1e-6);
    EXPECT_TRUE(sphere.uv_sets[0].values.empty());
    EXPECT_EQ(make_cube({1, 1, 1, 1'000'000'000'000, 9'000'000'000, 1}, true).face_count(), 0u);
    EXPECT_EQ(make_plane(1, 1, -4, 0, true).points.size(), 4u);
}

// The lists of a file's own cube, made by the host from the same parameters and frozen, are the measure.
TEST_F(MeshHistoryTest, numbers_a_cube_as_the_host_does) {
    if (!read("ComplexAnim1.ma")) GTEST_SKIP();
    const auto frozen = mesh("target1Shape"), made = mesh("characterShapeOrig");
    ASSERT_TRUE(frozen && made);
    EXPECT_EQ(made->corner_vertex, frozen->corner_vertex);
    EXPECT_EQ(made->uv_sets[0].of_corner, frozen->uv_sets[0].of_corner);
    ASSERT_EQ(made->uv_sets[0].values.size(), frozen->uv_sets[0].values.size());
    for (std::size_t i = 0; i < made->uv_sets[0].values.size(); ++i) {
        EXPECT_NEAR(made->uv_sets[0].values[i].u, frozen->uv_sets[0].values[i].u, 1e-6) << i;
        EXPECT_NEAR(made->uv_sets[0].values[i].v, frozen->uv_sets[0].values[i].v, 1e-6) << i;
    }
    const auto& points = MeshData::of(**scene().find_node("target1Shape"))->points().block();
    ASSERT_EQ(made->points.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(made->points[i], narrow(points[i])) << i;
    EXPECT_EQ(mesh("characterShape")->notes, Names());
}

TEST_F(MeshHistoryTest, gives_every_mesh_of_the_real_scenes) {
    const struct {
        const char *file, *shape;
        std::size_t points, faces;
    } cases[] = {
        {"CubeWithoutUVs.ma", "pCubeShape1", 8, 6},
        {"TranparentCube1.ma", "pCubeShape2", 8, 6},
        {"ComplexAnim1.ma", "targetShape3", 24, 22},
        {"FiveJointsFourInfluencesAnim.ma", "pCubeShape1", 24, 22},
        {"GroupedFingersPivotAnim1.ma", "upper_bodyShape", 8, 6},
        {"GroupedFingersPivotAnim1.ma", "palmShape", 98, 96}, // a cube divided twice
        {"SegmentScaleCompensationTest1.ma", "pCubeShape1", 8, 6},
        {"SegmentScaleCompensationTest1.ma", "pPlaneShape1", 9, 4},
        {"SkewedCubeAnim1.ma", "pCubeShape1", 8, 6},
        {"StepScalingTest.ma", "pCubeShape1", 8, 6},
        {"TwoJointsLogicalParentAnim.ma", "pPlaneShape1", 4, 1},
        {"ZeroParentScaleTestAnim.ma", "pCylinderShape1", 106, 112},
    };
    for (const auto& [file, shape, points, faces] : cases) {
        SCOPED_TRACE(file);
        if (!read(file)) GTEST_SKIP();
        const auto found = mesh(shape);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->points.size(), points);
        EXPECT_EQ(found->face_count(), faces);
        EXPECT_EQ(found->notes, Names());
    }
}

TEST_F(MeshHistoryTest, colours_vertices_and_moves_points) {
    if (!read("SegmentScaleCompensationTest1.ma")) GTEST_SKIP();
    MColorArray colours;
    ASSERT_TRUE(MFnMesh(path("pPlaneShape1")).getVertexColors(colours));
    ASSERT_EQ(colours.length(), 9u);
    EXPECT_EQ(colours[0], MColor(0.493f, 0.493f, 0.085299999f, 1.0f)); // of one face
    EXPECT_NEAR(colours[1].r, (0.493 + 0.218) / 2.0, 1e-6);            // the mean of two
    ASSERT_TRUE(read("GroupedFingersPivotAnim1.ma"));
    MObjectArray groups;
    MIntArray of_face;
    ASSERT_TRUE(MFnMesh(path("upper_bodyShape")).getConnectedShaders(0, groups, of_face));
    ASSERT_EQ(groups.length(), 1u);
    EXPECT_EQ(groups[0], node("initialShadingGroup"));
    for (const Float3& point : mesh("upper_bodyShape")->points)
        EXPECT_NEAR(std::abs(point.y - 0.99942482), 0.5, 1e-6); // a cube moved up
}

TEST_F(MeshHistoryTest, names_what_it_does_not_evaluate_and_follows_edits) {
    ASSERT_TRUE(read_maya_ascii_text(scene(), R"(
        createNode transform -n "t"; createNode mesh -n "m" -p "t";
        createNode polyCube -n "c"; createNode polyBevel3 -n "b";
        connectAttr "c.out" "b.ip"; connectAttr "b.out" "m.i";)",
                                     "test.ma", {}));
    const auto bevelled = mesh("m");
    EXPECT_EQ(bevelled->points.size(), 8u);
    ASSERT_EQ(bevelled->notes.size(), 1u);
    EXPECT_EQ(bevelled->notes[0], "'b' (polyBevel3) in its history isn't evaluated");
    EXPECT_EQ(mesh("m"), bevelled); // kept
    run("setAttr c.sw 3; setAttr c.ax 1 0 0; setAttr c.h 4;");
    const auto edited = mesh("m");
    EXPECT_EQ(edited->points.size(), 16u);
    EXPECT_NEAR(edited->points[0].x, -2.0f, 1e-6); // what was down now points along -x
    run("connectAttr -f m.o b.ip;");
    EXPECT_EQ(mesh("m")->face_count(), 0u);
    EXPECT_EQ(mesh("m")->notes, (std::vector<std::string>{"its history has no end"}));
}

// A square in a shape of its own that feeds another by way of a modifier.
constexpr const char* square = R"(
    createNode transform -n "t"; createNode mesh -n "from" -p "t"; createNode mesh -n "m" -p "t";
    setAttr -s 4 ".vt[0:3]" -type "float3" 0 0 0 2 0 0 2 2 0 0 2 0;
    select -ne "from"; setAttr -s 4 ".vt[0:3]" 0 0 0 2 0 0 2 2 0 0 2 0; setAttr -s 4 ".ed[0:3]" 0 1 0 1 2 0 2 3 0 3 0 0;
    setAttr ".ccls" -type "string" "paint"; setAttr ".clst[0].clsn" -type "string" "paint";
    setAttr -s 4 ".clst[0].clsp[0:3]" 1 0 0 1 0 1 0 1 0 0 1 1 1 1 1 0;
    setAttr -s 4 ".n[0:3]" -type "float3" 3 4 0 1e+20 1e+20 1e+20 0 0 -2 3 4 0;
    setAttr ".fc[0]" -type "polyFaces" f 4 0 1 2 3 mc 0 4 0 1 2 3;)";

TEST_F(MeshHistoryTest, divides_colours_as_it_divides_points) {
    ASSERT_TRUE(read_maya_ascii_text(scene(), square, "test.ma", {}));
    run("createNode polySubdFace -n d; setAttr d.ics -type componentList 3 \"vtx[0]\" \"f[x]\" \"f[0]\";"
        "connectAttr from.o d.ip; connectAttr d.out m.i;");
    const auto found = mesh("m");
    ASSERT_EQ(found->face_count(), 4u);
    // A quad at each corner: the corner, half way to the next, the middle, half way back.
    const auto colour = [&](std::size_t corner) {
        const ColourSet& set = found->colour_sets[0];
        return set.values[static_cast<std::size_t>(set.of_corner[corner])];
    };
    EXPECT_EQ(colour(0), (Float4{1.0f, 0.0f, 0.0f, 1.0f}));
    EXPECT_EQ(colour(1), (Float4{0.5f, 0.5f, 0.0f, 1.0f}));
    EXPECT_EQ(colour(2), (Float4{0.5f, 0.5f, 0.5f, 0.75f}));
    EXPECT_EQ(colour(3), (Float4{1.0f, 0.5f, 0.5f, 0.5f}));
    EXPECT_EQ(found->points[static_cast<std::size_t>(found->corner_vertex[2])], (Float3{1.0f, 1.0f, 0.0f}));
    EXPECT_TRUE(found->corner_normals.empty()); // they were those of the undivided faces
}

TEST_F(MeshHistoryTest, normals_set_by_hand_stay_square_to_what_is_scaled) {
    ASSERT_TRUE(read_maya_ascii_text(scene(), square, "test.ma", {}));
    run("createNode transformGeometry -n g; setAttr g.txf -type matrix 3 0 0 0 0 4 0 0 0 0 1 0 0 0 7 1;"
        "connectAttr from.o g.ig; connectAttr g.og m.i;");
    const auto found = mesh("m");
    EXPECT_EQ(found->points[2], (Float3{6.0f, 8.0f, 7.0f}));
    ASSERT_EQ(found->corner_normals.size(), 4u);
    EXPECT_NEAR(found->corner_normals[0].x, std::sqrt(0.5), 1e-6); // (3 / 3, 4 / 4, 0) at unit length
    EXPECT_NEAR(found->corner_normals[0].y, std::sqrt(0.5), 1e-6);
    EXPECT_FALSE(is_set_normal(found->corner_normals[1]));
    EXPECT_EQ(found->corner_normals[2], (Float3{0.0f, 0.0f, -1.0f}));
}

TEST_F(MeshHistoryTest, moves_points_by_tweaks_and_begins_with_spheres) {
    ASSERT_TRUE(read_maya_ascii_text(scene(), R"(
        createNode transform -n "t"; createNode mesh -n "m" -p "t"; createNode polySphere -n "s"; setAttr ".r" 2;
        setAttr ".sa" 12; setAttr ".sh" 7; createNode polyUnite -n "u"; createNode tweak -n "w";
        setAttr -s 2 ".vl[0].vt"; setAttr ".vl[0].vt[0]" -type "float3" 0 0 5;
        setAttr ".vl[0].vt[73]" -type "float3" 1 0 0;
        setAttr ".vl[0].vt[74]" -type "float3" 9 9 9; setAttr ".vl[1].vt[0]" -type "float3" 9 9 9;
        connectAttr "s.out" "w.ip[0].ig"; connectAttr "w.og[0]" "m.i";
        createNode mesh -n "n" -p "t"; connectAttr "u.out" "n.i";
        createNode polyCreator -n "c"; createNode mesh -n "o" -p "t"; connectAttr "c.out" "o.i";)",
                                     "test.ma", {}));
    const auto found = mesh("m");
    ASSERT_EQ(found->points.size(), 6u * 12 + 2);
    for (std::size_t i = 0; i < found->points.size(); ++i) {
        const Vector3 by = i == 0 ? Vector3{0, 0, 5} : i == 73 ? Vector3{1, 0, 0} : Vector3{};
        EXPECT_NEAR(length(wide(found->points[i]) - by), 2.0, 1e-6) << i;
    }
    EXPECT_EQ(mesh("n")->points.size(), 0u);
    EXPECT_EQ(mesh("n")->notes, Names{"'u' (polyUnite) in its history isn't evaluated"});
    EXPECT_EQ(mesh("o")->notes, Names{"'c' (polyCreator) in its history isn't evaluated"});
}

TEST_F(MeshHistoryTest, makes_no_more_corners_than_are_allowed_for_all_meshes_together) {
    run("createNode polyCube -n c; createNode transform -n t; createNode mesh -n m -p t; connectAttr c.out m.i;"
        "createNode mesh -n n -p t; connectAttr m.o n.i; createNode mesh -n o -p t; connectAttr m.o o.i;");
    const std::size_t usual =
        std::exchange(MeshLimits::made_corners, 2 * 48 + 47); // each has 24, once for itself and once for its UVs
    EXPECT_EQ(mesh("m")->face_count() + mesh("n")->face_count(), 12U);
    const auto third = mesh("o");
    EXPECT_EQ(third->face_count(), 0U);
    EXPECT_EQ(third->notes.size(), 1U);
    run("delete n; setAttr c.w 2;");
    EXPECT_EQ(mesh("o")->face_count(), 6U) << "there is room again";
    MeshLimits::made_corners = usual;
}

TEST_F(MeshHistoryTest, divides_only_the_chosen_faces) {
    run("createNode transform -n t; createNode mesh -n m -p t; createNode polyCube -n c;");
    run("createNode polySubdFace -n d; connectAttr c.out d.ip; connectAttr d.out m.i;");
    run("setAttr d.ics -type componentList 2 \"f[0]\" \"f[2:900]\";");
    const auto found = mesh("m");
    EXPECT_EQ(found->points.size(), 8u + 12 + 5); // every edge belongs to a chosen face
    EXPECT_EQ(found->face_count(), 5u * 4 + 1);
    expect_closed(*found);
    EXPECT_NEAR(volume(*found), 1.0, 1e-6);
    run("setAttr d.dv 1000000; setAttr c.sw 500; setAttr c.sh 600;");
    EXPECT_LE(mesh("m")->corner_vertex.size(), MeshLimits::divided_corners);
    EXPECT_FALSE(mesh("m")->notes.empty());
    run("setAttr d.ics -type componentList 1 \"f[900000]\"; setAttr d.dv 1e18; setAttr c.sw 1; setAttr c.sh 1;");
    EXPECT_EQ(mesh("m")->face_count(), 6U) << "none is chosen, however often";
}
