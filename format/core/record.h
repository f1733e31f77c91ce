#pragma once

/// Records, each told once. A class lists its fields in file order in a `static constexpr auto
/// record()`; `load`, `save`, equality, the clock's walk and the description all come from that list.
///
///     class VOR2_EXAMPLE : public ANIMATED_RECORD<VOR2_EXAMPLE, VOR2_ENTITY, VOR2_INTERNAL_ANIM_OBJECT> {
///     public:
///         u32 word = 7;                                   ///< its default is what an older file gives
///         OWNED<VOR2_ANIMATABLE_FLOAT32> track;
///
///         static constexpr auto record() {
///             using C = VOR2_EXAMPLE;
///             return RECORD("VOR2_EXAMPLE",
///                 base<VOR2_ENTITY>(),
///                 value   ("word",  &C::word),
///                 optional("track", &C::track).since(1.15F));
///         }
///     };
///
/// What the format does oddly stands on the field as a word with its reason beside it. Copy,
/// assignment and destruction need no code: members own what they hold.

#include "format/core/field_kinds.h"

#include <bit>
#include <limits>
#include <utility>

namespace VOR2_LOADER {

/// What a field's words say. Versions are single-precision numbers and compare as such.
struct FIELD_RULES {
    f32 first_version = -std::numeric_limits<f32>::infinity(); ///< read from this version on
    f32 last_version = std::numeric_limits<f32>::infinity();   ///< and up to this one, included
    bool is_written = true;
    bool load_counts = true; ///< whether its result takes part in the record's
    bool save_counts = true;
    bool is_compared = true;
    bool is_walked = true;

    [[nodiscard]] constexpr bool is_read(f32 version) const {
        return version >= first_version && version <= last_version;
    }
    [[nodiscard]] constexpr bool always_there() const {
        return is_written && first_version == -std::numeric_limits<f32>::infinity() &&
               last_version == std::numeric_limits<f32>::infinity();
    }
};

/// The words that a field or a base can have.
template<class SELF>
struct FIELD_WORDS {
    FIELD_RULES rules{};

    [[nodiscard]] constexpr SELF since(f32 version) const {
        return with([version](FIELD_RULES& r) { r.first_version = version; });
    }
    [[nodiscard]] constexpr SELF read_up_to(f32 version) const {
        return with([version](FIELD_RULES& r) { r.last_version = version; });
    }
    [[nodiscard]] constexpr SELF read_below(f32 version) const {
        return read_up_to(std::bit_cast<f32>(std::bit_cast<u32>(version) - 1));
    }
    [[nodiscard]] constexpr SELF never_written() const {
        return with([](FIELD_RULES& r) { r.is_written = false; });
    }
    [[nodiscard]] constexpr SELF load_ignored() const {
        return with([](FIELD_RULES& r) { r.load_counts = false; });
    }
    [[nodiscard]] constexpr SELF save_ignored() const {
        return with([](FIELD_RULES& r) { r.save_counts = false; });
    }
    [[nodiscard]] constexpr SELF result_ignored() const { return load_ignored().save_ignored(); }
    [[nodiscard]] constexpr SELF not_compared() const {
        return with([](FIELD_RULES& r) { r.is_compared = false; });
    }
    [[nodiscard]] constexpr SELF not_walked() const {
        return with([](FIELD_RULES& r) { r.is_walked = false; });
    }

private:
    template<class CHANGE>
    [[nodiscard]] constexpr SELF with(CHANGE change) const {
        SELF field = static_cast<const SELF&>(*this);
        change(field.rules);
        return field;
    }
};

/// A member of the class.
template<class KIND_TYPE, class OWNER, class MEMBER>
struct FIELD : FIELD_WORDS<FIELD<KIND_TYPE, OWNER, MEMBER>> {
    using KIND = KIND_TYPE;
    std::string_view name;
    MEMBER OWNER::*member;

