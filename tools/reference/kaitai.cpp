#include "tools/reference/kaitai.h"

#include "format/scene/root.h"

#include <array>
#include <cctype>
#include <cstdio>

namespace reference {
namespace {

/// VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_INT32> becomes named_int32.
std::string type_id(const std::string& name) {
    std::string id;
    for (const char c : name) {
        if (c != '>') id += c == '<' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    for (const std::string_view word : {"vor2_", "animatable_"}) {
        for (std::size_t at = 0; (at = id.find(word, at)) != std::string::npos;) id.erase(at, word.size());
    }
    return id;
}

std::string quoted(std::string_view text) {
    std::string line = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') line += '\\';
        line += c;
    }
    return line + "\"";
}

/// A version as it compares: the very number that four bytes hold.
std::string exact(f32 version) {
    std::array<char, 32> text{};
    (void)std::snprintf(text.data(), text.size(), "%.17g", static_cast<double>(version));
    return text.data();
}

std::string condition_of(const Field& field) {
    std::string condition;
    if (field.since) condition = "_root.version >= " + exact(*field.since);
    if (field.up_to) condition += (condition.empty() ? "" : " and ") + ("_root.version <= " + exact(*field.up_to));
    return condition;
}

std::string type_of(const Field& field) {
    switch (field.type) {
    case FieldType::unsigned_number:
    case FieldType::flag:
        return "u4";
    case FieldType::signed_number:
        return "s4";
    case FieldType::real:
        return "f4";
    case FieldType::long_real:
        return "f8";
    case FieldType::tuple:
        return "tuple_" + std::to_string(field.width);
    case FieldType::text:
        return "text";
    case FieldType::columns:
        return "matrix_columns";
    case FieldType::optional:
        return "optional_" + type_id(field.of);
    default:
        return type_id(field.of);
    }
}

class Writer {
public:
    explicit Writer(const Shapes& shapes) : shapes_(shapes) {}

    std::string write() {
        write_head();
        write_chunks();
        write_values();
        for (const auto& [name, family] : shapes_.families) {
            if (is_optional_somewhere(name)) write_optional(family);
        }
        for (const auto& [name, shape] : shapes_.classes) {
            if (is_a_place(name)) write_class(shape);
        }
        write_enums();
        return text_;
    }

private:
    void line(int depth, const std::string& text) {
        text_ += std::string(static_cast<std::size_t>(depth) * 2, ' ') + text + "\n";
    }

    void write_head() {
        text_ =
            "# Written by `format_reference` from the tables of the library's records: not to be changed by hand.\n";
        line(0, "meta:");
        line(1, "id: vor2");
        line(1, "title: Vor2 scene");
        line(1, "file-extension: vr2");
        line(1, "license: MIT");
        line(1, "ks-version: 0.9");
        line(1, "endian: le");
        line(0, "doc: |");
        line(1,
             "An animated scene: a magic word and then chunks to the end of the file. docs/format.md tells what the");
        line(1, "records mean. Every version up to " + version_text(CURRENT_VERSION) +
                    " is read; a field that a file's version doesn't have is absent.");
        line(1, "Chunk 0 stands first, where every writer puts it, and holds the version that all records go by.");
        line(0, "seq:");
        line(1, "- id: magic");
        line(1, "  contents: [0x01, 0x32, 0x52, 0x56]");
        line(1, "- id: head");
        line(1, "  type: first_chunk");
        line(1, "- id: chunks");
        line(1, "  type: chunk");
        line(1, "  repeat: eos");
        line(0, "instances:");
        line(1, "version:");
        line(2, "value: head.record.version");
        line(0, "-root-members: [" + joined(shapes_.root_members) + "]");
        line(0, "types:");
    }
    static std::string joined(const std::vector<std::string>& names) {
        std::string list;
        for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
        return list;
    }

    void write_chunks() {
        line(1, "first_chunk:");
        line(2, "seq:");
        line(3, "- id: len_chunk");
        line(3, "  type: u4");
        line(3, "- id: chunk_type");
        line(3, "  type: s4");
        line(3, "  valid: 0");
        line(3, "- id: record");
        line(3, "  type: " + type_id(shapes_.chunks.front().of));
        line(1, "chunk:");
        line(2, "seq:");
        line(3, "- id: len_chunk");
        line(3, "  type: u4");
        line(3, "  doc: In bytes, with these four and the chunk's type.");
        line(3, "  valid:");
        line(3, "    min: 8");
        line(3, "- id: chunk_type");
        line(3, "  type: s4");
        line(3, "  enum: chunk_type");
        line(3, "  doc: A type that isn't among these is passed over.");
        line(3, "  valid:");
        line(3, "    expr: _.to_i != 0");
        line(3, "- id: unknown");
        line(3, "  size: len_chunk - 8");
        line(3, "  if: chunk_type.to_i < 0 or chunk_type.to_i >= " + std::to_string(shapes_.chunks.size()));
        line(3, "- id: record");
        line(3, "  type:");
        line(3, "    switch-on: chunk_type");
        line(3, "    cases:");
        for (const Chunk& chunk : shapes_.chunks) {
            if (chunk.id != 0) line(3, "      'chunk_type::" + chunk_name(chunk) + "': " + body_type(chunk));
        }
        for (const Chunk& chunk : shapes_.chunks) {
            if (chunk.has_kind) write_kind(chunk);
        }
    }
    static std::string chunk_name(const Chunk& chunk) {
        return chunk.member.empty() ? type_id(chunk.of) : chunk.member;
    }
    static std::string body_type(const Chunk& chunk) { return type_id(chunk.of) + (chunk.has_kind ? "_of_kind" : ""); }

