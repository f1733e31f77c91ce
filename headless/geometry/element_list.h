#pragma once

#include <cstddef>
#include <map>
#include <vector>

namespace headless {

/// The elements of an array attribute by their index. Those from 0 on without a gap stand in one block, the others
/// beside it, so that an element at index two billion costs no more than one at index 0.
template<typename T>
class ElementList {
public:
    /// From 0 up to the first gap.
    const std::vector<T>& block() const { return block_; }
    bool has_gap() const { return !others_.empty(); }
    std::size_t size() const { return block_.size() + others_.size(); }
    bool empty() const { return block_.empty() && others_.empty(); }

    const T* find(int index) const {
        if (index >= 0 && static_cast<std::size_t>(index) < block_.size())
            return &block_[static_cast<std::size_t>(index)];
        const auto at = others_.find(index);
        return at == others_.end() ? nullptr : &at->second;
    }

    /// The element, made where there is none. The index isn't negative.
    T& at(int index) {
        const auto place = static_cast<std::size_t>(index);
        if (place < block_.size()) return block_[place];
        if (place > block_.size()) return others_[index];
        block_.push_back(T{});
        T* const made = others_.empty() ? &block_.back() : nullptr;
        if (made) return *made;
        if (const auto own = others_.find(index); own != others_.end()) others_.erase(own);
        close_gap();
        return block_[place];
    }

    std::vector<int> indices() const {
        std::vector<int> out(block_.size());
        for (std::size_t i = 0; i < out.size(); ++i) out[i] = static_cast<int>(i);
        for (const auto& [index, value] : others_) out.push_back(index);
        return out;
    }

    /// Every element with its index, ascending.
    template<typename Visit>
    void each(Visit&& visit) const {
        for (std::size_t i = 0; i < block_.size(); ++i) visit(static_cast<int>(i), block_[i]);
        for (const auto& [index, value] : others_) visit(index, value);
    }

private:
    void close_gap() {
        while (!others_.empty() && static_cast<std::size_t>(others_.begin()->first) == block_.size()) {
            block_.push_back(std::move(others_.begin()->second));
            others_.erase(others_.begin());
        }
    }

    std::vector<T> block_;
    std::map<int, T> others_; // all of them behind the gap
};

} // namespace headless
