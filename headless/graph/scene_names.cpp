// What names stand for, and which names nodes get.
#include "headless/graph/scene.h"
#include "headless/graph/unique_names.h"

#include <algorithm>

namespace headless {
namespace {

std::string_view without_root_namespace(std::string_view name) {
    return name.starts_with(':') ? name.substr(1) : name;
}

std::vector<std::string_view> split_path(std::string_view path) {
    std::vector<std::string_view> out;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('|', begin), path.size());
        out.push_back(without_root_namespace(path.substr(begin, end - begin)));
        begin = end + 1;
    }
    return out;
}

bool fits(std::string_view pattern, std::string_view name) {
    return is_pattern(pattern) ? matches_pattern(pattern, name) : pattern == name;
}

} // namespace

void Scene::note_namespaces(std::string_view name) {
    if (const std::size_t colon = name.rfind(':'); colon != std::string_view::npos)
        add_namespace(name.substr(0, colon));
}

void Scene::add_namespace(std::string_view name) {
    name = without_root_namespace(name);
    for (std::size_t at = name.find(':'); at != std::string_view::npos; at = name.find(':', at + 1))
        namespaces_.emplace(name.substr(0, at));
    if (!name.empty()) namespaces_.emplace(name);
}

void Scene::remove_namespace(std::string_view name) {
    name = without_root_namespace(name);
    const std::string within = std::string(name) + ":";
    std::erase_if(namespaces_, [&](const std::string& entry) { return entry == name || entry.starts_with(within); });
}

void Scene::give_name(Node& node, const std::string& name) {
    if (name == node.name_) return;
    names_.remove(node);
    for (const Node* parent : node.parents_) names_.remove_child(*parent, node);
    node.name_ = name;
    names_.add(node);
    for (const Node* parent : node.parents_) names_.add_child(*parent, node);
    note_namespaces(name);
    forget_paths();
    node.touch();
    modified = true;
}

Result<std::string> Scene::rename(Node& node, std::string_view wanted) {
    if (&node == world_) return Error{"The world can't be renamed"};
    if (node.default_) return Error{"'" + node.name_ + "' can't be renamed"};
    const std::string name = legal_name(wanted);
    if (name.empty()) return Error{"New name has no legal characters"};
    give_name(node, names_.unique_name(name, node.parents_, &node));
    return node.name_;
}

Node* Scene::default_node(std::string_view name) const {
    const std::span<Node* const> in_dag = names_.find_in_dag(name);
    Node* first = in_dag.empty() ? names_.find_outside_dag(name) : in_dag.front(); // none was made before
    return first && first->default_ ? first : nullptr;
}

// A child keeps its name under a new parent unless one of the children there has it.
void Scene::make_name_fit(Node& child, Node& parent) {
    std::vector<Node*> parents{&parent}; // under the others it is free
    if (names_.unique_name(child.name_, parents, &child) == child.name_) return;
    parents.insert(parents.end(), child.parents_.begin(), child.parents_.end());
    give_name(child, names_.unique_name(child.name_, parents, &child));
}

// Whether the end of a path has these names, the world counting as the name before a full path's first.
bool Scene::path_fits(const std::vector<Node*>& nodes, const std::vector<std::string_view>& names) const {
    const bool full = names.front().empty();
    const std::size_t count = names.size() - (full ? 1 : 0);
    if (nodes.size() < count || (full && nodes.size() != count)) return false;
    for (std::size_t i = 0; i < count; ++i) {
        if (!fits(names[names.size() - 1 - i], nodes[nodes.size() - 1 - i]->name_)) return false;
    }
    return true;
}

void Scene::add_matching_paths(Node& node, const std::vector<std::string_view>& names,
                               std::vector<SelectionItem>& out) const {
    // A bare name means the node, by its first path; a path means each way that it fits.
    if (names.size() == 1) {
        out.push_back(item(node));
        return;
    }
    // Most candidates are ruled out by the parent's name, before any path is built.
    const std::string_view above = names[names.size() - 2];
    const bool possible = std::ranges::any_of(node.parents_, [&](const Node* parent) {
        return above.empty() ? parent == world_ : fits(above, parent->name_);
    });
    if (!possible) return;
    for (const DagPath& path : paths_to(node)) {
        if (path_fits(nodes_on(path), names)) out.push_back({path, node.handle_, {}, {}});
    }
}

// A path without wildcards is walked down, a step a name.
void Scene::walk_down(Node& from, DagPath path, std::span<const std::string_view> names,
                      std::vector<SelectionItem>& out) const {
    Node* at = &from;
    for (const std::string_view name : names) {
        at = names_.find_child(*at, name);
        if (!at) return;
        path = extended(path, *at);
    }
    out.push_back({path, at->handle_, {}, {}});
}

