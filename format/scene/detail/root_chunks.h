#pragma once

// The table of the root's chunks: a row for each member, in the order of saving. A new kind of object
// is one more row; loading, saving, clearing, counting, the clock and the description follow it.

#include "format/scene/array_lengths.h"
#include "format/scene/root.h"

#include <tuple>

namespace VOR2_LOADER {

/// The clock's place of a row that doesn't follow it.
inline constexpr u32 NOT_MOVED = 0;
/// The clock's place at which the weighted meshes are skinned, all nodes and meshes having moved.
inline constexpr u32 SKINNING_PLACE = 12;
/// Of rows whose elements' classes each have a chunk of their own.
inline constexpr u32 CHUNK_OF_THE_CLASS = 0xFFFFFFFF;

/// One chunk: header, kind word where there is one, body. The header's id and the kind word reach the
/// result only together.
template<class OBJECT>
bool save_chunk(const OBJECT& object, VOR2_WRITE_STREAM& stream, const u32* kind_word = nullptr) {
    stream.begin_chunk();
    const bool id = stream.write_value(object.chunk_id());
    const bool head = kind_word == nullptr || (stream.write_value(*kind_word) && id);
    const bool body = object.save(stream);
    stream.end_chunk();
    return head && body;
}

/// What every row says. `move_place` is the row's turn when the clock moves, from 1 up.
template<class MEMBER>
struct CHUNK_ROW {
    static constexpr bool IS_ARRAY = false;
    static constexpr bool IS_INSTANCES = false;
    std::string_view name;
    u32 chunk_id;
    MEMBER VOR2::*member;
    u32 move_place;

    template<class STEP>
    void move(VOR2& root, const STEP& step) const {
        step(root.*member);
    }
};

/// Some objects' records are the same in every version, and their `load` isn't told of it.
template<class OBJECT>
bool load_object(OBJECT& object, VOR2_INPUT_BUFFER& buffer, f32 version) {
    if constexpr (requires { object.load(buffer, version); }) {
        return object.load(buffer, version);
    } else {
        return object.load(buffer);
    }
}

/// An object held by value and loaded in place.
template<class OBJECT>
struct VALUE_CHUNK : CHUNK_ROW<OBJECT> {
    bool load(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        return load_object(root.*this->member, buffer, version);
    }
    bool save(const VOR2& root, VOR2_WRITE_STREAM& stream) const { return save_chunk(root.*this->member, stream); }
    void clear(VOR2& root) const {
        OBJECT& object = root.*this->member;
        if constexpr (requires { object.reset(); }) {
            object.reset();
        } else {
            object = OBJECT();
        }
    }
    void describe(const VOR2& root, RECORD_VISITOR& visitor) const {
        visitor.begin_object(this->name, OBJECT::record().class_name);
        (root.*this->member).describe(visitor);
        visitor.end_object();
    }
};

/// An object that may be absent. A repeated chunk replaces the earlier one.
template<class OBJECT>
struct OPTIONAL_CHUNK : CHUNK_ROW<OWNED<OBJECT>> {
    bool load(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        OWNED<OBJECT> object = make_owned<OBJECT>();
        const bool loaded = object->load(buffer, version);
        root.*this->member = std::move(object);
        return loaded;
    }
    bool save(const VOR2& root, VOR2_WRITE_STREAM& stream) const {
        const OWNED<OBJECT>& object = root.*this->member;
        return !object || save_chunk(*object, stream);
    }
    void clear(VOR2& root) const { (root.*this->member).reset(); }
    template<class STEP>
    void move(VOR2& root, const STEP& step) const {
        if (root.*this->member) step(*(root.*this->member));
    }
    void describe(const VOR2& root, RECORD_VISITOR& visitor) const {
        const OWNED<OBJECT>& object = root.*this->member;
        if (!object) return visitor.absent(this->name);
        visitor.begin_object(this->name, OBJECT::record().class_name);
        object->describe(visitor);
        visitor.end_object();
    }
};

/// A chunk for each element of an array. A null entry writes no chunk.
template<class OBJECT>
struct ARRAY_CHUNK : CHUNK_ROW<OWNED_ARRAY<OBJECT>> {
    static constexpr bool IS_ARRAY = true;
    u32 VOR2_ARRAY_LENGTH_HELPER::*count;

