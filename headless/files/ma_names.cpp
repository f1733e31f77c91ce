#include "headless/files/ma_names.h"

#include <algorithm>
#include <cstdint>

namespace headless {
namespace {

// Cuts the last name off a path; both views of it.
std::string_view take_last(std::string_view& path) {
    const std::size_t bar = path.rfind('|');
    const std::string_view last = bar == std::string_view::npos ? path : path.substr(bar + 1);
    path = bar == std::string_view::npos ? std::string_view() : path.substr(0, bar);
    return last;
}

bool equals(std::string_view name, std::string_view prefix, std::string_view rest) {
    return name.size() == prefix.size() + rest.size() && name.starts_with(prefix) && name.ends_with(rest);
}

} // namespace

void MaNames::add(Node& node, std::string_view file_name) {
    const auto at = made_.find(file_name);
    (at == made_.end() ? made_[std::string(file_name)] : at->second).push_back(&node);
    if (node.name() != file_name) renamed_[&node] = file_name;
    if (node.parent()) add_place(node, *node.parent());
}

void MaNames::add_place(Node& child, const Node& parent, std::span<Node* const> left) {
    const std::string_view name = file_name_of(child);
    for (const Node* from : left) {
        const auto at = places_.find(place_key(*from, {}, name));
        if (at != places_.end() && at->second == &child) places_.erase(at);
    }
    const auto [at, is_new] = places_.try_emplace(place_key(parent, {}, name), &child);
    if (!is_new && at->second != &child) at->second = nullptr;
}

const std::string& MaNames::place_key(const Node& parent, std::string_view prefix, std::string_view name) const {
    const auto at = reinterpret_cast<std::uintptr_t>(&parent);
    key_.assign(reinterpret_cast<const char*>(&at), sizeof at);
    return key_.append(prefix).append(name);
}

// Follows a path from the top, or from the only node with its first name; null where it can't be followed.
Node* MaNames::walk(std::string_view path, std::string_view prefix) const {
    Node* here = nullptr;
    if (path.starts_with('|')) {
        here = &scene_.world();
    } else {
        const auto head = made_.find(std::string(prefix).append(path.substr(0, path.find('|'))));
        if (head == made_.end() || head->second.size() != 1) return nullptr;
        here = head->second.front();
    }
    for (std::size_t bar = path.find('|'); here && bar != std::string_view::npos; bar = path.find('|')) {
        path.remove_prefix(bar + 1);
        const auto at = places_.find(place_key(*here, prefix, path.substr(0, path.find('|'))));
        here = at == places_.end() ? nullptr : at->second;
    }
    return here;
}

std::string_view MaNames::file_name_of(const Node& node) const {
    const auto at = renamed_.find(&node);
    return at == renamed_.end() ? std::string_view(node.name()) : std::string_view(at->second);
}

bool MaNames::stands_under(const Node& node, std::string_view path, std::string_view prefix) const {
    reached_.assign(1, &node);
    const bool full = path.empty() || path.front() == '|';
    while (!path.empty()) {
        const std::string_view name = take_last(path);
        if (name.empty()) break;
        steps_left_ -= std::min(steps_left_, reached_.size());
        if (steps_left_ == 0) return false;
        further_.clear();
        for (const Node* at : reached_) {
            for (const Node* parent : at->parents()) {
                if (equals(file_name_of(*parent), prefix, name)) further_.push_back(parent);
            }
        }
        if (further_.empty()) return false;
        reached_.swap(further_);
    }
    const auto at_top = [](const Node* at) { return at->parent() && at->parent()->is_world(); };
    return !full || std::ranges::any_of(reached_, at_top);
}

Node* MaNames::find(std::string_view name, std::string_view prefix) const {
    std::string_view path = name;
    const bool plain = name.find('|') == std::string_view::npos;
    std::string_view last = take_last(path);
    if (last.starts_with(':')) {
        last.remove_prefix(1);
        prefix = {};
    }
    const auto at = prefix.empty() ? made_.find(last) : made_.find(std::string(prefix) + std::string(last));
    if (at != made_.end()) {
        const std::vector<Node*>& found = at->second;
        Node* const only = found.size() == 1 ? found.front() : nullptr;
        if (plain) return only;
        if (Node* there = walk(name, prefix)) return there;
        if (steps_left_ < found.size()) return only;
        const auto fits = [&](const Node* node) { return stands_under(*node, path, prefix); };
        const auto first = std::ranges::find_if(found, fits);
        const bool one = first != found.end() && std::find_if(first + 1, found.end(), fits) == found.end();
        if (steps_left_ == 0) return only; // of those that were left out another may fit
        if (first != found.end()) return one ? *first : nullptr;
        Node* const of_every_scene = scene_.default_node(last);
        return of_every_scene && fits(of_every_scene) ? of_every_scene : only;
    }
    const Result<Node*> of_scene = scene_.find_node(plain ? last : name);
    return of_scene ? *of_scene : nullptr;
}

Node* MaNames::find_exactly(std::string_view name, std::string_view prefix) const {
    return name.find('|') == std::string_view::npos ? find(name, prefix) : walk(name, prefix);
}

} // namespace headless
