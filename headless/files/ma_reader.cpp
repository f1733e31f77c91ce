#include "headless/files/ma_reader.h"

#include "headless/files/ma_names.h"
#include "headless/files/ma_notes.h"
#include "headless/files/text_file.h"
#include "headless/script/add_attribute.h"
#include "headless/session.h"
#include "support/platform/native_path.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace headless {

using VOR2_LOADER::platform::native_path;
namespace {

using Words = std::span<const Word>;

// Of the commands that are followed: a flag's value, or nothing when the flag isn't there. Flags without values
// can be asked for too.
struct Flags {
    Words words;

    const Word* find(std::string_view short_name, std::string_view long_name) const {
        for (const Word& word : words) {
            if (!word.quoted && (word.text == short_name || word.text == long_name)) return &word;
        }
        return nullptr;
    }
    bool has(std::string_view short_name, std::string_view long_name) const {
        return find(short_name, long_name) != nullptr;
    }
    std::string_view value(std::string_view short_name, std::string_view long_name) const {
        const Word* flag = find(short_name, long_name);
        return flag && flag != &words.back() ? flag[1].text : std::string_view();
    }
};

bool is_flag(const Word& word) {
    return !word.quoted && word.text.size() > 1 && word.text[0] == '-' && starts_identifier(word.text[1]);
}

// What the readers of a file and of the files it refers to have in common.
struct Reading {
    Scene& scene;
    MaNames names{scene};
    std::vector<NodeHandle> made{};
    std::vector<std::string> open_files{};
    int references = 0; ///< read so far, a file as often as it was
    std::size_t referenced_bytes = 0;
    std::string base_namespace{}; ///< that names in the scene have and names in the files don't
    bool fresh = false;           ///< the scene held nothing of its own
};

Result<void> store_in_node(const Plug& plug, const Value& value) {
    if (plug.node->set(plug.key, value)) return {};
    return Error{"The attribute '" + plug.name() + "' doesn't take that value"};
}

// One file on its way into the scene.
class MaReader {
public:
    MaReader(Reading& reading, std::string_view text, std::string path, std::string prefix)
        : reading_(reading), scene_(reading.scene), reader_(text), path_(std::move(path)), prefix_(std::move(prefix)) {}

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
        run_scene_scripts();
        notes_.tell();
        return {};
    }

private:
    using Follow = Result<void> (MaReader::*)(Words);

    bool is_top_file() const { return reading_.open_files.size() == 1; }

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

    void follow(Words words) {
        const auto row = table().find(words[0].text);
        const Result<void> done = row == table().end()
                                      ? Error{"Cannot find procedure \"" + std::string(words[0].text) + "\""}
                                      : (this->*row->second)(words.subspan(1));
        if (!done) pass_over(words[0], done.error().message);
    }

    void pass_over(const Word& at, const std::string& why) {
        notes_.passed_over([&] {
            const Place place = reader_.place_of(at);
            return Error{why, path_, place.line, place.column};
        });
    }

    Node* find(std::string_view name) const { return reading_.names.find(name, prefix_); }
    static Error no_such(std::string_view name) { return Error{"No object matches name: " + std::string(name)}; }

    Result<void> nothing(Words) { return {}; }

    // Nodes.
    Result<void> create_node(Words words) {
        current_ = nullptr;
        if (words.empty()) return Error{"createNode needs a type"};
        const Flags flags{words};
        const std::string_view name = flags.value("-n", "-name"), parent_name = flags.value("-p", "-parent");
        const bool shared = flags.has("-s", "-shared");
        if (Node* there = present(words[0].text, name, shared)) {
            current_ = there;
            return {};
        }
        Node* parent = parent_name.empty() ? nullptr : find(parent_name);
        if (!parent_name.empty() && !parent) return no_such(parent_name);
        // What all files share stands in no namespace.
        const std::string file_name = (shared ? "" : prefix_) + std::string(name);
        const std::string wanted = name.empty() ? "" : (shared ? "" : reading_.base_namespace) + file_name;
        const Result<Node*> made = scene_.create_node(words[0].text, wanted, parent);
        if (!made) return made.error();
        current_ = *made;
        // A shape that is given no parent comes with a transform.
        if (current_->type().is_shape() && !parent) reading_.made.push_back(current_->parent()->handle());
        reading_.made.push_back(current_->handle());
        reading_.names.add(*current_, name.empty() ? current_->name() : file_name);
        if (current_->type().name() == "script") scripts_.push_back(current_->handle());
        return {};
    }

    // Nodes that every scene has aren't made again: not the shared ones, and not those that an opened file lists
    // with the others (layers and their managers).
    Node* present(std::string_view type, std::string_view name, bool shared) const {
        if (name.empty() || !(shared || (reading_.fresh && is_top_file()))) return nullptr;
        Node* found = scene_.default_node(name);
        if (!found && shared) {
            const Result<Node*> there = scene_.find_node(name);
            found = there ? *there : nullptr;
        }
        if (!found || found->type().name() != type) return nullptr;
        return shared || !found->type().is_dag() ? found : nullptr;
    }

