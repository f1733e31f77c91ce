#include "headless/graph/plug.h"

#include "headless/graph/names.h"
#include "headless/graph/node.h"

#include <algorithm>
#include <charconv>

namespace headless {

PlugKey PlugKey::element(int logical_index) const {
    PlugKey out = *this;
    if (out.depth < max_array_levels) out.index[out.depth++] = logical_index;
    return out;
}

const Attribute& Plug::attribute() const {
    return node->attribute(key.attribute);
}

bool Plug::is_array() const {
    return attribute().array && key.depth < attribute().array_levels;
}

bool Plug::is_compound() const {
    return attribute().kind == AttributeKind::compound;
}

bool Plug::is_locked() const {
    for (AttributeId id = key.attribute; id != no_attribute; id = node->attribute(id).parent) {
        if (node->flags(id).locked) return true;
    }
    return false;
}

Plug Plug::child(int i) const {
    const auto& children = attribute().children;
    return i >= 0 && i < static_cast<int>(children.size()) ? child(children[i]) : Plug{};
}

Plug Plug::parent() const {
    const Attribute& mine = attribute();
    if (mine.parent == no_attribute) return {};
    const int levels = node->attribute(mine.parent).array_levels;
    PlugKey out{mine.parent, static_cast<std::uint8_t>(std::min<int>(levels, key.depth)), {}};
    std::copy_n(key.index.begin(), out.depth, out.index.begin());
    return {node, out};
}

std::string Plug::path(bool short_names) const {
    std::string out;
    int level = attribute().array_levels;
    for (AttributeId id = key.attribute; id != no_attribute; id = node->attribute(id).parent) {
        const Attribute& at = node->attribute(id);
        std::string piece = "." + (short_names ? at.short_name : at.long_name);
        if (at.array) {
            --level;
            if (level < key.depth) piece += "[" + std::to_string(key.index[level]) + "]";
        }
        out.insert(0, piece);
    }
    return out;
}

std::string Plug::name(bool short_names) const {
    return node->name() + path(short_names);
}

bool read_index(std::string_view& text, std::int32_t& out) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    if (error != std::errc() || out < 0 || out > last_index) return false;
    text.remove_prefix(end - text.data());
    return true;
}

bool read_range(std::string_view inside, PathSegment& out) {
    out.indexed = true;
    if (inside == "*") {
        out.first = out.last = -1;
        return true;
    }
    if (!read_index(inside, out.first)) return false;
    out.last = out.first;
    if (inside.empty()) return true;
    if (inside.front() != ':') return false;
    inside.remove_prefix(1);
    return read_index(inside, out.last) && inside.empty() && out.last >= out.first;
}

namespace {

bool read_segment(std::string_view piece, PathSegment& out) {
    const std::size_t bracket = piece.find('[');
    out.name = piece.substr(0, bracket);
    if (!is_attribute_name(out.name)) return false;
    if (bracket == std::string_view::npos) return true;
    if (piece.back() != ']') return false;
    return read_range(piece.substr(bracket + 1, piece.size() - bracket - 2), out);
}

} // namespace

bool split_attribute_path(std::string_view path, std::vector<PathSegment>& out) {
    static constexpr std::size_t max_segments = 32;
    out.clear();
    if (!path.empty() && path.front() == '.') path.remove_prefix(1);
    for (bool last = false; !last;) {
        const std::size_t dot = path.find('.');
        last = dot == std::string_view::npos;
        PathSegment segment;
        if (out.size() == max_segments || !read_segment(path.substr(0, dot), segment)) return false;
        if (!last && segment.indexed && (segment.first != segment.last || segment.first < 0)) return false;
        out.push_back(segment);
        if (!last) path.remove_prefix(dot + 1);
    }
    return true;
}

} // namespace headless
