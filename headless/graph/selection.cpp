#include "headless/graph/selection.h"

#include <algorithm>

namespace headless {

bool SelectionList::contains(const SelectionItem& item) const {
    const auto [begin, end] = of_node_.equal_range(item.node.serial);
    return std::any_of(begin, end, [&](const auto& entry) { return entry.second == item; });
}

bool SelectionList::add(const SelectionItem& item) {
    if (contains(item)) return false;
    items_.push_back(item);
    of_node_.emplace(item.node.serial, item);
    return true;
}

bool SelectionList::add_first(const SelectionItem& item) {
    if (contains(item)) return false;
    items_.insert(items_.begin(), item);
    of_node_.emplace(item.node.serial, item);
    return true;
}

bool SelectionList::remove(const SelectionItem& item) {
    const auto [begin, end] = of_node_.equal_range(item.node.serial);
    const auto entry = std::find_if(begin, end, [&](const auto& at) { return at.second == item; });
    if (entry == end) return false;
    of_node_.erase(entry);
    const auto found = std::find(items_.rbegin(), items_.rend(), item); // what came last often goes first
    items_.erase(std::next(found).base());
    return true;
}

void SelectionList::remove_node(NodeHandle node) {
    if (of_node_.erase(node.serial) == 0) return;
    std::erase_if(items_, [node](const SelectionItem& item) { return item.node == node; });
}

void SelectionList::clear() {
    items_.clear();
    of_node_.clear();
}

} // namespace headless