    Result<void> rename(Words words) {
        const std::string_view uuid = Flags{words}.value("-uid", "-uuid");
        if (!uuid.empty() && current_ && !current_->default_node()) current_->uuid = uuid;
        return {};
    }

    Result<void> select(Words words) {
        current_ = nullptr;
        for (const Word& word : words) {
            if (is_flag(word)) continue;
            current_ = find(word.text);
            return {}; // a node that this host's scenes lack leaves the lines behind it without one
        }
        return {};
    }

    Result<void> parent(Words words) {
        std::vector<std::string_view> names;
        for (const Word& word : words) {
            if (!is_flag(word)) names.push_back(word.text);
        }
        const Flags flags{words};
        const bool to_world = flags.has("-w", "-world");
        if (names.size() < (to_world ? 1u : 2u)) return Error{"parent needs a child and a parent"};
        Node* above = to_world ? &scene_.world() : find(names.back());
        if (!above) return no_such(names.back());
        if (!to_world) names.pop_back();
        const bool add = flags.has("-add", "-addObject");
        for (const std::string_view name : names) {
            Node* child = find(name);
            if (!child) return no_such(name);
            const std::vector<Node*> before = add ? std::vector<Node*>() : child->parents();
            Result<void> done = add ? scene_.add_parent(*child, *above) : scene_.reparent(*child, above);
            if (!done) return done;
            reading_.names.add_place(*child, *above, before);
        }
        return {};
    }

    // Values.
    struct Target {
        Node* node;
        std::string_view path;
    };

    // ".t" is the current node's, "node.t" that node's.
    Result<Target> target_of(std::string_view name) const {
        const std::size_t bar = name.rfind('|');
        const std::size_t dot = name.find('.', bar == std::string_view::npos ? 0 : bar);
        if (dot == std::string_view::npos) return Error{"'" + std::string(name) + "' names no attribute"};
        Node* node = dot == 0 ? current_ : find(name.substr(0, dot));
        if (!node && dot > 0) return no_such(name.substr(0, dot));
        return Target{node, name.substr(dot + 1)};
    }

    Result<Plug> plug_of(const Target& target) {
        const Plug plug = target.node->find_or_add_plug(target.path);
        if (plug) return plug;
        return Error{"No attribute '" + std::string(target.path) + "' on node '" + target.node->name() + "'"};
    }

    Result<void> set_attr(Words words) {
        if (Result<void> taken = parse_attribute_setting(words, setting_); !taken) return taken;
        const Result<Target> target = target_of(setting_.name);
        if (!target) return target.error();
        if (!target->node || is_kept_back(*target->node)) return {};
        keep_type(*target);
        const std::optional<ListRange> lists = list_range(target->path);
        Result<Plug> plug = plug_of(lists ? Target{target->node, lists->path} : *target);
        if (!plug) return plug.error();
        if (plug->is_array() && plug->attribute().raw) *plug = plug->element(0);
        Result<void> stored = store_values(*plug, setting_, lists, units_, store_in_node);
        apply_marks(*plug, setting_);
        return stored;
    }

    // A list that is told in blocks says its type in the first of them; numbers and texts are what they are without.
    void keep_type(const Target& target) {
        const std::size_t bracket = target.path.rfind('[');
        if (bracket == std::string_view::npos || !target.path.ends_with(']')) return;
        const std::string_view list = target.path.substr(0, bracket);
        const bool same = typed_node_ == target.node && typed_list_ == list;
        if (!setting_.type.empty()) {
            typed_node_ = target.node;
            if (!same) typed_list_ = list;
            list_type_ = setting_.type;
        } else if (same && !explain_themselves(setting_.values)) {
            setting_.type = list_type_;
        }
    }

    static bool explain_themselves(Words words) {
        if (words.size() == 1) return words[0].quoted || number_of(words[0].text) || truth_of(words[0].text);
        return std::ranges::all_of(words, [](const Word& word) { return !word.quoted && number_of(word.text); });
    }

    // What every scene has is set by the file that a scene is opened from, not by one that is added to it.
    bool is_kept_back(const Node& node) const { return node.default_node() && !(reading_.fresh && is_top_file()); }

    Result<void> add_attr(Words words) {
        if (!current_) return {};
        const Result<AttributeAddition> addition = parse_attribute_addition(words, units_);
        if (!addition) return addition.error();
        return add_attribute(*current_, *addition);
    }

    // Connections.
    Result<void> connect_attr(Words words) {
        const Result<std::vector<std::string_view>> names = two_names(words);
        if (!names) return names.error();
        const Result<Target> from = target_of((*names)[0]);
        if (!from) return from.error();
        const Result<Target> to = target_of((*names)[1]);
        if (!to) return to.error();
        if (!from->node || !to->node) return {};
        const Result<Plug> source = plug_of(*from);
        if (!source) return source.error();
        const bool next_free = Flags{words}.has("-na", "-nextAvailable");
        const Result<Plug> destination = next_free ? next_element(*to) : plug_of(*to);
        if (!destination) return destination.error();
        // A space array of the first instance is written without its index; so may be what nothing declares.
        const bool whole = source->is_array() && (source->attribute().output || source->attribute().raw);
        return scene_.connect(whole ? source->element(0) : *source, *destination, true);
    }

