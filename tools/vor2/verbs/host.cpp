#include "headless/files/text_file.h"
#include "tools/vor2/cli/capture_options.h"
#include "tools/vor2/cli/host_session.h"
#include "tools/vor2/cli/line_outputs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/search_options.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

/// A line, or a file of lines.
struct Step {
    std::string text;
    bool is_file;
};

class HostVerb final : public Verb {
public:
    std::string_view name() const override { return "host"; }
    std::string_view summary() const override {
        return "run script lines in the embedded host, as a user would type them";
    }
    std::string_view description() const override {
        return "Opens the scene, if one is given, and runs the lines and scripts in the order that they are given: "
               "MEL, "
               "with the plug-in's commands VOR2Export and VOR2Import, or Python in a script that ends in .py and with "
               "--python. What the lines print and give goes to standard output.\n\n"
               "The first line that fails, or that shows an error, ends the run with exit code 1 and its number. "
               "Nothing is saved then; with --save the scene is saved when all lines are through.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 host walk.ma -c 'VOR2Export -f \"walk.vr2\" -sAt 30 -enl \"hips\" -enl \"prop\"'",
                "vor2 host -c 'VOR2Import -f \"walk.vr2\"' -c 'ls -type \"joint\"' --save walk.ma",
                "vor2 host hall.ma --script prepare.mel --save hall_ready.ma"};
    }
    void describe(Syntax& syntax) override {
        syntax.file("SCENE", "SCENE", "the scene to open", scene_);
        add_step_row(syntax, "-c,--command", ValueKind::text, "LINE", "a line to run", false);
        add_step_row(syntax, "--script", ValueKind::file, "FILE", "a script to run", true);
        syntax.flag("--python", "the lines of -c are Python", python_);
        syntax.file("--save", "OUT.ma", "save the scene at the end", save_);
        capture_.describe(syntax);
        search_.describe(syntax);
        repeat_.describe(syntax);
    }
    std::string check() const override {
        if (std::string wrong = capture_.check(); !wrong.empty()) return wrong;
        if (std::string wrong = search_.check(); !wrong.empty()) return wrong;
        return repeat_.check();
    }
    int run() override {
        repeat_.apply();
        const Progress progress("running the host");
        HostSession host(scene_, HostSession::Talk::everything);
        host.session().file_search = search_.search(false);
        if (!host.is_equipped()) return exit_refused;
        if (!save_.empty() && !OutputSet(save_).ready()) return exit_refused;
        if (!scene_.empty() && !host.open(scene_, capture_.options())) return exit_refused;
        if (!run_steps(host)) return exit_refused;
        host.work_on(save_);
        return save_.empty() || host.save_as(save_) ? exit_done : exit_refused;
    }

private:
    void add_step_row(Syntax& syntax, std::string names, ValueKind kind, std::string value_name, std::string help,
                      bool is_file) {
        OptionRow row{std::move(names), kind, std::move(value_name), std::move(help)};
        row.repeated = true;
        row.set = [this, is_file](const std::string& value) {
            steps_.push_back({value, is_file});
            return std::string();
        };
        syntax.add(std::move(row));
    }

    bool run_steps(HostSession& host) const {
        const LineOutputs outputs;
        for (std::size_t i = 0; i < steps_.size(); ++i) {
            const Step& step = steps_[i];
            host.work_on(step.is_file ? step.text : "line " + std::to_string(i + 1));
            const bool done = step.is_file ? run_file(host, step.text) : host.run_script(step.text, python_);
            if (!done || outputs.failures() > 0) return false;
        }
        return true;
    }

    static bool run_file(HostSession& host, const std::string& file) {
        const headless::Result<std::string> text = headless::read_text_file(file);
        if (text) return host.run_script(*text, file.ends_with(".py"));
        problem(file, text.error().message);
        return false;
    }

    std::string scene_, save_;
    std::vector<Step> steps_;
    CaptureOptions capture_;
    bool python_ = false;
    SearchOptions search_;
    RepeatOptions repeat_;
};

} // namespace

std::unique_ptr<Verb> make_host_verb() {
    return std::make_unique<HostVerb>();
}

} // namespace tool
