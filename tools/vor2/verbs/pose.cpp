#include "inspect/pose_document.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

using namespace VOR2_LOADER;
using namespace vor2::inspect;

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
        TextOut out(results());
        if (json_) {
            write_pose_json(scene, time, out);
        } else {
            write_pose_text(scene, out);
        }
        return finish(out) ? exit_done : exit_refused;
    }

private:
    std::string file_;
    std::optional<double> time_;
    bool json_ = false;
};

} // namespace

std::unique_ptr<Verb> make_pose_verb() {
    return std::make_unique<PoseVerb>();
}

} // namespace tool
