#include "tests/convert/convert_test.h"

namespace convert_test {
namespace {

TEST(GltfOut, nodes_skins_and_targets_stand_as_the_library_has_them) {
    VOR2 scene = busy_scene();
    const GltfPlayer player(glb_of(scene));
    for (int i = 0; i <= 10; ++i) {
        const double time = 1.0 + 0.2 * i + (i == 10 ? 0 : 0.013);
        const std::vector<Point> nodes = node_points(scene, time);
        const std::vector<Matrix> worlds = player.worlds(time);
        for (std::size_t n = 0; n < nodes.size(); ++n) {
            const Point there{worlds[n][0][3], worlds[n][1][3], worlds[n][2][3]};
            EXPECT_LT(distance({nodes[n]}, {there}), 2e-3) << "node " << n << " at " << time;
        }
        EXPECT_LT(
            distance(vertex_points(*scene.weighted_meshes[0], scene, true), player.vertices(player.node("skin"), time)),
            2e-3)
            << time;
        EXPECT_LT(
            distance(vertex_points(*scene.morph_meshes[0], scene, false), player.vertices(player.node("face"), time)),
            2e-3)
            << time;
    }
}

TEST(GltfOut, a_joint_too_small_to_turn_back_is_named_and_leaves_a_file_that_can_be_read) {
    VOR2 scene = busy_scene(), back;
    for (const float scale : {0.0F, 1e-39F}) { // of which the second's inverse is no number in single precision
        VOR2_MATRIX_NODE& hand = scene.matrix_hierarchy.nodes[2];
        hand.scale_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        hand.scale_track->add_key({scale, scale, scale}, 0);
        Report report;
        scene_of(glb_of(scene, {}, &report), back);
        ASSERT_FALSE(report.notes.empty()) << scale;
        EXPECT_NE(report.notes[0].find("joint hand has no size"), std::string::npos) << report.notes[0];
    }
}

TEST(GltfOut, a_key_stays_a_key_and_a_long_way_round_gets_more) {
    VOR2 scene = busy_scene();
    const GltfPlayer player(glb_of(scene));
    for (const auto& channel : player.json()["animations"][0]["channels"]) {
        const auto& sampler = player.json()["animations"][0]["samplers"][channel["sampler"].get<std::size_t>()];
        const std::vector<double> times = player.numbers(sampler["input"]);
        EXPECT_EQ(times.front(), 1);
        if (channel["target"]["path"] == "translation") {
            EXPECT_EQ(times, (std::vector<double>{1, 3}));
        }
        if (channel["target"]["path"] == "weights") {
            EXPECT_EQ(times, (std::vector<double>{1, 2, 2.5}));
        }
        if (channel["target"]["path"] == "rotation" && channel["target"]["node"] == 1) {
            EXPECT_GT(times.size(), 3U);
        }
    }
}

TEST(GltfOut, only_the_strongest_influences_stay_when_so_many_are_asked_for) {
    VOR2 scene = busy_scene();
    const GltfPlayer all(glb_of(scene));
    GltfOptions options;
    options.most_influences = 4;
    const GltfPlayer four(glb_of(scene, options));
    const auto attributes = [](const GltfPlayer& player) {
        return player.json()["meshes"][player.json()["nodes"][static_cast<std::size_t>(player.node("skin"))]["mesh"]
                                           .get<std::size_t>()]["primitives"][0]["attributes"];
    };
    EXPECT_TRUE(attributes(all).contains("JOINTS_1"));
    EXPECT_FALSE(attributes(four).contains("JOINTS_1"));
    const std::vector<double> weights = four.numbers(attributes(four)["WEIGHTS_0"]);
    for (std::size_t v = 0; v < weights.size(); v += 4)
        EXPECT_NEAR(weights[v] + weights[v + 1] + weights[v + 2] + weights[v + 3], 1, 1e-6);
}

/// Transparency is what users look at first: what is opaque stays so, whatever else a material holds.
TEST(GltfOut, surfaces_are_as_clear_as_they_look) {
    VOR2 scene = busy_scene();
    // What the plug-in makes of every lambert.
    auto lambert = make_owned<VOR2_STANDARD_MATERIAL>();
    lambert->ambient_colour = make_owned<VOR2_ANIMATABLE_COLOUR_LINEAR>();
    lambert->ambient_colour->add_key({0.0F, 0.0F, 0.0F, 1.0F}, 0.0F);
    lambert->transparency = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
    lambert->transparency->add_key(1.0F, 0.0F);
    scene.materials.push_back(std::move(lambert));
    const GltfPlayer player(glb_of(scene));
    const auto& materials = player.json()["materials"];
    EXPECT_EQ(materials[0].value("alphaMode", "OPAQUE"), "OPAQUE");
    EXPECT_EQ(materials[1].value("alphaMode", "OPAQUE"), "BLEND");
    EXPECT_EQ(materials[1]["pbrMetallicRoughness"]["baseColorFactor"], (nlohmann::json{0.25, 0.5, 1.0, 0.25}));
    EXPECT_EQ(materials[2].value("alphaMode", "OPAQUE"), "OPAQUE");
}

TEST(GltfOut, normals_left_as_the_host_has_them_are_seen_by_their_faces) {
    for (const bool mirrored : {true, false}) {
        VOR2 scene = busy_scene();
        VOR2_MORPH_MESH& mesh = *scene.morph_meshes[0];
        // A triangle that faces +z in the host, whose points are mirrored in the file.
        for (VOR2_MORPH_MESH_VERT& vertex : mesh.vertices) vertex.normal = {0.0F, 0.6F, mirrored ? -0.8F : 0.8F};
        const GltfPlayer player(glb_of(scene));
        const auto& primitive =
            player.json()["meshes"][player.json()["nodes"][5]["mesh"].get<std::size_t>()]["primitives"][0];
        const std::vector<double> normals = player.numbers(primitive["attributes"]["NORMAL"]);
        EXPECT_NEAR(normals[1], 0.6, 1e-6);
        EXPECT_NEAR(normals[2], 0.8, 1e-6);
    }
}

TEST(GltfOut, further_takes_become_animations_and_tell_what_does_not_match) {
    VOR2 first = busy_scene(), second = busy_scene();
    auto& nodes = second.matrix_hierarchy.nodes;
    nodes[2].position_track->key_values()[0] = {0.0F, 3.0F, 0.5F};
    nodes[4].name = nodes[0].name;
    GltfFile file;
    const Take takes[] = {{&first, "walk"}, {&second, "run"}};
    const Report report = write_gltf(takes, {}, file);
    ASSERT_EQ(report.problem, "");
    ASSERT_EQ(report.notes.size(), 2U);
    EXPECT_NE(report.notes[1].find("root/arm/hand/finger/tip"), std::string::npos);
    const GltfPlayer player(file.bytes);
    EXPECT_EQ(player.json()["animations"][1]["name"], "run");
    // A joint that stands still, but elsewhere, is moved there.
    const std::vector<Point> expected = node_points(second, 1.5);
    const Matrix hand = player.worlds(1.5, 1)[2];
    EXPECT_LT(distance({expected[2]}, {{hand[0][3], hand[1][3], hand[2][3]}}), 2e-3);
}

TEST(GltfOut, odd_scenes_give_whole_files) {
    VOR2 empty;
    EXPECT_EQ(GltfPlayer(glb_of(empty)).json().value("nodes", nlohmann::json::array()).size(), 0U);

    VOR2 scene = busy_scene();
    const f32 nan = std::numeric_limits<f32>::quiet_NaN();
    scene.matrix_hierarchy.nodes[1].rotation_track->key_values()[0] = {nan, nan, nan, nan};
    scene.matrix_hierarchy.nodes[3].parent_index = 77;
    scene.weighted_meshes[0]->sub_objects[0].add_triangle_index({0, 1, 99});
    scene.weighted_meshes[0]->sub_objects[0].material_id = 1000;
    scene.weighted_meshes[0]->vertices[0].rest_position.x = nan;
    scene.weighted_meshes[0]->vertices[1].bone_weights[0].bone_index = -5;
    scene.weighted_meshes[0]->vertices[2].bone_weights.clear();
    scene.morph_meshes[0]->matrix_index = 12345;
    scene.morph_meshes[0]->vertices[0].target_verts[0].target_index = 9;
    auto instance = make_owned<VOR2_INSTANCE>();
    instance->instanced_object = 3;
    scene.rigid_instances.push_back(std::move(instance));
    Report report;
    const GltfPlayer player(glb_of(scene, {}, &report));
    EXPECT_GE(report.notes.size(), 4U);
    for (const Point& point : player.vertices(player.node("skin"), 1.0)) EXPECT_LT(size_of({point}), 1e3);
}

} // namespace
} // namespace convert_test
