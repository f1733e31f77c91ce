#pragma once

#include "headless/graph/dag_path.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace headless {

/// An entry of a selection: a way to a DAG node, or a node outside the DAG; perhaps one plug of it, or
/// components ("vtx[0:3]"), which are kept as their text.
struct SelectionItem {
    DagPath path;    ///< null for a node outside the DAG
    NodeHandle node; ///< the leaf, for a path
    std::optional<PlugKey> plug;
    std::string components;

    bool operator==(const SelectionItem&) const = default;
};

/// An ordered list without duplicates.
class SelectionList {
public:
    const std::vector<SelectionItem>& items() const { return items_; }
    bool contains(const SelectionItem& item) const;
    /// Appends what isn't there yet; what is there keeps its place.
    bool add(const SelectionItem& item);
    bool add_first(const SelectionItem& item);
    bool remove(const SelectionItem& item);
    void remove_node(NodeHandle node); ///< every entry of it
    void clear();

private:
    std::vector<SelectionItem> items_;
    std::unordered_multimap<std::uint32_t, SelectionItem> of_node_; // the same by serial of the node, to be found by it
};

} // namespace headless
