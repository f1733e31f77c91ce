#include "inspect/pose_document.h"

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;

void write_triple(VECTOR_3 value, JsonWriter& json) {
    json.begin_array(true);
    for (const f32 number : {value.x, value.y, value.z}) json.number(number);
    json.end_array();
}

/// A vertex without a value of that sort has (0, 0, 0).
void write_vertices(std::string_view key, const VOR2_TRI_OBJECT& mesh, void (VOR2_VERT::*get)(VECTOR_3&) const,
                    JsonWriter& json) {
    json.key(key);
    json.begin_array();
    for (u32 i = 0; i < mesh.vertex_count(); ++i) {
        VECTOR_3 value(0.0F, 0.0F, 0.0F);
        (mesh.vertex(i).*get)(value);
        write_triple(value, json);
    }
    json.end_array();
}

template<class MESH>
void write_meshes(std::string_view key, const OWNED_ARRAY<MESH>& meshes, JsonWriter& json) {
    json.key(key);
    json.begin_array();
    for (const OWNED<MESH>& mesh : meshes) {
        if (!mesh) continue;
        json.begin_object();
        json.text("name", mesh->name.view());
        write_vertices("positions", *mesh, &VOR2_VERT::get_position, json);
        write_vertices("normals", *mesh, &VOR2_VERT::get_normal, json);
        json.end_object();
    }
    json.end_array();
}

} // namespace

void write_pose_text(const VOR2& scene, TextOut& out) {
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes) {
        for (const auto& row : node.world_matrix.m) out.put(shortest(row[3]) + "\t");
        out.put(quoted(node.name.view()));
        out.put('\n');
    }
}

void write_pose_json(const VOR2& scene, float time, TextOut& out) {
    JsonWriter json(out, JsonWriter::Layout::indented);
    json.begin_object();
    json.number("time", time);
    json.key("nodes");
    json.begin_array();
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes) {
        json.begin_object();
        json.text("name", node.name.view());
        json.number("parent", std::int64_t{node.parent_index});
        json.key("world_matrix");
        json.begin_array(true);
        for (const auto& row : node.world_matrix.m) {
            for (const f32 number : row) json.number(number);
        }
        json.end_array();
        json.end_object();
    }
    json.end_array();
    write_meshes("rigids", scene.rigids, json);
    write_meshes("weighted_meshes", scene.weighted_meshes, json);
    write_meshes("morph_meshes", scene.morph_meshes, json);
    write_meshes("anim_meshes", scene.anim_meshes, json);
    json.end_object();
    json.finish();
}

} // namespace vor2::inspect
