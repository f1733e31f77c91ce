#include "host/export/mesh_export.h"
#include "inspect/json_writer.h"
#include "tools/vor2/cli/default_nodes.h"
#include "tools/vor2/cli/host_session.h"
#include "tools/vor2/cli/jobs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_names.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/problems_dialog.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/search_options.h"
#include "tools/vor2/cli/unevaluated.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

using namespace vor2::inspect;

/// The plug-in puts the name between double quotes of a Python line as it stands; spelled like this, Python reads
/// back the very name.
std::string python_spelling(const std::string& name) {
    std::string out;
    for (const char c : name) {
        if (c == '"' || c == '\\') out += '\\';
        out += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return out;
}

class ExportVerb final : public Verb {
public:
    std::string_view name() const override { return "export"; }
    std::string_view summary() const override { return "export scenes through the plug-in to .vr2 files"; }
    std::string_view description() const override {
        return "Opens each scene (.ma or .bvh) in the embedded host and runs VOR2Export there. The options that have a "
               "flag of that command mean what the flag means, and one that isn't given leaves its default: the "
               "playback range, 60 samples a second, namespaces stripped.\n\n"
               "Without --node the top-level nodes that hold the scene's joints are exported, or all top-level "
               "transforms in a scene without joints. Frames count in the scene's time unit, or in --time-unit.\n\n"
               "What a scene refers to is part of it, with the changes that the scene makes there. A reference is "
               "looked for by --map, at its path, in the project, and beside the scene; a scene with one that isn't "
               "there is refused.\n\n"
               "With --meshes the meshes of the exported nodes, and without --node of all top-level nodes that hold "
               "any, stand in the file as they are at the first frame, and move as rigid bodies with the nodes above "
               "them. A skinned mesh stands in its bind pose, which a note says. Meshes with numbers that aren't "
               "finite stop the export: a report beside the output tells them, and --on-problems decides.\n\n"
               "Before anything is sampled, all that moves the exported nodes is followed back through every "
               "connection. What isn't evaluated there is named, and the scene is refused; --allow-unevaluated exports "
               "it all the same, with the values that such nodes had when they were saved or none, and says so. --json "
               "prints what was found for programs.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 export walk.ma -o walk.vr2 --sample-at 30", "vor2 export shots/*.ma --output-dir out --jobs 4",
                "vor2 export hall.ma -o hall.vr2 --node hips --node prop --start 1 --stop 48"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("SCENE", "SCENE", "the scenes to export", scenes_);
        outputs_.describe(syntax);
        syntax.texts("--node", "NAME", "a node to export with all below it", nodes_);
        syntax.number("--start", "FRAME", "the first frame", start_);
        syntax.number("--stop", "FRAME", "the last frame", stop_);
        syntax.number("--sample-at", "RATE", "samples a second", sample_at_);
        syntax.choice("--strip-namespace", {"on", "off"}, "cut namespaces from node names", strip_namespace_);
        syntax.choice("--rotate-180", {"on", "off"}, "which way top-level nodes face; off turns them half around",
                      rotate_180_);
        syntax.choice("--update-view", {"on", "off"}, "move the clock through the view", update_view_);
        syntax.text("--use-node-origin", "NAME", "the node whose position is the origin of the export", origin_);
        syntax.flag("--meshes", "take the meshes and materials of the exported nodes along", meshes_);
        syntax.text("--time-unit", "UNIT",
                    "film, pal, ntsc, game, show, palf, ntscf, 120fps ... in place of the scene's", time_unit_);
        syntax.number("--bvh-unit", "CM", "what a unit of a .bvh file is in centimetres (default 1)", bvh_unit_);
        search_.describe(syntax);
        search_.describe_missing(syntax);
        on_problems_.describe(syntax);
        syntax.flag("--allow-unevaluated", "export also what hangs on nodes that aren't evaluated", allow_unevaluated_);
        repeat_.describe(syntax);
        syntax.json(json_);
        syntax.jobs(jobs_);
    }
    std::string check() const override {
        if (sample_at_ && !(*sample_at_ > 0)) return "--sample-at: the rate must be above 0";
        if (bvh_unit_ && !(*bvh_unit_ > 0)) return "--bvh-unit: the unit must be above 0";
        if (const std::string wrong = search_.check(); !wrong.empty()) return wrong;
        const std::string wrong = outputs_.check(scenes_);
        return wrong.empty() ? repeat_.check() : wrong;
    }
    int run() override {
        repeat_.apply();
        return run_for_each(scenes_, jobs_, "exporting", [this](std::size_t index) { return export_one(index); });
    }

private:
    int export_one(std::size_t index) const {
        ExportReport report{scenes_[index], outputs_.name_for(scenes_[index]), false, {}, {}};
        const Progress progress(scenes_.size() == 1 ? "exporting " + report.file : std::string());
        HostSession host(report.file);
        host.session().file_search = search_.search(true);
        report.exported = host.is_equipped() && export_through(host, report);
        if (!json_) return report.exported ? exit_done : exit_refused;
        report.warnings = host.warnings();
        TextOut out(stdout);
        JsonWriter json(out, scenes_.size() > 1 ? JsonWriter::Layout::line : JsonWriter::Layout::indented);
        write_report(report, json);
        return finish(out) && report.exported ? exit_done : exit_refused;
    }

    bool export_through(HostSession& host, ExportReport& report) const {
        OutputSet outputs(report.output);
        if (!outputs.ready() || !host.open(report.file, bvh_unit_)) return false;
        if (!time_unit_.empty() && !host.set_time_unit(time_unit_)) return false;
        headless::Scene& scene = host.session().scene();
        const std::vector<std::string> nodes = nodes_.empty() ? default_nodes(scene, meshes_) : nodes_;
        if (!are_there(scene, report.file, nodes)) return false;
        report.unevaluated = unevaluated_in_export(scene, nodes);
        if (!allow_unevaluated_ && !report.unevaluated.empty()) {
            for (const headless::Unevaluated& found : report.unevaluated) problem(report.file, told(found));
            return false;
        }
        VOR2_EXPORTER_MAYA::exports_meshes() = meshes_;
        const ProblemsDialog dialog(on_problems_, report.file, report.output);
        (void)host.try_command("VOR2Export", arguments(report.output, nodes));
        if (dialog.cancelled()) {
            // The host takes the user's word for a failed save, which it isn't.
            if (outputs.commit_others()) dialog.tell();
            return false;
        }
        if (!host.tell_error() || !is_sound(host, report.file) || !outputs.commit()) return false;
        dialog.tell();
        return true;
    }

    /// Whether every evaluation came to an end, told to the user where one didn't.
    bool is_sound(HostSession& host, const std::string& file) const {
        const std::vector<std::string>& doubts = host.session().doubts();
        if (allow_unevaluated_ || doubts.empty()) return true;
        problem(file, "what moves the exported nodes can't be worked out, so nothing is written: " + doubts.front());
        return false;
    }

    /// Whether the scene holds each node, told to the user where it doesn't.
    bool are_there(const headless::Scene& scene, const std::string& file, const std::vector<std::string>& nodes) const {
        bool all = true;
        std::vector<std::string> names = nodes;
        if (!origin_.empty()) names.push_back(origin_);
        for (const std::string& name : names) {
            const auto found = scene.resolve(name);
            if (found && !found->empty()) continue;
            problem(file, found ? "no node '" + name + "'" : found.error().message);
            all = false;
        }
        if (nodes.empty()) problem(file, "there is nothing to export: no joints and no transforms");
        return all && !nodes.empty();
    }

    std::vector<std::string> arguments(const std::string& output, const std::vector<std::string>& nodes) const {
        std::vector<std::string> words{"-filename", python_spelling(output)};
        const std::pair<const char*, const std::optional<double>*> numbers[] = {
            {"-start", &start_}, {"-stop", &stop_}, {"-sampleAt", &sample_at_}};
        for (const auto& [flag, number] : numbers) {
            if (*number) words.insert(words.end(), {flag, vor2::inspect::shortest(**number)});
        }
        const std::pair<const char*, const std::string*> texts[] = {{"-stripNamespace", &strip_namespace_},
                                                                    {"-rotate180", &rotate_180_},
                                                                    {"-updateView", &update_view_},
                                                                    {"-useNodeOrigin", &origin_}};
        for (const auto& [flag, value] : texts) {
            if (!value->empty()) words.insert(words.end(), {flag, *value});
        }
        for (const std::string& node : nodes) words.insert(words.end(), {"-exportNodeList", node});
        return words;
    }

    std::vector<std::string> scenes_, nodes_;
    OutputNames outputs_{".vr2"};
    std::optional<double> start_, stop_, sample_at_, bvh_unit_;
    std::string strip_namespace_, rotate_180_, update_view_, origin_, time_unit_;
    bool meshes_ = false, allow_unevaluated_ = false, json_ = false;
    SearchOptions search_;
    ProblemsOption on_problems_;
    RepeatOptions repeat_;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_export_verb() {
    return std::make_unique<ExportVerb>();
}

} // namespace tool
