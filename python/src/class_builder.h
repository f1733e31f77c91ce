#pragma once

// How the table of a class is made from its record; for class_table.cpp alone.

#include "format/scene/detail/root_chunks.h"
#include "format/tracks/tracks.h"
#include "python/src/class_table.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace vor2::python {

using namespace VOR2_LOADER;

template<class T>
const ClassInfo* class_of();

std::string python_name(std::string_view class_name);

template<class T>
inline constexpr char NUMBER_TYPE = 0;
template<>
inline constexpr char NUMBER_TYPE<f32> = 'f';
template<>
inline constexpr char NUMBER_TYPE<f64> = 'd';
template<>
inline constexpr char NUMBER_TYPE<i32> = 'i';
template<>
inline constexpr char NUMBER_TYPE<u32> = 'I';

/// The family by which holders own a class: what its `clone` gives where that tells its name, else the class itself.
template<class T>
auto family_of() {
    if constexpr (requires(const T& object) { object.clone()->class_name(); }) {
        return std::type_identity<typename decltype(std::declval<const T&>().clone())::element_type>();
    } else {
        return std::type_identity<T>();
    }
}
template<class T>
using FAMILY_OF = typename decltype(family_of<T>())::type;

template<class FAMILY>
struct OptionalOf {
    static OptionalOperations::Object get(void* owned) {
        FAMILY* object = static_cast<OWNED<FAMILY>*>(owned)->get();
        if (object == nullptr) return {};
        if constexpr (std::is_abstract_v<FAMILY> || std::is_same_v<FAMILY, VOR2_INSTANCE>) {
            return {dynamic_cast<void*>(object), find_class(object->class_name())};
        } else {
            return {object, class_of<FAMILY>()};
        }
    }
    static Kept exchange(void* owned, void* object, const ClassInfo* info) {
        auto& place = *static_cast<OWNED<FAMILY>*>(owned);
        FAMILY* old = place.release();
        if (object != nullptr) place.reset(static_cast<FAMILY*>(info->to_family(object)));
        return std::shared_ptr<FAMILY>(old);
    }
    static constexpr OptionalOperations operations{get, exchange};
};

template<class T>
struct ListOf {
    using LIST = ARRAY<T>;
    static LIST& at(void* list) { return *static_cast<LIST*>(list); }
    static u64 size(const void* list) { return static_cast<const LIST*>(list)->size(); }
    static u64 capacity(const void* list) { return static_cast<const LIST*>(list)->capacity(); }
    static void* data(void* list) { return at(list).data(); }
    static void append(void* list) { at(list).emplace_back(); }
    static Kept rebuild(void* list, std::span<const std::ptrdiff_t> order, u64 room) {
        LIST made;
        made.reserve(std::max<u64>(room, order.size()));
        for (const std::ptrdiff_t index : order) {
            if (index < 0) {
                made.emplace_back();
            } else {
                made.emplace_back(std::move(at(list)[static_cast<u64>(index)]));
            }
        }
        return exchanged(list, std::move(made));
    }
    static Kept exchange(void* list, const void* bytes, u64 count) {
        LIST made;
        if constexpr (PLAIN_ELEMENT<T>) {
            made.grow_by(count);
            if (count > 0) std::memcpy(static_cast<void*>(made.data()), bytes, count * sizeof(T));
        } else {
            made.reserve(count);
            for (u64 i = 0; i < count; ++i) made.emplace_back();
        }
        return exchanged(list, std::move(made));
    }
    static Kept exchanged(void* list, LIST&& made) {
        auto old = std::make_shared<LIST>(std::move(at(list)));
        at(list) = std::move(made);
        return old;
    }
    static constexpr ListOperations operations{sizeof(T), size, capacity, data, append, rebuild, exchange};
};

