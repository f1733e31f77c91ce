#include "headless/graph/selection.h"

#include <algorithm>

namespace headless {

bool SelectionList::contains(const SelectionItem& item) const {
    return entries_of_.contains(item.node.serial) && std::ranges::find(items_, item) != items_.end();
}

bool SelectionList::add(const SelectionItem& item) {
    if (contains(item)) return false;
    items_.push_back(item);
    ++entries_of_[item.node.serial];
    return true;
}

bool SelectionList::add_first(const SelectionItem& item) {
    if (contains(item)) return false;
    items_.insert(items_.begin(), item);
    ++entries_of_[item.node.serial];
    return true;
}

bool SelectionList::remove(const SelectionItem& item) {
    if (!entries_of_.contains(item.node.serial)) return false;
    const auto found = std::find(items_.rbegin(), items_.rend(), item); // what came last often goes first
    if (found == items_.rend()) return false;
    items_.erase(std::next(found).base());
    if (--entries_of_[item.node.serial] == 0) entries_of_.erase(item.node.serial);
    return true;
}

void SelectionList::remove_node(NodeHandle node) {
    if (entries_of_.erase(node.serial) == 0) return;
    std::erase_if(items_, [node](const SelectionItem& item) { return item.node == node; });
}

void SelectionList::clear() {
    items_.clear();
    entries_of_.clear();
}

} // namespace headless
