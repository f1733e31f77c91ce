#include "host/export/mesh_export.h"
#include "inspect/json_writer.h"
#include "support/platform/native_path.h"
#include "tools/vor2/cli/capture_options.h"
#include "tools/vor2/cli/clips.h"
#include "tools/vor2/cli/default_nodes.h"
#include "tools/vor2/cli/foreign_file.h"
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
        return "Opens each scene (.ma, .bvh, and .fbx, .dae, .glb or .gltf where the tool was built with Assimp) in "
               "the embedded host and runs VOR2Export there. The options that have a "
               "flag of that command mean what the flag means, and one that isn't given leaves its default: the "
               "playback range, 60 samples a second, namespaces stripped.\n\n"
               "Without --node the top-level nodes that hold the scene's joints are exported, or all top-level "
               "transforms in a scene without joints. Frames count in the scene's time unit, or in --time-unit.\n\n"
               "What a scene refers to is part of it, with the changes that the scene makes there. A reference is "
               "looked for by --map, at its path, in the project, and beside the scene; a scene with one that isn't "
               "there is refused.\n\n"
               "With --meshes the meshes of the exported nodes, and without --node of all top-level nodes that hold "
               "any, go along. A skinned mesh becomes a weighted mesh that poses as in the host at every sample; where "
               "it "
               "is bound in another pose than the first, the file's range begins one sample earlier, with that pose. A "
               "bone that isn't exported refuses the scene, unless --include-bones takes it along. Blend shapes become "
               "the targets of a morph mesh. Every other mesh "
               "stands as it is at the first frame and moves as a rigid body with the nodes above it. Meshes with "
               "numbers that aren't "
               "finite stop the export: a report beside the output tells them, and --on-problems decides.\n\n"
               "Before anything is sampled, all that moves the exported nodes is followed back through every "
               "connection. What isn't evaluated there is named, and the scene is refused; --allow-unevaluated exports "
               "it all the same, with the values that such nodes had when they were saved or none, and says so. --json "
               "prints what was found for programs.\n\n"
               "With --clip and --clips a file is written for each range, under its name, into --output-dir; with "
               "several scenes the names begin with the scene's. --scene-clips takes the list that the scene's game "
               "exporter nodes hold.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 export walk.ma -o walk.vr2 --sample-at 30", "vor2 export shots/*.ma --output-dir out --jobs 4",
                "vor2 export moves.ma --clip walk:1-24 --clip run:30-60 --output-dir out",
                "vor2 export hall.ma -o hall.vr2 --node hips --node prop --start 1 --stop 48"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("SCENE", "SCENE", "the scenes to export", scenes_);
        outputs_.describe(syntax);
        syntax.texts("--node", "NAME", "a node to export with all below it", nodes_);
        syntax.number("--start", "FRAME", "the first frame", start_);
        syntax.number("--stop", "FRAME", "the last frame", stop_);
        syntax.texts("--clip", "NAME:START-STOP", "a range of frames as a file of its own", clip_texts_);
        syntax.file("--clips", "FILE.json", "a list of such ranges", clip_file_);
        syntax.flag("--scene-clips", "the ranges that the scene's game exporter lists", scene_clips_);
        syntax.number("--sample-at", "RATE", "samples a second", sample_at_);
        syntax.choice("--strip-namespace", {"on", "off"}, "cut namespaces from node names", strip_namespace_);
        syntax.choice("--rotate-180", {"on", "off"}, "which way top-level nodes face; off turns them half around",
                      rotate_180_);
        syntax.choice("--update-view", {"on", "off"}, "move the clock through the view", update_view_);
        syntax.text("--use-node-origin", "NAME", "the node whose position is the origin of the export", origin_);
        syntax.flag("--meshes", "take the meshes and materials of the exported nodes along", meshes_.meshes);
        syntax.flag("--include-bones", "with --meshes, export the bones of skinned meshes too, whatever --node names",
                    meshes_.include_bones);
        syntax.flag("--skin-and-morph", "with --meshes, a mesh with a skin and blend shapes goes along as both",
                    meshes_.skin_and_morph);
        syntax.flag("--moving-points", "with --meshes, give what other deformers move a key a vertex and sample",
                    meshes_.moving_points);
        syntax.text("--time-unit", "UNIT",
                    "film, pal, ntsc, game, show, palf, ntscf, 120fps ... in place of the scene's", time_unit_);
        capture_.describe(syntax);
        search_.describe(syntax);
        search_.describe_missing(syntax);
        on_problems_.describe(syntax);
        syntax.flag("--allow-unevaluated", "export also what hangs on nodes that aren't evaluated", allow_unevaluated_);
        repeat_.describe(syntax);
        syntax.json(json_);
        syntax.jobs(jobs_);
    }
    std::string check() const override {
        if ((meshes_.include_bones || meshes_.skin_and_morph || meshes_.moving_points) && !meshes_.meshes)
            return "--include-bones, --skin-and-morph and --moving-points go with --meshes";
        if (sample_at_ && !(*sample_at_ > 0)) return "--sample-at: the rate must be above 0";
        if (std::string wrong = capture_.check(); !wrong.empty()) return wrong;
        if (std::string wrong = search_.check(); !wrong.empty()) return wrong;
        if (has_clips() && (start_ || stop_))
            return "--clip: each has its own frames; --start and --stop don't go with them";
        if (has_clips() && outputs_.folder().empty())
            return "--clip: writes several files, for which --output-dir is needed";
        std::vector<Clip> clips;
        for (const std::string& text : clip_texts_) {
            const std::string bad = parse_clip(text, clips);
            if (!bad.empty()) return "--clip: " + bad;
        }
        const std::string bad = problem_with(clips);
        if (!bad.empty()) return "--clip: " + bad;
        const std::string wrong = outputs_.check(scenes_);
        return wrong.empty() ? repeat_.check() : wrong;
    }
    int run() override {
        repeat_.apply();
        for (const std::string& text : clip_texts_) (void)parse_clip(text, clips_);
        if (!clip_file_.empty() && !read_clips(clip_file_, clips_)) return exit_refused;
        const std::string bad = problem_with(clips_);
        if (!bad.empty()) {
            problem(clip_file_, bad);
            return exit_refused;
        }
        make_output_folder(outputs_.folder());
        const auto work = [this](std::size_t index) { return export_one(index); };
        if (scenes_.size() == 1 && wants_process(extension_of(scenes_[0])))
            return run_apart(scenes_[0], "exporting " + scenes_[0], [&work] { return work(0); });
        return run_for_each(scenes_, jobs_, "exporting", work);
    }

