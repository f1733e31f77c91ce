// Parents, children and the ways that instances make.
#include "headless/graph/scene.h"
#include "headless/graph/unique_names.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace headless {
namespace {

// How many levels stand above (or below) a node, following `next`, along the longest way; counting stops past
// the limit, which also ends a walk that instances would make endless.
template<typename Next>
int levels(const Node& from, Next next, const Node* looked_for, bool& found) {
    std::vector<const Node*> level{&from}, following;
    for (int depth = 0;; ++depth) {
        following.clear();
        for (const Node* node : level) {
            found |= looked_for && node == looked_for;
            const auto& further = next(*node);
            following.insert(following.end(), further.begin(), further.end());
        }
        if (following.empty() || found || depth > max_dag_depth) return depth;
        if (level.size() > 1 || following.size() > 1) {
            std::ranges::sort(following);
            following.erase(std::unique(following.begin(), following.end()), following.end());
        }
        level.swap(following);
    }
}

// The same upward where every node has one parent at most: a walk along a chain.
int levels_above(const Node& from, const Node* looked_for, bool& found) {
    int depth = 0;
    for (const Node* at = &from; at; at = at->parent()) {
        found |= at == looked_for;
        if (at->parent()) ++depth;
    }
    return depth;
}

// Sums a count over a graph without cycles: a node's is `own` plus its neighbours', each worked out once.
template<typename Next>
std::int64_t count_ways(const Node& from, Next next, std::int64_t own, std::int64_t at_end) {
    std::unordered_map<const Node*, std::int64_t> known;
    std::vector<std::pair<const Node*, std::size_t>> open{{&from, 0}};
    while (!open.empty()) {
        auto& [node, done] = open.back();
        const auto& further = next(*node);
        if (done < further.size()) {
            const Node* neighbour = further[done++];
            if (!known.contains(neighbour)) open.push_back({neighbour, 0});
            continue;
        }
        std::int64_t sum = further.empty() ? at_end : own;
        for (const Node* neighbour : further) sum = std::min(sum + known[neighbour], max_instance_paths + 1);
        known[node] = sum;
        open.pop_back();
    }
    return known[&from];
}

const std::vector<Node*>& up(const Node& node) {
    return node.parents();
}
const std::vector<Node*>& down(const Node& node) {
    return node.children();
}

} // namespace

Result<void> Scene::check_parenting(const Node& child, const Node& parent) const {
    if (&child == world_ || !child.type().is_dag() || !parent.type().is_dag())
        return Error{"'" + child.name() + "' and '" + parent.name() + "' can't be child and parent"};
    if (parent.type().is_shape()) return Error{"'" + parent.name() + "' is a shape and takes no child"};
    if (&parent == world_ && child.type().is_shape())
        return Error{"'" + child.name() + "' is a shape and can't stand under the world"};
    // Whether an unknown type is of the DAG shows by a parent alone.
    if (&parent == world_ && !child.type().known())
        return Error{"'" + child.name() + "' is of an unknown type and can't stand under the world"};
    bool cycle = false, unused = false;
    const Node* looked_for = child.children().empty() ? nullptr : &child;
    const int above = has_instances() ? levels(parent, up, looked_for, cycle) : levels_above(parent, looked_for, cycle);
    if (cycle || &child == &parent) return Error{"'" + parent.name() + "' stands under '" + child.name() + "'"};
    const int below = child.children().empty() ? 0 : levels(child, down, nullptr, unused);
    if (above + 1 + below > max_dag_depth)
        return Error{"'" + child.name() + "' would stand deeper than " + std::to_string(max_dag_depth) + " levels"};
    return {};
}

// Counts in so many paths more, which a node's new place makes.
Result<void> Scene::add_ways(const Node& child, std::int64_t further) {
    if (ways_ + further > max_instance_paths && ways_shrank_) {
        ways_ = count_ways(*world_, down, 1, 1);
        ways_shrank_ = false;
    }
    if (ways_ + further > max_instance_paths)
        return Error{"Instances of '" + child.name() + "' would make more than " + std::to_string(max_instance_paths) +
                     " paths"};
    ways_ += further;
    return {};
}

// A node that nothing hangs under yet.
Result<void> Scene::add_new(const Node& child, const Node& parent) {
    Result<void> allowed = check_parenting(child, parent);
    if (!allowed || !has_instances()) return allowed;
    return add_ways(parent, count_ways(parent, up, 0, 1));
}

void Scene::attach(Node& child, Node& parent, int position) {
    auto& children = parent.children_;
    const bool last = position < 0 || position > static_cast<int>(children.size());
    children.insert(last ? children.end() : children.begin() + position, &child);
    if (!child.parents_.empty()) ++extra_parents_;
    child.parents_.push_back(&parent);
    names_.add_child(parent, child);
    forget_paths();
    child.touch();
    modified = true;
}

void Scene::detach(Node& child, Node& parent) {
    names_.remove_child(parent, child);
    auto& children = parent.children_;
    // Whole subtrees are removed from the back, single children mostly from the front.
    if (children.back() == &child)
        children.pop_back();
    else
        children.erase(std::ranges::find(children, &child));
    std::erase(child.parents_, &parent);
    if (!child.parents_.empty()) --extra_parents_;
    ways_shrank_ = true;
    ++turner_edits_;
    forget_paths();
    child.touch();
    modified = true;
}

