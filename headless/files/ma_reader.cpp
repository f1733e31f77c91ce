#include "headless/files/ma_reader.h"

#include "headless/files/ma_edits.h"
#include "headless/files/ma_notes.h"
#include "headless/files/ma_statements.h"
#include "headless/files/text_file.h"
#include "headless/session.h"
#include "support/platform/native_path.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace headless {

using VOR2_LOADER::platform::native_path;
namespace {

// One file on its way into the scene.
class MaReader : private MaStatements {
public:
    MaReader(Reading& reading, std::string_view text, std::string path, std::string prefix)
        : MaStatements(reading, std::move(prefix)), reader_(text), path_(std::move(path)) {}

    Result<void> read() {
        bool any = false;
        while (reader_.next()) {
            any = true;
            follow(reader_.words());
        }
        if (reader_.failed()) {
            Error error = reader_.error();
            error.file = path_;
            return error;
        }
        if (!any) return Error{"The file holds no scene", path_};
        finish_references();
        run_scene_scripts();
        notes_.tell();
        return {};
    }

private:
    using Follow = Result<void> (MaReader::*)(WordList);

    static const std::unordered_map<std::string_view, Follow>& table() {
        static const std::unordered_map<std::string_view, Follow> rows = {
            {"setAttr", &MaReader::set_attr},
            {"connectAttr", &MaReader::connect_attr},
            {"createNode", &MaReader::create_node},
            {"rename", &MaReader::rename},
            {"addAttr", &MaReader::add_attr},
            {"select", &MaReader::select},
            {"parent", &MaReader::parent},
            {"disconnectAttr", &MaReader::disconnect_attr},
            {"currentUnit", &MaReader::current_unit},
            {"playbackOptions", &MaReader::playback_options},
            {"file", &MaReader::file},
            {"delete", &MaReader::nothing},
            {"fileInfo", &MaReader::nothing},
            {"requires", &MaReader::nothing},
            {"relationship", &MaReader::nothing},
            {"dataStructure", &MaReader::nothing},
            {"applyMetadata", &MaReader::nothing},
            {"lockNode", &MaReader::nothing},
            {"workspace", &MaReader::nothing},
            {"editRenderLayerAdjustment", &MaReader::nothing},
        };
        return rows;
    }

    void follow(WordList words) {
        const auto row = table().find(words[0].text);
        const Result<void> done = row == table().end()
                                      ? Error{"Cannot find procedure \"" + std::string(words[0].text) + "\""}
                                      : (this->*row->second)(words.subspan(1));
        if (!done) pass_over(words[0], done.error().message);
    }

    void pass_over(const Word& at, const std::string& why) {
        notes_.passed_over([&] { return error_at(at, why); });
    }

    Error error_at(const Word& at, const std::string& why) const {
        const Place place = reader_.place_of(at);
        return Error{why, path_, place.line, place.column};
    }

    Result<void> nothing(WordList) { return {}; }

    Result<void> current_unit(WordList words) {
        const Flags flags{words};
        const std::string_view linear_name = flags.value("-l", "-linear"), angle_name = flags.value("-a", "-angle"),
                               time_name = flags.value("-t", "-time");
        const auto linear = LinearUnit::by_name(linear_name);
        const auto angle = AngleUnit::by_name(angle_name);
        const auto time = TimeUnit::by_name(time_name);
        for (const auto& [name, known] : {std::pair(linear_name, linear.has_value()),
                                          {angle_name, angle.has_value()},
                                          {time_name, time.has_value()}}) {
            if (!name.empty() && !known) return Error{"'" + std::string(name) + "' is no unit"};
        }
        if (linear) units_.centimetres = linear->centimetres;
        if (angle) units_.radians = angle->radians;
        if (time) units_.per_second = time->per_second;
        if (!reading_.fresh || !is_top_file()) return {};
        if (linear) scene_.linear_unit = *linear;
        if (angle) scene_.angle_unit = *angle;
        if (time) take_time_unit(*time);
        return {};
    }

    // A new scene stands at the frames that it stands at in any unit.
    void take_time_unit(const TimeUnit& unit) {
        const double factor = scene_.time_unit.per_second / unit.per_second;
        Scene::Playback& range = scene_.playback;
        for (double* time : {&range.min, &range.max, &range.animation_start, &range.animation_end}) *time *= factor;
        scene_.set_current_time(scene_.current_time() * factor);
        scene_.time_unit = unit;
    }

    Result<void> playback_options(WordList words) {
        if (!reading_.fresh || !is_top_file()) return {};
        const Flags flags{words};
        Scene::Playback& range = scene_.playback;
        const std::tuple<const char*, const char*, double&> rows[] = {
            {"-min", "-minTime", range.min},
            {"-max", "-maxTime", range.max},
            {"-ast", "-animationStartTime", range.animation_start},
            {"-aet", "-animationEndTime", range.animation_end}};
        for (const auto& [short_name, long_name, time] : rows) {
            const auto value = number_of(flags.value(short_name, long_name));
            if (value && std::isfinite(*value)) time = *value / units_.per_second;
        }
        return {};
    }