    constexpr FIELD(std::string_view field_name, MEMBER OWNER::*pointer) : name(field_name), member(pointer) {}
    static constexpr bool IS_PUT = KIND::template IS_PUT<MEMBER>;
    [[nodiscard]] constexpr bool is_fixed() const {
        return !IS_STORED<KIND> || (this->rules.always_there() && fixed_size() > 0);
    }
    template<class T>
    u64 stored_size(const T& self) const {
        return KIND::stored_size(self.*member);
    }
    static constexpr u32 fixed_size() { return KIND::template fixed_size<MEMBER>(); }
    static constexpr u32 least_size() { return KIND::template least_size<MEMBER>(); }
    template<class T>
    bool load(T& self, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        return KIND::load(self.*member, buffer, version);
    }
    template<class T>
    bool save(const T& self, VOR2_WRITE_STREAM& stream) const {
        return KIND::save(self.*member, stream);
    }
    template<class T>
    void get(T& self, const u8*& from) const {
        KIND::get(self.*member, from);
    }
    template<class T>
    void put(const T& self, u8*& to) const {
        KIND::put(self.*member, to);
    }
    template<class T>
    void copy(T& to, const T& from) const {
        to.*member = from.*member;
    }
    template<class T>
    bool equal(const T& a, const T& b) const {
        return KIND::equal(a.*member, b.*member);
    }
    template<class T, class STEP>
    void walk(T& self, const STEP& step) const {
        KIND::walk(self.*member, step);
    }
    template<class T>
    void describe(const T& self, RECORD_VISITOR& visitor) const {
        KIND::describe(self.*member, name, visitor);
    }
};

/// The record of a base class, in its place among the fields.
template<class BASE>
struct BASE_FIELD : FIELD_WORDS<BASE_FIELD<BASE>> {
    std::string_view name = BASE::record().class_name;

    static constexpr bool IS_PUT = is_put<BASE>();
    [[nodiscard]] constexpr bool is_fixed() const { return this->rules.always_there() && fixed_size() > 0; }
    static constexpr u32 fixed_size() { return fixed_size_of<BASE>(); }
    template<class T>
    u64 stored_size(const T& self) const {
        return OBJECT_KIND::stored_size(static_cast<const BASE&>(self));
    }
    static constexpr u32 least_size() { return least_size_of<BASE>(); }
    template<class T>
    bool load(T& self, VOR2_INPUT_BUFFER& buffer, f32 version) const {
        return self.BASE::load(buffer, version);
    }
    template<class T>
    bool save(const T& self, VOR2_WRITE_STREAM& stream) const {
        return self.BASE::save(stream);
    }
    template<class T>
    void get(T& self, const u8*& from) const {
        OBJECT_KIND::get(static_cast<BASE&>(self), from);
    }
    template<class T>
    void put(const T& self, u8*& to) const {
        OBJECT_KIND::put(static_cast<const BASE&>(self), to);
    }
    template<class T>
    void copy(T& to, const T& from) const {
        static_cast<BASE&>(to) = static_cast<const BASE&>(from);
    }
    template<class T>
    bool equal(const T& a, const T& b) const {
        return static_cast<const BASE&>(a) == static_cast<const BASE&>(b);
    }
    template<class T, class STEP>
    void walk(T& self, const STEP& step) const {
        OBJECT_KIND::walk(static_cast<BASE&>(self), step);
    }
    template<class T>
    void describe(const T& self, RECORD_VISITOR& visitor) const {
        self.BASE::describe(visitor);
    }
};

/// What stands in a record's place but is no member of its class: its size isn't known beforehand, and who compares or
/// moves the members passes it by.
template<class SELF>
struct FIELD_BESIDE : FIELD_WORDS<SELF> {
    std::string_view name;

    constexpr explicit FIELD_BESIDE(std::string_view field_name) : name(field_name) {}
    static constexpr bool IS_PUT = false;
    [[nodiscard]] static constexpr bool is_fixed() { return false; }
    static constexpr u32 fixed_size() { return 0; }
    static constexpr u32 least_size() { return sizeof(u32); }
    template<class T>
    static bool equal(const T&, const T&) {
        return true;
    }
    template<class T, class STEP>
    static void walk(T&, const STEP&) {}
};

/// An optional object of old files that is read over: nothing keeps it, and nothing writes it.
template<class FAMILY>
struct PASSED_OVER_FIELD : FIELD_BESIDE<PASSED_OVER_FIELD<FAMILY>> {
    constexpr explicit PASSED_OVER_FIELD(std::string_view field_name)
        : FIELD_BESIDE<PASSED_OVER_FIELD<FAMILY>>(field_name) {
        this->rules.is_written = false;
        this->rules.load_counts = false;
    }
    template<class T>
    static bool load(T&, VOR2_INPUT_BUFFER& buffer, f32 version) {
        OWNED<FAMILY> object;
        return read_optional(object, buffer, version);
    }
    template<class T>
    static bool save(const T&, VOR2_WRITE_STREAM&) {
        return true;
    }
    template<class T>
    static void describe(const T&, RECORD_VISITOR&) {}
};

/// Fields by their places: a tuple that costs the compiler little. Each source that sees a class makes the type
/// of its record.
template<std::size_t PLACE, class FIELD>
struct FIELD_AT {
    FIELD field;
    constexpr explicit FIELD_AT(const FIELD& one) : field(one) {}
};
template<class PLACES, class... FIELDS>
struct FIELD_LIST;
template<std::size_t... PLACES, class... FIELDS>
struct FIELD_LIST<std::index_sequence<PLACES...>, FIELDS...> : FIELD_AT<PLACES, FIELDS>... {
    static constexpr std::size_t SIZE = sizeof...(FIELDS);

