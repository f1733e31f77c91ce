#pragma once

#include <memory>
#include <span>
#include <vector>

namespace headless {

/// The times of a curve's keys, in the order of the keys. Curves that are keyed together have the same times, so the
/// table behind them is shared: a copy costs nothing, appending what a sharer has appended already costs nothing,
/// and any other edit first takes a table of its own.
class KeyTimes {
public:
    KeyTimes() = default;
    explicit KeyTimes(std::vector<double> times);

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    double operator[](std::size_t i) const { return (*table_)[i]; }
    double front() const { return (*table_)[0]; }
    double back() const { return (*table_)[size_ - 1]; }
    std::span<const double> view() const;

    void push_back(double time);
    void insert(std::size_t at, double time);
    void set(std::size_t at, double time);
    void erase(std::size_t first, std::size_t last); ///< up to but without `last`
    /// Takes the table of another as its own to append to. Only for one that is empty.
    void share(const KeyTimes& other);
    bool shares_with(const KeyTimes& other) const { return table_ && table_ == other.table_; }

private:
    void own();

    std::shared_ptr<std::vector<double>> table_; // may be longer than this one's part of it
    std::size_t size_ = 0;
};

/// Makes room for one more by a quarter instead of by doubling: keys of hundreds of curves fill most of a scene.
template<typename T>
void push_back_tight(std::vector<T>& list, const T& value) {
    if (list.size() == list.capacity()) list.reserve(list.size() + list.size() / 4 + 4);
    list.push_back(value);
}

} // namespace headless
