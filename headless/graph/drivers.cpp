#include "headless/graph/drivers.h"

#include "headless/graph/scene.h"
#include "headless/graph/transform.h"

#include <algorithm>
#include <deque>
#include <map>

namespace headless {
namespace {

// What a value can hang on: a plug, where a node stands, by its own values alone or in the world, or how one turns
// joints that it isn't connected to.
struct Place {
    enum class Kind : std::uint8_t { plug, local, world, turning };
    Node* node = nullptr;
    Kind kind = Kind::plug;
    PlugKey key;

    bool operator<(const Place& other) const {
        const auto& serial = node->handle().serial;
        const auto& others = other.node->handle().serial;
        return std::tie(serial, kind, key) < std::tie(others, other.kind, other.key);
    }
};

class Search {
public:
    explicit Search(Scene& scene) : scene_(scene) {}

    void start_at(Node& node) { visit({&node, Place::Kind::world, {}}, nullptr); }

    void run() {
        while (!open_.empty()) {
            Entry& entry = *open_.front();
            open_.pop_front();
            if (entry.first.kind == Place::Kind::plug)
                follow_plug(entry);
            else if (entry.first.kind == Place::Kind::turning)
                follow_turner(entry);
            else
                follow_transform(entry);
        }
    }

    std::vector<Unevaluated> found(std::span<Node* const> asked) {
        std::vector<Unevaluated> out;
        for (auto& [serial, found] : found_) {
            for (const Node* node : roots_below(found.second)) {
                if (const auto at = std::ranges::find(asked, node); at != asked.end())
                    found.first.moving.push_back(*at);
            }
            out.push_back(std::move(found.first));
        }
        return out;
    }

private:
    struct Reached {
        std::vector<const std::pair<const Place, Reached>*> by; // what hangs on it
    };
    using Entry = std::pair<const Place, Reached>;

    void visit(const Place& place, const Entry* by) {
        const auto [at, is_new] = reached_.try_emplace(place);
        if (by) at->second.by.push_back(by);
        if (is_new) open_.push_back(&*at);
    }
    void visit_source(const Plug& source, const Entry& by) {
        if (source) visit({source.node, Place::Kind::plug, source.key}, &by);
    }

    void report(const Entry& entry, std::string why) {
        auto& [found, places] = found_[entry.first.node->handle().serial];
        found.node = entry.first.node;
        if (found.why.empty()) found.why = std::move(why);
        places.push_back(&entry);
    }

    // Every connection into an attribute or one of its parts, whichever the element.
    void follow_attribute(Node& node, AttributeId id, const Entry& by, int component = -1) {
        if (node.attribute(id).output) return visit({&node, Place::Kind::plug, PlugKey{id, 0, {}}}, &by);
        auto at = node.inputs().lower_bound(PlugKey{id, 0, {}});
        for (; at != node.inputs().end() && at->first.attribute == id; ++at) visit_source(at->second, by);
        const std::vector<AttributeId>& parts = node.attribute(id).children;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (component < 0 || static_cast<int>(i) == component) follow_attribute(node, parts[i], by);
        }
    }

    void follow_transform(Entry& entry) {
        Node& node = *entry.first.node;
        const TransformAttributes& ids = TransformAttributes::ids();
        if (node.type().is_transform()) {
            // The limits come last of what every transform has.
            static const auto end = static_cast<AttributeId>(NodeTypes::all().find("transform")->attributes().size());
            for (AttributeId id = ids.translate; id < end; ++id) {
                if (node.attribute(id).parent == no_attribute) follow_attribute(node, id, entry);
            }
        }
        if (node.type().is_joint()) {
            for (const AttributeId id : {ids.joint_orient, ids.inverse_scale, ids.segment_scale_compensate})
                follow_attribute(node, id, entry);
        }
        for (Node* turner : EvaluationContext(scene_).turners_of(node))
            visit({turner, Place::Kind::turning, {}}, &entry);
        if (entry.first.kind == Place::Kind::local) return;
        for (Node* parent : node.parents()) {
            if (!parent->is_world()) visit({parent, Place::Kind::world, {}}, &entry);
        }
    }

    // What names its joints and where they end comes in as messages; both hang on all that stands between.
    void follow_turner(Entry& entry) {
        Node& node = *entry.first.node;
        const NodeType& type = node.type();
        if (const std::string why = type.shortfall ? type.shortfall(node) : std::string(); !why.empty())
            return report(entry, why);
        visit({&node, Place::Kind::world, {}}, &entry);
        for (const auto& [destination, source] : node.inputs()) {
            visit_source(source, entry);
            const bool names = node.attribute(destination.attribute).kind == AttributeKind::message;
            if (names && source.node->type().is_transform()) visit({source.node, Place::Kind::world, {}}, &entry);
        }
    }

