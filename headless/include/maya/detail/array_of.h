#pragma once

#include <maya/MStatus.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace headless {

/// What the host's arrays have in common. An index past the end reads, and writes to, a spare element.
template<typename T>
class ArrayOf {
public:
    ArrayOf() = default;
    ArrayOf(const T source[], unsigned int count) : items_(source, source + count) {}
    explicit ArrayOf(unsigned int size) : items_(size) {}
    ArrayOf(unsigned int size, const T& value) : items_(size, value) {}

    T& operator[](unsigned int i) { return i < items_.size() ? items_[i] : (spare_ = T()); }
    const T& operator[](unsigned int i) const { return i < items_.size() ? items_[i] : (spare_ = T()); }
    unsigned int length() const { return static_cast<unsigned int>(items_.size()); }
    MStatus setLength(unsigned int size) {
        items_.resize(size);
        return MStatus::kSuccess;
    }
    MStatus set(const T& value, unsigned int i) {
        if (i >= items_.size()) return MStatus::kInvalidParameter;
        items_[i] = value;
        return MStatus::kSuccess;
    }
    MStatus append(const T& value) {
        items_.push_back(value);
        return MStatus::kSuccess;
    }
    /// Puts a value before the `i`-th; `i` may be the length.
    MStatus insert(const T& value, unsigned int i) {
        if (i > items_.size()) return MStatus::kInvalidParameter;
        items_.insert(items_.begin() + i, value);
        return MStatus::kSuccess;
    }
    MStatus remove(unsigned int i) {
        if (i >= items_.size()) return MStatus::kInvalidParameter;
        items_.erase(items_.begin() + i);
        return MStatus::kSuccess;
    }
    MStatus copy(const ArrayOf& other) {
        items_ = other.items_;
        return MStatus::kSuccess;
    }
    MStatus clear() {
        items_.clear();
        return MStatus::kSuccess;
    }
    MStatus get(T out[]) const {
        std::copy(items_.begin(), items_.end(), out);
        return MStatus::kSuccess;
    }
    void setSizeIncrement(unsigned int) {}
    unsigned int sizeIncrement() const { return 1; }

private:
    friend struct Access;
    std::vector<T> items_;
    mutable T spare_{};
};

} // namespace headless
