#include "headless/files/ma_values.h"

#include <algorithm>
#include <set>

namespace headless {
namespace {

// Whether a type goes behind "-at" of `addAttr`; the others, which are data of a sort, go behind "-dt".
bool is_plain_type(const Attribute& at, std::string_view type) {
    if (at.kind == AttributeKind::untyped) return type == "generic" || type == "typed" || type == "addr";
    return type != "string" && type != "matrix";
}

void write_declaration(MaText& out, const Node& node, const Attribute& at) {
    out.text("\taddAttr -ci true -sn ").quoted(at.short_name).text(" -ln ").quoted(at.long_name);
    if (at.array) out.text(" -m");
    if (at.parent != no_attribute) out.text(" -p ").quoted(node.attribute(at.parent).long_name);
    const std::string_view type = type_word(at);
    const bool plain = is_plain_type(at, type);
    out.text(plain ? " -at " : " -dt ").quoted(type);
    if (plain && at.kind == AttributeKind::compound)
        out.text(" -nc ").integer(static_cast<std::int64_t>(at.children.size()));
    if (at.default_value.is_number() && at.default_value.number() != 0.0)
        out.text(" -dv ").number(at.default_value.number(), at.kind);
    if (!at.enum_names.empty()) {
        std::string names = at.enum_names.front();
        for (std::size_t i = 1; i < at.enum_names.size(); ++i) names += ":" + at.enum_names[i];
        if (at.enum_names.back().empty()) names += ":"; // a colon at the end begins no further name
        out.text(" -en ").quoted(names);
    }
    out.end_statement();
}

bool is_quantity(AttributeKind kind) {
    return kind >= AttributeKind::boolean && kind <= AttributeKind::time;
}

const char* yes_or_no(bool value) {
    return value ? "yes" : "no";
}

class ValueWriter {
public:
    ValueWriter(MaText& out, const Node& node) : out_(out), node_(node), stored_(node.stored()) {
        untyped_words_first();
    }

    Result<void> write() {
        for (std::size_t i = 0; i < stored_.size();) {
            const std::size_t length = write_at(i);
            if (out_.met_no_number()) return not_a_number(stored_[i]);
            i += length;
        }
        return {};
    }

private:
    // Behind an element of a type, words without one would be read as of that type too.
    void untyped_words_first() {
        const auto untyped = [this](const PlugKey& key) {
            const Value value = node_.get(key);
            const auto* words = value.get_if<RawTokens>();
            return words && words->type.empty();
        };
        for (auto first = stored_.begin(); first != stored_.end();) {
            const auto other = [id = first->attribute](const PlugKey& key) { return key.attribute != id; };
            const auto last = std::find_if(first, stored_.end(), other);
            if (node_.attribute(first->attribute).array) std::stable_partition(first, last, untyped);
            first = last;
        }
    }

    Error not_a_number(const PlugKey& key) const {
        return Error{"'" + node_.name() + file_path(plug(key)) +
                     "' holds a number that isn't finite and can't be saved"};
    }
    Plug plug(const PlugKey& key) const { return {const_cast<Node*>(&node_), key}; }

    // Writes what stands at a place of the list; how many places that took.
    std::size_t write_at(std::size_t i) {
        const PlugKey& key = stored_[i];
        const Attribute& at = node_.attribute(key.attribute);
        if (at.output) return 1;
        if (write_with_siblings(key, at)) return 1;
        const std::size_t length = run_length(i);
        open(key, length);
        if (is_faces(node_.get(key))) out_.text(" -type \"polyFaces\"");
        for (std::size_t k = 0; k < length; ++k) value(at.kind, node_.get(stored_[i + k]), length > 1 || at.array);
        out_.end_statement();
        return length;
    }

    void open(const PlugKey& key, std::size_t length) {
        std::string path = file_path(plug(key));
        out_.text("\tsetAttr ");
        if (length > 1) {
            out_.text("-s ").integer(static_cast<std::int64_t>(length)).text(" ");
            const std::int64_t last = key.index[key.depth - 1] + static_cast<std::int64_t>(length) - 1;
            path.back() = ':';
            path += std::to_string(last) + "]";
        }
        out_.text("\"").text(path).text("\"");
    }

