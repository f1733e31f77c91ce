#include "tests/headless/api/api_test.h"

#include "headless/files/ma_reader.h"

#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFn.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>

#include <cmath>

using namespace headless;

namespace {

class MeshApiTest : public ApiTest {
protected:
    MeshApiTest() {
        run("createNode transform -n t; createNode mesh -n m -p t; createNode polyCube -n c; connectAttr c.out m.i;");
        run("setAttr t.t 10 0 0; setAttr t.s 1 2 1;");
    }
    void run(const std::string& line) {
        const auto done = session.run_mel(line);
        EXPECT_TRUE(done) << line << ": " << (done ? "" : done.error().message);
    }
};

std::vector<int> list(const MIntArray& array) {
    std::vector<int> out(array.length());
    array.get(out.data());
    return out;
}

} // namespace

TEST_F(MeshApiTest, gives_the_shape_of_a_cube) {
    const MFnMesh mesh(path("m"));
    MIntArray counts, vertices;
    ASSERT_TRUE(mesh.getTriangles(counts, vertices));
    EXPECT_EQ(list(counts), (std::vector<int>(6, 2)));
    EXPECT_EQ(list(vertices), (std::vector<int>{0, 1, 2, 2, 1, 3, 2, 3, 4, 4, 3, 5, 4, 5, 6, 6, 5, 7,
                                                6, 7, 0, 0, 7, 1, 1, 7, 3, 3, 7, 5, 6, 0, 4, 4, 0, 2}));
    EXPECT_EQ(mesh.numVertices(), 8);
    EXPECT_EQ(mesh.numEdges(), 12);
    EXPECT_EQ(mesh.numPolygons(), 6);
    EXPECT_EQ(mesh.numUVSets(), 1);
    MIntArray polygon;
    ASSERT_TRUE(mesh.getPolygonVertices(4, polygon));
    EXPECT_EQ(list(polygon), (std::vector<int>{1, 7, 5, 3}));
    EXPECT_EQ(mesh.getPolygonVertices(6, polygon), MStatus::kInvalidParameter);
    float u = 9.0f, v = 9.0f;
    ASSERT_TRUE(mesh.getUV(3, u, v));
    EXPECT_EQ(u, 0.625f);
    EXPECT_EQ(v, 0.25f);
    EXPECT_FALSE(mesh.getUV(14, u, v));
    int uv = 0;
    ASSERT_TRUE(mesh.getPolygonUVid(4, 1, uv));
    EXPECT_EQ(uv, 10);
}

TEST_F(MeshApiTest, gives_points_and_normals_in_either_space) {
    const MFnMesh mesh(path("m"));
    MPointArray points;
    MFloatVectorArray normals;
    ASSERT_TRUE(mesh.getPoints(points));
    EXPECT_EQ(points[7], MPoint(0.5, -0.5, -0.5));
    ASSERT_TRUE(mesh.getNormals(normals));
    const double third = std::sqrt(1.0 / 3.0);
    EXPECT_NEAR(normals[7].x, third, 1e-6);
    EXPECT_NEAR(normals[7].y, -third, 1e-6);
    ASSERT_TRUE(mesh.getPoints(points, MSpace::kWorld));
    EXPECT_EQ(points[7], MPoint(10.5, -1.0, -0.5));
    ASSERT_TRUE(mesh.getNormals(normals, MSpace::kWorld));
    // (1, -1/2, -1) in unit length: normals go by the inverse of the scale.
    EXPECT_NEAR(normals[7].x, 2.0 / 3.0, 1e-6);
    EXPECT_NEAR(normals[7].y, -1.0 / 3.0, 1e-6);
}

TEST_F(MeshApiTest, gives_single_points_in_every_space) {
    run("createNode transform -n g; setAttr g.ty 100; parent -r t g;");
    const MFnMesh mesh(path("m"));
    MPoint point;
    ASSERT_TRUE(mesh.getPoint(7, point));
    EXPECT_EQ(point, MPoint(0.5, -0.5, -0.5));
    ASSERT_TRUE(mesh.getPoint(7, point, MSpace::kPostTransform)); // through its own transform alone
    EXPECT_EQ(point, MPoint(10.5, -1.0, -0.5));
    ASSERT_TRUE(mesh.getPoint(7, point, MSpace::kWorld));
    EXPECT_EQ(point, MPoint(10.5, 99.0, -0.5));
    EXPECT_EQ(mesh.getPoint(8, point), MStatus::kInvalidParameter);
    EXPECT_EQ(mesh.getPoint(-1, point), MStatus::kInvalidParameter);
}

