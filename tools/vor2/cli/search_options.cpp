#include "tools/vor2/cli/search_options.h"

#include "headless/files/file_search.h"
#include "support/platform/native_path.h"

#include <filesystem>

namespace tool {

void SearchOptions::describe(Syntax& syntax) {
    syntax.folder("--project", "DIR",
                  "the project's folder, where what stands behind // in a scene's references is looked for (default: "
                  "the nearest above the scene with a workspace.mel)",
                  project_);
    syntax.texts("--map", "FROM=TO", "paths in scenes that begin with FROM begin with TO here, such as P:/=/mnt/p/",
                 maps_);
}

void SearchOptions::describe_missing(Syntax& syntax) {
    syntax.flag("--allow-missing-references", "go on without what a scene refers to and isn't there", allow_missing_);
}

std::string SearchOptions::check() const {
    for (const std::string& map : maps_) {
        if (map.starts_with('=') || map.find('=') == std::string::npos) return "--map: '" + map + "' is no FROM=TO";
    }
    std::error_code ignored;
    if (!project_.empty() && !std::filesystem::is_directory(VOR2_LOADER::platform::native_path(project_), ignored))
        return "--project: there is no folder '" + project_ + "'";
    return {};
}

headless::FileSearch SearchOptions::search(bool missing_is_refused) const {
    headless::FileSearch out{project_, {}, missing_is_refused && !allow_missing_};
    out.way_out = "; --project and --map say where files are, --allow-missing-references goes on without them";
    for (const std::string& map : maps_) {
        const std::size_t equals = map.find('=');
        out.maps.push_back({map.substr(0, equals), map.substr(equals + 1)});
    }
    return out;
}

} // namespace tool
