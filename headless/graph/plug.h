#pragma once

#include "headless/graph/node_type.h"

#include <array>
#include <compare>

namespace headless {

/// The largest index of an element, so that one behind it can be counted to.
inline constexpr std::int32_t last_index = 0x7FFFFFFE;

/// Which attribute of a node, and which elements of the arrays on the way to it, outermost first.
/// With as many indices as the attribute has array levels it is a value or an element; with one fewer it is
/// the whole array.
struct PlugKey {
    AttributeId attribute = no_attribute;
    std::uint8_t depth = 0; ///< how many of the indices count; the others are 0
    std::array<std::int32_t, max_array_levels> index{};

    std::strong_ordering operator<=>(const PlugKey& other) const = default; // NOLINT(modernize-use-nullptr)
    bool operator==(const PlugKey& other) const = default;
    PlugKey with_attribute(AttributeId id) const { return {id, depth, index}; }
    PlugKey element(int logical_index) const; ///< one level further in; unchanged at the deepest level
};

/// An attribute of a node in the scene. A plug doesn't keep its node alive: one is for use at once, and what is
/// kept across edits is a node handle and a key.
struct Plug {
    Node* node = nullptr;
    PlugKey key;

    explicit operator bool() const { return node != nullptr; }
    bool operator==(const Plug&) const = default;

    const Attribute& attribute() const;
    bool is_array() const; ///< a whole array, not one element of it
    bool is_compound() const;
    bool is_locked() const;  ///< it, or what it is a part of
    Plug child(int i) const; ///< i-th child of a compound; null plug when there is none
    Plug child(AttributeId id) const { return {node, key.with_attribute(id)}; }
    Plug parent() const; ///< the compound (element) that holds it; null plug for a top-level one
    Plug element(int logical_index) const { return {node, key.element(logical_index)}; }
    /// ".target[0].targetWeight", by long or by short names.
    std::string path(bool short_names = false) const;
    /// "node.target[0].targetWeight".
    std::string name(bool short_names = false) const;
};

/// A piece of an attribute path: a name, and the element or range of elements behind it.
struct PathSegment {
    std::string_view name;
    bool indexed = false;
    std::int32_t first = 0;
    std::int32_t last = 0; ///< equals `first` for a single element; -1 in "[*]" for both
};

/// Takes an index, or a count of elements, off the front of a text; false where none stands.
bool read_index(std::string_view& text, std::int32_t& out);
/// What stands in a pair of brackets: "3", "0:7" or "*". False for anything else, indices above `last_index`, and a
/// range that runs backwards.
bool read_range(std::string_view inside, PathSegment& out);

/// Splits ".a[3].b[0:7].c" (the leading dot may be missing). False when it isn't of that form, a name isn't one that
/// an attribute may have, an index is negative, or a range stands anywhere but in the last piece.
bool split_attribute_path(std::string_view path, std::vector<PathSegment>& out);

} // namespace headless