/// What a class or family is called. Classes that share one name are told apart by what they hold.
template<class T>
struct NameOf {
    static std::string get() {
        if constexpr (std::is_same_v<T, VOR2>) {
            return "VOR2";
        } else if constexpr (HAS_RECORD<T>) {
            return python_name(T::record().class_name);
        } else if constexpr (std::is_abstract_v<T>) {
            return family_of_tracks();
        } else {
            return std::string(T().class_name());
        }
    }
    /// "VOR2_ANIMATABLE_VECTOR_3" of "VOR2_ANIMATABLE_VECTOR_3_LINEAR".
    static std::string family_of_tracks() {
        u32 number = 0;
        while (!T::make_track(number)) ++number;
        const std::string name(T::make_track(number)->class_name());
        return name.substr(0, name.rfind('_'));
    }
};
template<class FAMILY>
struct NameOf<VOR2_NAMED_ANIMATABLE<FAMILY>> {
    static std::string get() { return "VOR2_NAMED" + NameOf<FAMILY>::get().substr(4); }
};

/// Fills in a table by looking at a default object, whose members lie where those of every other one do.
template<class T>
class ClassBuilder {
public:
    static ClassInfo build(std::string name) {
        ClassInfo info;
        info.name = std::move(name);
        info.create = [] { return static_cast<void*>(new T()); };
        info.destroy = [](void* object) { delete static_cast<T*>(object); };
        info.clone = [](const void* object) { return static_cast<void*>(new T(*static_cast<const T*>(object))); };
        info.equal = [](const void* a, const void* b) {
            return equal(*static_cast<const T*>(a), *static_cast<const T*>(b));
        };
        info.exchange = [](void* member, const void* from) -> Kept {
            T& place = *static_cast<T*>(member);
            T copy(*static_cast<const T*>(from));
            auto old = std::make_shared<T>(std::move(place));
            place = std::move(copy);
            return old;
        };
        info.family = &OptionalOf<FAMILY_OF<T>>::operations;
        info.to_family = [](void* object) -> void* { return static_cast<FAMILY_OF<T>*>(static_cast<T*>(object)); };
        const auto example = std::make_unique<T>();
        ClassBuilder(info, *example).add_all();
        return info;
    }

private:
    ClassBuilder(ClassInfo& info, T& example) : info_(info), example_(example) {}

    static bool equal(const T& a, const T& b) {
        if constexpr (requires { a.equals(b); }) {
            return a.equals(b);
        } else if constexpr (requires { a == b; }) {
            return a == b;
        } else {
            return &a == &b;
        }
    }

    void add_all() {
        if constexpr (std::is_same_v<T, VOR2>) {
            each_chunk_row([this](const auto& row) { add_row(row); });
        } else if constexpr (std::is_base_of_v<VOR2_ANIMATABLE, T>) {
            info_.bases = {"VOR2_ANIMATABLE", NameOf<FAMILY_OF<T>>::get()};
            add_track();
        } else {
            add_bases(std::type_identity<T>());
            add_record(std::type_identity<T>(), true);
        }
        // A scene in a file of its own stands in no record.
        if constexpr (requires { example_.scene.get(); }) add_member<OPTIONAL_KIND>("scene", example_.scene, false);
    }

    template<class CLASS>
    void add_bases(std::type_identity<CLASS> /*type*/) {
        static constexpr auto record = CLASS::record();
        if constexpr (record.fields.SIZE > 0) first_base(field_at<0>(record.fields));
        // A family whose own record is empty stands in no record.
        if constexpr (std::is_same_v<CLASS, T> && std::is_abstract_v<FAMILY_OF<T>>) {
            if (info_.bases.empty()) info_.bases.push_back(python_name(FAMILY_OF<T>::record().class_name));
        }
    }
    template<class BASE>
    void first_base(const BASE_FIELD<BASE>& /*field*/) {
        add_bases(std::type_identity<BASE>());
        info_.bases.push_back(python_name(BASE::record().class_name));
    }
    template<class FIELD_TYPE>
    void first_base(const FIELD_TYPE& /*field*/) {}

