#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace headless {

/// Hashes texts so that a map by `std::string` is asked with a view, without making a string for the question.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

template<typename T>
using NameMap = std::unordered_map<std::string, T, NameHash, std::equal_to<>>;

} // namespace headless
