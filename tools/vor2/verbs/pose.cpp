#include "tools/vor2/json_writer.h"
#include "tools/vor2/scene_file.h"
#include "tools/vor2/verb.h"

namespace tool {
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
        json.key("name");
        json.text(mesh->name.view());
        write_vertices("positions", *mesh, &VOR2_VERT::get_position, json);
        write_vertices("normals", *mesh, &VOR2_VERT::get_normal, json);
        json.end_object();
    }
    json.end_array();
}

class PoseVerb final : public Verb {
public:
    std::string_view name() const override { return "pose"; }
    std::string_view summary() const override { return "print where everything stands at a time"; }
    std::string_view description() const override {
        return "Moves the scene's clock to the time, in seconds, and prints where each node stands in the world, and "
               "with --json the vertices of all meshes too. Before the first key and behind the last one a track "
               "holds its value.\n\n"
               "The JSON object has the time, the nodes with name, parent (an index, -1 for none) and world_matrix "
               "(three rows of four numbers, the translation in metres last in each row), and rigids, "
               "weighted_meshes, morph_meshes and anim_meshes with name, positions and normals.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 pose walk.vr2 --time 0.5", "vor2 pose walk.vr2 --time 0.5 --json | jq '.nodes[1]'"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("FILE", "FILE.vr2", "the scene", file_);
        syntax.number("-t,--time", "SECONDS", "the time (default: the start of the scene)", time_);
        syntax.json(json_);
    }
    int run() override {
        VOR2 scene;
        if (!load_scene(scene, file_)) return exit_refused;
        const f32 time = time_ ? static_cast<f32>(*time_) : scene.environment.time_range.start;
        scene.set_time(time);
        TextOut out(stdout);
        if (json_) {
            write_json(scene, time, out);
        } else {
            write_lines(scene, out);
        }
        return out.finish() ? exit_done : exit_refused;
    }

private:
    static void write_lines(const VOR2& scene, TextOut& out);
    static void write_json(const VOR2& scene, f32 time, TextOut& out);

    std::string file_;
    std::optional<double> time_;
    bool json_ = false;
};

/// A node a line: its position, then its name as JSON quotes it, so that a line stays one.
void PoseVerb::write_lines(const VOR2& scene, TextOut& out) {
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes) {
        for (const auto& row : node.world_matrix.m) out.put(shortest(row[3]) + "\t");
        out.put(quoted(node.name.view()));
        out.put('\n');
    }
}

void PoseVerb::write_json(const VOR2& scene, f32 time, TextOut& out) {
    JsonWriter json(out, JsonWriter::Layout::indented);
    json.begin_object();
    json.key("time");
    json.number(time);
    json.key("nodes");
    json.begin_array();
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes) {
        json.begin_object();
        json.key("name");
        json.text(node.name.view());
        json.key("parent");
        json.number(std::int64_t{node.parent_index});
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

} // namespace

std::unique_ptr<Verb> make_pose_verb() {
    return std::make_unique<PoseVerb>();
}

} // namespace tool
