#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless {

/// The beginning of paths that stands for another on this machine: a drive or a share that is mounted elsewhere.
struct PathMap {
    std::string from, to;
};

/// Where files are looked for that a scene names.
struct FileSearch {
    std::string project;       ///< the project's folder; empty for the nearest above the scene with a workspace.mel
    std::vector<PathMap> maps; ///< tried in this order, before the paths as they are
    bool missing_is_refused = false; ///< a scene whose references can't all be read isn't read either
    std::string way_out{};           ///< stands behind the words of such a refusal: what would help
};

/// Finds the files that one scene and those it refers to name. What a path may stand for, in this order:
/// - what the maps make of it, and the path itself with `$NAME` and `${NAME}` taken from the environment,
/// - of ROOT//REST, which the host writes for files of a project: REST in the project's folder,
/// - a path without a root, from the project's folder and from the folder of the file that names it,
/// - its last name beside that file, and in the project's folder for files of the sort (its workspace.mel says which;
///   "scenes" where it says nothing).
class FileFinder {
public:
    /// `scene` is the file that was opened.
    FileFinder(const FileSearch& search, const std::string& scene);

    struct Found {
        std::string path;                ///< with links followed; empty when it is nowhere
        std::vector<std::string> looked; ///< at these places, when it is nowhere
    };
    /// `sort` is the host's name for the kind of file ("mayaAscii", "FBX").
    Found find(std::string_view stated, std::string_view sort, const std::string& naming_file) const;

private:
    struct Project {
        std::string folder;
        std::vector<std::pair<std::string, std::string>> rules; ///< which sort of file is in which folder
    };
    static Project project_at(const std::string& folder);
    static Project project_above(const std::string& file);
    const Project& project_of(const std::string& naming_file) const;

    const FileSearch& search_;
    Project project_;
    mutable std::map<std::string, Project> projects_; ///< those above the files that named others
};

/// The folder that a path's rest stands in when another project's root is in front of it: behind the first "//" that
/// isn't at the beginning; empty without one.
std::string_view behind_project_root(std::string_view path);

} // namespace headless
