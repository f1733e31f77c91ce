#include "tests/format/format_test.h"

#include <cmath>
#include <random>

namespace VOR2_LOADER {
namespace {

/// Vectors and turns in double precision, for values worked out apart from the library.
struct EXACT {
    f64 x = 0, y = 0, z = 0;
};
EXACT exact(VECTOR_3 v) {
    return {v.x, v.y, v.z};
}
EXACT operator+(EXACT a, EXACT b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
EXACT operator*(EXACT a, f64 s) {
    return {a.x * s, a.y * s, a.z * s};
}
EXACT cross(EXACT a, EXACT b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
EXACT unit(EXACT a) {
    return a * (1 / std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z));
}
/// v + 2 u x (u x v + w v), with u the vector part.
EXACT turned(const QUATERNION& q, EXACT v, bool back = false) {
    const f64 sign = back ? -1 : 1;
    const EXACT u{q.x * sign, q.y * sign, q.z * sign};
    return v + cross(u, cross(u, v) + v * q.w) * 2;
}
void expect_near(VECTOR_3 found, EXACT expected, f64 tolerance = 1e-5) {
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

class RANDOM {
public:
    f32 number() { return std::uniform_real_distribution<f32>(-1, 1)(my_engine); }
    VECTOR_3 vector() { return {number(), number(), number()}; }
    QUATERNION turn() {
        const f32 x = number(), y = number(), z = number(), w = number();
        const f32 i = 1 / std::sqrt(x * x + y * y + z * z + w * w);
        return {x * i, y * i, z * i, w * i};
    }

private:
    std::mt19937 my_engine{7};
};

/// A bone that turns and moves in one jump between two times.
struct BONE {
    VECTOR_3 places[2];
    QUATERNION turns[2];
};

void add_bone(VOR2_MATRIX_HIERARCHY& hierarchy, const BONE& bone) {
    VOR2_MATRIX_NODE& node = hierarchy.nodes.emplace_back();
    node.position_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    node.rotation_track = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
    for (int i = 0; i < 2; ++i) {
        node.position_track->add_key(bone.places[i], 3.0F + static_cast<f32>(i));
        node.rotation_track->add_key(bone.turns[i], 3.0F + static_cast<f32>(i));
    }
}

TEST(weighted_mesh, is_posed_by_its_bones) {
    RANDOM random;
    VOR2 root;
    root.environment.time_range = {3, 4};
    std::vector<BONE> bones(4);
    for (BONE& bone : bones) {
        bone = {{random.vector(), random.vector()}, {random.turn(), random.turn()}};
        add_bone(root.matrix_hierarchy, bone);
    }
    root.matrix_hierarchy.link_parents();
    root.weighted_meshes.push_back({});
    root.weighted_meshes.push_back(make_owned<VOR2_WEIGHTED_MESH>());
    VOR2_WEIGHTED_MESH& mesh = *root.weighted_meshes[1];
    for (int i = 0; i < 50; ++i) {
        VOR2_WEIGHTED_MESH_VERT& vertex = mesh.vertices.emplace_back();
        vertex.rest_position = random.vector();
        vertex.rest_normal = random.vector().normalised();
        vertex.binormal_tangents.emplace_back(random.vector().normalised(), random.vector().normalised());
        for (const i32 index : {0, 1, 2, 3, -1, 4, 0x7FFFFFFF}) {
            VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
            bone.bone_index = index;
            bone.weight = index < 4 && index >= 0 ? 0.1F + 0.1F * static_cast<f32>(index) : 100;
        }
    }
    const VOR2_WEIGHTED_MESH rest = mesh;
    root.prepare_weighted_meshes();
    for (const int key : {1, 0}) {
        root.set_time(3.0F + static_cast<f32>(key));
        for (u64 i = 0; i < mesh.vertices.size(); ++i) {
            const VOR2_WEIGHTED_MESH_VERT& before = rest.vertices[i];
            EXACT position, normal, binormal;
            for (u64 b = 0; b < bones.size(); ++b) {
                const f64 weight = before.bone_weights[b].weight;
                const BONE& bone = bones[b];
                const auto carried = [&](EXACT v) { return turned(bone.turns[key], turned(bone.turns[0], v, true)); };
                const EXACT arm = exact(before.rest_position) + exact(bone.places[0]) * -1;
                position = position + (carried(arm) + exact(bone.places[key])) * weight;
                normal = normal + carried(exact(before.rest_normal)) * weight;
                binormal = binormal + carried(exact(before.binormal_tangents[0].binormal)) * weight;
            }
            expect_near(mesh.vertices[i].position, position);
            expect_near(mesh.vertices[i].normal, unit(normal), 1e-4);
            expect_near(mesh.vertices[i].binormal_tangents[0].binormal, unit(binormal), 1e-4);
        }
    }
}

TEST(weighted_mesh, what_no_bone_moves_shows_by_its_normal) {
    VOR2_MATRIX_HIERARCHY hierarchy;
    hierarchy.nodes.grow_by(1);
    VOR2_WEIGHTED_MESH_VERT vertex;
    vertex.position = {1, 2, 3};
    vertex.rest_position = {1, 2, 3};
    vertex.binormal_tangents.emplace_back(VECTOR_3{1, 0, 0}, VECTOR_3{0, 1, 0});
    vertex.bone_weights.emplace_back().bone_index = -1;
    vertex.bone_weights.emplace_back().bone_index = 0;
    const MATRIX_3X4 identity = MATRIX_3X4::identity();
    vertex.compute_local_data({&identity, 1}, {&identity, 1});
    EXPECT_EQ(vertex.bone_weights[0].local_normal, VECTOR_3(0.0F, 1.0F, 0.0F));
    EXPECT_EQ(vertex.bone_weights[0].local_binormal_tangents.size(), 0U);
    EXPECT_EQ(vertex.bone_weights[1].local_binormal_tangents.size(), 1U);
    vertex.skin(hierarchy);
    EXPECT_EQ(vertex.position, VECTOR_3(0.0F, 0.0F, 0.0F));
    EXPECT_TRUE(std::isnan(vertex.normal.x) && std::isnan(vertex.normal.y) && std::isnan(vertex.normal.z));
    EXPECT_EQ(vertex.binormal_tangents[0], VOR2_BINORMAL_TANGENT());
    // Pairs that were added since have no local data.
    vertex.binormal_tangents.emplace_back();
    vertex.bone_weights[1].weight = 1;
    vertex.skin(hierarchy);
    EXPECT_EQ(vertex.position, VECTOR_3(1.0F, 2.0F, 3.0F));
    EXPECT_EQ(vertex.binormal_tangents[1], VOR2_BINORMAL_TANGENT());
}

TEST(weighted_mesh, preparing_moves_the_hierarchy_only_where_there_is_one) {
    VOR2 root;
    add_bone(root.matrix_hierarchy, {});
    const auto& track = *root.matrix_hierarchy.nodes[0].position_track;
    root.environment.time_range = {4, 4};
    root.prepare_weighted_meshes();
    EXPECT_EQ(track.cursor_fraction(), 0);
    root.weighted_meshes.push_back({});
    root.prepare_weighted_meshes();
    EXPECT_EQ(track.cursor_fraction(), 1);
}

TEST(morph_mesh, sums_its_offsets_by_the_weights_of_the_moment) {
    VOR2 root;
    root.morph_meshes.push_back(make_owned<VOR2_MORPH_MESH>());
    VOR2_MORPH_MESH& mesh = *root.morph_meshes[0];
    for (int i = 0; i < 2; ++i) {
        auto& target = mesh.morph_targets.emplace_back();
        target.track = make_owned<VOR2_ANIMATABLE_FLOAT32_LINEAR>();
        target.track->add_key(0, 0);
        target.track->add_key(i == 0 ? 2.0F : -4.0F, 1);
    }
    mesh.morph_targets.emplace_back(); // without a track
    VOR2_MORPH_MESH_VERT& vertex = mesh.vertices.emplace_back();
    vertex.position = {10, 20, 30};
    vertex.morph_offset = {1, 1, 1};
    VECTOR_3 found;
    vertex.get_position(found);
    EXPECT_EQ(found, VECTOR_3(11.0F, 21.0F, 31.0F)) << "before any update, the offset of the file";
    const std::pair<i32, VECTOR_3> entries[] = {{0, {1, 0, 0}},          {0, {0, 1, 0}}, {1, {0, 0, 1}},
                                                {2, {9, 9, 9}},          {3, {9, 9, 9}}, {-1, {9, 9, 9}},
                                                {-2147483647, {9, 9, 9}}};
    for (const auto& [index, offset] : entries) {
        VOR2_TARGET_VERT& target = vertex.target_verts.emplace_back();
        target.target_index = index;
        target.offset = offset;
    }
    const VOR2_MORPH_MESH before = mesh;
    root.set_time(0.5F);
    vertex.get_position(found);
    EXPECT_EQ(found, VECTOR_3(11.0F, 21.0F, 28.0F));
    root.advance(0.25F);
    vertex.get_position(found);
    EXPECT_EQ(found, VECTOR_3(11.5F, 21.5F, 27.0F));
    EXPECT_EQ(vertex.position, VECTOR_3(10.0F, 20.0F, 30.0F));
    EXPECT_TRUE(mesh == before) << "the offset is derived and takes no part";
    vertex.target_verts.clear();
    root.set_time(1);
    EXPECT_EQ(vertex.morph_offset, VECTOR_3(0.0F, 0.0F, 0.0F));
}

TEST(anim_mesh, each_track_follows_the_clock_by_itself_and_may_be_absent) {
    VOR2 root;
    root.anim_meshes.push_back(make_owned<VOR2_ANIM_MESH>());
    VOR2_ANIM_MESH& mesh = *root.anim_meshes[0];
    VOR2_ANIM_MESH_VERT *vertex = nullptr, *second = nullptr, *third = nullptr;
    mesh.add_triangle(vertex, second, third, 0, 1);
    vertex->position_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    vertex->uv_tracks.push_back({});
    vertex->uv_tracks.push_back(make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>());
    for (const f32 time : {0.0F, 2.0F}) {
        vertex->position_track->add_key({time, 0, 0}, time);
        vertex->uv_tracks[1]->add_key({0, time, 0}, time / 2);
    }
    root.set_time(0.5F);
    root.advance(1);
    const VOR2_VERT& seen = mesh.vertex(0);
    VECTOR_3 position, uv{7, 7, 7}, normal{7, 7, 7};
    seen.get_position(position);
    seen.get_uv(1, uv);
    EXPECT_EQ(position, VECTOR_3(1.5F, 0.0F, 0.0F));
    // A track of one second at 1.5: half of it past its end, which starts it again.
    EXPECT_EQ(uv, VECTOR_3(0.0F, 0.0F, 0.0F));
    u32 count = 0;
    seen.get_uv_count(count);
    EXPECT_EQ(count, 2U);
    uv = {7, 7, 7};
    seen.get_uv(0, uv);
    seen.get_normal(normal);
    EXPECT_EQ(uv, normal) << "what is absent leaves its argument";
    VOR2_COLOUR colour(0.25F, 0.5F, 0.75F, 1);
    seen.get_colour(colour);
    EXPECT_EQ(colour, VOR2_COLOUR(0.25F, 0.5F, 0.75F, 1));
    vertex->colour_track = make_owned<VOR2_ANIMATABLE_COLOUR_LINEAR>();
    vertex->colour_track->add_key({1, 0, 0, 1}, 0);
    vertex->binormal_tangent_tracks.push_back(make_owned<VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR>());
    vertex->binormal_tangent_tracks[0]->add_key({{0, 1, 0}, {0, 0, 1}}, 0);
    const OWNED<VOR2_VERT> copy = seen.clone();
    vertex->colour_track->add_key({0, 1, 0, 1}, 1);
    vertex->colour_track->set_time(1);
    copy->get_colour(colour);
    EXPECT_EQ(colour, VOR2_COLOUR(1, 0, 0, 1)) << "a clone has tracks of its own";
    copy->get_binormal_tangent_count(count);
    ASSERT_EQ(count, 1U);
    VOR2_BINORMAL_TANGENT frame;
    copy->get_binormal_tangent(0, frame);
    EXPECT_EQ(frame, VOR2_BINORMAL_TANGENT({0, 1, 0}, {0, 0, 1}));
    EXPECT_TRUE(mesh == VOR2_ANIM_MESH(mesh));
    EXPECT_FALSE(*vertex == *second);
}

TEST(rigid_mesh, triangles_gather_by_material_and_share_no_vertex) {
    VOR2_RIGID mesh;
    VOR2_RIGID_VERT *a = nullptr, *b = nullptr, *c = nullptr;
    for (const u32 material : {5U, 2U, 5U}) {
        mesh.add_triangle(a, b, c, material, 4);
        a->position.x = static_cast<f32>(material);
    }
    ASSERT_EQ(mesh.sub_objects.size(), 2U);
    EXPECT_EQ(mesh.sub_objects[0].material_id, 5U);
    EXPECT_EQ(mesh.sub_objects[0].triangles.capacity(), 4U);
    EXPECT_EQ(mesh.sub_objects[0].triangles[1], VOR2_CARD32_TRIPLE(6, 7, 8));
    EXPECT_EQ(mesh.sub_objects[1].triangles[0], VOR2_CARD32_TRIPLE(3, 4, 5));
    EXPECT_EQ(mesh.vertices[3].position.x, 2);

    const VOR2_VERT& seen = mesh.vertices[3];
    mesh.vertices[3].uvs.push_back({0.25F, 0.5F, 0});
    mesh.vertices[3].binormal_tangents.push_back({{0, 1, 0}, {0, 0, 1}});
    const OWNED<VOR2_VERT> copy = seen.clone();
    mesh.vertices[3].uvs[0].x = 1;
    u32 uvs = 0, frames = 0;
    copy->get_uv_count(uvs);
    copy->get_binormal_tangent_count(frames);
    ASSERT_TRUE(uvs == 1 && frames == 1);
    VECTOR_3 uv{};
    VOR2_BINORMAL_TANGENT frame;
    VOR2_COLOUR colour;
    copy->get_uv(0, uv);
    copy->get_binormal_tangent(0, frame);
    copy->get_colour(colour);
    EXPECT_EQ(uv, VECTOR_3(0.25F, 0.5F, 0.0F));
    EXPECT_EQ(frame.tangent, VECTOR_3(0.0F, 0.0F, 1.0F));
    EXPECT_EQ(colour, mesh.vertices[3].colour);

    VOR2_RIGID same = mesh;
    EXPECT_TRUE(same == mesh);
    same.material = make_owned<VOR2_STANDARD_MATERIAL>();
    EXPECT_FALSE(same == mesh) << "a material of its own is compared, though no file holds it";
    EXPECT_EQ(saved_record(same), saved_record(mesh));
    same = mesh;
    same.vertices[0].normal.y = -0.0F;
    EXPECT_TRUE(same == mesh);
    same.vertices[8].colour.alpha = std::nanf("");
    EXPECT_FALSE(same == same);
    same = mesh;
    std::swap(same.sub_objects[0], same.sub_objects[1]);
    EXPECT_FALSE(same == mesh);
}

TEST(records, defaults_have_their_sizes) {
    const std::size_t positional = saved_record(VOR2_HELPER()).size();
    EXPECT_EQ(positional, 3 * 2 + 4 + 20 + 4U);
    EXPECT_EQ(saved_record(VOR2_RIGID_VERT()).size(), 48U);
    EXPECT_EQ(saved_record(VOR2_ANIM_MESH_VERT()).size(), 20U);
    EXPECT_EQ(saved_record(VOR2_BONE_WEIGHT_DATA()).size(), 8U);
    EXPECT_EQ(saved_record(VOR2_TARGET_VERT()).size(), 16U);
    EXPECT_EQ(saved_record(VOR2_POINT_LIGHT()).size(), positional + 27 * 4);
    EXPECT_EQ(saved_record(VOR2_SPOT_LIGHT()).size(), positional + 30 * 4);
    EXPECT_EQ(saved_record(VOR2_CAMERA()).size(), positional + 6 * 4);
    EXPECT_EQ(saved_record(VOR2_CAMERA_MOTION_BLUR_EFFECT()).size(), 32U);
    EXPECT_EQ(saved_record(VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT()).size(), 44U);
    EXPECT_EQ(saved_record(VOR2_BITMAP_MATERIAL_MAP_TIME()).size(), 12U);
}

} // namespace
} // namespace VOR2_LOADER
