#include "headless/graph/unique_names.h"

namespace headless {
namespace {

// Nodes are of one class as long as as many of the last names on their paths are the same. A step takes a name more
// into account: the class of the parent. Who is alone in a class has names enough, and stays alone in it.
class NameClasses {
public:
    explicit NameClasses(const Scene& scene) {
        NameMap<std::uint32_t> class_of_name;
        for (const Node* node : scene.nodes()) {
            if (!node->type().is_dag()) continue;
            const auto at = class_of_name.try_emplace(node->name(), next_class_);
            if (at.second) ++next_class_;
            index_.emplace(node, static_cast<std::uint32_t>(entries_.size()));
            entries_.push_back({node, at.first->second, at.first->second});
        }
        open_.resize(entries_.size());
        for (std::uint32_t i = 0; i < open_.size(); ++i) open_[i] = i;
        close_alone(1, nullptr);
    }

    void work_out(std::unordered_map<const Node*, int>& needed) {
        for (int names = 2; !open_.empty(); ++names) {
            take_in_parents();
            close_alone(names, &needed);
        }
    }

private:
    struct Entry {
        const Node* node;
        std::uint32_t name;
        std::uint32_t of_class;
    };

    std::uint32_t class_above(const Node& node) const {
        const auto parent = index_.find(node.parent());
        return parent == index_.end() ? of_the_world : entries_[parent->second].of_class;
    }

    void take_in_parents() {
        std::unordered_map<std::uint64_t, std::uint32_t> class_of_pair;
        std::vector<std::uint32_t> next(open_.size());
        for (std::size_t i = 0; i < open_.size(); ++i) {
            const Entry& entry = entries_[open_[i]];
            const std::uint64_t pair = (std::uint64_t{entry.name} << 32) | class_above(*entry.node);
            const auto at = class_of_pair.try_emplace(pair, next_class_);
            if (at.second) ++next_class_;
            next[i] = at.first->second;
        }
        for (std::size_t i = 0; i < open_.size(); ++i) entries_[open_[i]].of_class = next[i];
    }

    void close_alone(int names, std::unordered_map<const Node*, int>* needed) {
        std::unordered_map<std::uint32_t, int> members;
        for (const std::uint32_t i : open_) ++members[entries_[i].of_class];
        std::erase_if(open_, [&](std::uint32_t i) {
            const bool alone = members[entries_[i].of_class] == 1;
            if (alone && needed) needed->emplace(entries_[i].node, names);
            return alone;
        });
    }

    static constexpr std::uint32_t of_the_world = 0;
    std::uint32_t next_class_ = 1;
    std::vector<Entry> entries_;
    std::unordered_map<const Node*, std::uint32_t> index_;
    std::vector<std::uint32_t> open_; // entries that share their class
};

} // namespace

UniqueNames::UniqueNames(const Scene& scene) : scene_(scene) {
    if (!scene.has_instances()) NameClasses(scene).work_out(names_needed_);
}

std::string UniqueNames::of(const Node& node) const {
    if (scene_.has_instances()) return scene_.unique_name_of(node);
    const auto needed = names_needed_.find(&node);
    std::string out = node.name();
    if (needed == names_needed_.end()) return out;
    const Node* above = node.parent();
    for (int i = 1; i < needed->second; ++i, above = above->parent()) {
        if (above->is_world()) return "|" + out;
        out.insert(0, above->name() + "|");
    }
    return out;
}

} // namespace headless