    template<class CLASS>
    void add_record(std::type_identity<CLASS> /*type*/, bool stored) {
        static constexpr auto record = CLASS::record();
        record.each([this, stored](const auto& field) { add(field, stored && field.rules.is_written); });
    }
    template<class BASE>
    void add(const BASE_FIELD<BASE>& /*field*/, bool stored) {
        add_record(std::type_identity<BASE>(), stored);
    }
    /// What has no member here: the vertices, which are told by the class that holds them, and what is passed over.
    template<class FIELD_TYPE>
    void add(const FIELD_TYPE& /*field*/, bool /*stored*/) {}
    template<class KIND, class OWNER, class MEMBER>
    void add(const FIELD<KIND, OWNER, MEMBER>& field, bool stored) {
        // What is local to a bone the library makes anew whenever it likes, and nobody may hold on to it.
        if constexpr (std::is_same_v<OWNER, VOR2_BONE_WEIGHT_DATA> && !IS_STORED<KIND>) return;
        add_member<KIND>(field.name, example_.*field.member, stored);
    }
    template<class ROW>
    void add_row(const ROW& row) {
        auto& member = example_.*row.member;
        using MEMBER = std::remove_reference_t<decltype(member)>;
        if constexpr (ROW::IS_ARRAY) {
            add_member<LIST_KIND<OPTIONAL_KIND>>(row.name, member, true);
        } else if constexpr (requires { member.get(); }) {
            add_member<OPTIONAL_KIND>(row.name, member, true);
        } else {
            static_assert(std::is_class_v<MEMBER>);
            add_member<OBJECT_KIND>(row.name, member, true);
        }
    }

    template<class KIND, class MEMBER>
    void add_member(std::string_view name, MEMBER& member, bool stored) {
        add_of_kind(std::type_identity<KIND>(), name, member).stored = stored && IS_STORED<KIND>;
    }
    template<class KIND, class MEMBER>
    Field& add_of_kind(std::type_identity<NOT_STORED_KIND<KIND>> /*kind*/, std::string_view name, MEMBER& member) {
        return add_of_kind(std::type_identity<KIND>(), name, member);
    }
    template<class MEMBER>
    Field& add_of_kind(std::type_identity<VALUE_KIND> /*kind*/, std::string_view name, MEMBER& member) {
        Field& field = put(name, NUMBER_TYPE<MEMBER> != 0 ? Kind::number : Kind::tuple, member);
        set_numbers<MEMBER>(field);
        return field;
    }
    Field& add_of_kind(std::type_identity<FLAG_KIND> /*kind*/, std::string_view name, bool& member) {
        return put(name, Kind::boolean, member);
    }
    Field& add_of_kind(std::type_identity<MATRIX_COLUMNS_KIND> /*kind*/, std::string_view name, MATRIX_3X4& member) {
        Field& field = put(name, Kind::matrix, member);
        field.number = 'f';
        field.width = 12;
        return field;
    }
    Field& add_of_kind(std::type_identity<TEXT_KIND> /*kind*/, std::string_view name, TEXT& member) {
        return put(name, Kind::text, member);
    }
    template<class MEMBER>
    Field& add_of_kind(std::type_identity<OBJECT_KIND> /*kind*/, std::string_view name, MEMBER& member) {
        Field& field = put(name, Kind::record, member);
        field.record = class_of<MEMBER>;
        field.holds = NameOf<MEMBER>::get();
        return field;
    }
    template<class FAMILY>
    Field& add_of_kind(std::type_identity<OPTIONAL_KIND> /*kind*/, std::string_view name, OWNED<FAMILY>& member) {
        Field& field = put(name, Kind::optional, member);
        set_optional<FAMILY>(field);
        return field;
    }
    template<class FAMILY>
    Field& add_of_kind(std::type_identity<NESTED_KIND> /*kind*/, std::string_view name, OWNED<FAMILY>& member) {
        return add_of_kind(std::type_identity<OPTIONAL_KIND>(), name, member);
    }
    template<bool COUNT, class E>
    Field& add_of_kind(std::type_identity<LIST_KIND<VALUE_KIND, COUNT>> /*kind*/, std::string_view name,
                       ARRAY<E>& member) {
        return put_numbers(name, member);
    }
    template<bool COUNT>
    Field& add_of_kind(std::type_identity<LIST_KIND<TEXT_KIND, COUNT>> /*kind*/, std::string_view name,
                       ARRAY<TEXT>& member) {
        return put(name, Kind::texts, member);
    }
    template<bool COUNT, class E>
    Field& add_of_kind(std::type_identity<LIST_KIND<OBJECT_KIND, COUNT>> /*kind*/, std::string_view name,
                       ARRAY<E>& member) {
        Field& field = put(name, Kind::records, member);
        field.record = class_of<E>;
        field.holds = NameOf<E>::get();
        field.list = &ListOf<E>::operations;
        return field;
    }
    template<bool COUNT, class FAMILY>
    Field& add_of_kind(std::type_identity<LIST_KIND<OPTIONAL_KIND, COUNT>> /*kind*/, std::string_view name,
                       OWNED_ARRAY<FAMILY>& member) {
        Field& field = put(name, Kind::optionals, member);
        set_optional<FAMILY>(field);
        field.list = &ListOf<OWNED<FAMILY>>::operations;
        return field;
    }