    Result<void> disconnect_attr(Words words) {
        const Result<std::vector<std::string_view>> names = two_names(words);
        if (!names) return names.error();
        const Result<Target> to = target_of((*names)[1]);
        if (!to) return to.error();
        const Plug destination = to->node ? to->node->find_plug(to->path) : Plug();
        if (destination) scene_.disconnect(destination);
        return {};
    }

    static Result<std::vector<std::string_view>> two_names(Words words) {
        std::vector<std::string_view> names;
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (!is_flag(words[i])) {
                names.push_back(words[i].text);
            } else if (words[i].text == "-l" || words[i].text == "-lock" || words[i].text == "-rd" ||
                       words[i].text == "-referenceDest") {
                ++i; // the flag's value
            }
        }
        if (names.size() != 2) return Error{"A source and a destination are needed"};
        return names;
    }

    // The next free element; an attribute that nothing declared turns into an array.
    Result<Plug> next_element(const Target& to) {
        const Plug known = to.node->find_plug(to.path);
        if (known && known.is_array()) return known;
        const std::string path = std::string(to.path) + "[0]";
        Result<Plug> first = plug_of({to.node, path});
        if (!first) return first;
        Plug array = *first;
        array.key.depth -= 1;
        array.key.index[array.key.depth] = 0;
        return array;
    }

    // The file as a whole.
    Result<void> current_unit(Words words) {
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

    Result<void> playback_options(Words words) {
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

    Result<void> file(Words words) {
        const Flags flags{words};
        if (!flags.has("-r", "-reference") || words.empty()) return {};
        const std::string_view stated = words.back().text;
        const std::string path = find_file(stated);
        if (path.empty()) return Error{"The referenced file '" + std::string(stated) + "' isn't there"};
        if (!path.ends_with(".ma")) return Error{"The referenced file '" + std::string(stated) + "' isn't Maya ASCII"};
        if (reading_.open_files.size() >= max_reference_depth) return Error{"References lie too deep"};
        if (std::ranges::find(reading_.open_files, path) != reading_.open_files.end())
            return Error{"The referenced file '" + std::string(stated) + "' refers back to itself"};
        const std::string_view name_space = flags.value("-ns", "-namespace");
        return read_reference(path, prefix_ + (name_space.empty() ? "" : std::string(name_space) + ":"));
    }

    Result<void> read_reference(const std::string& path, const std::string& prefix) {
        // Few levels are enough for a handful of files that name each other twice to come to millions.
        if (++reading_.references > max_references) return Error{"More files are referred to than are read"};
        const Result<std::string> text = read_text_file(path);
        if (!text) return Error{text.error().text()};
        reading_.referenced_bytes += text->size();
        if (reading_.referenced_bytes > longest_text_file) return Error{"More is referred to than is read"};
        reading_.open_files.push_back(path);
        const Result<void> done = MaReader(reading_, *text, path, prefix).read();
        reading_.open_files.pop_back();
        return done ? Result<void>() : Error{done.error().text()};
    }

    // By the path as stated, in the folder of this file, or beside this file by its name alone.
    std::string find_file(std::string_view stated) const {
        namespace fs = std::filesystem;
        std::string tidy(stated);
        std::ranges::replace(tidy, '\\', '/');
        const fs::path wanted = native_path(tidy), folder = native_path(path_).parent_path();
        std::error_code ignored;
        for (const fs::path& candidate : {wanted, folder / wanted, folder / wanted.filename()}) {
            if (fs::is_regular_file(candidate, ignored)) return fs::weakly_canonical(candidate, ignored).string();
        }
        return {};
    }

    Reading& reading_;
    Scene& scene_;
    StatementReader reader_;
    std::string path_;
    std::string prefix_; ///< namespaces that the file's names stand in as seen from the file read first
    ValueUnits units_;
    Node* current_ = nullptr;
    AttributeSetting setting_;         // kept for its storage
    const Node* typed_node_ = nullptr; ///< whose list was told last with a type
    std::string typed_list_, list_type_;
    std::vector<NodeHandle> scripts_;
    MaNotes notes_;
};

bool holds_nothing_of_its_own(const Scene& scene) {
    return std::ranges::all_of(scene.nodes(), [](const Node* node) { return node->default_node(); });
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
    Reading reading{scene};
    std::error_code ignored;
    reading.open_files.push_back(std::filesystem::weakly_canonical(native_path(path), ignored).string());
    if (!options.name_space.empty()) reading.base_namespace = options.name_space + ":";
    reading.fresh = holds_nothing_of_its_own(scene);
    Result<void> done = MaReader(reading, text, path, "").read();
    if (done) return done;
    for (auto handle = reading.made.rbegin(); handle != reading.made.rend(); ++handle) {
        if (Node* node = scene.find(*handle)) scene.remove_node(*node);
    }
    return done;
}

} // namespace headless