    void clear(VOR2& root) const { (root.*this->member).clear(); }
    template<class STEP>
    void move(VOR2& root, const STEP& step) const {
        for (OWNED<OBJECT>& object : root.*this->member) {
            if (object) step(*object);
        }
    }
    void describe(const VOR2& root, RECORD_VISITOR& visitor) const {
        const OWNED_ARRAY<OBJECT>& objects = root.*this->member;
        visitor.begin_list(this->name, objects.size());
        for (const OWNED<OBJECT>& object : objects) OPTIONAL_KIND::describe(object, {}, visitor);
        visitor.end_list();
    }
};

/// Objects of one class.
template<class OBJECT>
struct OBJECTS_CHUNK : ARRAY_CHUNK<OBJECT> {
    bool load(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        OWNED<OBJECT>& object = (root.*this->member).emplace_back();
        object = make_owned<OBJECT>();
        return load_object(*object, buffer, version);
    }
    bool save(const VOR2& root, VOR2_WRITE_STREAM& stream) const {
        bool saved = true;
        for (const OWNED<OBJECT>& object : root.*this->member) {
            if (object) saved = save_chunk(*object, stream) && saved;
        }
        return saved;
    }
};

/// Objects of a family, whose kind stands before the record.
template<class FAMILY>
struct FAMILY_CHUNK : ARRAY_CHUNK<FAMILY> {
    bool load(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        u32 kind = 0;
        if (!buffer.read_value(kind)) return false;
        OWNED<FAMILY> object = FAMILY::make(kind);
        if (!object)
            return buffer.fail("no class of the " + std::string(this->name) + " has the kind " + std::to_string(kind));
        const bool loaded = object->load(buffer, version);
        (root.*this->member).push_back(std::move(object));
        return loaded;
    }
    bool save(const VOR2& root, VOR2_WRITE_STREAM& stream) const {
        bool saved = true;
        for (const OWNED<FAMILY>& object : root.*this->member) {
            if (!object) continue;
            const u32 kind = object->kind();
            saved = save_chunk(*object, stream, &kind) && saved;
        }
        return saved;
    }
};

/// Instances of one sort of object. Their classes' chunks are shared by all these rows: the kind before
/// the record is the row's.
struct INSTANCES_CHUNK : ARRAY_CHUNK<VOR2_INSTANCE> {
    static constexpr bool IS_INSTANCES = true;
    u32 instance_kind;

