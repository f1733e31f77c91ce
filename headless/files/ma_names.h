#pragma once

#include "headless/graph/scene.h"

namespace headless {

/// How many names on the way up from nodes are looked at, over all of a file, for paths that can't be followed from the
/// top or from the only node with the first name. Few scenes have such paths; beyond that they name nothing.
inline constexpr std::size_t max_search_steps = 20'000'000;

/// What the names in a file stand for: nodes that the file made, whatever they came to be called in the scene, and
/// else nodes of the scene itself.
class MaNames {
public:
    explicit MaNames(Scene& scene, std::size_t search_steps = max_search_steps)
        : scene_(scene), steps_left_(search_steps) {}

    /// Notes a node under the name that the file gives it.
    void add(Node& node, std::string_view file_name);
    /// Notes that the file hung a node under a parent; away from others where it says from which.
    void add_place(Node& child, const Node& parent, std::span<Node* const> left = {});
    /// By name ("a", "ns:a") or path ("|a|b", "b|c"), each name of it behind `prefix`; null when there is none or
    /// more than one. A name with ":" in front means the scene's root namespace. A path that leads to none of the
    /// file's nodes stands for one that every scene has, or else for the only one of the file's with its last name.
    Node* find(std::string_view name, std::string_view prefix) const;
    /// The same, but a path stands for the node at that very place or for none.
    Node* find_exactly(std::string_view name, std::string_view prefix) const;

private:
    std::string_view file_name_of(const Node& node) const;
    const std::string& place_key(const Node& parent, std::string_view prefix, std::string_view name) const;
    Node* walk(std::string_view path, std::string_view prefix) const;
    bool stands_under(const Node& node, std::string_view path, std::string_view prefix) const;

    Scene& scene_;
    NameMap<std::vector<Node*>> made_;
    std::unordered_map<const Node*, std::string> renamed_;
    // By parent and name, so that the path of one of thousands with the same name is followed and not searched for;
    // null where a parent has two children whom the file gave one name.
    NameMap<Node*> places_;
    mutable std::string key_; // this and the next two are kept for their storage
    mutable std::vector<const Node*> reached_, further_;
    mutable std::size_t steps_left_;
};

} // namespace headless
