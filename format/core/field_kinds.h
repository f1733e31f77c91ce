#pragma once

/// How each kind of member is read, written, compared, walked by the clock and described. A kind is a
/// stateless struct with these static functions; `core/record.h` puts them together.
///
/// `FIXED_SIZE` is the record's size in bytes where no version and no content changes it, else 0;
/// `LEAST_SIZE` is the fewest bytes that a record can take, against which counts are checked;
/// `IS_PUT` says whether a member can be written straight to memory, `stored_size` bytes of it by `put`.

#include "format/core/objects.h"
#include "format/core/record_visitor.h"
#include "support/array/owned.h"
#include "support/math/quaternion.h"

#include <algorithm>
#include <array>
#include <concepts>

namespace VOR2_LOADER {

/// A class whose fields stand in a table `record()`.
template<class T>
concept HAS_RECORD = requires {
    T::record();
};

/// What the clock does to each part: the two operations of `VOR2_INTERNAL_ANIM_OBJECT` as one walk.
struct SET_TIME {
    f32 time;
    /// On the class that the holder knows, so that a call of a final operation is a plain one.
    template<class PART>
    void operator()(PART& part) const {
        part.set_time(time);
    }
    template<class BASE>
    void base(BASE& part) const {
        part.BASE::set_time(time);
    }
};
struct ADVANCE {
    f32 delta;
    template<class PART>
    void operator()(PART& part) const {
        part.advance(delta);
    }
    template<class BASE>
    void base(BASE& part) const {
        part.BASE::advance(delta);
    }
};

template<class T>
constexpr u32 fixed_size_of();
template<class T>
constexpr u32 least_size_of();
template<class T>
constexpr bool is_put();

/// A number or a vector: its bytes as they lie in memory.
struct VALUE_KIND {
    template<class T>
    static constexpr u32 fixed_size() {
        return sizeof(T);
    }
    template<class T>
    static constexpr u32 least_size() {
        return sizeof(T);
    }
    template<class>
    static constexpr bool IS_PUT = true;
    template<class T>
    static u64 stored_size(const T&) {
        return sizeof(T);
    }
    template<class T>
    static bool load(T& value, VOR2_INPUT_BUFFER& buffer, f32) {
        return buffer.read_value(value);
    }
    template<class T>
    static bool save(const T& value, VOR2_WRITE_STREAM& stream) {
        return stream.write_value(value);
    }
    template<class T>
    static void get(T& value, const u8*& from) {
        std::memcpy(&value, from, sizeof value);
        from += sizeof value;
    }
    template<class T>
    static void put(const T& value, u8*& to) {
        std::memcpy(to, &value, sizeof value);
        to += sizeof value;
    }
    template<class T>
    static bool equal(const T& a, const T& b) {
        return a == b;
    }
    template<class T, class STEP>
    static void walk(T&, const STEP&) {}
    template<class T>
    static void describe(const T& value, std::string_view name, RECORD_VISITOR& visitor);
};

/// A `MATRIX_3X4` as old records hold it: four groups of four numbers, the columns, of which the fourth
/// number is passed over. Only reading this form exists.
struct MATRIX_COLUMNS_KIND : VALUE_KIND {
    template<class>
    static constexpr bool IS_PUT = false;
    template<class>
    static constexpr u32 least_size() {
        return 16 * sizeof(f32);
    }
    static bool load(MATRIX_3X4& matrix, VOR2_INPUT_BUFFER& buffer, f32) {
        f32 groups[4][4];
        const bool read = buffer.read_value(groups);
        for (int c = 0; c < 4; ++c) matrix.set_column(c, {groups[c][0], groups[c][1], groups[c][2]});
        return read;
    }
    static void describe(const MATRIX_3X4&, std::string_view, RECORD_VISITOR&) {}
};

/// A bool in a u32: any nonzero number reads as true, and true is written as 1.
struct FLAG_KIND : VALUE_KIND {
    template<class>
    static constexpr u32 fixed_size() {
        return sizeof(u32);
    }
    template<class>
    static constexpr u32 least_size() {
        return sizeof(u32);
    }
    static bool load(bool& value, VOR2_INPUT_BUFFER& buffer, f32) {
        u32 word = 0;
        const bool read = buffer.read_value(word);
        value = word != 0;
        return read;
    }
    static bool save(bool value, VOR2_WRITE_STREAM& stream) { return stream.write_value(value ? 1U : 0U); }
    static void get(bool& value, const u8*& from) {
        u32 word = 0;
        VALUE_KIND::get(word, from);
        value = word != 0;
    }
    static u64 stored_size(bool) { return sizeof(u32); }
    static void put(bool value, u8*& to) { VALUE_KIND::put(value ? 1U : 0U, to); }
};

struct TEXT_KIND {
    template<class>
    static constexpr bool IS_PUT = true;
    static u64 stored_size(const TEXT& text) {
        return sizeof(u16) + u64{static_cast<u16>(text.length())} * sizeof(char16_t);
    }
    static void put(const TEXT& text, u8*& to) {
        const u16 count = static_cast<u16>(text.length());
        VALUE_KIND::put(count, to);
        std::memcpy(to, text.data(), count * sizeof(char16_t));
        to += count * sizeof(char16_t);
    }
    template<class>
    static constexpr u32 fixed_size() {
        return 0;
    }
    template<class>
    static constexpr u32 least_size() {
        return sizeof(u16);
    }
    /// A text gives no result: one that is cut at the file's end counts as read.
    static bool load(TEXT& text, VOR2_INPUT_BUFFER& buffer, f32) {
        read_text(buffer, text);
        return true;
    }
    static bool save(const TEXT& text, VOR2_WRITE_STREAM& stream) {
        write_text(stream.file(), text);
        return true;
    }
    static bool equal(const TEXT& a, const TEXT& b) { return a == b; }
    template<class STEP>
    static void walk(TEXT&, const STEP&) {}
    static void describe(const TEXT& text, std::string_view name, RECORD_VISITOR& visitor) { visitor.text(name, text); }
};

/// A record object held by value.
struct OBJECT_KIND {
    template<class T>
    static constexpr bool IS_PUT = is_put<T>();
    template<class T>
    static u64 stored_size(const T& object);
    template<class T>
    static constexpr u32 fixed_size() {
        return fixed_size_of<T>();
    }
    template<class T>
    static constexpr u32 least_size() {
        return least_size_of<T>();
    }
    template<class T>
    static bool load(T& object, VOR2_INPUT_BUFFER& buffer, f32 version) {
        return object.T::load(buffer, version);
    }
    template<class T>
    static bool save(const T& object, VOR2_WRITE_STREAM& stream) {
        return object.T::save(stream);
    }
    template<class T>
    static void get(T& object, const u8*& from);
    template<class T>
    static void put(const T& object, u8*& to);
    template<class T>
    static bool equal(const T& a, const T& b) {
        return a == b;
    }
    template<class T, class STEP>
    static void walk(T& object, const STEP& step) {
        if constexpr (std::derived_from<T, VOR2_INTERNAL_ANIM_OBJECT>) step.base(object);
    }
    template<class T>
    static void describe(const T& object, std::string_view name, RECORD_VISITOR& visitor);
};

/// The number that stands before an optional object of a family, and the family's factory.
template<class FAMILY>
[[nodiscard]] u32 type_number(const FAMILY& object) {
    if constexpr (requires { object.type_id(); }) {
        return object.type_id();
    } else {
        return object.kind();
    }
}
template<class FAMILY>
[[nodiscard]] OWNED<FAMILY> make_of_family(u32 number) {
    if constexpr (requires { FAMILY::make_track(number); }) {
        return FAMILY::make_track(number);
    } else {
        return FAMILY::make(number);
    }
}

/// Writes the present flag and, for an object that is there, its type number. Whether both were taken;
/// the flag of an absent object never reaches a result.
template<class FAMILY>
bool write_optional_head(const FAMILY* object, VOR2_WRITE_STREAM& stream) {
    const bool flag = stream.write_value(object != nullptr ? 1U : 0U);
    if (object == nullptr) return true;
    return stream.write_value(type_number(*object)) && flag;
}

/// The head and, for an object that is there, its record.
template<class FAMILY>
bool write_optional(const FAMILY* object, VOR2_WRITE_STREAM& stream) {
    const bool head = write_optional_head(object, stream);
    return object == nullptr || (object->save(stream) && head);
}

/// Reads what `write_optional_head` writes and makes the object, or leaves null. A number that the family
/// doesn't know fails the buffer, since the record's length is then unknown.
template<class FAMILY>
bool read_optional_head(OWNED<FAMILY>& object, VOR2_INPUT_BUFFER& buffer) {
    object.reset();
    u32 present = 0;
    u32 number = 0;
    if (!buffer.read_value(present)) return false;
    if (present == 0) return true;
    if (!buffer.read_value(number)) return false;
    object = make_of_family<FAMILY>(number);
    if (!object) return buffer.fail("no class of the field's family has the type number " + std::to_string(number));
    return true;
}

template<class FAMILY>
bool read_optional(OWNED<FAMILY>& object, VOR2_INPUT_BUFFER& buffer, f32 version) {
    return read_optional_head(object, buffer) && (!object || object->load(buffer, version));
}

/// The name of an object's own class, also behind a pointer to its family.
template<class T>
[[nodiscard]] std::string_view class_name_of(const T& object) {
    if constexpr (requires { object.class_name(); }) {
        return object.class_name();
    } else {
        return T::record().class_name;
    }
}

/// An owned object of a polymorphic family, or nothing.
struct OPTIONAL_KIND {
    template<class>
    static constexpr bool IS_PUT = true;
    /// An object that is there is written by its own `save`: told as more than there is ever room for.
    template<class FAMILY>
    static u64 stored_size(const OWNED<FAMILY>& object) {
        return object ? u64{1} << 40 : sizeof(u32);
    }
    template<class FAMILY>
    static void put(const OWNED<FAMILY>&, u8*& to) {
        VALUE_KIND::put(u32{0}, to);
    }
    template<class>
    static constexpr u32 fixed_size() {
        return 0;
    }
    template<class>
    static constexpr u32 least_size() {
        return sizeof(u32);
    }
    template<class FAMILY>
    static bool load(OWNED<FAMILY>& object, VOR2_INPUT_BUFFER& buffer, f32 version) {
        return read_optional(object, buffer, version);
    }
    template<class FAMILY>
    static bool save(const OWNED<FAMILY>& object, VOR2_WRITE_STREAM& stream) {
        return write_optional(object.get(), stream);
    }
    template<class FAMILY>
    static bool equal(const OWNED<FAMILY>& a, const OWNED<FAMILY>& b) {
        if (!a || !b) return !a && !b;
        return a->equals(*b);
    }
    template<class FAMILY, class STEP>
    static void walk(OWNED<FAMILY>& object, const STEP& step) {
        if (object) step(*object);
    }
    template<class FAMILY>
    static void describe(const OWNED<FAMILY>& object, std::string_view name, RECORD_VISITOR& visitor) {
        if (!object) return visitor.absent(name);
        visitor.begin_object(name, class_name_of(*object));
        object->describe(visitor);
        visitor.end_object();
    }
};

/// A member that has no place in the file but takes part in comparing and in the clock's walk.
template<class KIND>
struct NOT_STORED_KIND {
    template<class>
    static constexpr bool IS_PUT = true;
    template<class T>
    static u64 stored_size(const T&) {
        return 0;
    }
    template<class>
    static constexpr u32 fixed_size() {
        return 0;
    }
    template<class>
    static constexpr u32 least_size() {
        return 0;
    }
    template<class T>
    static bool load(T&, VOR2_INPUT_BUFFER&, f32) {
        return true;
    }
    template<class T>
    static bool save(const T&, VOR2_WRITE_STREAM&) {
        return true;
    }
    template<class T>
    static void get(T&, const u8*&) {}
    template<class T>
    static void put(const T&, u8*&) {}
    template<class T>
    static bool equal(const T& a, const T& b) {
        return KIND::equal(a, b);
    }
    template<class T, class STEP>
    static void walk(T& member, const STEP& step) {
        KIND::walk(member, step);
    }
    template<class T>
    static void describe(const T&, std::string_view, RECORD_VISITOR&) {}
};
template<class KIND>
inline constexpr bool IS_STORED = true;
template<class KIND>
inline constexpr bool IS_STORED<NOT_STORED_KIND<KIND>> = false;

/// A u32 count and then as many elements of another kind. `ELEMENTS_COUNT` says whether the elements'
/// own writes reach the result of `save`, or only that of the count.
template<class ELEMENT_KIND, bool ELEMENTS_COUNT = true>
struct LIST_KIND {
    template<class LIST>
    static constexpr bool IS_PUT = ELEMENT_KIND::template IS_PUT<typename LIST::value_type>;
    template<class T>
    static u64 stored_size(const ARRAY<T>& list);
    template<class T>
    static void put(const ARRAY<T>& list, u8*& to);
    template<class>
    static constexpr u32 fixed_size() {
        return 0;
    }
    template<class>
    static constexpr u32 least_size() {
        return sizeof(u32);
    }
    template<class T>
    static bool load(ARRAY<T>& list, VOR2_INPUT_BUFFER& buffer, f32 version);
    template<class T>
    static bool save(const ARRAY<T>& list, VOR2_WRITE_STREAM& stream);
    template<class T>
    static bool equal(const ARRAY<T>& a, const ARRAY<T>& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const T& x, const T& y) { return ELEMENT_KIND::equal(x, y); });
    }
    template<class T, class STEP>
    static void walk(ARRAY<T>& list, const STEP& step) {
        for (T& element : list) ELEMENT_KIND::walk(element, step);
    }
    template<class T>
    static void describe(const ARRAY<T>& list, std::string_view name, RECORD_VISITOR& visitor);
};

} // namespace VOR2_LOADER

#include "format/core/detail/field_kinds.h"