private:
    bool has_clips() const { return !clip_texts_.empty() || !clip_file_.empty() || scene_clips_; }

    int export_one(std::size_t index) const {
        const std::string& file = scenes_[index];
        const Progress progress(scenes_.size() == 1 ? "exporting " + file : std::string());
        HostSession host(file);
        host.session().file_search = search_.search(true);
        const bool opened = host.is_equipped() && open(host, file);
        std::vector<Clip> clips = clips_;
        if (opened && scene_clips_ && !add_scene_clips(host, file, clips)) return exit_refused;
        // Without clips the one range that the options give.
        std::vector<const Clip*> ranges{nullptr};
        if (has_clips()) ranges.clear();
        for (const Clip& clip : clips) ranges.push_back(&clip);
        bool all = true;
        for (const Clip* clip : ranges) {
            ExportReport report{file, clip == nullptr ? outputs_.name_for(file) : name_of(*clip, file), false, {}, {}};
            report.exported = opened && export_through(host, report, clip);
            all = all && report.exported;
            if (json_ && !print(host, report, scenes_.size() > 1 || ranges.size() > 1)) return exit_refused;
        }
        return all ? exit_done : exit_refused;
    }

    static bool print(HostSession& host, ExportReport& report, bool one_of_many) {
        report.warnings = host.warnings();
        TextOut out(results());
        JsonWriter json(out, one_of_many ? JsonWriter::Layout::line : JsonWriter::Layout::indented);
        write_report(report, json);
        return finish(out);
    }

    bool open(HostSession& host, const std::string& file) const {
        // What can't be written anyway isn't worth the opening.
        if (!has_clips() && !OutputSet(outputs_.name_for(file)).ready()) return false;
        if (!host.open(file, capture_.options()) || (!time_unit_.empty() && !host.set_time_unit(time_unit_)))
            return false;
        if (meshes_.meshes && is_foreign(extension_of(file)))
            note(file, "the meshes of such a file don't reach the host; vor2 convert takes them along");
        return true;
    }

    static bool add_scene_clips(HostSession& host, const std::string& file, std::vector<Clip>& clips) {
        for (Clip& clip : clips_of_scene(host.session())) clips.push_back(std::move(clip));
        const std::string bad = clips.empty() ? "the scene lists no clips" : problem_with(clips);
        if (!bad.empty()) problem(file, bad);
        return bad.empty();
    }

    std::string name_of(const Clip& clip, const std::string& scene) const {
        using VOR2_LOADER::platform::native_path;
        const std::string begin = scenes_.size() > 1 ? native_path(scene).stem().string() + "_" : std::string();
        return (native_path(outputs_.folder()) / native_path(begin + clip.name)).string() + ".vr2";
    }

    bool export_through(HostSession& host, ExportReport& report, const Clip* clip) const {
        OutputSet outputs(report.output);
        if (!outputs.ready()) return false;
        headless::Scene& scene = host.session().scene();
        const std::vector<std::string> nodes = nodes_.empty() ? default_nodes(scene, meshes_.meshes) : nodes_;
        if (!are_there(scene, report.file, nodes)) return false;
        VOR2_EXPORTER_MAYA::mesh_options() = meshes_;
        report.unevaluated = unevaluated_in_export(scene, nodes);
        if (!allow_unevaluated_ && !report.unevaluated.empty()) {
            for (const headless::Unevaluated& found : report.unevaluated) {
                const bool last = &found == &report.unevaluated.back();
                problem(report.file, told(found) + (last ? "; --allow-unevaluated exports it all the same" : ""));
            }
            return false;
        }
        const ProblemsDialog dialog(on_problems_, report.file, report.output);
        (void)host.try_command("VOR2Export", arguments(report.output, nodes, clip));
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

    std::vector<std::string> arguments(const std::string& output, const std::vector<std::string>& nodes,
                                       const Clip* clip) const {
        std::vector<std::string> words{"-filename", python_spelling(output)};
        const std::optional<double> start = clip == nullptr ? start_ : std::optional(clip->start);
        const std::optional<double> stop = clip == nullptr ? stop_ : std::optional(clip->stop);
        const std::pair<const char*, const std::optional<double>*> numbers[] = {
            {"-start", &start}, {"-stop", &stop}, {"-sampleAt", &sample_at_}};
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

    std::vector<std::string> scenes_, nodes_, clip_texts_;
    std::vector<Clip> clips_;
    std::string clip_file_;
    bool scene_clips_ = false;
    OutputNames outputs_{".vr2"};
    std::optional<double> start_, stop_, sample_at_;
    CaptureOptions capture_;
    std::string strip_namespace_, rotate_180_, update_view_, origin_, time_unit_;
    VOR2_EXPORTER_MAYA::MESH_OPTIONS meshes_;
    bool allow_unevaluated_ = false, json_ = false;
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
