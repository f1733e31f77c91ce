#include "headless/files/ma_writer.h"

#include "headless/files/ma_values.h"

#include <algorithm>

namespace headless {
namespace {

constexpr std::string_view range_script = "sceneConfigurationScriptNode";

// Default nodes that a file makes nevertheless, as the host's own files do.
bool is_listed_by_files(const Node& node) {
    static constexpr std::string_view types[] = {"lightLinker", "displayLayerManager", "displayLayer",
                                                 "renderLayerManager", "renderLayer"};
    return !node.default_node() || node.type().is_dag() ||
           std::ranges::find(types, node.type().name()) != std::end(types);
}

class MaWriter {
public:
    MaWriter(const Scene& scene, OutputFile& file) : scene_(scene), out_(file, FileUnits(scene)) {}

    Result<void> write() {
        header();
        Result<void> done = dag_nodes();
        if (done) done = other_nodes();
        if (done) done = default_nodes();
        if (!done) return done;
        connections();
        out_.text("// End of scene\n");
        out_.flush();
        return {};
    }

private:
    void header();
    void reference_statement(const SceneReference& reference, bool in_front);
    Result<void> dag_nodes();
    Result<void> other_nodes();
    Result<void> default_nodes();
    Result<void> node(const Node& node);
    void add_instance(const Node& child, const Node& parent);
    void remaining_instances();
    std::string range_text() const;
    void tell_range(const Node& script);
    void connections();
    bool is_of_every_scene(const Plug& source, const Plug& destination) const;
    std::string name_of(const Node& node) const;

