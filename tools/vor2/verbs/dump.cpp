#include "format/core/record_visitor.h"
#include "inspect/dump_text.h"
#include "inspect/record_json.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

using namespace vor2::inspect;

class DumpVerb final : public Verb {
public:
    std::string_view name() const override { return "dump"; }
    std::string_view summary() const override { return "print everything that is in a scene"; }
    std::string_view description() const override {
        return "Prints every record with every field, in the order of the newest file form, without loss: numbers have "
               "as many digits as read back to the same value, and not a number and the infinities are told as nan, "
               "inf and -inf (strings in JSON). Texts keep every unit; one that stands for no letter is told as its "
               "escape. An optional part that isn't there is null.\n\n"
               "The same scene always gives the same lines, so that two dumps can be compared by any program.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 dump walk.vr2 | less", "vor2 dump --json walk.vr2 > walk.json"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("FILE", "FILE.vr2", "the scene to print", file_);
        syntax.json(json_);
    }
    int run() override {
        VOR2_LOADER::VOR2 scene;
        if (!load_scene(scene, file_)) return exit_refused;
        TextOut out(results());
        if (json_) {
            write_scene_json(scene, out);
        } else {
            write_scene_text(scene, out);
        }
        return finish(out) ? exit_done : exit_refused;
    }

private:
    std::string file_;
    bool json_ = false;
};

} // namespace

std::unique_ptr<Verb> make_dump_verb() {
    return std::make_unique<DumpVerb>();
}

} // namespace tool
