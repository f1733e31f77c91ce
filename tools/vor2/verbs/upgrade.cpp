#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

class UpgradeVerb final : public Verb {
public:
    std::string_view name() const override { return "upgrade"; }
    std::string_view summary() const override { return "save a scene of any version in the newest form"; }
    std::string_view description() const override {
        return "Loads the scene without moving its clock and saves it as version 1.16. Nothing else changes: upgrading "
               "an upgraded file gives the same bytes. IN and OUT may be the same file.\n\n"
               "Scenes that the file refers to are found beside it, and are saved to the same places beside OUT. One "
               "that would land outside OUT's folder is refused, unless --allow-outside is given, and so is one that "
               "would replace a file that is no scene. One that isn't there is told and left out.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 upgrade old.vr2 new.vr2", "vor2 upgrade walk.vr2 walk.vr2"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("IN", "IN.vr2", "the scene to load", input_);
        syntax.required_file("OUT", "OUT.vr2", "the file to write", output_);
        syntax.allow_outside(allow_outside_);
    }
    int run() override {
        VOR2_LOADER::VOR2 scene;
        if (!load_scene(scene, input_)) return exit_refused;
        leave_out_missing_references(scene, input_);
        return save_scene(scene, output_, allow_outside_) ? exit_done : exit_refused;
    }

private:
    std::string input_, output_;
    bool allow_outside_ = false;
};

} // namespace

std::unique_ptr<Verb> make_upgrade_verb() {
    return std::make_unique<UpgradeVerb>();
}

} // namespace tool