    const Scene& scene_;
    const Scene fresh_; // what needn't be told, because every scene has it
    MaText out_;
    std::unordered_map<const Node*, std::size_t> parents_told_; // of instances
    std::vector<const Node*> instances_;
    bool range_told_ = false;
};

void MaWriter::header() {
    out_.text("//Maya ASCII 2016 scene\n//Codeset: UTF-8\n");
    for (const bool in_front : {true, false}) {
        for (const SceneReference& reference : scene_.references) reference_statement(reference, in_front);
    }
    out_.text("requires maya \"2016\";\n");
    out_.text("currentUnit -l ").text(scene_.linear_unit.name).text(" -a ").text(scene_.angle_unit.name);
    out_.text(" -t ").text(scene_.time_unit.name).end_statement();
    out_.text("fileInfo \"application\" \"Vor2\";\n");
}

// Whether a file is loaded stands in front of all of them, by the node that stands for it; without one, at its place.
void MaWriter::reference_statement(const SceneReference& reference, bool in_front) {
    const Node* node = scene_.find(reference.node);
    if ((!node && reference.node) || (in_front && reference.node_name.empty())) return;
    out_.text(in_front ? "file -rdi 1" : "file -r");
    const auto add = [this](const char* flag, std::string_view value) {
        if (!value.empty()) out_.text(flag).quoted(value);
    };
    add(" -ns ", reference.name_space);
    add(" -rpr ", reference.name_prefix);
    const bool deferred = in_front || reference.node_name.empty() ? reference.unloaded : true;
    if (deferred) out_.text(" -dr 1");
    add(" -rfn ", node ? node->name() : reference.node_name);
    add(" -op ", reference.options);
    add(" -typ ", reference.sort);
    out_.text(" ").quoted(reference.file).end_statement();
}

std::string MaWriter::name_of(const Node& node) const {
    return (is_listed_by_files(node) ? "" : ":") + scene_.unique_name_of(node);
}

Result<void> MaWriter::node(const Node& node) {
    out_.text("createNode ").text(node.type().name());
    if (node.default_node() && (node.type().is_dag() || node.type().name() == "lightLinker")) out_.text(" -s");
    out_.text(" -n ").quoted(node.name());
    if (node.parent() && !node.parent()->is_world()) out_.text(" -p ").quoted(name_of(*node.parent()));
    out_.end_statement();
    if (!node.uuid.empty()) out_.text("\trename -uid ").quoted(node.uuid).end_statement();
    return write_attributes(out_, node);
}

// Depth first without recursion: a scene may be deep. A node with several parents is made under its first, and hung
// under the others as soon as those before are told.
Result<void> MaWriter::dag_nodes() {
    struct Level {
        const Node* parent;
        std::size_t next = 0;
    };
    std::vector<Level> open{{&scene_.world()}};
    while (!open.empty()) {
        const Node& parent = *open.back().parent;
        if (open.back().next == parent.children().size()) {
            open.pop_back();
            continue;
        }
        const Node& child = *parent.children()[open.back().next++];
        if (child.parent() != &parent) {
            const auto told = parents_told_.find(&child);
            if (told != parents_told_.end() && child.parents()[told->second] == &parent) add_instance(child, parent);
            continue;
        }
        if (Result<void> done = node(child); !done) return done;
        if (child.parents().size() > 1) {
            parents_told_[&child] = 1;
            instances_.push_back(&child);
        }
        open.push_back({&child});
    }
    remaining_instances();
    return {};
}

void MaWriter::add_instance(const Node& child, const Node& parent) {
    ++parents_told_[&child];
    const bool under_world = &parent == &scene_.world();
    out_.text(under_world ? "parent -s -nc -r -w -add " : "parent -s -nc -r -add ");
    out_.quoted(scene_.full_name(scene_.path_to(child)));
    if (!under_world) out_.text(" ").quoted(name_of(parent));
    out_.end_statement();
}

void MaWriter::remaining_instances() {
    for (const Node* child : instances_) {
        while (parents_told_[child] < child->parents().size())
            add_instance(*child, *child->parents()[parents_told_[child]]);
    }
}

std::string MaWriter::range_text() const {
    std::string out = "playbackOptions";
    const auto add = [&](const char* flag, double seconds) {
        out += flag + out_.spelled(seconds, AttributeKind::time);
    };
    add(" -min ", scene_.playback.min);
    add(" -max ", scene_.playback.max);
    add(" -ast ", scene_.playback.animation_start);
    add(" -aet ", scene_.playback.animation_end);
    return out + " ";
}

// A script of the scene's that sets the range is left in place and says what the range is now.
void MaWriter::tell_range(const Node& script) {
    const std::string stored = script.get(script.find_plug("before").key).text();
    if (!stored.starts_with("playbackOptions")) return;
    range_told_ = true;
    const std::string now = range_text();
    if (stored == now || stored + " " == now) return;
    out_.text("\tsetAttr \".b\" -type \"string\" ").quoted(now).end_statement();
}

Result<void> MaWriter::other_nodes() {
    for (const Node* at : scene_.nodes()) {
        if (at->type().is_dag() || !is_listed_by_files(*at)) continue;
        if (Result<void> done = node(*at); !done) return done;
        if (at->type().name() == "script") tell_range(*at);
    }
    if (range_told_) return {};
    std::string name(range_script);
    const auto is_taken = [&] {
        const auto found = scene_.resolve(name);
        return found && !found->empty();
    };
    for (int number = 1; is_taken(); ++number) name = std::string(range_script) + std::to_string(number);
    out_.text("createNode script -n ").quoted(name).end_statement();
    out_.text("\tsetAttr \".b\" -type \"string\" ").quoted(range_text()).end_statement();
    out_.text("\tsetAttr \".st\" 6;\n");
    return {};
}

Result<void> MaWriter::default_nodes() {
    for (const Node* at : scene_.nodes()) {
        const bool clock = at == &scene_.time_node();
        if (is_listed_by_files(*at) || !(clock || has_attributes_of_its_own(*at))) continue;
        out_.text("select -ne :").text(at->name()).end_statement();
        if (clock) out_.text("\tsetAttr \".o\" ").number(scene_.current_time(), AttributeKind::time).end_statement();
        if (Result<void> done = write_attributes(out_, *at); !done) return done;
    }
    return {};
}

bool MaWriter::is_of_every_scene(const Plug& source, const Plug& destination) const {
    if (!source.node->default_node() || !destination.node->default_node()) return false;
    const Result<Plug> same = fresh_.find_plug(destination.name());
    if (!same) return false;
    const Plug from = same->node->source_of(same->key);
    return from && from.name() == source.name();
}

void MaWriter::connections() {
    for (Node* at : scene_.nodes()) {
        for (const auto& [key, source] : at->inputs()) {
            Plug destination{at, key};
            if (is_of_every_scene(source, destination)) continue;
            // What others hang on nodes of every scene goes behind what hangs there already.
            const Attribute& attribute = destination.attribute();
            const bool next = !is_listed_by_files(*at) && attribute.array && key.depth == attribute.array_levels;
            if (next) destination.key.index[--destination.key.depth] = 0;
            out_.text("connectAttr ").quoted(name_of(*source.node) + file_path(source)).text(" ");
            out_.quoted(name_of(*at) + file_path(destination)).text(next ? " -na" : "").end_statement();
        }
    }
}

} // namespace

Result<void> write_maya_ascii(const Scene& scene, const std::string& path) {
    Result<OutputFile> file = OutputFile::open(path);
    if (!file) return file.error();
    Result<void> done = MaWriter(scene, *file).write();
    if (!done) return Error{done.error().message, path};
    return file->commit();
}

} // namespace headless