Result<void> Scene::reparent(Node& child, Node* wanted, int position) {
    Node& parent = wanted ? *wanted : *world_;
    if (Result<void> allowed = check_parenting(child, parent); !allowed) return allowed;
    if (child.default_ && child.parent() != &parent) return Error{"'" + child.name() + "' can't be moved"};
    if (has_instances()) {
        const std::int64_t further = count_ways(parent, up, 0, 1) - count_ways(child, up, 0, 1);
        if (Result<void> allowed = add_ways(child, further * count_ways(child, down, 1, 1)); !allowed) return allowed;
    }
    while (!child.parents_.empty()) detach(child, *child.parents_.back());
    make_name_fit(child, parent);
    attach(child, parent, position);
    return {};
}

Result<void> Scene::add_parent(Node& child, Node& parent, int position) {
    if (stands_under(child, parent)) return {};
    if (child.default_) return Error{"'" + child.name() + "' can't be instanced"};
    if (Result<void> allowed = check_parenting(child, parent); !allowed) return allowed;
    if (!has_instances()) {
        ways_ = static_cast<std::int64_t>(alive_); // with the nodes that have no path
        ways_shrank_ = true;
    }
    const std::int64_t further = count_ways(parent, up, 0, 1) * count_ways(child, down, 1, 1);
    if (Result<void> allowed = add_ways(child, further); !allowed) return allowed;
    make_name_fit(child, parent);
    attach(child, parent, position);
    return {};
}

Result<void> Scene::remove_parent(Node& child, Node& parent) {
    if (!stands_under(child, parent))
        return Error{"'" + child.name() + "' doesn't stand under '" + parent.name() + "'"};
    if (child.parents_.size() == 1) return Error{"'" + child.name() + "' has no other parent"};
    detach(child, parent);
    return {};
}

bool Scene::has_one_path(const Node& node) {
    const Node* at = &node;
    while (at->parents().size() == 1) at = at->parent();
    return at->is_world();
}

void Scene::forget_paths() {
    unique_names_.reset();
    namesakes_seen_ = 0;
    if (!instances_.empty()) instances_.clear();
}

DagPath Scene::path_to(const Node& node) const {
    if (!has_instances()) return DagPath(node.handle());
    std::vector<NodeHandle> way;
    bool instanced = false;
    for (const Node* at = &node; at && at != world_; at = at->parent()) {
        instanced |= at->parents_.size() > 1;
        way.push_back(at->handle());
    }
    if (!instanced) return DagPath(node.handle());
    std::ranges::reverse(way);
    return DagPath(std::move(way));
}

DagPath Scene::extended(const DagPath& path, const Node& child) const {
    if (!has_instances() || (!path.is_explicit() && child.parents_.size() == 1)) return DagPath(child.handle());
    std::vector<NodeHandle> way;
    for (const Node* node : nodes_on(path)) way.push_back(node->handle());
    way.push_back(child.handle());
    return DagPath(std::move(way));
}

std::vector<DagPath> Scene::paths_to(const Node& node) const {
    if (!has_instances() || &node == world_) return {DagPath(node.handle())};
    // Ways from the node upward, each a list from the leaf; `which` counts the parents tried at each step.
    std::vector<DagPath> out;
    std::vector<const Node*> way{&node};
    std::vector<std::size_t> which{0};
    bool instanced = false;
    while (!way.empty()) {
        const auto& parents = way.back()->parents_;
        if (which.back() == parents.size()) {
            way.pop_back();
            which.pop_back();
            continue;
        }
        instanced |= parents.size() > 1;
        const Node* parent = parents[which.back()++];
        if (parent != world_) {
            way.push_back(parent);
            which.push_back(0);
            continue;
        }
        std::vector<NodeHandle> found;
        for (auto at = way.rbegin(); at != way.rend(); ++at) found.push_back((*at)->handle());
        out.emplace_back(std::move(found));
    }
    if (!instanced) return {DagPath(node.handle())};
    return out;
}

// Of few parents a look at each is the quickest, of many the child's name.
bool Scene::stands_under(const Node& child, const Node& parent) const {
    if (child.parents_.size() > 8) return names_.find_child(parent, child.name_) == &child;
    return std::ranges::find(child.parents_, &parent) != child.parents_.end();
}

std::vector<Node*> Scene::nodes_on(const DagPath& path) const {
    std::vector<Node*> out;
    if (!path.is_explicit()) {
        for (Node* at = find(path.leaf()); at && at != world_; at = at->parent()) out.push_back(at);
        std::ranges::reverse(out);
        return out;
    }
    Node* above = world_;
    for (const NodeHandle handle : path.way()) {
        Node* at = find(handle);
        if (!at || !stands_under(*at, *above)) return {};
        out.push_back(at);
        above = at;
    }
    return out;
}

std::string Scene::full_name(const DagPath& path) const {
    std::string out;
    for (const Node* node : nodes_on(path)) {
        out += '|';
        out += node->name();
    }
    return out;
}

const Scene::Instances& Scene::instances_of(const Node& node) const {
    const auto [at, is_new] = instances_.try_emplace(&node);
    Instances& out = at->second;
    if (!is_new) return out;
    out.paths = paths_to(node);
    for (const DagPath& path : out.paths) out.numbers.emplace(path, static_cast<int>(out.numbers.size()));
    return out;
}

int Scene::instance_count(const Node& node) const {
    if (!has_instances() || &node == world_ || has_one_path(node)) return 1;
    return static_cast<int>(instances_of(node).paths.size());
}

int Scene::instance_number(const DagPath& path) const {
    const Node* leaf = find(path.leaf());
    if (!leaf || !path.is_explicit()) return 0;
    const Instances& all = instances_of(*leaf);
    const auto at = all.numbers.find(path);
    return at == all.numbers.end() ? 0 : at->second;
}

DagPath Scene::instance_path(const Node& node, int number) const {
    const int count = instance_count(node);
    if (number < 0 || number >= count) return {};
    return count == 1 ? path_to(node) : instances_of(node).paths[static_cast<std::size_t>(number)];
}

} // namespace headless