std::vector<SelectionItem> Scene::match(std::string_view path) const {
    std::vector<SelectionItem> out;
    const std::vector<std::string_view> names = split_path(path);
    const std::string_view last = names.back();
    if (last.empty()) return out;
    const bool literal = std::ranges::none_of(names, is_pattern);
    const std::span<const std::string_view> below(names.begin() + 1, names.end());
    if (names.front().empty() && literal) {
        walk_down(*world_, {}, below, out);
        return out;
    }
    if (!is_pattern(last)) {
        if (Node* node = names_.find_outside_dag(last); node && names.size() == 1) out.push_back(item(*node));
        // From the end of the path that fewer nodes have the name of.
        const std::span<Node* const> firsts = names_.find_in_dag(names.front());
        const std::span<Node* const> lasts = names_.find_in_dag(last);
        if (literal && names.size() > 1 && firsts.size() < lasts.size()) {
            for (Node* first : firsts) {
                for (const DagPath& way : paths_to(*first)) walk_down(*first, way, below, out);
            }
        } else {
            for (Node* node : lasts) add_matching_paths(*node, names, out);
        }
        return out;
    }
    for (Node* node : nodes()) {
        if (!matches_pattern(last, node->name_)) continue;
        if (node->type().is_dag())
            add_matching_paths(*node, names, out);
        else if (names.size() == 1)
            out.push_back(item(*node));
    }
    return out;
}

SelectionItem Scene::item(const Node& node) const {
    return {node.type().is_dag() ? path_to(node) : DagPath(), node.handle_, {}, {}};
}

Result<std::vector<SelectionItem>> Scene::resolve(std::string_view name) const {
    const std::size_t bar = name.rfind('|');
    const std::size_t dot = name.find('.', bar == std::string_view::npos ? 0 : bar);
    const std::string_view path = name.substr(0, dot);
    std::vector<SelectionItem> found = match(path);
    if (dot != std::string_view::npos) {
        const std::string_view rest = name.substr(dot + 1);
        std::erase_if(found, [&](SelectionItem& entry) {
            if (const Plug plug = find(entry.node)->find_plug(rest))
                entry.plug = plug.key;
            else if (rest.ends_with(']') && entry.path)
                entry.components = rest;
            else
                return true;
            return false;
        });
    }
    if (found.empty()) return Error{"No object matches name: " + std::string(name)};
    if (found.size() > 1 && !is_pattern(path)) return Error{"More than one object matches name: " + std::string(name)};
    return found;
}

Result<Node*> Scene::find_node(std::string_view name) const {
    const Result<std::vector<SelectionItem>> found = resolve(name);
    if (!found) return found.error();
    if (found->size() > 1) return Error{"More than one object matches name: " + std::string(name)};
    return find(found->front().node);
}

Result<DagPath> Scene::find_path(std::string_view name) const {
    const Result<std::vector<SelectionItem>> found = resolve(name);
    if (!found) return found.error();
    if (found->size() > 1) return Error{"More than one object matches name: " + std::string(name)};
    if (!found->front().path) return Error{"'" + std::string(name) + "' is not in the DAG"};
    return found->front().path;
}

Result<Plug> Scene::find_plug(std::string_view name) const {
    const Result<std::vector<SelectionItem>> found = resolve(name);
    if (!found) return found.error();
    if (found->size() > 1 || !found->front().plug) return Error{"No object matches name: " + std::string(name)};
    return Plug{find(found->front().node), *found->front().plug};
}

std::string Scene::partial_name(const DagPath& path) const {
    const std::vector<Node*> nodes = nodes_on(path);
    if (nodes.empty()) return {};
    const Node& leaf = *nodes.back();
    if (path.is_explicit() && path != path_to(leaf)) return name_among_namesakes(nodes);
    if (!unique_names_ && namesakes_seen_ > slots_.size() + static_cast<std::size_t>(ways_))
        unique_names_ = std::make_unique<const UniqueNames>(*this);
    return unique_names_ ? unique_names_->of(leaf) : name_among_namesakes(nodes);
}

// As much of a path, given by its nodes, as no other path ends in.
std::string Scene::name_among_namesakes(const std::vector<Node*>& nodes) const {
    std::string out = nodes.back()->name_;
    // Where the ways up from all nodes of that name have come to as long as they have the names on the path.
    const std::span<Node* const> same = names_.find_in_dag(out);
    std::vector<const Node*> reached(same.begin(), same.end()), further;
    for (std::size_t i = nodes.size() - 1; i-- > 0;) {
        if (reached.size() == 1 && has_one_path(*reached.front())) return out;
        namesakes_seen_ += reached.size();
        further.clear();
        for (const Node* at : reached) {
            for (const Node* parent : at->parents_) {
                if (parent != world_ && parent->name_ == nodes[i]->name_) further.push_back(parent);
            }
        }
        reached.swap(further);
        out.insert(0, nodes[i]->name_ + "|");
    }
    if (reached.size() == 1 && has_one_path(*reached.front())) return out;
    return "|" + out;
}

std::string Scene::unique_name_of(const Node& node) const {
    return node.type().is_dag() && &node != world_ ? partial_name(path_to(node)) : node.name_;
}

} // namespace headless
