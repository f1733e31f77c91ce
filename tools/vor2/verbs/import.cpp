#include "support/platform/native_path.h"
#include "tools/vor2/cli/host_session.h"
#include "tools/vor2/cli/jobs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_names.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

class ImportVerb final : public Verb {
public:
    std::string_view name() const override { return "import"; }
    std::string_view summary() const override {
        return "import .vr2 files through the plug-in and save them as .ma scenes";
    }
    std::string_view description() const override {
        return "Runs VOR2Import in an empty scene of the embedded host and saves that scene as Maya ASCII: joints with "
               "keys, the playback range, the time unit. What else the file holds doesn't reach the host.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 import walk.vr2 -o walk.ma", "vor2 import *.vr2 --output-dir scenes --time-unit ntsc"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("FILE", "FILE.vr2", "the files to import", files_);
        outputs_.describe(syntax);
        syntax.text("--time-unit", "UNIT", "the time unit of the scene: film (the default), pal, ntsc, 120fps ...",
                    time_unit_);
        syntax.jobs(jobs_);
    }
    std::string check() const override { return outputs_.check(files_); }
    int run() override {
        make_output_folder(outputs_.folder());
        return run_for_each(files_, jobs_, "importing", [this](std::size_t index) { return import_one(index); });
    }

private:
    int import_one(std::size_t index) const {
        const std::string& file = files_[index];
        const Progress progress(files_.size() == 1 ? "importing " + file : std::string());
        const std::string output = outputs_.name_for(file);
        OutputSet outputs(output);
        if (!outputs.ready()) return exit_refused;
        const std::string why = VOR2_LOADER::platform::why_unreadable(file);
        if (!why.empty()) {
            problem(file, why);
            return exit_refused;
        }
        HostSession host(file);
        if (!host.is_equipped()) return exit_refused;
        if (!time_unit_.empty() && !host.set_time_unit(time_unit_)) return exit_refused;
        const std::string failure = host.try_command("VOR2Import", {"-filename", file});
        if (!failure.empty()) {
            // The command says that it can't read the file; the library says why.
            VOR2_LOADER::VOR2 scene;
            if (load_scene(scene, file)) problem(file, failure);
            return exit_refused;
        }
        return host.save_as(output) ? exit_done : exit_refused;
    }

    std::vector<std::string> files_;
    OutputNames outputs_{".ma"};
    std::string time_unit_;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_import_verb() {
    return std::make_unique<ImportVerb>();
}

} // namespace tool