    constexpr explicit FIELD_LIST(const FIELDS&... list) : FIELD_AT<PLACES, FIELDS>(list)... {}
    /// What `call` gives for all fields at once.
    template<class CALL>
    constexpr auto apply(CALL&& call) const {
        return call(static_cast<const FIELD_AT<PLACES, FIELDS>&>(*this).field...);
    }
};
template<std::size_t PLACE, class FIELD>
constexpr const FIELD& field_at(const FIELD_AT<PLACE, FIELD>& list) {
    return list.field;
}

template<class... FIELDS>
struct RECORD {
    std::string_view class_name;
    FIELD_LIST<std::index_sequence_for<FIELDS...>, FIELDS...> fields;

    constexpr explicit RECORD(std::string_view name, FIELDS... list) : class_name(name), fields(list...) {}
    /// Calls `visit` with each field in file order.
    template<class VISIT>
    constexpr void each(VISIT&& visit) const {
        fields.apply([&](const FIELDS&... field) { (visit(field), ...); });
    }
};

template<class OWNER, class MEMBER>
constexpr auto value(std::string_view name, MEMBER OWNER::*member) {
    return FIELD<VALUE_KIND, OWNER, MEMBER>(name, member);
}
template<class OWNER>
constexpr auto matrix_columns(std::string_view name, MATRIX_3X4 OWNER::*member) {
    return FIELD<MATRIX_COLUMNS_KIND, OWNER, MATRIX_3X4>(name, member);
}
template<class OWNER>
constexpr auto flag(std::string_view name, bool OWNER::*member) {
    return FIELD<FLAG_KIND, OWNER, bool>(name, member);
}
template<class OWNER>
constexpr auto text(std::string_view name, TEXT OWNER::*member) {
    return FIELD<TEXT_KIND, OWNER, TEXT>(name, member);
}
template<class OWNER, class MEMBER>
constexpr auto object(std::string_view name, MEMBER OWNER::*member) {
    return FIELD<OBJECT_KIND, OWNER, MEMBER>(name, member);
}
template<class OWNER, class FAMILY>
constexpr auto optional(std::string_view name, OWNED<FAMILY> OWNER::*member) {
    return FIELD<OPTIONAL_KIND, OWNER, OWNED<FAMILY>>(name, member);
}
/// A list of numbers or vectors, moved as a block.
template<class OWNER, class T>
constexpr auto values(std::string_view name, ARRAY<T> OWNER::*member) {
    return FIELD<LIST_KIND<VALUE_KIND>, OWNER, ARRAY<T>>(name, member);
}
/// The same, where a short write of the numbers has never reached the result of a save.
template<class OWNER, class T>
constexpr auto uncounted_values(std::string_view name, ARRAY<T> OWNER::*member) {
    return FIELD<LIST_KIND<VALUE_KIND, false>, OWNER, ARRAY<T>>(name, member);
}
template<class OWNER>
constexpr auto texts(std::string_view name, ARRAY<TEXT> OWNER::*member) {
    return FIELD<LIST_KIND<TEXT_KIND>, OWNER, ARRAY<TEXT>>(name, member);
}
template<class OWNER, class T>
constexpr auto objects(std::string_view name, ARRAY<T> OWNER::*member) {
    return FIELD<LIST_KIND<OBJECT_KIND>, OWNER, ARRAY<T>>(name, member);
}
template<class OWNER, class FAMILY>
constexpr auto optionals(std::string_view name, OWNED_ARRAY<FAMILY> OWNER::*member) {
    return FIELD<LIST_KIND<OPTIONAL_KIND>, OWNER, OWNED_ARRAY<FAMILY>>(name, member);
}
template<class FAMILY>
constexpr auto passed_over(std::string_view name) {
    return PASSED_OVER_FIELD<FAMILY>(name);
}
/// A field that the file doesn't hold, but that is compared and walked like the others.
template<class KIND, class OWNER, class MEMBER>
constexpr auto not_stored(FIELD<KIND, OWNER, MEMBER> field) {
    return FIELD<NOT_STORED_KIND<KIND>, OWNER, MEMBER>(field.name, field.member);
}
template<class BASE>
constexpr auto base() {
    return BASE_FIELD<BASE>();
}

/// All that is done with a record. The code of a class's operations is made once: where the class lives,
/// by `template struct RECORD_OPERATIONS<CLASS>;` behind an include of `core/record_operations.h`.
template<class T>
struct RECORD_OPERATIONS {
    static bool load(T& self, VOR2_INPUT_BUFFER& buffer, f32 version);
    static bool save(const T& self, VOR2_WRITE_STREAM& stream);
    /// No tolerance: every number compares as IEEE numbers do, so a NaN differs from everything.
    [[nodiscard]] static bool equal(const T& a, const T& b);
    static void describe(const T& self, RECORD_VISITOR& visitor);
    /// The clock's walk: each member that follows it, in file order, and then the class's own `moved()`.
    static void advance(T& self, f32 delta);
    static void set_time(T& self, f32 time);
};

/// Gives `SELF` its record operations and `==`.
template<class SELF, class... BASES>
class RECORDED : public BASES... {
public:
    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) override {
        return RECORD_OPERATIONS<SELF>::load(static_cast<SELF&>(*this), buffer, version);
    }
    bool save(VOR2_WRITE_STREAM& stream) const override {
        return RECORD_OPERATIONS<SELF>::save(static_cast<const SELF&>(*this), stream);
    }
    void describe(RECORD_VISITOR& visitor) const override {
        RECORD_OPERATIONS<SELF>::describe(static_cast<const SELF&>(*this), visitor);
    }
    friend bool operator==(const SELF& a, const SELF& b) { return RECORD_OPERATIONS<SELF>::equal(a, b); }
};

