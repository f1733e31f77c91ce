// Finding plugs by path, and the elements of arrays.
#include "headless/graph/node.h"

#include "headless/graph/scene.h"
#include "headless/graph/transform_state.h"

#include <algorithm>
#include <limits>

namespace headless {

AttributeId Node::find_child_attribute(std::string_view name, AttributeId parent) const {
    if (parent != no_attribute) {
        for (const AttributeId id : attribute(parent).children) {
            const Attribute& at = attribute(id);
            if (at.long_name == name || at.short_name == name) return id;
        }
    }
    const AttributeId id = find_attribute(name);
    if (id == no_attribute || parent == no_attribute) return id;
    for (AttributeId up = attribute(id).parent; up != no_attribute; up = attribute(up).parent) {
        if (up == parent) return id;
    }
    return no_attribute;
}

Plug Node::find_plug(std::string_view path) const {
    std::vector<PathSegment> segments;
    if (!split_attribute_path(path, segments)) return {};
    return follow(segments);
}

Plug Node::follow(const std::vector<PathSegment>& segments) const {
    PlugKey key;
    AttributeId here = no_attribute;
    for (const PathSegment& segment : segments) {
        const AttributeId next = find_child_attribute(segment.name, here);
        if (next == no_attribute) return {};
        const Attribute& at = attribute(next);
        if (segment.indexed && (!at.array || segment.first < 0)) return {};
        // Arrays that the path passed over stand at element 0, which is how the key starts out.
        key.depth = at.array_levels;
        if (at.array && segment.indexed) key.index[at.array_levels - 1] = segment.first;
        if (at.array && !segment.indexed && &segment == &segments.back()) key.depth -= 1;
        here = next;
    }
    key.attribute = here;
    return {const_cast<Node*>(this), key};
}

Plug Node::find_or_add_plug(std::string_view path) {
    std::vector<PathSegment> segments;
    if (!split_attribute_path(path, segments)) return {};
    if (const Plug found = follow(segments)) return found;
    AttributeId here = no_attribute;
    for (const PathSegment& segment : segments) {
        AttributeId next = find_child_attribute(segment.name, here);
        if (next == no_attribute) {
            next = add_raw_attribute(segment.name, here, segment.indexed);
        } else if (segment.indexed && !attribute(next).array) {
            next = make_raw_array(next);
        }
        if (next == no_attribute) return {};
        here = next;
    }
    return follow(segments);
}

AttributeId Node::add_raw_attribute(std::string_view name, AttributeId parent, bool array) {
    // A node's attributes share no name, and what was declared has the children that were declared.
    if (find_attribute(name) != no_attribute) return no_attribute;
    if (parent != no_attribute && !attribute(parent).raw) return no_attribute;
    const int levels = (parent == no_attribute ? 0 : attribute(parent).array_levels) + (array ? 1 : 0);
    if (levels > max_array_levels) return no_attribute;
    const AttributeId id = attribute_count();
    if (parent != no_attribute) {
        Attribute& above = dynamic_[parent - type_->attributes().size()];
        above.kind = AttributeKind::compound;
        above.children.push_back(id);
    }
    Attribute made;
    made.long_name = made.short_name = name;
    made.array = array;
    made.raw = true;
    made.dynamic = true;
    made.array_levels = static_cast<std::uint8_t>(levels);
    made.parent = parent;
    dynamic_by_name_.emplace(name, id);
    dynamic_.push_back(std::move(made));
    touch();
    return id;
}

AttributeId Node::make_raw_array(AttributeId id) {
    const std::size_t own = type_->attributes().size();
    if (id < own) return no_attribute;
    Attribute& at = dynamic_[id - own];
    if (!at.raw || !at.children.empty() || at.array_levels == max_array_levels) return no_attribute;
    // What was named without an index is of element 0.
    const auto in_array = [&](Plug plug) {
        if (plug.node == this && plug.key.attribute == id) plug.key = plug.key.element(0);
        return plug;
    };
    const std::vector<std::pair<PlugKey, Value>> values = stored_values_of(id);
    const std::vector<std::pair<Plug, Plug>> links = links_of(id);
    for (const auto& [source, destination] : links) scene_.disconnect(destination);
    reset(PlugKey{id, 0, {}});
    at.array = true;
    at.array_levels += 1;
    for (const auto& [key, value] : values) store(key.element(0), value);
    for (const auto& [source, destination] : links) (void)scene_.connect(in_array(source), in_array(destination));
    return id;
}

std::vector<std::pair<PlugKey, Value>> Node::stored_values_of(AttributeId id) const {
    std::vector<std::pair<PlugKey, Value>> out;
    const PlugKey first{id, 0, {}};
    if (const Value* value = stored_value(first)) out.emplace_back(first, *value);
    for (auto at = elements_.lower_bound(first); at != elements_.end() && at->first.attribute == id; ++at)
        out.push_back(*at);
    return out;
}

std::vector<std::pair<Plug, Plug>> Node::links_of(AttributeId id) {
    std::vector<std::pair<Plug, Plug>> out;
    const PlugKey first{id, 0, {}};
    for (auto at = inputs_.lower_bound(first); at != inputs_.end() && at->first.attribute == id; ++at)
        out.emplace_back(at->second, Plug{this, at->first});
    for (auto at = outputs_.lower_bound(first); at != outputs_.end() && at->first.attribute == id; ++at) {
        const Plug& destination = at->second; // one of the same attribute is there already
        if (destination.node != this || destination.key.attribute != id)
            out.emplace_back(Plug{this, at->first}, destination);
    }
    return out;
}

bool Node::covers(const PlugKey& outer, const PlugKey& inner) const {
    if (inner.depth < outer.depth) return false;
    if (!std::equal(outer.index.begin(), outer.index.begin() + outer.depth, inner.index.begin())) return false;
    for (AttributeId id = inner.attribute; id != no_attribute; id = attribute(id).parent) {
        if (id == outer.attribute) return true;
    }
    return false;
}

std::vector<AttributeId> Node::with_descendants(AttributeId id) const {
    std::vector<AttributeId> out{id};
    for (std::size_t i = 0; i < out.size(); ++i) {
        const auto& children = attribute(out[i]).children;
        out.insert(out.end(), children.begin(), children.end());
    }
    return out;
}

void Node::reset(const PlugKey& key) {
    for (const AttributeId id : with_descendants(key.attribute)) {
        if (key.depth == 0 && id < value_at_.size() && value_at_[id] >= 0) values_[value_at_[id]] = Value();
        if (key.depth == 0 && id < value_at_.size()) value_at_[id] = -1;
        for (auto at = elements_.lower_bound(PlugKey{id, 0, {}}); at != elements_.end() && at->first.attribute == id;)
            at = covers(key, at->first) ? elements_.erase(at) : std::next(at);
    }
    touch();
}

std::vector<PlugKey> Node::stored() const {
    std::vector<PlugKey> out;
    auto element = elements_.begin();
    for (AttributeId id = 0; id < attribute_count(); ++id) {
        if (id < value_at_.size() && value_at_[id] >= 0) out.push_back({id, 0, {}});
        for (; element != elements_.end() && element->first.attribute == id; ++element) out.push_back(element->first);
    }
    return out;
}

std::vector<int> Node::existing_indices(const PlugKey& array) const {
    std::vector<int> out;
    if (data_ && data_->indices({const_cast<Node*>(this), array}, out)) return out;
    const auto collect = [&](const auto& plugs, AttributeId id) {
        for (auto at = plugs.lower_bound(PlugKey{id, 0, {}}); at != plugs.end() && at->first.attribute == id; ++at) {
            if (at->first.depth > array.depth && covers(array, at->first)) out.push_back(at->first.index[array.depth]);
        }
    };
    for (const AttributeId id : with_descendants(array.attribute)) {
        collect(elements_, id);
        collect(inputs_, id);
    }
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
    return out;
}

int Node::next_free_index(const PlugKey& array) const {
    if (std::vector<int> taken; data_ && data_->indices({const_cast<Node*>(this), array}, taken))
        return taken.empty() ? 0 : std::min(taken.back(), last_index - 1) + 1;
    if (array.depth == max_array_levels) return 0;
    int highest = -1;
    // Keys of one attribute and depth stand in order of their indices, so the last within the array is found
    // without a walk over them: thousands of shapes are connected to one set in this way.
    const auto look = [&](const auto& plugs, const PlugKey& beyond) {
        const auto after = plugs.upper_bound(beyond);
        if (after == plugs.begin()) return;
        const PlugKey& last = std::prev(after)->first;
        if (last.attribute == beyond.attribute && last.depth == beyond.depth && covers(array, last))
            highest = std::max(highest, last.index[array.depth]);
    };
    for (const AttributeId id : with_descendants(array.attribute)) {
        for (int depth = array.depth + 1; depth <= max_array_levels; ++depth) {
            PlugKey beyond{id, static_cast<std::uint8_t>(depth), array.index};
            std::fill(beyond.index.begin() + array.depth, beyond.index.end(), std::numeric_limits<int>::max());
            look(elements_, beyond);
            look(inputs_, beyond);
        }
    }
    return std::min(highest, last_index - 1) + 1;
}

} // namespace headless
