// make_scenes FOLDER [big]: writes the scenes that the tests of the page look at: one with every kind of thing that
// moves, and those that a page must bear; with "big", only the one that its speed is measured by.

#include "format/tracks/constant_track.h"
#include "format/vor2.h"
#include "support/text/unicode.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>

namespace {

using namespace VOR2_LOADER;

constexpr f32 nan = std::numeric_limits<f32>::quiet_NaN();

QUATERNION turn(f32 angle, f32 x, f32 y, f32 z) {
    const f32 s = std::sin(angle / 2) / std::sqrt(x * x + y * y + z * z);
    return {x * s, y * s, z * s, std::cos(angle / 2)};
}

VOR2_MATRIX_NODE& add_node(VOR2& scene, const char* name, i32 parent, VECTOR_3 place) {
    VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes.emplace_back();
    node.name = TEXT(to_utf16(name));
    node.parent_index = parent;
    auto* position = new VOR2_ANIMATABLE_VECTOR_3_LINEAR();
    position->add_key(place, 0);
    node.position_track.reset(position);
    return node;
}

template<class TRACK>
void rock(VOR2_MATRIX_NODE& node, f32 reach, int keys, f32 span, VECTOR_3 axis) {
    auto* rotation = new TRACK();
    for (int k = 0; k < keys; ++k) {
        const f32 t = span * static_cast<f32>(k) / static_cast<f32>(keys - 1);
        rotation->add_key(turn(reach * std::sin(2.3F * t + 0.4F), axis.x, axis.y, axis.z), t);
    }
    node.rotation_track.reset(rotation);
}

/// A tube about the Y axis, `rows` rings of `sides` vertices, each with its own texture coordinates.
void make_tube(auto& mesh, u32 rows, u32 sides, f32 height, f32 radius, u32 material, const auto& fill) {
    for (u32 r = 0; r < rows; ++r) {
        for (u32 s = 0; s < sides; ++s) {
            auto& vertex = mesh.vertices.emplace_back();
            const f32 up = static_cast<f32>(r) / static_cast<f32>(rows - 1);
            const f32 angle = 6.2831853F * static_cast<f32>(s) / static_cast<f32>(sides);
            vertex.normal = {std::cos(angle), 0, std::sin(angle)};
            vertex.position = {radius * vertex.normal.x, height * up, radius * vertex.normal.z};
            vertex.uvs.push_back({static_cast<f32>(s) / static_cast<f32>(sides), up, 0});
            fill(vertex, up);
        }
    }
    mesh.mapping_channels.push_back(1);
    VOR2_TRI_SUB_OBJECT& group = mesh.sub_objects.emplace_back();
    group.material_id = material;
    for (u32 r = 0; r + 1 < rows; ++r) {
        for (u32 s = 0; s < sides; ++s) {
            const u32 a = r * sides + s, b = r * sides + (s + 1) % sides;
            group.triangles.push_back({a, a + sides, b});
            group.triangles.push_back({b, a + sides, b + sides});
        }
    }
}

/// The vertex hangs on the joints below and above it, and lightly on `others` more.
void bind(VOR2_WEIGHTED_MESH_VERT& vertex, f32 up, u32 first, u32 joints, u32 others) {
    vertex.rest_position = vertex.position;
    vertex.rest_normal = vertex.normal;
    const f32 at = up * static_cast<f32>(joints - 1);
    const u32 below = std::min(static_cast<u32>(at), joints - 2);
    const f32 part = at - static_cast<f32>(below);
    for (u32 i = 0; i < 2 + others; ++i) {
        VOR2_BONE_WEIGHT_DATA& bone = vertex.bone_weights.emplace_back();
        bone.bone_index = static_cast<i32>(first + (below + i) % joints);
        bone.weight = i == 0 ? 1 - part : i == 1 ? part : 0.05F / static_cast<f32>(i);
    }
}

void set_range(VOR2& scene, f32 end, f64 rate) {
    scene.environment.time_range = {0, end};
    scene.environment.sample_rate = rate;
}

OWNED<VOR2_MATERIAL> make_material(const char* name, VOR2_COLOUR colour, const char* picture) {
    auto* material = new VOR2_STANDARD_MATERIAL();
    material->name = TEXT(to_utf16(name));
    auto* track = new VOR2_ANIMATABLE_COLOUR_LINEAR();
    track->add_key(colour, 0);
    material->ambient_colour.reset(track);
    if (picture != nullptr) {
        auto* rough = new VOR2_BITMAP_MATERIAL_MAP(); // which is no colour
        rough->map_text = TEXT(u"roughness");
        rough->bitmap_params.bitmap_name = TEXT(u"rough.png");
        material->maps.push_back(OWNED<VOR2_MATERIAL_MAP>(rough));
        auto* map = new VOR2_BITMAP_MATERIAL_MAP();
        map->bitmap_params.bitmap_name = TEXT(to_utf16(picture));
        map->coordinates.uv_track_1 = constant_track<VOR2_ANIMATABLE_VECTOR_2_LINEAR>(VECTOR_2(3, 2));
        map->coordinates.wrap_mode.v_mode = 2;
        material->maps.push_back(OWNED<VOR2_MATERIAL_MAP>(map));
    }
    return OWNED<VOR2_MATERIAL>(material);
}

/// Every kind of mesh and of movement: scaled and turned joints, a chord, weights that don't add up and bones that
/// aren't there, targets beyond 1, vertices with tracks of their own.
void make_everything(VOR2& scene) {
    set_range(scene, 2, 25);
    add_node(scene, "root", -1, {0, 0.2F, 0});
    rock<VOR2_ANIMATABLE_QUATERNION_SLERP>(add_node(scene, "left_arm", 0, {0.1F, 0, 0}), 1.4F, 9, 2, {0, 0, 1});
    VOR2_MATRIX_NODE& elbow = add_node(scene, "left_elbow", 1, {0, 0.5F, 0});
    rock<VOR2_ANIMATABLE_QUATERNION_LERP>(elbow, 2.2F, 5, 1.7F, {1, 0.3F, 0.2F});
    auto* scale = new VOR2_ANIMATABLE_VECTOR_3_LINEAR();
    scale->add_key({1.2F, 0.8F, 1}, 0.1F);
    scale->add_key({1, 1.6F, 0.7F}, 1.9F);
    elbow.scale_track.reset(scale);
    auto* grip = new VOR2_ANIMATABLE_INT32_RLE();
    grip->add_key(1, 0);
    grip->add_key(4, 0.8F);
    grip->add_key(2, 1.5F);
    elbow.extended_properties.int_properties.emplace_back().name = TEXT(u"grip");
    elbow.extended_properties.int_properties[0].track.reset(grip);
    add_node(scene, "right_hand", 2, {0, 0.5F, 0});
    scene.matrix_hierarchy.nodes.emplace_back().name = TEXT(u"still");
    auto* moved = new VOR2_ANIMATABLE_VECTOR_3_LINEAR();
    moved->add_key({-0.6F, 0, 0}, 0);
    moved->add_key({-0.6F, 0.4F, 0.1F}, 2);
    add_node(scene, "shelf", 0, {}).position_track.reset(moved);

    scene.materials.push_back(make_material("skin", {0.85F, 0.55F, 0.4F, 1}, nullptr));
    scene.materials.push_back(make_material("checked", {0, 0, 0, 1}, "dot.png"));
    scene.materials.push_back(make_material("lost", {0.3F, 0.5F, 0.8F, 1}, "..\\lost.png"));

    auto* skinned = new VOR2_WEIGHTED_MESH();
    skinned->name = TEXT(u"sleeve");
    skinned->matrix_index = 1;
    make_tube(*skinned, 12, 10, 1.2F, 0.12F, 0, [](VOR2_WEIGHTED_MESH_VERT& vertex, f32 up) {
        vertex.position += VECTOR_3{0.1F, 0.2F, 0};
        bind(vertex, up, 1, 3, 3);
        if (up > 0.95F) vertex.bone_weights[0].bone_index = -1;
    });
    scene.weighted_meshes.push_back(OWNED<VOR2_WEIGHTED_MESH>(skinned));

    auto* morphing = new VOR2_MORPH_MESH();
    morphing->name = TEXT(u"vase");
    morphing->matrix_index = 5;
    for (const auto& [name, high] : {std::pair(u"wide", 1.4F), std::pair(u"bent", -0.7F)}) {
        auto* weight = new VOR2_ANIMATABLE_FLOAT32_LINEAR();
        weight->add_key(0, 0);
        weight->add_key(high, 1.1F);
        weight->add_key(0.2F, 2);
        auto& target = morphing->morph_targets.emplace_back();
        target.name = TEXT(name);
        target.track.reset(weight);
    }
    make_tube(*morphing, 8, 12, 0.5F, 0.15F, 1, [](VOR2_MORPH_MESH_VERT& vertex, f32 up) {
        for (i32 target = -1; target < 2; ++target) {
            VOR2_TARGET_VERT& pulled = vertex.target_verts.emplace_back();
            pulled.target_index = target;
            pulled.offset = target == 0 ? vertex.normal * (0.2F * up) : VECTOR_3{0.2F * up * up, 0, 0};
        }
    });
    scene.morph_meshes.push_back(OWNED<VOR2_MORPH_MESH>(morphing));

    auto* flag = new VOR2_ANIM_MESH();
    flag->name = TEXT(u"flag");
    flag->matrix_index = 3;
    for (u32 i = 0; i < 4; ++i) {
        VOR2_ANIM_MESH_VERT& vertex = flag->vertices.emplace_back();
        auto* position = new VOR2_ANIMATABLE_VECTOR_3_LINEAR();
        const VECTOR_3 at{0.3F * static_cast<f32>(i % 2), 0.2F * static_cast<f32>(i / 2), 0};
        position->add_key(at, 0);
        position->add_key(at + VECTOR_3{0, 0, 0.1F * static_cast<f32>(i)}, 1 + 0.3F * static_cast<f32>(i));
        vertex.position_track.reset(position);
        auto* colour = new VOR2_ANIMATABLE_COLOUR_LINEAR();
        colour->add_key({1, 0.2F, 0.2F, 1}, 0);
        colour->add_key({0.2F, 0.2F, 1, 1}, 2);
        vertex.colour_track.reset(colour);
    }
    VOR2_TRI_SUB_OBJECT& cloth = flag->sub_objects.emplace_back();
    cloth.triangles.push_back({0, 1, 2});
    cloth.triangles.push_back({1, 3, 2});
    cloth.triangles.push_back({1, 3, 9});
    scene.anim_meshes.push_back(OWNED<VOR2_ANIM_MESH>(flag));

    auto* post = new VOR2_RIGID();
    post->name = TEXT(u"post");
    post->matrix_index = 0;
    make_tube(*post, 2, 16, 0.3F, 0.05F, 2, [](VOR2_RIGID_VERT&, f32) {});
    scene.rigids.push_back(OWNED<VOR2_RIGID>(post));
    auto* again = new VOR2_GEOM_INSTANCE();
    again->name = TEXT(u"post again");
    again->matrix_index = 3;
    scene.rigid_instances.push_back(OWNED<VOR2_INSTANCE>(again));
}

void make_wrong(VOR2& scene) {
    set_range(scene, nan, nan);
    add_node(scene, "child first", 1, {0, 1, 0});
    add_node(scene, "itself", 1, {nan, 2, 0});
    rock<VOR2_ANIMATABLE_QUATERNION_SLERP>(add_node(scene, "nowhere", 99, {3.0e38F, -3.0e38F, 0}), nan, 4, 1,
                                           {1, 0, 0});
    auto* back = new VOR2_ANIMATABLE_VECTOR_3_LINEAR();
    for (const f32 time : {1.0F, 0.0F, nan, 2.0F, 2.0F}) back->add_key({time, nan, 0}, time);
    scene.matrix_hierarchy.nodes[2].position_track.reset(back);
    scene.matrix_hierarchy.nodes[1].scale_track.reset(new VOR2_ANIMATABLE_VECTOR_3_LINEAR());
    auto* mesh = new VOR2_WEIGHTED_MESH();
    mesh->name = TEXT(u"no bones");
    mesh->matrix_index = 0xFFFFFFFF;
    make_tube(*mesh, 3, 4, nan, 1, 7, [](VOR2_WEIGHTED_MESH_VERT& vertex, f32 up) {
        if (up > 0) bind(vertex, up, 1000, 3, 12);
    });
    scene.weighted_meshes.push_back(OWNED<VOR2_WEIGHTED_MESH>(mesh));
    auto* instance = new VOR2_INSTANCE();
    instance->matrix_index = 77;
    instance->instanced_object = 77;
    scene.weighted_mesh_instances.push_back(OWNED<VOR2_INSTANCE>(instance));
}

void make_script(VOR2& scene) {
    set_range(scene, 1, 30);
    scene.inf.file_info = TEXT(u"</script><script>window.hit=1</script>");
    const char* names[] = {"</script><script>window.hit=2</script>",
                           "<img src=x onerror=window.hit=3>",
                           "'\"><svg onload=window.hit=4>",
                           "<!--<script>",
                           "&lt;b&gt;${window.hit=5}",
                           "]]>"};
    for (const char* name : names)
        add_node(scene, name, static_cast<i32>(scene.matrix_hierarchy.nodes.size()) - 1, {0.1F, 0.3F, 0});
    auto* mesh = new VOR2_RIGID();
    mesh->name = TEXT(to_utf16(names[1]));
    mesh->matrix_index = 900;
    scene.rigids.push_back(OWNED<VOR2_RIGID>(mesh));
    scene.materials.push_back(make_material(names[0], {1, 1, 1, 1}, "javascript:window.hit=6.png"));
}

void make_many(VOR2& scene) {
    set_range(scene, 1, 30);
    for (int i = 0; i < 5000; ++i) {
        const std::string name = "node_" + std::to_string(i);
        rock<VOR2_ANIMATABLE_QUATERNION_SLERP>(
            add_node(scene, name.c_str(), i % 100 == 0 ? -1 : i - 1, {0, 0.05F, 0.01F * static_cast<f32>(i / 100)}),
            0.02F, 3, 1, {1, 0, 0.5F});
    }
}

/// 100,000 triangles on 200 joints with 1,000 keys each.
void make_big(VOR2& scene) {
    constexpr int joints = 200, keys = 1000;
    set_range(scene, static_cast<f32>(keys - 1) / 60, 60);
    for (int i = 0; i < joints; ++i) {
        const std::string name = "joint_" + std::to_string(i);
        VOR2_MATRIX_NODE& node = add_node(scene, name.c_str(), i - 1, {0, i == 0 ? 0.0F : 0.02F, 0});
        rock<VOR2_ANIMATABLE_QUATERNION_SLERP>(node, 0.02F, keys, scene.environment.time_range.end,
                                               {1, 0.2F * static_cast<f32>(i % 3), 0.5F});
        auto* position = new VOR2_ANIMATABLE_VECTOR_3_LINEAR();
        for (int k = 0; k < keys; ++k)
            position->add_key({0, (i == 0 ? 0.0F : 0.02F) + 0.0004F * std::sin(0.1F * static_cast<f32>(k + i)), 0},
                              static_cast<f32>(k) / 60);
        node.position_track.reset(position);
    }
    auto* mesh = new VOR2_WEIGHTED_MESH();
    mesh->name = TEXT(u"snake");
    make_tube(*mesh, 501, 100, 3.98F, 0.25F, 0xFFFFFFFF,
              [](VOR2_WEIGHTED_MESH_VERT& vertex, f32 up) { bind(vertex, up, 0, joints, 2); });
    scene.weighted_meshes.push_back(OWNED<VOR2_WEIGHTED_MESH>(mesh));
}

bool write(const std::filesystem::path& folder, const char* name, void (*make)(VOR2&)) {
    VOR2 scene;
    make(scene);
    scene.matrix_hierarchy.link_parents();
    const std::string path = (folder / name).string();
    TEXT text;
    for (const char c : path) text.append(c == '/' ? u'\\' : static_cast<char16_t>(static_cast<unsigned char>(c)));
    return scene.save(text);
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fputs("usage: make_scenes FOLDER [big]\n", stderr);
        return 2;
    }
    const std::filesystem::path folder(arguments[1]);
    std::filesystem::create_directories(folder);
    if (count > 2) return write(folder, "big.vr2", make_big) ? 0 : 1;
    bool good = write(folder, "everything.vr2", make_everything) && write(folder, "wrong.vr2", make_wrong) &&
                write(folder, "script.vr2", make_script) && write(folder, "many.vr2", make_many);
    good = write(folder, "empty.vr2", [](VOR2&) {}) && good;
    good = write(folder, "still.vr2",
                 [](VOR2& scene) {
                     add_node(scene, "alone", -1, {0, 1, 0});
                     scene.matrix_hierarchy.nodes.emplace_back().name = TEXT(u"no tracks");
                 }) &&
           good;
    return good ? 0 : 1;
}
