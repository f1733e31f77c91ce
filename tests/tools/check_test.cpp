#include "tool_test.h"

#include <functional>
#include <limits>

namespace tool_test {
namespace {

using namespace VOR2_LOADER;

constexpr float infinity = std::numeric_limits<float>::infinity();

/// Two nodes, a material, and a mesh of each kind with one triangle that nothing is wrong with.
class CheckTest : public ToolTest {
protected:
    static VOR2 good_scene() {
        VOR2 scene = two_nodes();
        scene.materials.push_back(make_owned<VOR2_STANDARD_MATERIAL>());
        add_mesh(scene, scene.rigids, u"box");
        add_mesh(scene, scene.morph_meshes, u"face");
        VOR2_WEIGHTED_MESH& skin = add_mesh(scene, scene.weighted_meshes, u"skin");
        for (VOR2_WEIGHTED_MESH_VERT& vertex : skin.vertices) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = 1;
            bone.weight = 1;
        }
        return scene;
    }
    template<class MESH>
    static MESH& add_mesh(VOR2& scene, OWNED_ARRAY<MESH>& meshes, const char16_t* name) {
        MESH& mesh = *meshes.emplace_back(make_owned<MESH>());
        mesh.name = TEXT(name);
        mesh.matrix_index = 1;
        mesh.mapping_channels.push_back(1);
        mesh.vertices.grow_by(3);
        for (auto& vertex : mesh.vertices) vertex.uvs.push_back({0, 0, 0});
        mesh.add_sub_object_triangle({0, 1, 2}, 0, 1);
        (void)scene;
        return mesh;
    }
};

TEST_F(CheckTest, strictly_finds_exactly_what_is_broken) {
    save(good_scene(), "good.vr2");
    const Outcome good = run({"check", "good.vr2", "--strict"});
    EXPECT_EQ(good.exit_code, 0) << good.out;
    EXPECT_EQ(good.out, "good.vr2: no problems\n");

    struct Case {
        const char* record;
        const char* field;
        const char* value;
        std::function<void(VOR2&)> spoil;
    };
    const Case cases[] = {
        {"matrix_hierarchy.nodes[1]", "parent_index", "7",
         [](VOR2& s) { s.matrix_hierarchy.nodes[1].parent_index = 7; }},
        {"matrix_hierarchy.nodes[0]", "parent_index", "0",
         [](VOR2& s) { s.matrix_hierarchy.nodes[0].parent_index = 0; }},
        {"matrix_hierarchy.nodes[1]", "position_track.key_times[1]", "0",
         [](VOR2& s) { s.matrix_hierarchy.nodes[1].position_track->key_times()[1] = 0; }},
        {"matrix_hierarchy.nodes[1]", "position_track.key_values", "3 values",
         [](VOR2& s) {
             s.matrix_hierarchy.nodes[1].position_track->key_values().push_back({0, 0, 0});
         }},
        {"matrix_hierarchy.nodes[1]", "position_track.key_values[1]", "inf",
         [](VOR2& s) { s.matrix_hierarchy.nodes[1].position_track->key_values()[1].y = infinity; }},
        {"matrix_hierarchy.nodes[1]", "rotation_track.key_values[0]", "2",
         [](VOR2& s) {
             s.matrix_hierarchy.nodes[1].rotation_track->key_values()[0] = {0, 0, 0, 2};
         }},
        {"rigids[0]", "matrix_index", "9", [](VOR2& s) { s.rigids[0]->matrix_index = 9; }},
        {"rigids[0]", "sub_objects[0].material_id", "1", [](VOR2& s) { s.rigids[0]->sub_objects[0].material_id = 1; }},
        {"rigids[0]", "sub_objects[0].triangles[0].second", "3",
         [](VOR2& s) { s.rigids[0]->sub_objects[0].triangles[0].second = 3; }},
        {"rigids[0]", "vertices[2]", "0 UVW entries", [](VOR2& s) { s.rigids[0]->vertices[2].uvs.clear(); }},
        {"rigids[0]", "vertices[1].position", "inf", [](VOR2& s) { s.rigids[0]->vertices[1].position.x = infinity; }},
        {"morph_meshes[0]", "vertices[0].target_verts[0].target_index", "-1",
         [](VOR2& s) { s.morph_meshes[0]->vertices[0].target_verts.emplace_back(); }},
        {"weighted_meshes[0]", "vertices[0].bone_weights", "0.5",
         [](VOR2& s) { s.weighted_meshes[0]->vertices[0].bone_weights[0].weight = 0.5F; }},
        {"weighted_meshes[0]", "vertices[1].bone_weights[0].bone_index", "-2",
         [](VOR2& s) { s.weighted_meshes[0]->vertices[1].bone_weights[0].bone_index = -2; }},
        {"rigid_instances[0]", "instanced_object", "4",
         [](VOR2& s) {
             s.rigid_instances.push_back(make_owned<VOR2_INSTANCE>());
             s.rigid_instances[0]->instanced_object = 4;
             s.rigid_instances[0]->matrix_index = 0;
         }},
        {"xrefs_15[0]", "file_name", "\"gone.vr2\"",
         [](VOR2& s) {
             s.xrefs_15.push_back(make_owned<VOR2_XREF<15>>());
             s.xrefs_15[0]->file_name = TEXT(u"gone.vr2");
         }},
        {"environment", "time_range.end", "inf", [](VOR2& s) { s.environment.time_range.end = infinity; }},
    };
    for (const Case& broken : cases) {
        VOR2 scene = good_scene();
        broken.spoil(scene);
        save(scene, "broken.vr2");
        const Outcome outcome = run({"check", "broken.vr2", "--strict", "--json"});
        EXPECT_EQ(outcome.exit_code, 1);
        const Json findings = Json::parse(outcome.out)["findings"];
        ASSERT_EQ(findings.size(), 1U) << outcome.out;
        EXPECT_EQ(findings[0]["record"], broken.record);
        EXPECT_EQ(findings[0]["field"], broken.field);
        EXPECT_EQ(findings[0]["value"], broken.value);
    }
}

TEST_F(CheckTest, tells_a_block_a_mesh_and_saves_a_repaired_scene) {
    VOR2 scene = good_scene();
    scene.rigids[0]->vertices[0].normal.x = infinity;
    scene.rigids[0]->vertices[1].normal.x = infinity;
    scene.rigids[0]->vertices[1].uvs[0].z = infinity;
    scene.inf.file_info = TEXT(u"RECORD\r\n");
    save(scene, "bad.vr2");
    const Outcome outcome = run({"check", "bad.vr2", "--report", "bad.txt", "--fix", "mended.vr2"});
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_EQ(outcome.out, "bad.vr2: mesh \"box\"\n  mapping channel 1. Good U , Good V , BAD W!.\n"
                           "  bad normals: 2, at (0.00 , 0.00 , 0.00) (0.00 , 0.00 , 0.00)\n");
    EXPECT_TRUE(read("bad.txt").starts_with("RECORD\r\nObject Name: box. Max mapping channel: 1."));
    EXPECT_EQ(run({"check", "mended.vr2", "--strict"}).exit_code, 0);
    // What isn't broken is saved as it was.
    const Outcome difference = run({"diff", "bad.vr2", "mended.vr2", "--ignore", "normal", "--ignore", "uvs"});
    EXPECT_EQ(difference.exit_code, 0) << difference.out;
    expect_refused({"check", "missing.vr2"}, "missing.vr2", "");
}

} // namespace
} // namespace tool_test
