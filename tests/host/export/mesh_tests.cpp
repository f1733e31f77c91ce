#include "tests/host/host_test.h"

#include "host/export/mesh_export.h"
#include "host/export/mesh_placement.h"
#include "host/export/mesh_translation.h"
#include "host/export/whole_mesh.h"

#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <cmath>
#include <filesystem>

namespace VOR2_EXPORTER_MAYA {
namespace {

class MESH_TEST : public HOST_TEST {
protected:
    MESH_TEST() {
        printed.clear();
        platform::print_line_hook = [](std::string_view line) { printed.emplace_back(line); };
        run("createNode transform -n t; createNode mesh -n m -p t; createNode polyCube -n c; connectAttr c.out m.i;");
    }
    ~MESH_TEST() override { mesh_options().meshes = false; }

    void run(const std::string& line) {
        const auto done = session.run_mel(line);
        ASSERT_TRUE(done) << line;
    }
    static MObject object(const char* name) {
        MSelectionList list;
        MObject out;
        if (MGlobal::getSelectionListByName(name, list)) list.getDependNode(0, out);
        return out;
    }
    /// With the group's shader; gives nothing.
    void shade(const std::string& shape, const std::string& group, const std::string& shader) {
        run("createNode shadingEngine -n " + group + "; connectAttr " + shader + ".outColor " + group +
            ".ss; connectAttr " + shape + " " + group + ".dsm[0];");
    }
    static inline std::vector<std::string> printed;
};

std::vector<u32> material_ids(const VOR2_RIGID& rigid) {
    std::vector<u32> out;
    for (const VOR2_TRI_SUB_OBJECT& group : rigid.sub_objects) out.push_back(group.material_id);
    return out;
}

TEST_F(MESH_TEST, translates_each_corner_of_each_triangle_to_a_vertex_of_its_own) {
    run("setAttr c.w 300; setAttr c.h 20; setAttr c.d 1;");
    VOR2 root;
    ASSERT_TRUE(translate_mesh(path_of("m"), root));
    ASSERT_EQ(root.rigids.size(), 1U);
    const VOR2_RIGID& rigid = *root.rigids[0];
    ASSERT_EQ(rigid.vertices.size(), 36U);
    ASSERT_EQ(rigid.sub_objects.size(), 1U);
    EXPECT_EQ(rigid.sub_objects[0].triangles.size(), 12U);
    EXPECT_EQ(rigid.sub_objects[0].material_id, NO_MATERIAL);
    // The first triangle is 0, 1, 2 of the cube's front, whose z of 0.5 turns negative.
    EXPECT_EQ(rigid.vertices[1].position, VECTOR_3(1.5F, -0.1F, -0.005F));
    EXPECT_EQ(rigid.vertices[1].colour, VOR2_COLOUR());
    EXPECT_GT(rigid.vertices[1].normal.z, 0.0F);
    ASSERT_EQ(rigid.vertices[1].uvs.size(), 1U);
    EXPECT_EQ(rigid.vertices[1].uvs[0], VECTOR_3(0.625F, 0.0F, 0.0F));
    EXPECT_EQ(rigid.sub_objects[0].triangles[11], VOR2_CARD32_TRIPLE(33, 34, 35));
}

TEST_F(MESH_TEST, divides_in_double_precision_and_leaves_out_the_colour_that_means_none) {
    const MFnMesh mesh(path_of("m"));
    VOR2_RIGID_VERT vertex;
    vertex.colour = VOR2_COLOUR(9, 9, 9, 9);
    EXPECT_TRUE(translate_vertex(mesh, 999, MPoint(0.1, 1.0 / 3.0, -12345.678), MFloatVector(1, 2, 3),
                                 MColor(-1, -1, -1, -1), vertex));
    EXPECT_EQ(vertex.position,
              VECTOR_3(static_cast<f32>(0.001), static_cast<f32>(1.0 / 300.0), static_cast<f32>(123.45678)));
    EXPECT_EQ(vertex.normal, VECTOR_3(1, 2, 3));
    EXPECT_EQ(vertex.colour, VOR2_COLOUR(9, 9, 9, 9));
    EXPECT_EQ(vertex.uvs[0], VECTOR_3(0, 0, 0)); // no UV of that number
    translate_vertex(mesh, 0, MPoint(), MFloatVector(), MColor(-1, -1, -1, 0.5F), vertex);
    EXPECT_EQ(vertex.colour, VOR2_COLOUR(-1, -1, -1, 0.5F));
}

TEST_F(MESH_TEST, tells_which_part_of_a_mesh_was_not_to_be_had) {
    VOR2 root;
    EXPECT_FALSE(translate_mesh(path_of("t"), root)); // no mesh
    ASSERT_EQ(root.rigids.size(), 1U);
    EXPECT_EQ(root.rigids[0]->vertices.size(), 0U);
    ASSERT_FALSE(printed.empty());
    EXPECT_TRUE(printed.back().starts_with("Failed to getTriangles (mesh: ")) << printed.back();
    EXPECT_TRUE(said("E: " + printed.back()));
    const MStatus failure(MStatus::kFailure);
    EXPECT_TRUE(printed.back().ends_with(std::string(") - ") + failure.errorString().asChar()));
    run("createNode transform -n e; createNode mesh -n empty -p e;");
    EXPECT_TRUE(translate_mesh(path_of("empty"), root));
    EXPECT_EQ(root.rigids[1]->sub_objects.size(), 0U);
}

TEST_F(MESH_TEST, numbers_objects_in_the_order_in_which_they_are_first_asked_for) {
    run("createNode lambert -n numbered_a; createNode lambert -n numbered_b;");
    const u32 first = shader_index(object("numbered_b"));
    EXPECT_EQ(shader_index(object("numbered_a")), first + 1);
    EXPECT_EQ(shader_index(object("numbered_b")), first);
    EXPECT_EQ(shader_index(path_of("t").node()), first + 2);
}

TEST_F(MESH_TEST, translates_lamberts_and_refuses_other_shaders_and_second_times) {
    run("createNode phong -n shiny; setAttr shiny.ambc 0.25 0.5 0.75; setAttr shiny.it 0.5 0.5 0.5; createNode file -n "
        "f;");
    VOR2 root;
    EXPECT_TRUE(translate_material(object("shiny"), root));
    ASSERT_EQ(root.materials.size(), shader_index(object("shiny")) + 1U);
    const auto& material = dynamic_cast<const VOR2_STANDARD_MATERIAL&>(*root.materials.back());
    EXPECT_EQ(material.name, TEXT(u"shiny"));
    ASSERT_EQ(material.ambient_colour->key_values().size(), 1U);
    EXPECT_EQ(material.ambient_colour->key_values()[0], VOR2_COLOUR(0.25F, 0.5F, 0.75F, 1.0F));
    EXPECT_EQ(material.ambient_colour->key_times()[0], 0.0F);
    EXPECT_EQ(material.transparency->key_values()[0], 1.0F); // the fourth component
    EXPECT_FALSE(translate_material(object("shiny"), root));
    EXPECT_EQ(printed.back(), "Double allocating a material (shiny) ! How?");
    EXPECT_FALSE(translate_material(object("f"), root));
    EXPECT_EQ(printed.back(), "Unhandled shader type (f)");
    ASSERT_TRUE(root.materials.back());
    EXPECT_TRUE(root.materials.back()->equals(VOR2_STANDARD_MATERIAL()));
}

TEST_F(MESH_TEST, exports_meshes_only_when_asked_to) {
    select({"t"});
    EXPECT_EQ(exported().rigids.size(), 0U);
}

TEST_F(MESH_TEST, exports_materials_once_each_and_without_gaps) {
    run("createNode lambert -n red; createNode blinn -n blue; createNode surfaceShader -n odd; addAttr -ln outColor "
        "-dt string odd; createNode transform -n u;"
        "createNode mesh -n n -p u; connectAttr c.out n.i; parent -s -add m u;");
    run("setAttr m.iog[0].og[0].gcl -type componentList 1 \"f[0:1]\";");
    shade("m.iog[0]", "redSG", "red");
    shade("m.iog[0].og[0]", "blueSG", "blue");
    shade("n.iog[0]", "redSG2", "red");
    shade("m.iog[1]", "oddSG", "odd");
    select({"t", "u"});
    mesh_options().meshes = true;
    const VOR2 root = exported();
    ASSERT_EQ(root.rigids.size(), 3U); // m twice, as an instance
    ASSERT_EQ(root.materials.size(), 3U);
    EXPECT_EQ(material_ids(*root.rigids[0]), (std::vector<u32>{1, 0}));
    EXPECT_EQ(root.materials[0]->name, TEXT(u"red"));
    EXPECT_EQ(root.materials[1]->name, TEXT(u"blue"));
    EXPECT_EQ(root.materials[2]->name, TEXT(u"odd"));
    EXPECT_EQ(root.rigids[0]->name, TEXT(u"m"));
    ASSERT_EQ(root.rigids[0]->mapping_channels.size(), 1U);
    EXPECT_EQ(root.rigids[0]->mapping_channels[0], 1U);
    EXPECT_TRUE(said("W: This shader's values have no place in a material, which has its name and its textures: odd"));
    for (const std::string& message : messages) EXPECT_FALSE(message.starts_with("E: ")) << message;
}

TEST_F(MESH_TEST, gives_materials_what_their_shaders_say_and_the_pictures_on_them) {
    run("createNode blinn -n shiny; setAttr shiny.it 0.2 0.4 0.6; setAttr shiny.ec 0.25; setAttr shiny.ic 0 0.5 0;"
        "createNode file -n f; setAttr f.ftn -type string \"skin.png\"; connectAttr f.oc shiny.c;"
        "createNode place2dTexture -n p; setAttr p.reu 3; setAttr p.ofv 0.5; setAttr p.mu 1; connectAttr p.re f.re;"
        "connectAttr p.of f.of; connectAttr p.mu f.mu; createNode file -n g; setAttr g.ftn -type string \"n.png\";"
        "createNode bump2d -n b; setAttr b.bi 1; connectAttr g.oa b.bv; connectAttr b.o shiny.n;"
        "createNode aiStandardSurface -n metal; setAttr metal.metalness 1; setAttr metal.base 0.5;"
        "setAttr metal.base_color 1 0.5 0; setAttr metal.specular_roughness 0.75; setAttr metal.opacity 0.5 0.5 0.5;"
        "createNode file -n h; setAttr h.ftn -type string \"leaf.png\"; setAttr h.s 1; createNode lambert -n leaf;"
        "connectAttr h.ot leaf.it; connectAttr h.oa leaf.cr;"
        "setAttr m.iog[0].og[0].gcl -type componentList 1 \"f[0:1]\";"
        "setAttr m.iog[0].og[1].gcl -type componentList 1 \"f[2]\";");
    shade("m.iog[0]", "shinySG", "shiny");
    shade("m.iog[0].og[0]", "metalSG", "metal");
    shade("m.iog[0].og[1]", "leafSG", "leaf");
    select({"t"});
    mesh_options().meshes = true;
    VOR2 root = exported();
    ASSERT_EQ(root.materials.size(), 3U);
    const auto& shiny = dynamic_cast<const VOR2_STANDARD_MATERIAL&>(*root.materials[0]);
    EXPECT_EQ(shiny.colour_track_1->key_values()[0], VOR2_COLOUR(1, 1, 1, 1)); // the picture's own
    EXPECT_EQ(shiny.colour_track_3->key_values()[0], VOR2_COLOUR(0, 0.5F, 0, 1));
    EXPECT_FLOAT_EQ(shiny.transparency->key_values()[0], 0.4F);
    EXPECT_FLOAT_EQ(shiny.float_track_1->key_values()[0], 0.75F);
    ASSERT_EQ(shiny.maps.size(), 2U);
    const auto& picture = dynamic_cast<const VOR2_BITMAP_MATERIAL_MAP&>(*shiny.maps[0]);
    EXPECT_EQ(picture.map_text, TEXT(u"colour"));
    EXPECT_EQ(picture.bitmap_params.bitmap_name, TEXT(u"skin.png"));
    EXPECT_EQ(picture.coordinates.uv_track_0->key_values()[0], VECTOR_2(0.0F, 0.5F));
    EXPECT_EQ(picture.coordinates.uv_track_1->key_values()[0], VECTOR_2(3.0F, 1.0F));
    EXPECT_EQ(picture.coordinates.wrap_mode.u_mode, 2U);
    EXPECT_EQ(picture.coordinates.wrap_mode.v_mode, 1U);
    const auto& normal = dynamic_cast<const VOR2_NORMAL_MATERIAL_MAP&>(*shiny.maps[1]);
    EXPECT_EQ(dynamic_cast<const VOR2_BITMAP_MATERIAL_MAP&>(*normal.first_map).bitmap_params.bitmap_name,
              TEXT(u"n.png"));
    const auto& metal = dynamic_cast<const VOR2_STANDARD_MATERIAL&>(*root.materials[1]);
    EXPECT_EQ(metal.colour_track_1->key_values()[0], VOR2_COLOUR(0.5F, 0.25F, 0, 1));
    EXPECT_FLOAT_EQ(metal.transparency->key_values()[0], 0.5F);
    EXPECT_EQ(metal.extended_properties.float_properties[0].name, TEXT(u"metallic"));
    EXPECT_FLOAT_EQ(metal.extended_properties.float_properties[1].track->key_values()[0], 0.75F);
    const auto& leaf = dynamic_cast<const VOR2_STANDARD_MATERIAL&>(*root.materials[2]);
    ASSERT_EQ(leaf.maps.size(), 2U);
    EXPECT_EQ(leaf.maps[1]->map_text, TEXT(u"opacity")); // what feeds the transparency is its inverse
    EXPECT_TRUE(said("W: A picture goes along with its repeat, offset, rotation and wrapping, but not with h.stagger"));
}

/// Where the file has a vertex in the world, against where the host has it: (x, y, -z) in metres.
void expect_in_place(VOR2& root, u64 rigid_index, const MDagPath& shape, f32 time, f32 turn = 1.0F) {
    root.set_time(time);
    const VOR2_RIGID& rigid = *root.rigids[rigid_index];
    ASSERT_LT(rigid.matrix_index, root.matrix_hierarchy.nodes.size());
    const MATRIX_3X4& node = root.matrix_hierarchy.nodes[rigid.matrix_index].world_matrix;
    MPointArray points;
    WHOLE_MESH whole;
    ASSERT_TRUE(MFnMesh(shape).getPoints(points, MSpace::kWorld));
    ASSERT_TRUE(read_whole_mesh(
        shape, MObject(), [](const MObject&) { return 0U; }, whole));
    ASSERT_EQ(rigid.vertices.size(), whole.point_of.size());
    for (u64 i = 0; i < rigid.vertices.size(); ++i) {
        const MPoint& p = points[whole.point_of[i]];
        expect_vector(node.transform_point(rigid.vertices[i].position), turn * static_cast<f32>(p.x / 100),
                      static_cast<f32>(p.y / 100), -turn * static_cast<f32>(p.z / 100), 2e-6F);
    }
}

TEST_F(MESH_TEST, puts_meshes_where_the_host_has_them) {
    run("setAttr c.w 40; setAttr c.h 70; setAttr c.d 110; createNode transform -n base; createNode joint -n j -p base;"
        "parent -r t j; setAttr base.t 10 20 30; setAttr base.r 10 20 30; setAttr j.t -5 60 7; setAttr j.jo 40 0 -75;"
        "setAttr t.t 3 2 1; setAttr t.ro 3; setAttr t.r 15 -160 50; setAttr t.rp 1 8 2; setAttr t.sp 3 3 3;");
    mesh_options().meshes = true;
    struct CASE {
        const char* what;
        const char* line;
        u64 extra_nodes;
    };
    const CASE cases[] = {{"turned", "", 1},
                          {"scaled", "setAttr t.s 1 2 3;", 1},
                          {"mirrored", "setAttr t.s -1 2 3;", 2},
                          {"sheared", "setAttr t.sh 0.5 1 -0.25;", 2},
                          {"under a scaled parent", "setAttr j.s 2 1 0.5;", 2},
                          {"flat", "setAttr t.s 1 0.0001 1;", 2}};
    for (const CASE& one : cases) {
        SCOPED_TRACE(one.what);
        run(one.line);
        for (const bool rotate_180 : {true, false}) {
            export_settings().rotate_180 = rotate_180;
            select({"base"});
            VOR2 root = exported();
            EXPECT_EQ(root.matrix_hierarchy.nodes.size(), 4U + one.extra_nodes);
            EXPECT_EQ(root.rigids[0]->vertices[1].position, VECTOR_3(0.2F, -0.35F, -0.55F));
            expect_in_place(root, 0, path_of("m"), 0.0F, rotate_180 ? 1.0F : -1.0F);
        }
    }
}

TEST_F(MESH_TEST, puts_the_meshes_of_real_scenes_where_they_are) {
    mesh_options().meshes = true;
    int scenes = 0;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(VOR2_SHARED_DATA, ignored)) {
        if (entry.path().extension() != ".ma") continue;
        SCOPED_TRACE(entry.path().string());
        ++scenes;
        ASSERT_TRUE(session.open_file(entry.path().string()));
        export_settings() = EXPORT_SETTINGS();
        MGlobal::clearSelectionList();
        for (const headless::Node* top : session.scene().world().children()) {
            if (!top->default_node()) MGlobal::selectByName(("|" + top->name()).c_str());
        }
        VOR2 root = exported();
        EXPECT_FALSE(root.rigids.empty() && root.weighted_meshes.empty());
        MGlobal::viewFrame(export_settings().start_frame);
        for (u64 i = 0; i < root.rigids.size(); ++i) {
            const std::string name = to_host_text(root.rigids[i]->name).asChar();
            SCOPED_TRACE(name);
            EXPECT_GT(root.rigids[i]->vertices.size(), 0U);
            expect_in_place(root, i, path_of(name.c_str()), 0.0F);
            for (const u32 id : material_ids(*root.rigids[i])) EXPECT_LT(id, root.materials.size());
        }
    }
    if (scenes == 0) GTEST_SKIP() << "no scenes in " VOR2_SHARED_DATA;
}

TEST_F(MESH_TEST, moves_meshes_with_their_nodes) {
    run("setAttr c.w 40;");
    animate(path_of("t"), "tx", {0.0, 1.0}, {0.0, 80.0});
    animate(path_of("t"), "ry", {0.0, 1.0}, {0.0, 1.0});
    export_settings().start_frame = 0;
    export_settings().stop_frame = 24;
    mesh_options().meshes = true;
    select({"t"});
    VOR2 root = exported();
    MGlobal::viewFrame(24.0);
    expect_in_place(root, 0, path_of("m"), 1.0F);
    MGlobal::viewFrame(0.0);
    expect_in_place(root, 0, path_of("m"), 0.0F);
}

TEST_F(MESH_TEST, refuses_more_than_a_file_holds_before_it_translates_any) {
    mesh_options().meshes = true;
    run("createNode polyPlane -n p; setAttr p.sw 700; setAttr p.sh 700; connectAttr -f p.out m.i;"
        "for ($i = 1; $i < 12; ++$i) { createNode transform -n (\"u\" + $i); parent -s -add m (\"u\" + $i); }");
    select({"t", "u1", "u2", "u3", "u4", "u5", "u6", "u7", "u8", "u9", "u10", "u11"});
    VOR2 root;
    EXPECT_FALSE(translate_scene(root, MString("out.vr2")));
    EXPECT_TRUE(root.rigids.empty());
    EXPECT_TRUE(said("E: The export would hold more triangles than a file can: 11760000"));
}

TEST_F(MESH_TEST, survives_a_node_without_a_direction) {
    mesh_options().meshes = true;
    for (const char* scale : {"0 0 0", "2 0 0", "0 2 0", "0 0 2", "2 3 0", "0 2 3", "2 0 3"}) {
        SCOPED_TRACE(scale);
        run(std::string("setAttr t.r 15 -160 50; setAttr t.s ") + scale);
        select({"t"});
        const VOR2 root = exported();
        const VOR2_MATRIX_NODE& node = root.matrix_hierarchy.nodes[root.rigids[0]->matrix_index];
        const QUATERNION& q = node.rotation_track->key_values()[0];
        EXPECT_NEAR(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1.0F, 1e-6F);
    }
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