    // The two or three numbers of a compound go on one line, at the first of them that is met.
    bool write_with_siblings(const PlugKey& key, const Attribute& at) {
        if (at.parent == no_attribute || at.array || !is_quantity(at.kind)) return false;
        const Attribute& compound = node_.attribute(at.parent);
        const auto& children = compound.children;
        if (children.size() < 2 || children.size() > 3) return false;
        if (!std::ranges::all_of(children, [&](AttributeId id) {
                return is_quantity(node_.attribute(id).kind) && !node_.attribute(id).array;
            }))
            return false;
        const PlugKey whole = key.with_attribute(at.parent);
        if (!written_.insert(whole).second) return true;
        open(whole, 1);
        if (key.depth == 0) out_.text(children.size() == 3 ? " -type \"double3\"" : " -type \"double2\"");
        for (const AttributeId id : children) value(node_.attribute(id).kind, node_.get(key.with_attribute(id)), true);
        out_.end_statement();
        return true;
    }

    static bool is_faces(const Value& value) {
        const auto* raw = value.get_if<RawTokens>();
        return raw && raw->type == "polyFaces";
    }

    // Values that can share a range: as many numbers each, or faces.
    static std::size_t shape(const Value& value) {
        if (value.is_number()) return 1;
        if (value.get_if<Vector3>()) return 3;
        if (const auto* list = value.get_if<Value::Doubles>()) return list->size();
        constexpr std::size_t faces = ~std::size_t{0};
        return is_faces(value) ? faces : 0;
    }

    // How many elements of one array stand here side by side and fit one statement.
    std::size_t run_length(std::size_t i) const {
        constexpr std::size_t longest = 500;
        const PlugKey& first = stored_[i];
        const Attribute& at = node_.attribute(first.attribute);
        if (!at.array || first.depth != at.array_levels) return 1;
        const std::size_t wanted = shape(node_.get(first));
        if (wanted == 0) return 1;
        std::size_t length = 1;
        PlugKey next = first;
        for (; length < longest && i + length < stored_.size(); ++length) {
            ++next.index[next.depth - 1];
            if (stored_[i + length] != next || shape(node_.get(next)) != wanted) break;
        }
        return length;
    }

    void value(AttributeKind kind, const Value& value, bool bare);
    void numbers(std::span<const double> list, bool bare, std::string_view list_type);
    void raw(const RawTokens& tokens);

