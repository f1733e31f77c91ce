#include "format/core/files.h"
#include "support/platform/native_path.h"
#include "support/platform/platform.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/cli/system.h"
#include "tools/vor2/verbs/verb.h"
#include "viewer/page/page_writer.h"

#include <filesystem>
#include <optional>

namespace tool {
namespace {

using namespace VOR2_LOADER;
using vor2::viewer::PageScenes;
using vor2::viewer::ScenePack;

std::string name_without_folder(const std::string& file) {
    return std::filesystem::path(file).filename().string();
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
               "selects the worst joint at its worst frame.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 view walk.vr2 --open", "vor2 view walk.vr2 -o /tmp/walk.html",
                "vor2 view old.vr2 --compare new.vr2 -o change.html"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("FILE", "FILE.vr2", "the scene", file_);
        syntax.file("-o,--output", "PAGE.html", "the page (default: beside the scene)", output_);
        syntax.flag("--open", "show the page in the browser", open_);
        syntax.file("--compare", "OTHER.vr2", "a scene to draw over it", compared_);
    }
    std::string check() const override {
        return output_ == file_ || (!output_.empty() && output_ == compared_) ? "-o: the page would replace the scene"
                                                                              : "";
    }
    int run() override {
        const std::optional<ScenePack> first = pack(file_);
        if (!first) return exit_refused;
        std::optional<ScenePack> second;
        if (!compared_.empty() && !(second = pack(compared_))) return exit_refused;
        const std::string page = output_.empty() ? name_of_page() : output_;
        std::string title = name_without_folder(file_);
        if (second) title += " / " + name_without_folder(compared_);
        if (!write({*first, second ? &*second : nullptr, title}, page)) return exit_refused;
        note("wrote " + page);
        if (open_) show_document(page);
        return exit_done;
    }

private:
    std::string name_of_page() const {
        std::filesystem::path page(file_);
        return page.replace_extension(".html").string();
    }

    std::optional<ScenePack> pack(const std::string& file) const {
        VOR2_INPUT_BUFFER buffer(library_name(file));
        VOR2 scene;
        if (!load_scene(scene, file, buffer)) return {};
        ScenePack pack =
            vor2::viewer::pack_scene(name_without_folder(file), library_name(file), scene, {buffer.start, buffer.end});
        for (const std::string& line : pack.notes) note(file + ": warning: " + line);
        if (pack.words.size() <= vor2::viewer::most_words) return pack;
        problem(file, "holds more than a browser could show");
        return {};
    }

    static bool write(const PageScenes& scenes, const std::string& page) {
        OutputSet output(page);
        if (!output.ready()) return false;
        WRITE_FILE file;
        bool written = file.open(library_name(page), false);
        written = written && vor2::viewer::write_page(scenes, [&file](std::string_view text) {
                      return file.write(text.data(), static_cast<u32>(text.size())) == text.size();
                  });
        const i32 error = file.last_error();
        if (file.close() && written) return output.commit();
        problem(page, "couldn't be written" + (error > 0 ? ": " + error_text(error) : std::string()));
        return false;
    }

    std::string file_, output_, compared_;
    bool open_ = false;
};

} // namespace

std::unique_ptr<Verb> make_view_verb() {
    return std::make_unique<ViewVerb>();
}

} // namespace tool
