#include "headless/animation/key_times.h"

#include <algorithm>

namespace headless {

KeyTimes::KeyTimes(std::vector<double> times)
    : table_(std::make_shared<std::vector<double>>(std::move(times))), size_(table_->size()) {}

std::span<const double> KeyTimes::view() const {
    return size_ == 0 ? std::span<const double>() : std::span<const double>(table_->data(), size_);
}

void KeyTimes::own() {
    if (!table_) {
        table_ = std::make_shared<std::vector<double>>();
    } else if (table_.use_count() > 1) {
        const std::span<const double> mine = view();
        table_ = std::make_shared<std::vector<double>>(mine.begin(), mine.end());
    }
    table_->resize(size_);
}

void KeyTimes::push_back(double time) {
    if (!table_) own();
    if (table_->size() > size_) {
        if ((*table_)[size_] == time) {
            ++size_;
            return;
        }
        own();
    }
    push_back_tight(*table_, time);
    ++size_;
}

void KeyTimes::insert(std::size_t at, double time) {
    if (at == size_) return push_back(time);
    own();
    push_back_tight(*table_, time);
    ++size_;
    std::rotate(table_->begin() + static_cast<std::ptrdiff_t>(at), table_->end() - 1, table_->end());
}

void KeyTimes::set(std::size_t at, double time) {
    if ((*table_)[at] == time) return;
    own();
    (*table_)[at] = time;
}

void KeyTimes::erase(std::size_t first, std::size_t last) {
    own();
    table_->erase(table_->begin() + static_cast<std::ptrdiff_t>(first),
                  table_->begin() + static_cast<std::ptrdiff_t>(last));
    size_ = table_->size();
}

void KeyTimes::share(const KeyTimes& other) {
    table_ = other.table_;
    size_ = 0;
}

} // namespace headless
