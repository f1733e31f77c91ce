#include "tests/convert/convert_test.h"

#include "support/text/unicode.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace convert_test {
namespace {

TEXT text(std::u16string_view letters) {
    TEXT out;
    for (const char16_t letter : letters) out.append(letter);
    return out;
}

OWNED<VOR2_ANIMATABLE_VECTOR_3> vectors(std::initializer_list<std::pair<f32, VECTOR_3>> keys) {
    auto track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    for (const auto& [time, value] : keys) track->add_key(value, time);
    return track;
}

OWNED<VOR2_ANIMATABLE_QUATERNION> turns(std::initializer_list<std::pair<f32, QUATERNION>> keys) {
    auto track = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
    for (const auto& [time, value] : keys) track->add_key(value, time);
    return track;
}

void add_node(VOR2& scene, std::u16string_view name, i32 parent) {
    VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes.emplace_back();
    node.name = text(name);
    node.parent_index = parent;
}

void add_skin(VOR2& scene) {
    auto mesh = make_owned<VOR2_WEIGHTED_MESH>();
    mesh->name = text(u"skin");
    mesh->vertices.grow_by(5);
    for (u32 v = 0; v < 5; ++v) {
        VOR2_WEIGHTED_MESH_VERT& vertex = mesh->vertices[v];
        vertex.rest_position = {0.1F * static_cast<f32>(v), v % 2 == 0 ? 0.5F : 1.5F, 0.25F};
        vertex.rest_normal = {0.0F, 0.0F, -1.0F};
        for (u32 b = 0; b <= v; ++b) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = static_cast<i32>(b);
            bone.weight = 1.0F / static_cast<f32>(v + 1);
        }
    }
    for (u32 t = 0; t < 3; ++t) mesh->add_sub_object_triangle({t, t + 1, t + 2}, 0, 3);
    scene.weighted_meshes.push_back(std::move(mesh));
}

void add_morph(VOR2& scene) {
    auto mesh = make_owned<VOR2_MORPH_MESH>();
    mesh->name = text(u"face");
    mesh->matrix_index = 5;
    mesh->vertices.grow_by(3);
    for (u32 v = 0; v < 3; ++v) {
        mesh->vertices[v].position = {static_cast<f32>(v % 2), static_cast<f32>(v / 2), 0.0F};
        mesh->vertices[v].normal = {0.0F, 0.0F, -1.0F};
    }
    mesh->add_sub_object_triangle({0, 1, 2}, 1, 1);
    for (i32 t = 0; t < 2; ++t) {
        auto& target = mesh->morph_targets.emplace_back();
        target.name = text(t == 0 ? u"smile" : u"frown");
        auto track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        track->add_key(0.0F, 1.0F);
        track->add_key(1.0F, t == 0 ? 2.0F : 2.5F);
        target.track = std::move(track);
        mesh->vertices[static_cast<u32>(t)].target_verts.emplace_back().offset = {0.0F, 0.25F, 0.5F};
        mesh->vertices[static_cast<u32>(t)].target_verts[0].target_index = t;
    }
    scene.morph_meshes.push_back(std::move(mesh));
}

} // namespace

std::optional<std::vector<std::uint8_t>> shared_file(const std::string& name) {
    std::ifstream file(std::filesystem::path(VOR2_SHARED_DATA) / name, std::ios::binary);
    if (!file) return {};
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
}

std::string glb_of(VOR2& scene, const GltfOptions& options, Report* report) {
    GltfFile file;
    const Take take{&scene, "walk"};
    const Report own = write_gltf({&take, 1}, options, file);
    EXPECT_EQ(own.problem, "");
    if (report != nullptr) *report = own;
    return file.bytes;
}

void scene_of(std::string_view gltf, VOR2& scene, const std::string& beside) {
    ImportedFile file;
    const auto read = [&beside](const std::string& name) { return shared_file(beside + "/" + name); };
    const Report report =
        read_gltf({{reinterpret_cast<const std::uint8_t*>(gltf.data()), gltf.size()}, "file", read}, file);
    ASSERT_EQ(report.problem, "");
    if (!file.animations.empty()) set_animation(file.animations[0], file.scene);
    Report built;
    build_scene(file.scene, scene, built);
    EXPECT_EQ(built.problem, "");
}

