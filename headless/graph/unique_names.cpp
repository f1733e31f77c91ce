#include "headless/graph/unique_names.h"

#include <vector>

namespace headless {
namespace {

// Paths are of one class as long as as many of their last names are the same. A step takes a name more into account:
// the class of the path above. What is alone in a class has names enough, and stays alone in it.
class NameClasses {
public:
    explicit NameClasses(const Scene& scene) {
        NameMap<std::uint32_t> class_of_name;
        paths_.push_back({&scene.world(), 0, of_the_world, of_the_world, true});
        for (std::uint32_t above = 0; above < paths_.size(); ++above) {
            const Node* const parent = paths_[above].node;
            const bool is_first = paths_[above].is_first;
            for (const Node* child : parent->children()) {
                const auto [at, is_new] = class_of_name.try_emplace(child->name(), next_class_);
                if (is_new) ++next_class_;
                paths_.push_back({child, above, at->second, at->second, is_first && child->parent() == parent});
            }
        }
        open_.resize(paths_.size() - 1);
        for (std::uint32_t i = 0; i < open_.size(); ++i) open_[i] = i + 1;
        close_alone(1, nullptr);
    }

    void work_out(std::unordered_map<const Node*, int>& needed) {
        for (int names = 2; !open_.empty(); ++names) {
            take_in_parents();
            close_alone(names, &needed);
        }
    }

private:
    struct Path {
        const Node* node;
        std::uint32_t above;
        std::uint32_t name;
        std::uint32_t of_class;
        bool is_first; // of its node's
    };

    void take_in_parents() {
        std::unordered_map<std::uint64_t, std::uint32_t> class_of_pair;
        std::vector<std::uint32_t> next(open_.size());
        for (std::size_t i = 0; i < open_.size(); ++i) {
            const Path& path = paths_[open_[i]];
            const std::uint64_t pair = (std::uint64_t{path.name} << 32) | paths_[path.above].of_class;
            const auto [at, is_new] = class_of_pair.try_emplace(pair, next_class_);
            if (is_new) ++next_class_;
            next[i] = at->second;
        }
        for (std::size_t i = 0; i < open_.size(); ++i) paths_[open_[i]].of_class = next[i];
    }

    void close_alone(int names, std::unordered_map<const Node*, int>* needed) {
        std::unordered_map<std::uint32_t, int> members;
        for (const std::uint32_t i : open_) ++members[paths_[i].of_class];
        std::erase_if(open_, [&](std::uint32_t i) {
            const Path& path = paths_[i];
            const bool alone = members[path.of_class] == 1;
            if (alone && needed && path.is_first) needed->emplace(path.node, names);
            return alone;
        });
    }

    static constexpr std::uint32_t of_the_world = 0;
    std::uint32_t next_class_ = 1;
    std::vector<Path> paths_;         // the world's first
    std::vector<std::uint32_t> open_; // those that share their class
};

} // namespace

UniqueNames::UniqueNames(const Scene& scene) {
    NameClasses(scene).work_out(names_needed_);
}

std::string UniqueNames::of(const Node& node) const {
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