/// And its walk by the clock. A class whose own state derives from its tracks has `moved()`, which is
/// called behind the walk.
template<class SELF, class... BASES>
class ANIMATED_RECORD : public RECORDED<SELF, BASES...> {
public:
    void advance(f32 delta) override { RECORD_OPERATIONS<SELF>::advance(static_cast<SELF&>(*this), delta); }
    void set_time(f32 time) override { RECORD_OPERATIONS<SELF>::set_time(static_cast<SELF&>(*this), time); }
};

/// A class of a polymorphic family: its kind, name, comparison and copy. `DIRECT` are its bases.
template<class SELF, class FAMILY, u32 NUMBER, class... DIRECT>
class FAMILY_KIND : public ANIMATED_RECORD<SELF, DIRECT...> {
public:
    static constexpr u32 KIND = NUMBER;
    [[nodiscard]] u32 kind() const override { return NUMBER; }
    [[nodiscard]] std::string_view class_name() const override {
        static constexpr std::string_view NAME = SELF::record().class_name;
        return NAME;
    }
    [[nodiscard]] bool equals(const FAMILY& other) const override {
        return other.kind() == NUMBER && static_cast<const SELF&>(*this) == static_cast<const SELF&>(other);
    }
    [[nodiscard]] OWNED<FAMILY> clone() const override {
        return OWNED<FAMILY>(new SELF(static_cast<const SELF&>(*this)));
    }
};

/// The classes of a family, each with the number that stands for it in a file. A family tells them once, behind its
/// classes, by a function without a body: `CLASSES<FIRST, SECOND> classes_of(const FAMILY*);`.
template<class... LIST>
struct CLASSES {
    /// Calls `visit` with each class's number and a null pointer of its type.
    template<class VISIT>
    static constexpr void each(VISIT&& visit) {
        (visit(number<LIST>(), static_cast<const LIST*>(nullptr)), ...);
    }
    template<class FAMILY>
    [[nodiscard]] static OWNED<FAMILY> make(u32 wanted) {
        OWNED<FAMILY> object;
        ((wanted == number<LIST>() ? object.reset(new LIST()) : void()), ...);
        return object;
    }

private:
    template<class CLASS>
    static constexpr u32 number() {
        if constexpr (requires { CLASS::TYPE_ID; }) {
            return CLASS::TYPE_ID;
        } else {
            return CLASS::KIND;
        }
    }
};
template<class FAMILY>
using CLASSES_OF = decltype(classes_of(static_cast<const FAMILY*>(nullptr)));

/// An empty object of the family's class with that number, or nothing.
template<class FAMILY>
[[nodiscard]] OWNED<FAMILY> make_of_kind(u32 number) {
    return CLASSES_OF<FAMILY>::template make<FAMILY>(number);
}

} // namespace VOR2_LOADER

#include "format/core/detail/record_sizes.h"