std::vector<Point> node_points(VOR2& scene, double time) {
    scene.set_time(static_cast<f32>(time));
    std::vector<Point> out;
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes)
        out.push_back({node.world_matrix.m[0][3], node.world_matrix.m[1][3], -node.world_matrix.m[2][3]});
    return out;
}

std::vector<Point> vertex_points(const VOR2_TRI_OBJECT& mesh, const VOR2& scene, bool in_world) {
    std::vector<Point> out;
    for (u32 v = 0; v < mesh.vertex_count(); ++v) {
        VECTOR_3 position;
        mesh.vertex(v).get_position(position);
        if (!in_world)
            position = scene.matrix_hierarchy.nodes[mesh.matrix_index].world_matrix.transform_point(position);
        out.push_back({position.x, position.y, -position.z});
    }
    return out;
}

double distance(const std::vector<Point>& a, const std::vector<Point>& b) {
    EXPECT_EQ(a.size(), b.size());
    double most = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        most = std::max(most, std::hypot(a[i][0] - b[i][0], a[i][1] - b[i][1], a[i][2] - b[i][2]));
    return most;
}

double size_of(const std::vector<Point>& points) {
    double most = 0;
    for (const Point& p : points) most = std::max(most, std::hypot(p[0], p[1], p[2]));
    return most;
}

VOR2 busy_scene() {
    VOR2 scene;
    add_node(scene, u"root", -1);
    add_node(scene, u"arm", 0);
    add_node(scene, u"hand", 1);
    add_node(scene, u"finger", 2);
    add_node(scene, u"tip", 3);
    add_node(scene, u"face", 2);
    auto& nodes = scene.matrix_hierarchy.nodes;
    const f32 h = 0.70710678F;
    nodes[1].position_track = vectors({{1.0F, {0.0F, 1.0F, 0.0F}}, {3.0F, {2.0F, 1.0F, -1.0F}}});
    // The second key lies on the far side, so that the joint turns by 270 degrees and not by 90.
    nodes[1].rotation_track =
        turns({{1.0F, {0.0F, 0.0F, 0.0F, 1.0F}}, {2.0F, {0.0F, 0.0F, -h, -h}}, {3.0F, {0.0F, h, 0.0F, -h}}});
    nodes[2].position_track = vectors({{1.0F, {0.0F, 1.0F, 0.5F}}});
    nodes[2].rotation_track = turns({{1.0F, {h, 0.0F, 0.0F, h}}});
    nodes[2].scale_track = vectors({{1.0F, {1.0F, 1.0F, 1.0F}}, {3.0F, {1.0F, 2.0F, 3.0F}}});
    nodes[3].position_track = vectors({{1.0F, {0.25F, 0.5F, 0.0F}}});
    nodes[3].rotation_track = turns({{1.0F, {0.6F, 0.0F, 0.0F, 0.8F}}, {2.0F, {0.0F, 0.6F, 0.0F, 0.8F}}});
    nodes[4].position_track = vectors({{1.0F, {0.0F, 0.25F, 0.25F}}});
    nodes[5].position_track = vectors({{1.0F, {0.0F, 0.0F, 0.75F}}});
    scene.matrix_hierarchy.link_parents();
    scene.environment.time_range = {1.0F, 3.0F};
    scene.environment.sample_rate = 30;
    for (int i = 0; i < 2; ++i) {
        auto material = make_owned<VOR2_STANDARD_MATERIAL>();
        material->name = text(i == 0 ? u"cloth" : u"glass");
        material->colour_track_1 = make_owned<VOR2_ANIMATABLE_COLOUR_LINEAR>();
        material->colour_track_1->add_key({0.25F, 0.5F, 1.0F, 1.0F}, 0.0F);
        material->transparency = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        material->transparency->add_key(i == 0 ? 0.0F : 0.75F, 0.0F);
        scene.materials.push_back(std::move(material));
    }
    add_skin(scene);
    add_morph(scene);
    scene.prepare_weighted_meshes();
    return scene;
}

} // namespace convert_test
