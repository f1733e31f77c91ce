#include "headless/geometry/components.h"

#include <algorithm>
#include <charconv>

namespace headless {

std::vector<IndexRange> elements_in_order(const Value& components, std::string_view kind, std::size_t count) {
    std::vector<IndexRange> named;
    const auto* raw = components.get_if<RawTokens>();
    if (!raw) return named;
    for (std::string_view word : raw->tokens) {
        if (word.starts_with('"'))
            word = word.substr(1, word.size() - (word.ends_with('"') && word.size() > 1 ? 2 : 1));
        if (!word.starts_with(kind) || !word.substr(kind.size()).starts_with('[') || !word.ends_with(']')) continue;
        const std::string_view inside = word.substr(kind.size() + 1, word.size() - kind.size() - 2);
        if (inside == "*") {
            named.push_back({0, count});
            continue;
        }
        std::size_t first = 0;
        const auto [end, error] = std::from_chars(inside.data(), inside.data() + inside.size(), first);
        if (error != std::errc()) continue;
        std::size_t last = first;
        const std::string_view rest(end, static_cast<std::size_t>(inside.data() + inside.size() - end));
        if (!rest.empty() &&
            (rest[0] != ':' || std::from_chars(rest.data() + 1, rest.data() + rest.size(), last).ec != std::errc()))
            continue;
        if (first <= last && first < count) named.push_back({first, std::min(last, count - 1) + 1});
    }
    return named;
}

std::vector<IndexRange> elements_of(const Value& components, std::string_view kind, std::size_t count) {
    std::vector<IndexRange> named = elements_in_order(components, kind, count);
    // Many words may name the same elements, so they are brought together before anybody goes over them.
    std::ranges::sort(named, {}, &IndexRange::first);
    std::vector<IndexRange> out;
    for (const IndexRange& range : named) {
        if (out.empty() || range.first > out.back().end)
            out.push_back(range);
        else
            out.back().end = std::max(out.back().end, range.end);
    }
    return out;
}

} // namespace headless
