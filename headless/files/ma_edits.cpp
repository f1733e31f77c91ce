#include "headless/files/ma_edits.h"

#include <algorithm>

namespace headless {
namespace {

// Words that come out of a text in an edit, behind words that are given.
class EditWords {
public:
    EditWords(std::initializer_list<std::string_view> first, const std::string& text) : text_("edit " + text + ";") {
        for (const std::string_view word : first) words_.push_back({word, 0, false});
        StatementReader reader(text_);
        if (!reader.next()) return;
        for (const Word& word : reader.words().subspan(1)) {
            texts_.emplace_back(word.text);
            words_.push_back({texts_.back(), 0, word.quoted});
        }
    }
    WordList words() const { return words_; }

private:
    std::string text_;
    std::deque<std::string> texts_;
    std::vector<Word> words_;
};

constexpr std::string_view place_holder_list = ".placeHolderList[";

} // namespace

void MaEdits::apply(Node& reference_node, const std::vector<ReferenceEditGroup>& groups) {
    loaded_.insert(&reference_node);
    file_.name_exactly(true);
    for (const ReferenceEditGroup& group : groups) {
        const auto reference = reading_.references_by_node.find(file_.prefix() + group.reference);
        if (reference != reading_.references_by_node.end() && !reference->second->loaded) {
            keep(*reference->second, group);
            continue;
        }
        for (const ReferenceEdit& edit : group.edits) apply(edit);
    }
    file_.name_exactly(false);
}

void MaEdits::apply(const ReferenceEdit& edit) {
    switch (edit.kind) {
    case ReferenceEdit::Kind::parent:
        return parent(edit);
    case ReferenceEdit::Kind::add_attribute:
        return add_attribute(edit);
    case ReferenceEdit::Kind::set:
        return set(edit);
    case ReferenceEdit::Kind::disconnect:
        return disconnect(edit);
    case ReferenceEdit::Kind::delete_attribute:
        return cut_off(edit);
    case ReferenceEdit::Kind::connect:
        return note_ends(edit);
    case ReferenceEdit::Kind::lock:
    case ReferenceEdit::Kind::unlock:
        return lock(edit, edit.kind == ReferenceEdit::Kind::lock);
    case ReferenceEdit::Kind::relate: // which light shines on what
        return;
    }
}

void MaEdits::parent(const ReferenceEdit& edit) {
    const std::string& above = edit.field(1);
    const bool to_world = above.empty() || above == "|";
    const EditWords words(to_world ? std::initializer_list<std::string_view>{"-w", edit.field(0)}
                                   : std::initializer_list<std::string_view>{edit.field(0), above},
                          edit.field(2));
    (void)file_.parent(words.words());
}

void MaEdits::add_attribute(const ReferenceEdit& edit) {
    const Word node{edit.field(0), 0, true};
    (void)file_.select({&node, 1});
    const EditWords words({"-ln", edit.field(1), "-sn", edit.field(2)}, edit.field(3));
    if (file_.current()) (void)file_.add_attr(words.words());
}

void MaEdits::set(const ReferenceEdit& edit) {
    const std::string name = edit.field(0) + "." + edit.field(1);
    const EditWords words({name}, edit.field(2));
    (void)file_.set_attr(words.words());
}

// Of an array all elements that come from the source.
void MaEdits::disconnect(const ReferenceEdit& edit) {
    const Plug source = file_.existing_plug(edit.field(0)), destination = file_.existing_plug(edit.field(1));
    if (!source || !destination) return;
    std::vector<PlugKey> found;
    for (const auto& [key, from] : destination.node->inputs()) {
        const bool within = destination.is_array() && key.attribute == destination.key.attribute;
        const bool from_there = from.node == source.node && from.key.attribute == source.key.attribute;
        if ((within || key == destination.key) && from_there) found.push_back(key);
    }
    for (const PlugKey& key : found) reading_.scene.disconnect({destination.node, key});
}

// What has no attribute any more is moved by nothing through it.
void MaEdits::cut_off(const ReferenceEdit& edit) {
    const Node* node = file_.find(edit.field(0));
    const AttributeId id = node ? node->find_attribute(edit.field(1)) : no_attribute;
    if (id == no_attribute) return;
    std::vector<Plug> ends;
    for (const auto& [key, source] : node->inputs()) {
        if (key.attribute == id) ends.push_back({const_cast<Node*>(node), key});
    }
    for (const auto& [key, destination] : node->outputs()) {
        if (key.attribute == id) ends.push_back(destination);
    }
    for (const Plug& end : ends) reading_.scene.disconnect(end);
}

void MaEdits::lock(const ReferenceEdit& edit, bool locked) {
    const Plug plug = file_.existing_plug(edit.field(0) + "." + edit.field(1));
    if (!plug) return;
    AttributeFlags flags = plug.node->flags(plug.key.attribute);
    flags.locked = locked;
    plug.node->set_flags(plug.key.attribute, flags);
}

// Place holders are "RN.placeHolderList[3]" here, and "RN.phl[3]" in the file's own connections.
Plug MaEdits::place_holder(const std::string& name) const {
    const std::size_t at = name.find(place_holder_list);
    Node* node = at == std::string::npos ? nullptr : file_.find(std::string_view(name).substr(0, at));
    return node ? node->find_plug("phl" + name.substr(at + place_holder_list.size() - 1)) : Plug();
}

void MaEdits::stand_for(const std::string& place_holder_name, const std::string& plug_name) {
    const Plug holder = place_holder(place_holder_name);
    if (!holder || holder.is_array()) return; // no connection leads there
    const Result<Plug> plug = file_.plug_of(plug_name);
    if (!plug) return;
    places_[{holder.node, holder.key}] = ends_.size();
    ends_.emplace_back(holder, *plug);
}

void MaEdits::note_ends(const ReferenceEdit& edit) {
    const bool both = edit.ends == ReferenceEdit::Ends::both;
    stand_for(edit.field(both ? 4 : 3), edit.field(2));
    if (both) stand_for(edit.field(5), edit.field(3));
}

Plug MaEdits::end_of(const Plug& plug) const {
    const auto place = places_.find({plug.node, plug.key});
    return place == places_.end() ? plug : ends_[place->second].second;
}

bool MaEdits::stands_for_nothing(const Plug& plug) const {
    return loaded_.contains(plug.node) && !places_.contains({plug.node, plug.key});
}

void MaEdits::join() {
    std::vector<std::pair<Plug, Plug>> connections;
    for (const auto& [holder, end] : ends_) {
        const Plug source = holder.node->source_of(holder.key);
        if (source && !stands_for_nothing(source)) connections.emplace_back(end_of(source), end);
        const auto [first, last] = holder.node->outputs().equal_range(holder.key);
        for (auto output = first; output != last; ++output) {
            const Plug& destination = output->second;
            if (!loaded_.contains(destination.node)) connections.emplace_back(end, destination);
        }
    }
    for (const auto& [holder, end] : ends_) reading_.scene.disconnect(holder);
    for (const auto& [source, destination] : connections) (void)file_.connect(source, destination);
    store_kept();
}

// Changes to a reference within one that is loaded hang on the outer one's place holders, which go with it.
void MaEdits::keep(const MaReference& reference, const ReferenceEditGroup& group) {
    Node* node = reading_.scene.find(reference.statement.node);
    if (!node || group.edits.empty()) return;
    ReferenceEditGroup kept = group;
    put_prefix(kept, reading_.base_namespace + file_.prefix());
    for (std::size_t i = 0; i < group.edits.size(); ++i) {
        const ReferenceEdit& edit = group.edits[i];
        if (edit.kind != ReferenceEdit::Kind::connect) continue;
        const bool both = edit.ends == ReferenceEdit::Ends::both;
        kept.edits[i].fields[1].value = node->name();
        for (std::size_t at = both ? 4 : 3; at < (both ? 6u : 4u); ++at)
            kept.edits[i].fields[at].value = moved_place_holder(*node, edit.field(at));
    }
    append_tokens(kept, kept_[node]);
}

void MaEdits::store_kept() {
    for (auto& [node, tokens] : kept_) {
        const PlugKey key = node->find_or_add_plug("ed").key;
        const Value stored = node->get(key);
        const auto* before = stored.get_if<RawTokens>();
        RawTokens edits{"dataReferenceEdits", before ? before->tokens : std::vector<std::string>{}};
        if (edits.tokens.empty()) edits.tokens.push_back(headless::quoted(node->name()));
        edits.tokens.insert(edits.tokens.end(), tokens.begin(), tokens.end());
        node->set(key, edits);
    }
}

std::string MaEdits::moved_place_holder(Node& to, const std::string& from) {
    const Plug holder = place_holder(from);
    const Plug list = to.find_plug("phl");
    const int index = list && list.is_array() ? to.next_free_index(list.key) : 1;
    const Plug place = to.find_or_add_plug("phl[" + std::to_string(index) + "]");
    if (!place) return from;
    to.set(place.key, 0);
    if (holder) {
        places_[{holder.node, holder.key}] = ends_.size();
        ends_.emplace_back(holder, place);
    }
    return to.name() + std::string(place_holder_list) + std::to_string(index) + "]";
}

} // namespace headless
