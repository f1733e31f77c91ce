#include "support/platform/native_path.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/cli/system.h"
#include "tools/vor2/cli/whole_file.h"
#include "tools/vor2/verbs/verb.h"
#include "viewer/drawings/skeleton_text.h"
#include "viewer/page/page_writer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>

namespace tool {
namespace {

using namespace VOR2_LOADER;
using platform::native_path;
using vor2::viewer::ScenePack;
using vor2::viewer::skeleton_text;

std::string name_without_folder(const std::string& file) {
    return native_path(file).filename().string();
}

class ViewVerb final : public Verb {
public:
    std::string_view name() const override { return "view"; }
    std::string_view summary() const override { return "write a page to look at a scene and play it"; }
    std::string_view description() const override {
        return "Writes one HTML page that needs no other file and no network: the scene in 3D, playing, with its tree "
               "of nodes, its curves, its numbers and what the strict check finds. Without -o it lies beside the scene "
               "under the same name. --open shows it in the browser. '?' on the page tells the keys.\n\n"
               "Pictures that materials name are put into the page where they lie in the scene's folder; the rest is "
               "told. Nothing that a scene holds can run in the page.\n\n"
               "--compare draws another scene over this one, shows how far apart their joints stand over time, and "
               "selects the worst joint at its worst frame.\n\n"
               "--terminal writes no page: it draws the skeleton at a time in characters, as a first look over ssh.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 view walk.vr2 --open", "vor2 view walk.vr2 -o /tmp/walk.html",
                "vor2 view old.vr2 --compare new.vr2 -o change.html", "vor2 view walk.vr2 --terminal --time 0.5"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("FILE", "FILE.vr2", "the scene", file_);
        syntax.file("-o,--output", "PAGE.html", "the page (default: beside the scene)", output_);
        syntax.flag("--open", "show the page in the browser", open_);
        syntax.file("--compare", "OTHER.vr2", "a scene to draw over it", compared_);
        syntax.flag("--terminal", "draw the skeleton here, in characters", terminal_);
        syntax.number("-t,--time", "SECONDS", "with --terminal, the time (default: the start of the scene)", time_);
        syntax.flag("--ascii", "with --terminal, draw with ASCII alone", ascii_);
    }
    std::string check() const override {
        if (terminal_ && (open_ || !output_.empty() || !compared_.empty())) return "--terminal: makes no page";
        if (!terminal_ && (time_ || ascii_)) return "--time and --ascii: go with --terminal";
        return output_ == file_ || (!output_.empty() && output_ == compared_) ? "-o: the page would replace the scene"
                                                                              : "";
    }
    int run() override {
        if (terminal_) return draw();
        const std::optional<ScenePack> first = pack(file_);
        if (!first) return exit_refused;
        std::optional<ScenePack> second;
        if (!compared_.empty() && !(second = pack(compared_))) return exit_refused;
        const std::string page = output_.empty() ? name_of_page() : output_;
        std::string title = name_without_folder(file_);
        if (second) title += " / " + name_without_folder(compared_);
        if (!write_result(page, vor2::viewer::page_of({*first, second ? &*second : nullptr, title})))
            return exit_refused;
        note("wrote " + page);
        if (open_) show_document(page);
        return exit_done;
    }

private:
    int draw() const {
        VOR2 scene;
        if (!load_scene(scene, file_)) return exit_refused;
        const f32 start = scene.environment.time_range.start;
        const f32 time = time_ ? static_cast<f32>(*time_) : std::isfinite(start) ? start : 0.0F;
        scene.set_time(time);
        vor2::viewer::TextView view;
        const TerminalSize size = terminal_size();
        view.columns = std::clamp(size.columns - 1, 20, 400);
        view.rows = std::clamp(size.rows - 3, 8, 200);
        view.dots = !ascii_ && size.takes_utf8;
        const std::string title = file_ + " at " + vor2::inspect::shortest(time) + " s, " +
                                  std::to_string(scene.matrix_hierarchy.nodes.size()) + " nodes\n";
        return write_result("", title + skeleton_text(scene, view)) ? exit_done : exit_refused;
    }

    std::string name_of_page() const {
        std::filesystem::path page = native_path(file_);
        return page.replace_extension(".html").string();
    }

    std::optional<ScenePack> pack(const std::string& file) const {
        VOR2_INPUT_BUFFER buffer(library_name(file));
        VOR2 scene;
        if (!load_scene(scene, file, buffer)) return {};
        ScenePack pack =
            vor2::viewer::pack_scene(name_without_folder(file), library_name(file), scene, {buffer.start, buffer.end});
        for (const std::string& line : pack.notes) note(file, "warning: " + line);
        if (pack.words.size() <= vor2::viewer::most_words) return pack;
        problem(file, "holds more than a browser could show");
        return {};
    }

    std::string file_, output_, compared_;
    std::optional<double> time_;
    bool open_ = false, terminal_ = false, ascii_ = false;
};

} // namespace

std::unique_ptr<Verb> make_view_verb() {
    return std::make_unique<ViewVerb>();
}

} // namespace tool
