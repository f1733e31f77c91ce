#pragma once

// The table of the root's chunks: a row for each member, in the order of saving. A new kind of object
// is one more row; loading, saving, clearing, counting, the clock and the description follow it.

#include "format/scene/array_lengths.h"
#include "format/scene/root.h"

namespace VOR2_LOADER {

/// The clock's place of a row that doesn't follow it.
inline constexpr u32 NOT_MOVED = 0;

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
    std::string_view name;
    u32 chunk_id;
    MEMBER VOR2::*member;
    u32 move_place;

    template<class STEP>
    void move(VOR2& root, const STEP& step) const {
        step(root.*member);
    }
};

/// An object held by value and loaded in place.
template<class OBJECT>
struct VALUE_CHUNK : CHUNK_ROW<OBJECT> {
    bool load(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        if constexpr (std::same_as<OBJECT, VOR2_INF>) {
            return root.inf.load(buffer);
        } else {
            return (root.*this->member).load(buffer, version);
        }
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

/// All rows in the order of saving; chunk 1, the array lengths, belongs between the first two and is
/// no member of the root.
inline constexpr std::tuple ROOT_CHUNKS{
    VALUE_CHUNK<VOR2_INF>{{"inf", VOR2_INF::CHUNK_ID, &VOR2::inf, NOT_MOVED}},
    VALUE_CHUNK<VOR2_ENVIRONMENT>{{"environment", VOR2_ENVIRONMENT::CHUNK_ID, &VOR2::environment, 2}},
    OPTIONAL_CHUNK<VOR2_GLOBAL_LIGHT_TINT>{
        {"global_light_tint", VOR2_GLOBAL_LIGHT_TINT::CHUNK_ID, &VOR2::global_light_tint, 4}},
    OPTIONAL_CHUNK<VOR2_AMBIENT_LIGHT>{{"ambient_light", VOR2_AMBIENT_LIGHT::CHUNK_ID, &VOR2::ambient_light, 3}},
    VALUE_CHUNK<VOR2_CAMERA_MAN>{{"camera_man", VOR2_CAMERA_MAN::CHUNK_ID, &VOR2::camera_man, 26}},
    VALUE_CHUNK<VOR2_MATRIX_HIERARCHY>{
        {"matrix_hierarchy", VOR2_MATRIX_HIERARCHY::CHUNK_ID, &VOR2::matrix_hierarchy, 1}},
};

template<class VISIT>
constexpr void each_chunk_row(VISIT&& visit) {
    std::apply([&](const auto&... row) { (visit(row), ...); }, ROOT_CHUNKS);
}

} // namespace VOR2_LOADER