    /// The number that stands before a record and what it says.
    void write_kind(const Chunk& chunk) {
        line(1, body_type(chunk) + ":");
        line(2, "seq:");
        line(3, "- id: kind");
        line(3, "  type: u4");
        if (chunk.is_instance) {
            line(3, "  enum: instance_kind");
            line(3, "  doc: What is repeated.");
            line(3, "  valid:");
            line(3, "    in-enum: true");
            line(3, "- id: object");
            line(3, "  type: " + type_id(chunk.of));
            return;
        }
        write_one_of(shapes_.families.at(chunk.of), "kind", "");
    }
    void write_one_of(const Family& family, const std::string& number, const std::string& condition) {
        std::string numbers;
        for (const auto& [kind, name] : family.classes) numbers += (numbers.empty() ? "" : ", ") + std::to_string(kind);
        line(3, "  valid:");
        line(3, "    any-of: [" + numbers + "]");
        line(3, "- id: object");
        if (!condition.empty()) line(3, "  if: " + condition);
        line(3, "  type:");
        line(3, "    switch-on: " + number);
        line(3, "    cases:");
        for (const auto& [kind, name] : family.classes) line(3, "      " + std::to_string(kind) + ": " + type_id(name));
    }

    /// What isn't a record: texts, tuples, the matrix of old files.
    void write_values() {
        line(1, "text:");
        line(2, "seq:");
        line(3, "- id: num_units");
        line(3, "  type: u2");
        line(3, "- id: units");
        line(3, "  size: num_units * 2");
        line(2, "instances:");
        line(3, "value:");
        line(3, "  value: units.to_s('UTF-16LE')");
        const std::array<std::string, 4> parts{"x", "y", "z", "w"};
        for (std::size_t width = 2; width <= parts.size(); ++width) {
            line(1, "tuple_" + std::to_string(width) + ":");
            line(2, "seq:");
            for (std::size_t part = 0; part < width; ++part) {
                line(3, "- id: " + parts[part]);
                line(3, "  type: f4");
            }
        }
        line(1, "matrix_columns:");
        line(2, "seq:");
        line(3, "- id: columns");
        line(3, "  type: tuple_4");
        line(3, "  repeat: expr");
        line(3, "  repeat-expr: 4");
    }

    void write_optional(const Family& family) {
        line(1, "optional_" + type_id(family.name) + ":");
        line(2, "seq:");
        line(3, "- id: is_present");
        line(3, "  type: u4");
        line(3, "- id: type_number");
        line(3, "  type: u4");
        line(3, "  if: is_present != 0");
        write_one_of(family, "type_number", "is_present != 0");
    }

    void write_class(const Class& shape) {
        line(1, type_id(shape.name) + ":");
        line(2, "-class: " + quoted(shape.told_name));
        const std::vector<Field> fields = shapes_.flat_fields(shape.name);
        line(2, fields.empty() ? "seq: []" : "seq:");
        for (const Field& field : fields) write_field(field);
    }
    void write_field(const Field& field) {
        const std::string condition = condition_of(field);
        if (field.is_list) {
            line(3, "- id: num_" + field.name);
            line(3, "  type: u4");
            if (!condition.empty()) line(3, "  if: " + condition);
        }
        line(3, "- id: " + field.name);
        line(3, "  type: " + type_of(field));
        if (!condition.empty()) line(3, "  if: " + condition);
        if (field.is_list) {
            line(3, "  repeat: expr");
            line(3, "  repeat-expr: num_" + field.name);
        }
        if (!field.meaning.empty()) line(3, "  doc: " + quoted(field.meaning));
        if (!field.is_written) line(3, "  -read-over: true");
        if (!condition.empty() && !field.default_value.empty()) line(3, "  -default: " + field.default_value);
    }

    void write_enums() {
        line(0, "enums:");
        line(1, "chunk_type:");
        for (const Chunk& chunk : shapes_.chunks) line(2, std::to_string(chunk.id) + ": " + chunk_name(chunk));
        line(1, "instance_kind:");
        for (const auto& [kind, member] : shapes_.instance_kinds) line(2, std::to_string(kind) + ": " + member);
    }

    [[nodiscard]] bool is_optional_somewhere(const std::string& family) const {
        for (const auto& [name, shape] : shapes_.classes) {
            for (const Field& field : shape.fields) {
                if (field.type == FieldType::optional && field.of == family) return true;
            }
        }
        return false;
    }
    /// Whether records of the class stand somewhere by themselves, not only as the beginning of others.
    [[nodiscard]] bool is_a_place(const std::string& name) const {
        for (const Chunk& chunk : shapes_.chunks) {
            if (chunk.of == name) return true;
        }
        for (const auto& [family, shape] : shapes_.families) {
            for (const auto& [number, member] : shape.classes) {
                if (member == name) return true;
            }
        }
        for (const auto& [other, shape] : shapes_.classes) {
            if (shape.vertex_class == name) return true;
            for (const Field& field : shape.fields) {
                if (field.type == FieldType::record && field.of == name) return true;
            }
        }
        return false;
    }

    const Shapes& shapes_;
    std::string text_;
};

} // namespace

std::string write_kaitai(const Shapes& shapes) {
    return Writer(shapes).write();
}

} // namespace reference