TEST_F(MeshApiTest, gives_faces_edges_and_sets_as_the_file_has_them) {
    // A quad and, with another coordinate set and its shared edge gone along backwards, a triangle beside it.
    const auto done = read_maya_ascii_text(scene(), R"(requires maya "2016";
        createNode transform -n "u"; createNode mesh -n "two" -p "u";
        setAttr ".cuvs" -type "string" "light";
        setAttr ".uvst[0].uvsn" -type "string" "map1";
        setAttr ".uvst[0].uvsp[0:3]" -type "float2" 0 0 1 0 1 1 0 1;
        setAttr ".uvst[1].uvsn" -type "string" "light";
        setAttr ".uvst[1].uvsp[0:2]" -type "float2" 0.5 0 0.25 0.125 0 0.75;
        setAttr ".clst[0].clsn" -type "string" "base";
        setAttr ".clst[1].clsn" -type "string" "paint";
        setAttr ".vt[0:4]" 0 0 0 1 0 0 1 1 0 0 1 0 2 0 0;
        setAttr ".ed[0:5]" 0 1 0 1 2 1 2 3 0 3 0 0 1 4 0 4 2 0;
        setAttr ".fc[0:1]" -type "polyFaces" f 4 0 1 2 3 mu 0 4 0 1 2 3 f 3 4 5 -2 mu 1 3 2 0 1;)",
                                           "test.ma", {});
    ASSERT_TRUE(done) << (done ? "" : done.error().text());
    const MFnMesh mesh(path("two"));
    EXPECT_EQ(mesh.numFaceVertices(), 7);
    EXPECT_EQ(mesh.polygonVertexCount(0), 4);
    EXPECT_EQ(mesh.polygonVertexCount(1), 3);
    MIntArray counts, vertices;
    ASSERT_TRUE(mesh.getVertices(counts, vertices));
    EXPECT_EQ(list(counts), (std::vector<int>{4, 3}));
    EXPECT_EQ(list(vertices), (std::vector<int>{0, 1, 2, 3, 1, 4, 2}));
    int ends[2] = {-1, -1};
    ASSERT_TRUE(mesh.getEdgeVertices(5, ends));
    EXPECT_EQ(ends[0], 4);
    EXPECT_EQ(ends[1], 2);
    EXPECT_TRUE(mesh.isEdgeSmooth(1));
    EXPECT_FALSE(mesh.isEdgeSmooth(0));
    MStatus status;
    for (const int none : {-1, 6}) {
        EXPECT_EQ(mesh.getEdgeVertices(none, ends), MStatus::kInvalidParameter);
        EXPECT_FALSE(mesh.isEdgeSmooth(none, &status));
        EXPECT_EQ(status, MStatus::kInvalidParameter);
        EXPECT_EQ(mesh.polygonVertexCount(none, &status), 0);
        EXPECT_EQ(status, MStatus::kInvalidParameter);
    }
    MStringArray names;
    ASSERT_TRUE(mesh.getUVSetNames(names));
    EXPECT_EQ(names[0] + " " + names[1], "map1 light");
    EXPECT_EQ(mesh.numColorSets(), 2);
    ASSERT_TRUE(mesh.getColorSetNames(names));
    EXPECT_EQ(names[0] + " " + names[1], "base paint");
    const MString map("map1"), unknown("nothing");
    EXPECT_EQ(mesh.numUVs(), 3); // of the current one
    EXPECT_EQ(mesh.numUVs(map), 4);
    EXPECT_EQ(mesh.numUVs(unknown, &status), 0);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    MFloatArray u, v;
    ASSERT_TRUE(mesh.getUVs(u, v));
    ASSERT_EQ(v.length(), 3u);
    EXPECT_EQ(u[1], 0.25f);
    EXPECT_EQ(v[1], 0.125f);
    ASSERT_TRUE(mesh.getUVs(u, v, &map));
    EXPECT_EQ(u.length(), 4u);
    EXPECT_FALSE(mesh.getUVs(u, v, &unknown));
    int uv = -1;
    EXPECT_TRUE(mesh.getPolygonUVid(1, 0, uv));
    EXPECT_EQ(uv, 2);
    EXPECT_EQ(mesh.getPolygonUVid(0, 0, uv), MStatus::kFailure); // no coordinates there
    EXPECT_EQ(mesh.getPolygonUVid(1, 3, uv), MStatus::kInvalidParameter);
}

TEST_F(MeshApiTest, gives_minus_one_for_vertices_without_a_colour) {
    MFnMesh mesh(path("m"));
    MColorArray colours;
    ASSERT_TRUE(mesh.getVertexColors(colours));
    ASSERT_EQ(colours.length(), 8u);
    EXPECT_EQ(colours[0], MColor(-1.0f, -1.0f, -1.0f, -1.0f));
    const MColor grey(0.5f, 0.5f, 0.5f);
    ASSERT_TRUE(mesh.getVertexColors(colours, NULL, &grey));
    EXPECT_EQ(colours[7], grey);
    const MString unknown("nothing");
    EXPECT_FALSE(mesh.getVertexColors(colours, &unknown));
}

