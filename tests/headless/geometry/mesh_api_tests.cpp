#include "tests/headless/api/api_test.h"

#include "headless/files/ma_reader.h"

#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>

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
    MStatus status;
    MFnLambertShader none(node("f"), &status);
    EXPECT_FALSE(status);
    (void)none.color(&status);
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
