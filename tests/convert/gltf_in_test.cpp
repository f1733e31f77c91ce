#include "tests/convert/convert_test.h"

namespace convert_test {
namespace {

/// A file out of the library's scene, and the library's scene out of it again.
TEST(GltfIn, what_was_written_comes_back) {
    VOR2 scene = busy_scene(), back;
    const std::string first = glb_of(scene);
    ASSERT_NO_FATAL_FAILURE(scene_of(first, back));
    const GltfPlayer before(first), after(glb_of(back));
    for (std::size_t n = 0; n < before.json()["nodes"].size(); ++n) {
        EXPECT_EQ(before.json()["nodes"][n]["name"], after.json()["nodes"][n]["name"]);
        EXPECT_EQ(before.json()["nodes"][n].value("children", nlohmann::json()),
                  after.json()["nodes"][n].value("children", nlohmann::json()));
    }
    EXPECT_EQ(before.json()["materials"][1]["name"], after.json()["materials"][1]["name"]);
    EXPECT_EQ(before.json()["materials"][1]["alphaMode"], after.json()["materials"][1]["alphaMode"]);
    for (const double time : {1.0, 1.3, 1.77, 2.2, 2.6, 3.0}) {
        for (const char* mesh : {"skin", "face"}) {
            const std::vector<Point> points = before.vertices(before.node(mesh), time);
            EXPECT_LT(distance(points, after.vertices(after.node(mesh), time)), 1e-4 * size_of(points))
                << mesh << " at " << time;
        }
        const std::vector<Point> skinned = before.vertices(before.node("skin"), time);
        back.set_time(static_cast<f32>(time));
        EXPECT_LT(distance(skinned, vertex_points(*back.weighted_meshes[0], back, true)), 2e-3 * size_of(skinned))
            << time;
    }
}

/// Skins that are bound in another pose than the first, as most are.
TEST(GltfIn, real_files_pose_in_the_library_as_they_do_by_themselves) {
    const struct {
        const char* file;
        const char* beside;
        bool binary;
    } cases[] = {{"quad_skin.glb", "", true}, {"AnimatedMorphCube/AnimatedMorphCube.gltf", "AnimatedMorphCube", false}};
    for (const auto& test : cases) {
        const auto bytes = shared_file(test.file);
        if (!bytes) GTEST_SKIP() << "no shared files";
        const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
        VOR2 scene;
        ASSERT_NO_FATAL_FAILURE(scene_of(text, scene, test.beside));
        const GltfPlayer written(glb_of(scene));
        for (int i = 0; i < 10; ++i) {
            const float start = scene.environment.time_range.start, end = scene.environment.time_range.end;
            const double time = start + (end - start) * (i + 0.37) / 10;
            scene.set_time(static_cast<f32>(time));
            const int node = written.mesh_node();
            const std::vector<Point> points = test.binary ? vertex_points(*scene.weighted_meshes[0], scene, true)
                                                          : vertex_points(*scene.morph_meshes[0], scene, false);
            EXPECT_LT(distance(points, written.vertices(node, time)), 1e-4 * size_of(points));
            if (!test.binary) continue;
            const GltfPlayer own(text);
            EXPECT_LT(distance(points, own.vertices(own.mesh_node(), time)), 1e-4 * size_of(points));
        }
    }
}

/// A bind pose that no key of the scene has is in a lead-in, and every pose from the first key on is the file's own.
TEST(GltfIn, a_skin_bound_in_another_pose_keeps_every_pose) {
    VOR2 scene = busy_scene();
    GltfPlayer bound(glb_of(scene));
    // The same file as if the scene began only when the joints have turned.
    std::string glb = glb_of(scene);
    ImportedFile file;
    const std::span<const std::uint8_t> bytes(reinterpret_cast<const std::uint8_t*>(glb.data()), glb.size());
    ASSERT_TRUE(read_gltf({bytes, "file", {}}, file).good());
    set_animation(file.animations[0], file.scene);
    for (ImportedNode& node : file.scene.nodes) {
        for (float& time : node.rotation.times) time += 1;
        for (float& time : node.position.times) time += 1;
        for (float& time : node.scale.times) time += 1;
        node.placement = placement_at(node, 3.4);
        node.rotation = {};
        node.position = {};
        node.scale = {};
    }
    VOR2 posed;
    Report report;
    build_scene(file.scene, posed, report);
    EXPECT_LT(posed.environment.time_range.start, 1.0F);
    EXPECT_EQ(posed.matrix_hierarchy.nodes[1].rotation_track->current_time(), posed.environment.time_range.start);
    posed.set_time(1.0F);
    const std::vector<Point> expected = bound.vertices(bound.node("skin"), 2.4);
    EXPECT_LT(distance(expected, vertex_points(*posed.weighted_meshes[0], posed, true)), 1e-4 * size_of(expected));
    GltfPlayer again(glb_of(posed));
    EXPECT_LT(distance(expected, again.vertices(again.node("skin"), 2.4)), 1e-4 * size_of(expected));
    EXPECT_EQ(again.json().dump().find("first_time"), std::string::npos);
}

} // namespace
} // namespace convert_test
