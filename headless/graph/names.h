#pragma once

#include "headless/graph/name_map.h"

#include <cstdint>
#include <span>
#include <vector>

namespace headless {

class Node;

/// A name as the host would take it: every character but letters, digits, "_" and ":" becomes "_", and so does a
/// digit in first place; empty namespaces are dropped. Empty when nothing is left to stand as a name.
std::string legal_name(std::string_view wanted);
/// Whether an attribute may have the name: letters, digits and "_" alone, so that no path reads it as anything else.
bool is_attribute_name(std::string_view name);
/// The part behind the last ":".
std::string_view without_namespaces(std::string_view name);
/// Whether a name fits a pattern: "*" any run and "?" any one character, neither crossing a ":".
bool matches_pattern(std::string_view pattern, std::string_view name);
inline bool is_pattern(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

/// The nodes of a scene by name. Nodes outside the DAG have a name each; DAG nodes share one with nobody under
/// the same parent and with no node outside the DAG, but nodes under different parents may share.
class NameIndex {
public:
    void add(Node& node);
    void remove(Node& node);
    void add_child(const Node& parent, Node& child);
    void remove_child(const Node& parent, Node& child);

    Node* find_outside_dag(std::string_view name) const;
    std::span<Node* const> find_in_dag(std::string_view name) const;
    Node* find_child(const Node& parent, std::string_view name) const;

    /// `wanted`, or the next name that is free for `self`: a trailing number is counted on ("arm" to "arm1",
    /// "arm09" to "arm10"). For a DAG node free means under all of `parents`; with no parents, in all the scene.
    std::string unique_name(const std::string& wanted, std::span<Node* const> parents, const Node* self) const;

private:
    // Numbers first to next - 1 behind a stem were all taken when last looked, so that making a thousand names
    // from one stem is no search over a thousand names each time.
    struct TakenRun {
        std::int64_t first = 0, next = 0;
    };

    bool is_free(std::string_view name, std::span<Node* const> parents, const Node* self) const;
    std::string numbered(const std::string& wanted, std::span<Node* const> parents, const Node* self) const;
    void forget_runs(std::string_view name);

    NameMap<Node*> outside_dag_;
    NameMap<std::vector<Node*>> in_dag_;
    std::unordered_map<const Node*, NameMap<Node*>> children_;
    mutable NameMap<std::unordered_map<const Node*, TakenRun>> runs_;
};

} // namespace headless
