#include "headless/files/file_search.h"

#include "headless/files/text_file.h"
#include "headless/script/statement_reader.h"
#include "support/platform/native_path.h"
#include "support/text/ascii.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace headless {

using VOR2_LOADER::lower;
using VOR2_LOADER::platform::native_path;
namespace {

namespace fs = std::filesystem;

std::string with_slashes(std::string_view path) {
    std::string out(path);
    std::ranges::replace(out, '\\', '/');
    return out;
}

bool has_drive(std::string_view path) {
    return path.size() > 1 && path[1] == ':' && ((path[0] | 0x20) >= 'a' && (path[0] | 0x20) <= 'z');
}

bool has_root(std::string_view path) {
    return path.starts_with('/') || has_drive(path);
}

// Paths with a drive come from a system where case means nothing.
bool begins_with(std::string_view path, std::string_view beginning) {
    if (path.size() < beginning.size()) return false;
    const bool any_case = has_drive(beginning);
    for (std::size_t i = 0; i < beginning.size(); ++i) {
        if (path[i] != beginning[i] && !(any_case && lower(path[i]) == lower(beginning[i]))) return false;
    }
    return beginning.ends_with('/') || path.size() == beginning.size() || path[beginning.size()] == '/';
}

std::string mapped(std::string_view path, const PathMap& map) {
    const std::string from = with_slashes(map.from), to = with_slashes(map.to);
    if (from.empty() || !begins_with(path, from)) return {};
    std::string out = to;
    std::string_view rest = path.substr(from.size());
    if (!rest.empty() && rest.front() != '/' && !out.ends_with('/')) out += '/';
    if (out.ends_with('/') && rest.starts_with('/')) rest.remove_prefix(1);
    return out.append(rest);
}

// "$NAME" and "${NAME}"; a variable that isn't set stays as it is.
std::string with_environment(std::string_view path) {
    std::string out;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const bool braced = path.substr(at).starts_with("${");
        const std::size_t first = at + (braced ? 2 : 1);
        if (path[at] == '$' && first < path.size() && starts_identifier(path[first])) {
            std::size_t end = first;
            while (end < path.size() && continues_identifier(path[end])) ++end;
            const std::string name(path.substr(first, end - first));
            const char* value = std::getenv(name.c_str()); // NOLINT(concurrency-mt-unsafe)
            if (value != nullptr && (!braced || (end < path.size() && path[end] == '}'))) {
                out += with_slashes(value);
                at = braced ? end : end - 1;
                continue;
            }
        }
        out += path[at];
    }
    return out;
}

std::string joined(const std::string& folder, std::string_view rest) {
    while (rest.starts_with('/')) rest.remove_prefix(1);
    return folder.empty() ? std::string(rest) : (native_path(folder) / native_path(rest)).generic_string();
}

std::string_view last_name(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

// The places to look at, each once, in the order in which they are thought of.
class Places {
public:
    void add(std::string place) {
        if (!place.empty() && std::ranges::find(all_, place) == all_.end()) all_.push_back(std::move(place));
    }
    FileFinder::Found first_file() {
        std::error_code ignored;
        for (const std::string& place : all_) {
            const fs::path path = native_path(place);
            if (fs::is_regular_file(path, ignored)) return {fs::weakly_canonical(path, ignored).string(), {}};
        }
        return {{}, std::move(all_)};
    }

private:
    std::vector<std::string> all_;
};

} // namespace

std::string_view behind_project_root(std::string_view path) {
    const std::size_t at = path.find("//", 1);
    return at == std::string_view::npos ? std::string_view() : path.substr(at + 2);
}

FileFinder::FileFinder(const FileSearch& search, const std::string& scene)
    : search_(search), project_(search.project.empty() ? project_above(scene) : project_at(search.project)) {}

FileFinder::Project FileFinder::project_at(const std::string& folder) {
    Project out{folder, {}};
    const Result<std::string> text = read_text_file(joined(folder, "workspace.mel"));
    if (!text) return out;
    StatementReader statements(*text);
    while (statements.next()) {
        const std::span<const Word> words = statements.words();
        const bool rule = words.size() == 4 && words[0].text == "workspace" &&
                          (words[1].text == "-fr" || words[1].text == "-fileRule");
        if (rule) out.rules.emplace_back(words[2].text, with_slashes(words[3].text));
    }
    return out;
}

FileFinder::Project FileFinder::project_above(const std::string& file) {
    std::error_code ignored;
    for (fs::path folder = fs::absolute(native_path(file), ignored).parent_path(); !folder.empty();
         folder = folder.parent_path()) {
        if (fs::is_regular_file(folder / "workspace.mel", ignored)) return project_at(folder.string());
        if (folder == folder.parent_path()) break;
    }
    return {};
}

const FileFinder::Project& FileFinder::project_of(const std::string& naming_file) const {
    const auto known = projects_.find(naming_file);
    return known != projects_.end() ? known->second
                                    : projects_.emplace(naming_file, project_above(naming_file)).first->second;
}

FileFinder::Found FileFinder::find(std::string_view stated, std::string_view sort,
                                   const std::string& naming_file) const {
    const std::string written = with_slashes(stated), path = with_environment(written);
    const std::string folder = native_path(naming_file).parent_path().string();
    Places places;
    for (const PathMap& map : search_.maps) {
        places.add(mapped(written, map));
        places.add(mapped(path, map));
    }
    if (has_root(path)) places.add(path);
    const Project& own = search_.project.empty() ? project_of(naming_file) : project_;
    for (const Project* project : {&project_, &own}) {
        if (project->folder.empty()) continue;
        if (const std::string_view rest = behind_project_root(path); !rest.empty())
            places.add(joined(project->folder, rest));
        if (!has_root(path)) places.add(joined(project->folder, path));
    }
    if (!has_root(path)) places.add(joined(folder, path));
    places.add(joined(folder, last_name(path)));
    for (const Project* project : {&project_, &own}) {
        if (project->folder.empty()) continue;
        std::string sorts = "scenes";
        for (const auto& [name, place] : project->rules) {
            if (name == "scene") sorts = place;
        }
        for (const auto& [name, place] : project->rules) {
            if (name == sort) sorts = place;
        }
        const std::string root = has_root(sorts) ? sorts : joined(project->folder, sorts);
        places.add(joined(root, last_name(path)));
    }
    return places.first_file();
}

} // namespace headless
