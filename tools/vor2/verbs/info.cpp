#include "inspect/info_screen.h"
#include "tools/vor2/cli/jobs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

using namespace vor2::inspect;

class InfoVerb final : public Verb {
public:
    std::string_view name() const override { return "info"; }
    std::string_view summary() const override { return "show what a scene file is, in a screen"; }
    std::string_view description() const override {
        return "Shows the version, who exported it when and from what, the time range and sample rate, what the scene "
               "holds, the tree of its nodes with the number of keys of each, and how the file's bytes spread over "
               "kinds of records.\n\n"
               "With --json each file gives one object on a line of its own.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 info walk.vr2", "vor2 info --json shots/*.vr2 | jq .sample_rate"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("FILE", "FILE.vr2", "the scenes to show", files_);
        syntax.flag("-a,--all", "show the whole tree of nodes, however long", all_);
        syntax.json(json_);
        syntax.jobs(jobs_);
    }
    int run() override {
        return run_for_each(files_, jobs_, "reading", [this](std::size_t index) { return show(index); });
    }

private:
    int show(std::size_t index) const {
        const std::string& file = files_[index];
        VOR2_LOADER::VOR2_INPUT_BUFFER buffer(library_name(file));
        VOR2_LOADER::VOR2 scene;
        if (!load_scene(scene, file, buffer)) return exit_refused;
        const SceneFacts facts = gather_facts(file, scene, {buffer.start, buffer.end});
        TextOut out(results());
        if (json_) {
            write_info_json(facts, out);
        } else {
            if (index > 0) out.put('\n');
            write_info_screen(facts, all_ ? facts.nodes.size() : rows_in_a_screen, out);
        }
        return finish(out) ? exit_done : exit_refused;
    }

    static constexpr std::size_t rows_in_a_screen = 40;
    std::vector<std::string> files_;
    bool all_ = false, json_ = false;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_info_verb() {
    return std::make_unique<InfoVerb>();
}

} // namespace tool