    MaText& out_;
    const Node& node_;
    std::vector<PlugKey> stored_;
    std::set<PlugKey> written_; // compounds
};

// `bare` where no type stands before the values: in ranges and elements, and inside a compound.
void ValueWriter::value(AttributeKind kind, const Value& value, bool bare) {
    if (const auto* truth = value.get_if<bool>()) {
        out_.gap().text(yes_or_no(*truth));
    } else if (const auto* count = value.get_if<std::int64_t>()) {
        out_.gap().integer(*count);
    } else if (const auto* number = value.get_if<double>()) {
        out_.gap().number(*number, kind);
    } else if (const auto* triple = value.get_if<Vector3>()) {
        const double list[] = {triple->x, triple->y, triple->z};
        numbers(list, bare, "");
    } else if (const auto* text = value.get_if<std::string>()) {
        out_.text(" -type \"string\" ").quoted(*text);
    } else if (const auto* matrix = value.get_if<Matrix>()) {
        out_.text(" -type \"matrix\"");
        for (const auto& row : matrix->m) {
            for (const double element : row) out_.gap().number(element);
        }
    } else if (const auto* list = value.get_if<Value::Doubles>()) {
        numbers(*list, bare, "doubleArray");
    } else if (const auto* integers = value.get_if<Value::Integers>()) {
        out_.text(" -type \"Int32Array\"").gap().integer(static_cast<std::int64_t>(integers->size()));
        for (const std::int64_t element : *integers) out_.gap().integer(element);
    } else if (const auto* texts = value.get_if<Value::Texts>()) {
        out_.text(" -type \"stringArray\"").gap().integer(static_cast<std::int64_t>(texts->size()));
        for (const std::string& element : *texts) out_.gap().quoted(element);
    } else if (const auto* tokens = value.get_if<RawTokens>()) {
        raw(*tokens);
    }
}

void ValueWriter::numbers(std::span<const double> list, bool bare, std::string_view list_type) {
    if (list.size() >= 2 && list.size() <= 4) {
        if (!bare) out_.text(" -type \"double").integer(static_cast<std::int64_t>(list.size())).text("\"");
    } else if (!bare) {
        out_.text(" -type ").quoted(list_type).gap().integer(static_cast<std::int64_t>(list.size()));
    }
    for (const double element : list) out_.gap().number(element);
}

void ValueWriter::raw(const RawTokens& tokens) {
    // The type of faces stands once, before the first of a range.
    if (!tokens.type.empty() && tokens.type != "polyFaces") out_.text(" -type ").quoted(tokens.type);
    for (const std::string& token : tokens.tokens) out_.gap().text(token);
}

bool is_marked(const AttributeFlags& flags) {
    return flags.locked || flags.keyable || flags.channel_box;
}

// Attributes that nothing declares stand in the order in which a file happened to name them; by name, the lines are
// the same however they came in. Which of them are arrays shows by an index alone.
void write_marks(MaText& out, const Node& node) {
    std::vector<std::pair<std::string, AttributeId>> marked;
    for (AttributeId id = 0; id < node.attribute_count(); ++id) {
        if (!is_marked(node.flags(id))) continue;
        const Attribute& at = node.attribute(id);
        const std::uint8_t depth = at.raw ? at.array_levels : 0;
        marked.emplace_back(file_path({const_cast<Node*>(&node), PlugKey{id, depth, {}}}), id);
    }
    const auto undeclared = std::stable_partition(marked.begin(), marked.end(),
                                                  [&](const auto& entry) { return !node.attribute(entry.second).raw; });
    std::sort(undeclared, marked.end());
    for (const auto& [path, id] : marked) {
        const AttributeFlags flags = node.flags(id);
        const auto on_or_off = [](bool value) { return value ? "on" : "off"; };
        out.text("\tsetAttr");
        if (flags.locked) out.text(" -l on");
        if (flags.keyable) out.text(" -k ").text(on_or_off(*flags.keyable));
        if (flags.channel_box) out.text(" -cb ").text(on_or_off(*flags.channel_box));
        out.text(" \"").text(path).text("\"").end_statement();
    }
}

} // namespace

bool has_attributes_of_its_own(const Node& node) {
    if (!node.stored().empty()) return true;
    for (AttributeId id = 0; id < node.attribute_count(); ++id) {
        const Attribute& at = node.attribute(id);
        if ((at.dynamic && !at.raw) || is_marked(node.flags(id))) return true;
    }
    return false;
}

std::string file_path(const Plug& plug) {
    std::string out;
    int level = plug.attribute().array_levels;
    for (AttributeId id = plug.key.attribute; id != no_attribute; id = plug.node->attribute(id).parent) {
        const Attribute& at = plug.node->attribute(id);
        // Undeclared attributes are known by their whole path alone.
        if (!at.array && !at.raw && id != plug.key.attribute) continue;
        std::string piece = "." + at.short_name;
        if (at.array && --level < plug.key.depth) piece += "[" + std::to_string(plug.key.index[level]) + "]";
        out.insert(0, piece);
    }
    return out;
}

Result<void> write_attributes(MaText& out, const Node& node) {
    for (AttributeId id = static_cast<AttributeId>(node.type().attributes().size()); id < node.attribute_count();
         ++id) {
        if (const Attribute& at = node.attribute(id); !at.raw) write_declaration(out, node, at);
    }
    if (Result<void> done = ValueWriter(out, node).write(); !done) return done;
    if (Result<void> done = write_keys(out, node); !done) return done;
    if (Result<void> done = write_mesh(out, node); !done) return done;
    write_marks(out, node);
    return {};
}

} // namespace headless