    bool save(const VOR2& root, VOR2_WRITE_STREAM& stream) const {
        bool saved = true;
        for (const OWNED<VOR2_INSTANCE>& object : root.*member) {
            if (object) saved = save_chunk(*object, stream, &instance_kind) && saved;
        }
        return saved;
    }
};

template<class OBJECT>
constexpr auto objects_row(std::string_view name, OWNED_ARRAY<OBJECT> VOR2::*member, u32 move_place,
                           u32 VOR2_ARRAY_LENGTH_HELPER::*count) {
    return OBJECTS_CHUNK<OBJECT>{{{name, OBJECT::CHUNK_ID, member, move_place}, count}};
}
template<class FAMILY>
constexpr auto family_row(std::string_view name, OWNED_ARRAY<FAMILY> VOR2::*member, u32 move_place,
                          u32 VOR2_ARRAY_LENGTH_HELPER::*count) {
    return FAMILY_CHUNK<FAMILY>{{{name, FAMILY::CHUNK_ID, member, move_place}, count}};
}
constexpr auto instances_row(std::string_view name, OWNED_ARRAY<VOR2_INSTANCE> VOR2::*member, u32 move_place,
                             u32 VOR2_ARRAY_LENGTH_HELPER::*count, u32 instance_kind) {
    return INSTANCES_CHUNK{{{name, CHUNK_OF_THE_CLASS, member, move_place}, count}, instance_kind};
}

using LENGTHS = VOR2_ARRAY_LENGTH_HELPER;

/// All rows in the order of saving; chunk 1, the array lengths, belongs between the first two and is
/// no member of the root.
inline constexpr std::tuple ROOT_CHUNKS{
    VALUE_CHUNK<VOR2_INF>{{"inf", VOR2_INF::CHUNK_ID, &VOR2::inf, NOT_MOVED}},
    VALUE_CHUNK<VOR2_ENVIRONMENT>{{"environment", VOR2_ENVIRONMENT::CHUNK_ID, &VOR2::environment, 2}},
    OPTIONAL_CHUNK<VOR2_GLOBAL_LIGHT_TINT>{
        {"global_light_tint", VOR2_GLOBAL_LIGHT_TINT::CHUNK_ID, &VOR2::global_light_tint, 4}},
    OPTIONAL_CHUNK<VOR2_AMBIENT_LIGHT>{{"ambient_light", VOR2_AMBIENT_LIGHT::CHUNK_ID, &VOR2::ambient_light, 3}},
    VALUE_CHUNK<VOR2_CAMERA_MAN>{{"camera_man", VOR2_CAMERA_MAN::CHUNK_ID, &VOR2::camera_man, 26}},
    family_row("lights", &VOR2::lights, 5, &LENGTHS::light_count),
    objects_row("cameras", &VOR2::cameras, 6, &LENGTHS::camera_count),
    objects_row("rigids", &VOR2::rigids, 7, &LENGTHS::rigid_count),
    objects_row("anim_meshes", &VOR2::anim_meshes, 8, &LENGTHS::anim_mesh_count),
    objects_row("morph_meshes", &VOR2::morph_meshes, 9, &LENGTHS::morph_mesh_count),
    objects_row("weighted_meshes", &VOR2::weighted_meshes, 10, &LENGTHS::weighted_mesh_count),
    objects_row("bezier_spline_objects", &VOR2::bezier_spline_objects, 11, &LENGTHS::bezier_spline_object_count),
    objects_row("helpers", &VOR2::helpers, NOT_MOVED, &LENGTHS::helper_count),
    objects_row("xref_speedtrees", &VOR2::xref_speedtrees, 14, &LENGTHS::xref_speedtree_count),
    VALUE_CHUNK<VOR2_MATRIX_HIERARCHY>{
        {"matrix_hierarchy", VOR2_MATRIX_HIERARCHY::CHUNK_ID, &VOR2::matrix_hierarchy, 1}},
    family_row("materials", &VOR2::materials, 13, &LENGTHS::material_count),
    instances_row("light_instances", &VOR2::light_instances, 16, &LENGTHS::light_instance_count, 3),
    instances_row("camera_instances", &VOR2::camera_instances, NOT_MOVED, &LENGTHS::camera_instance_count, 2),
    instances_row("rigid_instances", &VOR2::rigid_instances, 17, &LENGTHS::rigid_instance_count, 5),
    instances_row("anim_mesh_instances", &VOR2::anim_mesh_instances, 18, &LENGTHS::anim_mesh_instance_count, 0),
    instances_row("morph_mesh_instances", &VOR2::morph_mesh_instances, 19, &LENGTHS::morph_mesh_instance_count, 4),
    instances_row("weighted_mesh_instances", &VOR2::weighted_mesh_instances, 20, &LENGTHS::weighted_mesh_instance_count,
                  6),
    instances_row("bezier_spline_instances", &VOR2::bezier_spline_instances, 21, &LENGTHS::bezier_spline_instance_count,
                  1),
    instances_row("helper_instances", &VOR2::helper_instances, 22, &LENGTHS::helper_instance_count, 7),
    objects_row("xrefs_15", &VOR2::xrefs_15, 24, &LENGTHS::xref_15_count),
    objects_row("xrefs_20", &VOR2::xrefs_20, 25, &LENGTHS::xref_20_count),
    objects_row("xref_objects", &VOR2::xref_objects, NOT_MOVED, &LENGTHS::xref_object_count),
    instances_row("xref_object_instances", &VOR2::xref_object_instances, 23, &LENGTHS::xref_object_instance_count, 8),
    instances_row("speedtree_instances", &VOR2::speedtree_instances, 15, &LENGTHS::speedtree_instance_count, 9),
};

template<class VISIT>
constexpr void each_chunk_row(VISIT&& visit) {
    std::apply([&](const auto&... row) { (visit(row), ...); }, ROOT_CHUNKS);
}

} // namespace VOR2_LOADER