    template<class MEMBER>
    Field& put(std::string_view name, Kind kind, MEMBER& member) {
        Field field;
        field.name = name;
        field.kind = kind;
        field.offset = reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&example_);
        return info_.fields.emplace_back(std::move(field));
    }
    template<class E>
    Field& put_numbers(std::string_view name, ARRAY<E>& member) {
        Field& field = put(name, Kind::numbers, member);
        set_numbers<E>(field);
        field.list = &ListOf<E>::operations;
        return field;
    }
    template<class VALUE>
    static void set_numbers(Field& field) {
        if constexpr (NUMBER_TYPE<VALUE> != 0) {
            field.number = NUMBER_TYPE<VALUE>;
        } else if constexpr (HAS_RECORD<VALUE>) {
            const ClassInfo::Numbers numbers = class_of<VALUE>()->as_numbers();
            field.number = numbers.number;
            field.width = numbers.width;
            field.lead = numbers.lead;
        } else {
            field.number = 'f';
            field.width = sizeof(VALUE) / sizeof(f32);
        }
    }
    template<class FAMILY>
    static void set_optional(Field& field) {
        field.optional = &OptionalOf<FAMILY>::operations;
        field.family = classes_of_family<FAMILY>;
        field.holds = NameOf<FAMILY>::get();
    }
    template<class FAMILY>
    static std::vector<const ClassInfo*> classes_of_family() {
        std::vector<const ClassInfo*> all;
        if constexpr (std::is_abstract_v<FAMILY>) {
            CLASSES_OF<FAMILY>::each(
                [&all](u32, const auto* one) { all.push_back(class_of<CLASS_AT<decltype(one)>>()); });
        } else if constexpr (std::is_same_v<FAMILY, VOR2_INSTANCE>) {
            all = {class_of<VOR2_INSTANCE>(), class_of<VOR2_GEOM_INSTANCE>(),
                   class_of<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS>(),
                   class_of<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS>()};
        } else {
            all = {class_of<FAMILY>()};
        }
        return all;
    }
    template<class POINTER>
    using CLASS_AT = std::remove_const_t<std::remove_pointer_t<POINTER>>;

    void add_track() {
        constexpr auto touched = [](void* track) { (void)static_cast<T*>(track)->key_times(); };
        put_numbers("key_times", example_.key_times()).touched = touched;
        put_numbers("key_values", example_.key_values());
        info_.sample = [](const void* track, std::span<const float> times, void* out) {
            using VALUE = typename T::VALUE_TYPE;
            T moving(*static_cast<const T*>(track));
            auto* to = static_cast<char*>(out);
            for (const float time : times) {
                moving.set_time(time);
                VALUE value{};
                if constexpr (requires { moving.value(value); }) {
                    moving.value(value);
                } else {
                    value = moving.value();
                }
                std::size_t lead = 0, size = sizeof value;
                if constexpr (HAS_RECORD<VALUE>) {
                    const ClassInfo::Numbers numbers = class_of<VALUE>()->as_numbers();
                    lead = static_cast<std::size_t>(numbers.lead);
                    size = numbers.width * sizeof(f32);
                }
                std::memcpy(to, reinterpret_cast<const char*>(&value) + lead, size);
                to += size;
            }
        };
    }

    ClassInfo& info_;
    T& example_;
};

template<class T>
const ClassInfo* class_of() {
    static const ClassInfo info = ClassBuilder<T>::build(NameOf<T>::get());
    return &info;
}

} // namespace vor2::python