TEST_F(MeshApiTest, finds_the_shading_groups_of_objects_instances_and_faces) {
    run("createNode shadingEngine -n red; createNode shadingEngine -n blue; createNode objectSet -n other;");
    run("createNode transform -n u; parent -s -add m u;");
    run("connectAttr m.iog[0] red.dsm[0]; connectAttr m.iog[1] blue.dsm[0];");
    run("setAttr m.iog[0].og[0].gcl -type componentList 2 \"f[1:2]\" \"f[77]\"; connectAttr m.iog[0].og[0] "
        "blue.dsm[1];");
    run("setAttr m.iog[0].og[1].gcl -type componentList 1 \"f[*]\"; connectAttr m.iog[0].og[1] other.dsm[0];");
    const MFnMesh mesh(path("|t|m"));
    MObjectArray groups;
    MIntArray of_face;
    ASSERT_TRUE(mesh.getConnectedShaders(0, groups, of_face));
    ASSERT_EQ(groups.length(), 2u);
    EXPECT_EQ(groups[0], node("red"));
    EXPECT_EQ(list(of_face), (std::vector<int>{0, 1, 1, 0, 0, 0}));
    ASSERT_TRUE(mesh.getConnectedShaders(1, groups, of_face));
    ASSERT_EQ(groups.length(), 1u);
    EXPECT_EQ(list(of_face), (std::vector<int>(6, 0)));
    EXPECT_FALSE(mesh.getConnectedShaders(2, groups, of_face));
    run("setAttr m.iog[0].og[2].gcl -type componentList 3 \"f[2:3]\" \"f[4]\" \"f[3:4]\"; connectAttr "
        "m.iog[0].og[2] red.dsm[1]; setAttr m.iog[0].og[3].gcl -type componentList 1 \"f[3:2]\"; connectAttr "
        "m.iog[0].og[3] blue.dsm[2];");
    ASSERT_TRUE(mesh.getConnectedShaders(0, groups, of_face));
    EXPECT_EQ(list(of_face), (std::vector<int>{0, 1, 0, 0, 0, 0})) << "later groups take faces from earlier ones";
    run("disconnectAttr m.iog[1] blue.dsm[0];");
    ASSERT_TRUE(mesh.getConnectedShaders(1, groups, of_face));
    EXPECT_EQ(groups.length(), 0u);
    EXPECT_EQ(list(of_face), (std::vector<int>(6, -1)));
}

TEST_F(MeshApiTest, reads_lamberts_and_what_derives_from_them) {
    run("createNode blinn -n b; createNode phong -n p; createNode file -n f; setAttr b.ambc 0.1 0.2 0.3; setAttr b.it "
        "1 0 0;");
    EXPECT_TRUE(node("b").hasFn(MFn::kLambert));
    EXPECT_TRUE(node("p").hasFn(MFn::kReflect));
    EXPECT_FALSE(node("f").hasFn(MFn::kLambert));
    const MFnLambertShader shader(node("b"));
    EXPECT_EQ(shader.ambientColor(), MColor(0.1f, 0.2f, 0.3f, 1.0f));
    EXPECT_EQ(shader.transparency(), MColor(1.0f, 0.0f, 0.0f, 1.0f));
    run("setAttr b.ic 0.4 0.5 0.6; setAttr b.dc 0.7; setAttr b.tc 0.25;");
    EXPECT_EQ(shader.incandescence(), MColor(0.4f, 0.5f, 0.6f, 1.0f));
    EXPECT_EQ(shader.diffuseCoeff(), 0.7f);
    EXPECT_EQ(shader.translucenceCoeff(), 0.25f);
    MStatus status;
    MFnLambertShader none(node("f"), &status);
    EXPECT_FALSE(status);
    (void)none.color(&status);
    EXPECT_FALSE(status);
    status = MStatus();
    (void)none.diffuseCoeff(&status);
    EXPECT_FALSE(status);
}

TEST_F(MeshApiTest, fails_on_what_is_no_mesh_or_is_gone) {
    MStatus status;
    MFnMesh mesh(path("t"), &status);
    EXPECT_FALSE(status);
    MIntArray counts, vertices;
    EXPECT_FALSE(mesh.getTriangles(counts, vertices));
    MFnMesh gone(path("m"));
    run("delete m");
    MPointArray points;
    EXPECT_FALSE(gone.getPoints(points));
    EXPECT_FALSE(gone.getTriangles(counts, vertices));
    MPoint point;
    MStringArray names;
    MFloatArray u, v;
    int ends[2];
    EXPECT_FALSE(gone.getVertices(counts, vertices) || gone.getPoint(0, point) || gone.getEdgeVertices(0, ends));
    EXPECT_FALSE(gone.getUVs(u, v) || gone.getUVSetNames(names) || gone.getColorSetNames(names));
    EXPECT_EQ(gone.numFaceVertices(&status) + gone.numUVs() + gone.numColorSets() + gone.polygonVertexCount(0), 0);
    EXPECT_FALSE(status);
}

TEST_F(MeshApiTest, an_empty_mesh_is_one_without_polygons) {
    run("createNode transform -n e; createNode mesh -n empty -p e;");
    MFnMesh mesh(path("empty"));
    MIntArray counts, vertices;
    MPointArray points;
    MColorArray colours;
    EXPECT_TRUE(mesh.getTriangles(counts, vertices));
    EXPECT_TRUE(mesh.getPoints(points));
    EXPECT_TRUE(mesh.getVertexColors(colours));
    EXPECT_EQ(mesh.numPolygons(), 0);
    EXPECT_EQ(mesh.numUVSets(), 0);
}
