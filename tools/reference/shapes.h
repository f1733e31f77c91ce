#pragma once

/// The records of the format as data: what `collect_shapes` reads out of the library's own tables, for the writers of
/// the reference.

#include "support/types.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace reference {

using namespace VOR2_LOADER;

enum class FieldType {
    unsigned_number,
    signed_number,
    real,
    long_real,
    tuple, ///< a vector or a quaternion, `width` reals
    flag,  ///< a bool in 4 bytes
    text,
    columns,  ///< four columns of four reals
    record,   ///< of the class `of`
    optional, ///< of the family `of`
    base,     ///< the fields of the class `of` in this place
    vertices  ///< a list of the mesh's own kind of vertex
};

struct Field {
    std::string name;
    FieldType type = FieldType::unsigned_number;
    bool is_list = false;
    u32 width = 1;
    std::string of{};
    std::optional<f32> since{}, up_to{}; ///< the first and the last version that has it
    bool is_written = true;
    std::string default_value{}; ///< as JSON; empty where it has none of its own
    std::string meaning{};       ///< the comment beside the member
};

struct Class {
    std::string name;      ///< one class's alone: VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_INT32>
    std::string told_name; ///< what `vor2 dump` calls it: VOR2_NAMED_ANIMATABLE
    std::string vertex_class{};
    std::vector<Field> fields{};
};

/// Classes of which any can stand in one place, each with its number there.
struct Family {
    std::string name;
    std::vector<std::pair<u32, std::string>> classes{};
    bool are_tracks = false;
};

/// What stands in the chunks of one number.
struct Chunk {
    u32 id = 0;
    std::string of{};         ///< a class, or a family whose number stands before the record
    std::string member{};     ///< of the root; empty where the number before the record tells it
    bool has_kind = false;    ///< a number stands before the record
    bool is_instance = false; ///< and tells what is repeated
};

struct Shapes {
    std::map<std::string, Class> classes;
    std::map<std::string, Family> families;
    std::vector<Chunk> chunks;                               ///< by number
    std::vector<std::pair<u32, std::string>> instance_kinds; ///< each with the root's member
    std::vector<std::string> root_members;                   ///< in the order of saving

    [[nodiscard]] const Class& class_of(const std::string& name) const { return classes.at(name); }
    /// All fields of a class in file order: those of its bases in their places, with the conditions of both.
    [[nodiscard]] std::vector<Field> flat_fields(const std::string& class_name) const;
};

/// Reads the tables. `folder` is the one with the library's headers, for the comments beside the members.
Shapes collect_shapes(const std::string& folder);

/// "1.15": the fewest digits that give that version.
std::string version_text(f32 version);
/// The version below which a field stood, where its last one is no version but the last number below that.
std::optional<f32> gone_from(const Field& field);
/// "from 1.15", "up to 1.05", "below 1.13"; empty for a field of every version.
std::string versions_text(const Field& field);

} // namespace reference
