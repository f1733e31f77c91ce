#pragma once

// The longer bodies of format/core/field_kinds.h, which includes this file.

namespace VOR2_LOADER {

namespace detail {

/// Bytes that are gathered before they go to the stream as one block.
inline constexpr u32 STAGING_SIZE = 16384;

template<class T>
concept FLOAT_TUPLE =
    std::same_as<T, VECTOR_2> || std::same_as<T, VECTOR_3> || std::same_as<T, VECTOR_4> || std::same_as<T, QUATERNION>;

template<FLOAT_TUPLE T>
[[nodiscard]] inline std::array<f32, sizeof(T) / sizeof(f32)> components(const T& tuple) {
    return std::bit_cast<std::array<f32, sizeof(T) / sizeof(f32)>>(tuple);
}

/// Elements whose size in the file is known: one check for all of them, then straight copies.
template<class KIND, class T>
void get_all(ARRAY<T>& list, VOR2_INPUT_BUFFER& buffer, u32 count) {
    if constexpr (std::same_as<KIND, VALUE_KIND>) {
        list.grow_by(count);
        if (count > 0) buffer.read(list.data(), u64{count} * sizeof(T));
    } else {
        const u8* from = buffer.cursor;
        for (u32 i = 0; i < count; ++i) KIND::get(list.emplace_back(), from);
        buffer.cursor = from;
    }
}

template<class KIND, class T>
[[nodiscard]] bool put_all(const ARRAY<T>& list, VOR2_WRITE_STREAM& stream) {
    if constexpr (std::same_as<KIND, VALUE_KIND>) {
        const u64 size = list.size() * sizeof(T);
        return size <= LONGEST_FILE && stream.write(list.data(), static_cast<u32>(size)) == size;
    } else {
        constexpr u32 SIZE = KIND::template fixed_size<T>();
        static_assert(SIZE <= STAGING_SIZE);
        u8 staging[STAGING_SIZE];
        u8* to = staging;
        bool taken = true;
        for (const T& element : list) {
            KIND::put(element, to);
            const u32 held = static_cast<u32>(to - staging);
            if (held + SIZE <= STAGING_SIZE && &element + 1 != list.end()) continue;
            taken = stream.write(staging, held) == held && taken;
            to = staging;
        }
        return taken;
    }
}

} // namespace detail

template<class T>
void VALUE_KIND::describe(const T& value, std::string_view name, RECORD_VISITOR& visitor) {
    if constexpr (std::same_as<T, bool>) {
        visitor.boolean(name, value);
    } else if constexpr (std::same_as<T, i32>) {
        visitor.signed_number(name, value);
    } else if constexpr (std::same_as<T, u32>) {
        visitor.unsigned_number(name, value);
    } else if constexpr (std::same_as<T, f32>) {
        visitor.real(name, value);
    } else if constexpr (std::same_as<T, f64>) {
        visitor.long_real(name, value);
    } else {
        visitor.tuple(name, detail::components(value));
    }
}

template<class T>
void OBJECT_KIND::describe(const T& object, std::string_view name, RECORD_VISITOR& visitor) {
    visitor.begin_object(name, T::record().class_name);
    object.T::describe(visitor);
    visitor.end_object();
}

template<class ELEMENT_KIND, bool ELEMENTS_COUNT>
template<class T>
u64 LIST_KIND<ELEMENT_KIND, ELEMENTS_COUNT>::stored_size(const ARRAY<T>& list) {
    u64 size = sizeof(u32);
    if constexpr (ELEMENT_KIND::template fixed_size<T>() > 0) {
        size += list.size() * ELEMENT_KIND::template fixed_size<T>();
    } else {
        for (const T& element : list) size += ELEMENT_KIND::stored_size(element);
    }
    return size;
}

template<class ELEMENT_KIND, bool ELEMENTS_COUNT>
template<class T>
void LIST_KIND<ELEMENT_KIND, ELEMENTS_COUNT>::put(const ARRAY<T>& list, u8*& to) {
    VALUE_KIND::put(static_cast<u32>(list.size()), to);
    for (const T& element : list) ELEMENT_KIND::put(element, to);
}

template<class ELEMENT_KIND, bool ELEMENTS_COUNT>
template<class T>
bool LIST_KIND<ELEMENT_KIND, ELEMENTS_COUNT>::load(ARRAY<T>& list, VOR2_INPUT_BUFFER& buffer, f32 version) {
    u32 count = 0;
    list.clear();
    if (!buffer.read_count(count, ELEMENT_KIND::template least_size<T>())) return false;
    if (count == 0) return true;
    list.reserve(count);
    if constexpr (ELEMENT_KIND::template fixed_size<T>() > 0) {
        detail::get_all<ELEMENT_KIND>(list, buffer, count);
        return true;
    } else {
        bool loaded = true;
        for (u32 i = 0; i < count; ++i) {
            if (ELEMENT_KIND::load(list.emplace_back(), buffer, version)) continue;
            loaded = false;
            if (buffer.failed()) return buffer.fail_within(i);
        }
        return loaded;
    }
}

template<class ELEMENT_KIND, bool ELEMENTS_COUNT>
template<class T>
bool LIST_KIND<ELEMENT_KIND, ELEMENTS_COUNT>::save(const ARRAY<T>& list, VOR2_WRITE_STREAM& stream) {
    const bool counted = stream.write_value(static_cast<u32>(list.size()));
    bool saved = true;
    if constexpr (ELEMENT_KIND::template fixed_size<T>() > 0) {
        saved = detail::put_all<ELEMENT_KIND>(list, stream);
    } else {
        for (const T& element : list) saved = ELEMENT_KIND::save(element, stream) && saved;
    }
    return counted && (saved || !ELEMENTS_COUNT);
}

template<class ELEMENT_KIND, bool ELEMENTS_COUNT>
template<class T>
void LIST_KIND<ELEMENT_KIND, ELEMENTS_COUNT>::describe(const ARRAY<T>& list, std::string_view name,
                                                       RECORD_VISITOR& visitor) {
    if constexpr (std::same_as<T, u32>) {
        visitor.unsigned_numbers(name, list.view());
    } else if constexpr (std::same_as<T, i32>) {
        visitor.signed_numbers(name, list.view());
    } else if constexpr (std::same_as<T, f32> || detail::FLOAT_TUPLE<T>) {
        const auto* numbers = reinterpret_cast<const f32*>(list.data());
        constexpr u32 WIDTH = sizeof(T) / sizeof(f32); // NOLINT(bugprone-sizeof-expression): 1 for plain numbers
        visitor.reals(name, {numbers, static_cast<std::size_t>(list.size()) * WIDTH}, WIDTH);
    } else {
        visitor.begin_list(name, list.size());
        for (const T& element : list) ELEMENT_KIND::describe(element, {}, visitor);
        visitor.end_list();
    }
}

} // namespace VOR2_LOADER
