#include "tools/reference/anatomy.h"

#include "inspect/json_writer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace reference {
namespace {

constexpr std::size_t bytes_a_line = 12;

std::string hex(std::size_t number, int digits) {
    std::array<char, 24> text{};
    (void)std::snprintf(text.data(), text.size(), "%0*zx", digits, number);
    return text.data();
}

class Anatomy {
public:
    Anatomy(const Shapes& shapes, std::span<const u8> file) : shapes_(shapes), file_(file) {}

    std::string write() {
        put(4, "magic word", "");
        while (place_ < file_.size()) write_chunk();
        return text_;
    }

private:
    void write_chunk() {
        text_ += "\n";
        const std::size_t end = place_ + number();
        put(4, "length of the chunk", std::to_string(number()));
        const u32 id = number();
        if (id >= shapes_.chunks.size()) throw std::runtime_error("a chunk of an unknown type");
        const Chunk& chunk = shapes_.chunks[id];
        put(4, "type of the chunk", std::to_string(id) + ", " + (chunk.member.empty() ? chunk.of : chunk.member));
        std::string class_name = chunk.of;
        if (chunk.has_kind) {
            const u32 kind = number();
            put(4, "kind", std::to_string(kind));
            if (!chunk.is_instance) class_name = class_in(shapes_.families.at(chunk.of), kind);
        }
        write_record(class_name, "");
        if (place_ != end) throw std::runtime_error("a chunk doesn't end with its record");
    }
    void write_record(const std::string& class_name, const std::string& path) {
        for (const Field& field : shapes_.flat_fields(class_name)) {
            const bool there = version_ >= field.since.value_or(version_) && version_ <= field.up_to.value_or(version_);
            if (!there) continue;
            const std::string name = path.empty() ? field.name : path + "." + field.name;
            if (class_name == shapes_.chunks.front().of && field.name == "version") version_ = value<f32>();
            if (!field.is_list) {
                write_value(field, name);
                continue;
            }
            const u32 count = number();
            put(4, name, "count: " + std::to_string(count));
            for (u32 i = 0; i < count; ++i) write_value(field, name + "[" + std::to_string(i) + "]");
        }
    }
    void write_value(const Field& field, const std::string& name) {
        using vor2::inspect::shortest;
        switch (field.type) {
        case FieldType::unsigned_number:
            return put(4, name, std::to_string(number()));
        case FieldType::signed_number:
            return put(4, name, std::to_string(value<i32>()));
        case FieldType::real:
            return put(4, name, shortest(value<f32>()));
        case FieldType::long_real:
            return put(8, name, shortest(value<f64>()));
        case FieldType::flag:
            return put(4, name, number() != 0 ? "true" : "false");
        case FieldType::tuple:
            return put(sizeof(f32) * field.width, name, reals(field.width));
        case FieldType::columns:
            return put(sizeof(f32) * 16, name, reals(16));
        case FieldType::text:
            return write_text(name);
        case FieldType::optional:
            return write_optional(field, name);
        default:
            return write_record(field.of, name);
        }
    }
    void write_text(const std::string& name) {
        const u32 count = value<u16>();
        put(2, name, "units: " + std::to_string(count));
        std::u16string units(count, u'\0');
        need(count * sizeof(char16_t));
        std::memcpy(units.data(), file_.data() + place_, count * sizeof(char16_t));
        if (count > 0) put(count * sizeof(char16_t), "", vor2::inspect::quoted(units));
    }
    void write_optional(const Field& field, const std::string& name) {
        const bool present = number() != 0;
        put(4, name, present ? "present" : "absent");
        if (!present) return;
        const u32 type = number();
        const std::string& class_name = class_in(shapes_.families.at(field.of), type);
        put(4, "", "type " + std::to_string(type) + ", " + class_name);
        write_record(class_name, name);
    }
    [[nodiscard]] static const std::string& class_in(const Family& family, u32 number) {
        for (const auto& [kind, name] : family.classes) {
            if (kind == number) return name;
        }
        throw std::runtime_error("a type that the family doesn't have");
    }

    void need(std::size_t size) const {
        if (size > file_.size() - place_) throw std::runtime_error("the file ends within a record");
    }
    template<class T>
    [[nodiscard]] T value() const {
        need(sizeof(T));
        T result;
        std::memcpy(&result, file_.data() + place_, sizeof result);
        return result;
    }
    [[nodiscard]] u32 number() const { return value<u32>(); }
    [[nodiscard]] std::string reals(u32 count) const {
        need(sizeof(f32) * count);
        std::string text;
        for (u32 i = 0; i < count; ++i) {
            f32 real = 0;
            std::memcpy(&real, file_.data() + place_ + sizeof real * i, sizeof real);
            text += (text.empty() ? "" : ", ") + vor2::inspect::shortest(real);
        }
        return text;
    }

    /// Lines for the next `size` bytes; what they are stands beside the first.
    void put(std::size_t size, const std::string& name, const std::string& told) {
        need(size);
        for (std::size_t first = 0; first < size; first += bytes_a_line) {
            std::string bytes;
            for (std::size_t i = first; i < std::min(size, first + bytes_a_line); ++i)
                bytes += hex(file_[place_ + i], 2) + " ";
            bytes.resize(bytes_a_line * 3 + 1, ' ');
            std::string line = hex(place_ + first, 4) + "  " + bytes;
            if (first == 0) line.append(name).append(name.empty() || told.empty() ? "" : "  ").append(told);
            text_ += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
        }
        place_ += size;
    }

    const Shapes& shapes_;
    std::span<const u8> file_;
    std::size_t place_ = 0;
    f32 version_ = 0;
    std::string text_;
};

} // namespace

std::string take_apart(const Shapes& shapes, std::span<const u8> file) {
    return Anatomy(shapes, file).write();
}

} // namespace reference
