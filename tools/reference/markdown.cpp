#include "tools/reference/markdown.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <set>
#include <sstream>
#include <stdexcept>

namespace reference {
namespace {

/// The anchor that a heading of that text has.
std::string anchor(const std::string& heading) {
    std::string name;
    for (const char c : heading) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_')
            name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return name;
}
std::string code(const std::string& text) {
    return "`" + text + "`";
}
std::string link(const std::string& name) {
    return "[" + code(name) + "](#" + anchor(name) + ")";
}

std::string element_type(const Field& field) {
    switch (field.type) {
    case FieldType::unsigned_number:
        return "u32";
    case FieldType::signed_number:
        return "i32";
    case FieldType::real:
        return "f32";
    case FieldType::long_real:
        return "f64";
    case FieldType::tuple:
        return std::to_string(field.width) + " × f32";
    case FieldType::flag:
        return "flag";
    case FieldType::text:
        return "text";
    case FieldType::columns:
        return "4 × 4 × f32";
    case FieldType::optional:
        return "optional " + link(field.of);
    case FieldType::vertices:
        return "vertices";
    default:
        return link(field.of);
    }
}

std::string default_text(const Field& field) {
    if (field.default_value == "[]") return "empty";
    if (field.default_value == "null") return "absent";
    if (field.default_value == "4294967295") return "0xFFFFFFFF";
    if (field.default_value == "2147483647") return "0x7FFFFFFF";
    if (field.default_value.starts_with('[')) return field.default_value.substr(1, field.default_value.size() - 2);
    return field.default_value;
}

std::string meaning_of(const Field& field) {
    std::string text = field.meaning;
    if (field.type == FieldType::columns)
        text = "The columns of a matrix, of each three numbers and a fourth that means nothing.";
    if (!field.is_written) text += (text.empty() ? "" : " ") + std::string("No longer written.");
    return text;
}

class Page {
public:
    Page(const Shapes& shapes, const std::string& anatomy) : shapes_(shapes), anatomy_(anatomy) {}

    std::string fill(const std::string& page) {
        std::istringstream lines(page);
        for (std::string line; std::getline(lines, line);) {
            if (line.size() > 2 && line.starts_with('@') && line.ends_with('@')) {
                fill_place(line.substr(1, line.size() - 2));
            } else {
                text_ += line + "\n";
            }
        }
        for (const auto& [name, shape] : shapes_.classes) need("record " + name);
        for (const auto& [name, family] : shapes_.families) need("family " + name);
        return text_;
    }

private:
    void fill_place(const std::string& place) {
        const std::size_t space = place.find(' ');
        const std::string what = place.substr(0, space);
        const std::string name = space == std::string::npos ? "" : place.substr(space + 1);
        if (what == "chunks") return put_chunks();
        if (what == "instances") return put_instances();
        if (what == "versions") return put_versions();
        if (what == "anatomy") {
            text_ += "```\n" + anatomy_ + "```\n";
            return;
        }
        if (!told_.insert(what + " " + name).second) throw std::runtime_error("the page tells " + name + " twice");
        if (what == "record" && shapes_.classes.contains(name)) return put_record(shapes_.class_of(name));
        if (what == "family" && shapes_.families.contains(name)) return put_family(shapes_.families.at(name));
        throw std::runtime_error("the page's place for " + place + " is for nothing that the library has");
    }
    void need(const std::string& name) const {
        if (!told_.contains(name)) throw std::runtime_error("the page has no place for " + name);
    }

    void put_row(std::initializer_list<std::string> cells) {
        for (const std::string& cell : cells) text_.append("| ").append(cell).append(" ");
        text_ += "|\n";
    }
    void put_record(const Class& shape) {
        text_ += "| field | type | versions | default | |\n|---|---|---|---|---|\n";
        for (const Field& field : shape.fields) {
            std::string type = element_type(field);
            if (field.type == FieldType::base) {
                put_row({type.insert(0, "*all fields of* "), "", versions_text(field), "", ""});
                continue;
            }
            if (field.is_list) type.insert(0, "list of ");
            put_row({code(field.name), type, versions_text(field), default_text(field), meaning_of(field)});
        }
        if (shape.fields.empty()) text_ += "| *no fields* | | | | |\n";
        if (!shape.vertex_class.empty()) text_ += "\nIts vertices are " + link(shape.vertex_class) + ".\n";
    }
    void put_family(const Family& family) {
        text_ += "| number | record |\n|---|---|\n";
        for (const auto& [number, name] : family.classes)
            text_ += "| " + std::to_string(number) + " | " + link(name) + " |\n";
    }
    void put_chunks() {
        text_ += "| type | record | in the scene | |\n|---|---|---|---|\n";
        for (const Chunk& chunk : shapes_.chunks) {
            const std::string before = !chunk.has_kind     ? ""
                                       : chunk.is_instance ? "a number before the record says what is repeated"
                                                           : "a number before the record says which of the family";
            const auto& members = shapes_.root_members;
            const bool is_member = std::find(members.begin(), members.end(), chunk.member) != members.end();
            text_ += "| " + std::to_string(chunk.id) + " | " + link(chunk.of) + " | " +
                     (is_member ? "`" + chunk.member + "`" : "") + " | " + before + " |\n";
        }
    }
    void put_instances() {
        text_ += "| number | instances of | in the scene |\n|---|---|---|\n";
        for (const auto& [kind, member] : shapes_.instance_kinds) {
            std::string what = member.substr(0, member.find("_instances"));
            std::replace(what.begin(), what.end(), '_', ' ');
            put_row({std::to_string(kind), what, code(member)});
        }
    }
    /// What came and what went, by version.
    void put_versions() {
        std::map<f32, std::string> changes;
        const auto add = [&](f32 version, const std::string& change) {
            std::string& text = changes[version];
            text += (text.empty() ? "" : ", ") + change;
        };
        for (const auto& [name, shape] : shapes_.classes) {
            for (const Field& field : shape.fields) {
                const bool is_base = field.type == FieldType::base;
                const std::string what =
                    is_base ? link(field.of) + " in " + link(name) : "`" + field.name + "` of " + link(name);
                if (field.since) add(*field.since, what);
                if (const auto gone = gone_from(field)) {
                    add(*gone, what + " (no longer there)");
                } else if (field.up_to) {
                    add(*field.up_to, what + " (the last to have it)");
                }
            }
        }
        text_ += "| version | fields that came, or went |\n|---|---|\n";
        for (const auto& [version, text] : changes) text_ += "| " + version_text(version) + " | " + text + " |\n";
    }

    const Shapes& shapes_;
    const std::string& anatomy_;
    std::set<std::string> told_;
    std::string text_;
};

} // namespace

std::string fill_page(const Shapes& shapes, const std::string& page, const std::string& anatomy) {
    return Page(shapes, anatomy).fill(page);
}

} // namespace reference