    void follow_dag_matrix(Entry& entry) {
        const TransformAttributes& ids = TransformAttributes::ids();
        Node& node = *entry.first.node;
        const AttributeId id = entry.first.key.attribute;
        if (id == ids.parent_matrix || id == ids.parent_inverse_matrix) {
            for (Node* parent : node.parents()) visit({parent, Place::Kind::world, {}}, &entry);
            return;
        }
        const bool local = id == ids.matrix || id == ids.inverse_matrix;
        visit({&node, local ? Place::Kind::local : Place::Kind::world, {}}, &entry);
    }

    void follow_plug(Entry& entry) {
        Node& node = *entry.first.node;
        const NodeType& type = node.type();
        const PlugKey& key = entry.first.key;
        const Attribute& attribute = node.attribute(key.attribute);
        if (&node == &scene_.time_node()) return;
        if (type.is_dag() && key.attribute <= TransformAttributes::ids().parent_inverse_matrix && attribute.output)
            return follow_dag_matrix(entry);
        if (!type.known()) return report(entry, "nodes of its kind aren't");
        if (const std::string why = type.shortfall ? type.shortfall(node) : std::string(); !why.empty())
            return report(entry, why);
        if (attribute.output) return follow_output(entry);
        if (!follow_stored({&node, key}, entry) && attribute.raw && node.get(key).empty())
            report(entry, "its '" + attribute.long_name + "' isn't known");
    }

    void follow_output(Entry& entry) {
        Node& node = *entry.first.node;
        const AttributeId id = entry.first.key.attribute;
        if (const OutputRule* rule = node.type().rule_of(id)) {
            const auto& parts = node.attribute(rule->output).children;
            const auto part = std::ranges::find(parts, id);
            const int component =
                rule->by_component && part != parts.end() ? static_cast<int>(part - parts.begin()) : -1;
            for (const AttributeId input : rule->inputs)
                follow_attribute(node, input, entry, node.attribute(input).children.size() > 1 ? component : -1);
        } else if (node.type().compute) {
            for (const auto& [destination, source] : node.inputs()) {
                if (node.attribute(destination.attribute).kind != AttributeKind::message) visit_source(source, entry);
            }
        } else {
            report(entry, "its '" + node.attribute(id).long_name + "' isn't worked out");
        }
    }

    // What is connected to the plug itself, around it or within it.
    bool follow_stored(const Plug& plug, const Entry& entry) {
        if (plug.node->inputs().empty()) return false;
        bool any = false;
        const auto look_at = [&](const Plug& at) {
            const Plug source = plug.node->source_of(at.key);
            any = any || source;
            visit_source(source, entry);
        };
        for (Plug at = plug; at; at = at.parent()) look_at(at);
        if (!plug.is_array()) {
            for (const AttributeId part : plug.attribute().children) look_at(plug.child(part));
        }
        return any;
    }

    std::vector<const Node*> roots_below(const std::vector<const Entry*>& from) const {
        std::set<const Entry*> seen(from.begin(), from.end());
        std::vector<const Entry*> open(from.begin(), from.end());
        std::set<const Node*> out;
        while (!open.empty()) {
            const Entry* entry = open.back();
            open.pop_back();
            if (entry->first.kind == Place::Kind::world) out.insert(entry->first.node);
            for (const Entry* by : entry->second.by) {
                if (seen.insert(by).second) open.push_back(by);
            }
        }
        return {out.begin(), out.end()};
    }

    Scene& scene_;
    std::map<Place, Reached> reached_;
    std::deque<Entry*> open_;
    std::map<std::uint32_t, std::pair<Unevaluated, std::vector<const Entry*>>> found_;
};

} // namespace

std::vector<Unevaluated> find_unevaluated(Scene& scene, std::span<Node* const> moving) {
    Search search(scene);
    for (Node* node : moving) search.start_at(*node);
    search.run();
    return search.found(moving);
}

std::string told(const Unevaluated& found) {
    static constexpr std::size_t most = 3;
    std::string out = "The " + found.node->type().name() + " '" + found.node->name() + "' isn't evaluated (" +
                      found.why + "), and moves ";
    const std::size_t count = found.moving.size();
    for (std::size_t i = 0; i < std::min(count, most); ++i)
        out += std::string(i == 0 ? "" : i + 1 == count ? " and " : ", ") + "'" + found.moving[i]->name() + "'";
    if (count > most) out += " and " + std::to_string(count - most) + " more";
    return out;
}

} // namespace headless