    // A scene keeps its playback range in a script that sets it.
    void run_scene_scripts() {
        for (const NodeHandle handle : scripts_) {
            const Node* node = scene_.find(handle);
            if (!node) continue;
            const std::string text = node->get(node->find_plug("before").key).text() + ";";
            if (!text.starts_with("playbackOptions")) continue; // other scripts build windows
            StatementReader script(text);
            while (script.next()) {
                if (script.words()[0].text == "playbackOptions") (void)playback_options(script.words().subspan(1));
            }
        }
    }

    // What the file says of a file that it refers to, in front ("-rdi", with what lies deeper) and at its place.
    SceneReference stated(WordList words) const {
        const Flags flags{words};
        SceneReference out;
        out.file = words.back().text;
        out.node_name = flags.value("-rfn", "-referenceNode");
        out.name_space = flags.value("-ns", "-namespace");
        out.name_prefix = flags.value("-rpr", "-renamingPrefix");
        out.sort = flags.value("-typ", "-type");
        out.options = flags.value("-op", "-options");
        const std::string_view deferred = flags.value("-dr", "-deferReference");
        out.unloaded = !deferred.empty() && truth_of(deferred).value_or(false);
        return out;
    }

    Result<void> file(WordList words) {
        const Flags flags{words};
        if (words.empty()) return {};
        if (flags.has("-rdi", "-referenceDepthInfo")) {
            SceneReference reference = stated(words);
            if (reference.node_name.empty()) return {};
            const std::string name = prefix_ + reference.node_name;
            reading_.stated_above.try_emplace(name, std::move(reference));
            return {};
        }
        if (!flags.has("-r", "-reference")) return {};
        reading_.references.push_back({stated(words)});
        MaReference& reference = reading_.references.back();
        SceneReference& statement = reference.statement;
        std::vector<std::string> paths{statement.file};
        // A node is one reference's: a second one that names it is left without.
        if (!statement.node_name.empty() &&
            !reading_.references_by_node.try_emplace(prefix_ + statement.node_name, &reference).second)
            statement.node_name.clear();
        // The outermost file decides what is loaded and from where.
        const auto above = reading_.stated_above.find(prefix_ + statement.node_name);
        if (!statement.node_name.empty() && above != reading_.stated_above.end()) {
            statement.unloaded = above->second.unloaded;
            statement.file = above->second.file;
            if (!above->second.sort.empty()) statement.sort = above->second.sort;
            if (!above->second.options.empty()) statement.options = above->second.options;
            if (statement.file != paths.front()) paths.insert(paths.begin(), statement.file);
        }
        if (!statement.unloaded) load(words, paths, reference);
        to_scene_names(statement);
        return {};
    }

    // A file that stays a reference of one that becomes part of the scene is the scene's own from then on.
    void to_scene_names(SceneReference& statement) const {
        const std::string above = reading_.base_namespace + prefix_;
        if (above.empty()) return;
        if (!statement.node_name.empty()) statement.node_name.insert(0, above);
        const bool in_space = !statement.name_space.empty() && statement.name_space != ":";
        const bool has_prefix = !statement.name_prefix.empty() && statement.name_prefix != ":";
        if (in_space) {
            statement.name_space.insert(0, above);
        } else if (has_prefix) {
            statement.name_prefix.insert(0, above);
        } else {
            (above.ends_with(':') ? statement.name_space : statement.name_prefix) = above.substr(0, above.size() - 1);
        }
    }

    void load(WordList words, const std::vector<std::string>& paths, MaReference& reference) {
        const SceneReference& statement = reference.statement;
        // Few levels are enough for a handful of files that name each other twice to come to millions.
        if (++reading_.references_read > max_references) {
            reference.kept = false;
            return reading_.note_problem(error_at(words.front(), "More files are referred to than are read"));
        }
        FileFinder::Found found;
        for (const std::string& path : paths) {
            FileFinder::Found here = reading_.finder.find(path, statement.sort, path_);
            found.path = std::move(here.path);
            if (!found.path.empty()) break;
            std::ranges::remove_copy_if(here.looked, std::back_inserter(found.looked), [&](const std::string& place) {
                return std::ranges::find(found.looked, place) != found.looked.end();
            });
        }
        const Result<void> done = read_reference(found, reference);
        reference.loaded = static_cast<bool>(done);
        if (!done) reading_.note_problem(error_at(words.front(), done.error().message));
    }

    // What stands in front of the names in a file that is referred to.
    std::string prefix_of(const SceneReference& statement) const {
        std::string out = prefix_;
        if (!statement.name_space.empty() && statement.name_space != ":") out += statement.name_space + ":";
        if (!statement.name_prefix.empty() && statement.name_prefix != ":") out += statement.name_prefix + "_";
        return out;
    }

