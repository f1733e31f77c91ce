#include "headless/files/ma_statements.h"

#include "headless/script/add_attribute.h"

#include <algorithm>

namespace headless {
namespace {

Result<void> store_in_node(const Plug& plug, const Value& value) {
    if (plug.node->set(plug.key, value)) return {};
    return Error{"The attribute '" + plug.name() + "' doesn't take that value"};
}

bool is_flag(const Word& word) {
    return !word.quoted && word.text.size() > 1 && word.text[0] == '-' && starts_identifier(word.text[1]);
}

Result<std::vector<std::string_view>> two_names(WordList words) {
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

bool explain_themselves(WordList words) {
    if (words.size() == 1) return words[0].quoted || number_of(words[0].text) || truth_of(words[0].text);
    return std::ranges::all_of(words, [](const Word& word) { return !word.quoted && number_of(word.text); });
}

} // namespace

const Word* Flags::find(std::string_view short_name, std::string_view long_name) const {
    for (const Word& word : words) {
        if (!word.quoted && (word.text == short_name || word.text == long_name)) return &word;
    }
    return nullptr;
}

std::string_view Flags::value(std::string_view short_name, std::string_view long_name) const {
    const Word* flag = find(short_name, long_name);
    return flag && flag != &words.back() ? flag[1].text : std::string_view();
}

Node* MaStatements::find(std::string_view name) const {
    return exactly_ ? reading_.names.find_exactly(name, prefix_) : reading_.names.find(name, prefix_);
}

Error MaStatements::no_such(std::string_view name) {
    return Error{"No object matches name: " + std::string(name)};
}

Result<void> MaStatements::create_node(WordList words) {
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
    if (current_->type().name() == "reference") reference_nodes_.emplace_back(current_->handle(), file_name);
    return {};
}

// Nodes that every scene has aren't made again: not the shared ones, and not those that an opened file lists
// with the others (layers and their managers).
Node* MaStatements::present(std::string_view type, std::string_view name, bool shared) const {
    if (name.empty() || !(shared || (reading_.fresh && is_top_file()))) return nullptr;
    Node* found = scene_.default_node(name);
    if (!found && shared) {
        const Result<Node*> there = scene_.find_node(name);
        found = there ? *there : nullptr;
    }
    if (!found || found->type().name() != type) return nullptr;
    return shared || !found->type().is_dag() ? found : nullptr;
}

Result<void> MaStatements::rename(WordList words) {
    const std::string_view uuid = Flags{words}.value("-uid", "-uuid");
    if (!uuid.empty() && current_ && !current_->default_node()) current_->uuid = uuid;
    return {};
}

Result<void> MaStatements::select(WordList words) {
    current_ = nullptr;
    for (const Word& word : words) {
        if (is_flag(word)) continue;
        current_ = find(word.text);
        return {}; // a node that this host's scenes lack leaves the lines behind it without one
    }
    return {};
}

Result<void> MaStatements::parent(WordList words) {
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

// ".t" is the current node's, "node.t" that node's.
Result<MaStatements::Target> MaStatements::target_of(std::string_view name) const {
    const std::size_t bar = name.rfind('|');
    const std::size_t dot = name.find('.', bar == std::string_view::npos ? 0 : bar);
    if (dot == std::string_view::npos) return Error{"'" + std::string(name) + "' names no attribute"};
    Node* node = dot == 0 ? current_ : find(name.substr(0, dot));
    if (!node && dot > 0) return no_such(name.substr(0, dot));
    return Target{node, name.substr(dot + 1)};
}

Result<Plug> MaStatements::plug_at(const Target& target) {
    const Plug plug = target.node->find_or_add_plug(target.path);
    if (plug) return plug;
    return Error{"No attribute '" + std::string(target.path) + "' on node '" + target.node->name() + "'"};
}

Result<void> MaStatements::set_attr(WordList words) {
    if (Result<void> taken = parse_attribute_setting(words, setting_); !taken) return taken;
    const Result<Target> target = target_of(setting_.name);
    if (!target) return target.error();
    if (!target->node || is_kept_back(*target->node)) return {};
    keep_type(*target);
    const std::optional<ListRange> lists = list_range(target->path);
    Result<Plug> plug = plug_at(lists ? Target{target->node, lists->path} : *target);
    if (!plug) return plug.error();
    if (plug->is_array() && plug->attribute().raw) *plug = plug->element(0);
    Result<void> stored = store_values(*plug, setting_, lists, units_, store_in_node);
    apply_marks(*plug, setting_);
    return stored;
}

// A list that is told in blocks says its type in the first of them; numbers and texts are what they are without.
void MaStatements::keep_type(const Target& target) {
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

// What every scene has is set by the file that a scene is opened from, not by one that is added to it.
bool MaStatements::is_kept_back(const Node& node) const {
    return node.default_node() && !(reading_.fresh && is_top_file());
}

Result<void> MaStatements::add_attr(WordList words) {
    if (!current_) return {};
    const Result<AttributeAddition> addition = parse_attribute_addition(words, units_);
    if (!addition) return addition.error();
    return add_attribute(*current_, *addition);
}

Result<void> MaStatements::connect_attr(WordList words) {
    const Result<std::vector<std::string_view>> names = two_names(words);
    if (!names) return names.error();
    const Result<Target> from = target_of((*names)[0]);
    if (!from) return from.error();
    const Result<Target> to = target_of((*names)[1]);
    if (!to) return to.error();
    if (!from->node || !to->node) return {};
    const Result<Plug> source = plug_at(*from);
    if (!source) return source.error();
    const bool next_free = Flags{words}.has("-na", "-nextAvailable");
    const Result<Plug> destination = next_free ? next_element(*to) : plug_at(*to);
    if (!destination) return destination.error();
    return connect(*source, *destination);
}

Result<void> MaStatements::connect(const Plug& source, const Plug& destination) {
    // A space array of the first instance is written without its index; so may be what nothing declares.
    const bool whole = source.is_array() && (source.attribute().output || source.attribute().raw);
    return scene_.connect(whole ? source.element(0) : source, destination, true);
}

Result<Plug> MaStatements::plug_of(std::string_view name) {
    const Result<Target> target = target_of(name);
    if (!target) return target.error();
    if (!target->node) return no_such(name);
    return plug_at(*target);
}

Plug MaStatements::existing_plug(std::string_view name) {
    const Result<Target> target = target_of(name);
    return target && target->node ? target->node->find_plug(target->path) : Plug();
}

Result<void> MaStatements::disconnect_attr(WordList words) {
    const Result<std::vector<std::string_view>> names = two_names(words);
    if (!names) return names.error();
    const Result<Target> to = target_of((*names)[1]);
    if (!to) return to.error();
    const Plug destination = to->node ? to->node->find_plug(to->path) : Plug();
    if (destination) scene_.disconnect(destination);
    return {};
}

// The next free element; an attribute that nothing declared turns into an array.
Result<Plug> MaStatements::next_element(const Target& to) {
    const Plug known = to.node->find_plug(to.path);
    if (known && known.is_array()) return known;
    const std::string path = std::string(to.path) + "[0]";
    Result<Plug> first = plug_at({to.node, path});
    if (!first) return first;
    Plug array = *first;
    array.key.depth -= 1;
    array.key.index[array.key.depth] = 0;
    return array;
}

} // namespace headless