    Result<void> read_reference(const FileFinder::Found& found, MaReference& reference) {
        const std::string& path = found.path;
        const std::string named = "The referenced file '" + reference.statement.file + "' ";
        if (path.empty()) return Error{named + "isn't there; looked for it at " + listed(found.looked)};
        if (!path.ends_with(".ma") && !path.ends_with(".MA")) return Error{named + "isn't Maya ASCII"};
        reference.kept = false;
        if (reading_.open_files.size() >= max_reference_depth) return Error{"References lie too deep"};
        if (std::ranges::find(reading_.open_files, path) != reading_.open_files.end())
            return Error{named + "refers back to itself"};
        const Result<std::string> text = read_text_file(path);
        if (!text) return Error{text.error().text()};
        reading_.referenced_bytes += text->size();
        if (reading_.referenced_bytes > longest_text_file) return Error{"More is referred to than is read"};
        reading_.open_files.push_back(path);
        const Result<void> done = MaReader(reading_, *text, path, prefix_of(reference.statement)).read();
        reading_.open_files.pop_back();
        return done ? Result<void>() : Error{done.error().text()};
    }

    static std::string listed(const std::vector<std::string>& places) {
        std::string out;
        for (std::size_t i = 0; i < places.size(); ++i)
            out += (i == 0 ? "" : i + 1 == places.size() ? " and " : ", ") + places[i];
        return out;
    }

    // Once all that the file refers to is there: its changes to that, and its connections to it.
    void finish_references() {
        MaEdits edits(*this);
        for (const auto& [handle, name] : reference_nodes_) {
            const auto reference = reading_.references_by_node.find(name);
            Node* node = scene_.find(handle);
            if (node && reference != reading_.references_by_node.end())
                finish_reference(edits, *node, *reference->second);
        }
        edits.join();
    }

    void finish_reference(MaEdits& edits, Node& node, MaReference& reference) {
        reference.statement.node = node.handle();
        const Plug list = node.find_plug("ed");
        const Value stored = list ? node.get(list.key) : Value();
        const auto* words = stored.get_if<RawTokens>();
        if (!words) return;
        Result<std::vector<ReferenceEditGroup>> groups = parse_reference_edits(words->tokens);
        if (!groups) {
            reading_.note_problem(Error{
                "The edits of the reference '" + node.name() + "' can't be read: " + groups.error().message, path_});
        } else if (reference.loaded) {
            edits.apply(node, *groups);
        } else if (const std::string prefix = reading_.base_namespace + prefix_; !prefix.empty()) {
            RawTokens moved{words->type, {headless::quoted(node.name())}};
            for (ReferenceEditGroup& group : *groups) {
                put_prefix(group, prefix);
                append_tokens(group, moved.tokens);
            }
            node.set(list.key, moved);
        }
    }

    StatementReader reader_;
    std::string path_;
    MaNotes notes_;
};

bool holds_nothing_of_its_own(const Scene& scene) {
    return std::ranges::all_of(scene.nodes(), [](const Node* node) { return node->default_node(); });
}

// A node that stood for a file that is part of the scene now, and the empty place of what hung there meanwhile.
void remove_spent(Scene& scene, Node& reference_node) {
    std::vector<Node*> spent{&reference_node};
    for (const auto& [key, source] : reference_node.inputs()) {
        const bool empty = source.node->type().name() == "fosterParent" && source.node->children().empty();
        if (empty && std::ranges::find(spent, source.node) == spent.end()) spent.push_back(source.node);
    }
    for (Node* node : spent) scene.remove_node(*node);
}

void finish(Reading& reading) {
    for (const MaReference& reference : reading.references) {
        Node* node = reading.scene.find(reference.statement.node);
        if (reference.loaded) {
            if (node) remove_spent(reading.scene, *node);
        } else if (reference.kept) {
            reading.scene.references.push_back(reference.statement);
        }
    }
}

Error told_of_all(const std::vector<Error>& problems, const std::string& path, const std::string& way_out) {
    Error out = problems.front();
    if (out.file != path) out = Error{out.text(), path};
    if (problems.size() > 1) out.message += " (and " + std::to_string(problems.size() - 1) + " more references)";
    out.message += way_out;
    return out;
}

} // namespace

Result<void> read_maya_ascii(Scene& scene, const std::string& path, const MaReadOptions& options) {
    const Result<std::string> text = read_text_file(path);
    if (!text) return text.error();
    return read_maya_ascii_text(scene, *text, path, options);
}

Result<void> read_maya_ascii_text(Scene& scene, std::string_view text, const std::string& path,
                                  const MaReadOptions& options) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    Reading reading(scene, options.search, path);
    std::error_code ignored;
    reading.open_files.push_back(std::filesystem::weakly_canonical(native_path(path), ignored).string());
    if (!options.name_space.empty()) reading.base_namespace = options.name_space + ":";
    reading.fresh = holds_nothing_of_its_own(scene);
    Result<void> done = MaReader(reading, text, path, "").read();
    if (done && options.search.missing_is_refused && !reading.problems.empty())
        done = told_of_all(reading.problems, path, options.search.way_out);
    if (done) {
        finish(reading);
        for (const Error& problem : reading.problems) Session::current().warning(problem.text());
        return done;
    }
    for (auto handle = reading.made.rbegin(); handle != reading.made.rend(); ++handle) {
        if (Node* node = scene.find(*handle)) scene.remove_node(*node);
    }
    return done;
}

} // namespace headless
