#pragma once

// What format/core/record.h, which includes this file, works out of a record before the program runs.

namespace VOR2_LOADER {

/// Bytes of a record that is the same in every version, else 0.
template<class T>
constexpr u32 fixed_size_of() {
    if constexpr (HAS_RECORD<T>) {
        return T::record().fields.apply([](const auto&... field) {
            const bool fixed = (field.is_fixed() && ...);
            return fixed ? (u32{0} + ... + field.fixed_size()) : 0;
        });
    } else {
        return 0;
    }
}

/// The fewest bytes of a record in any version.
template<class T>
constexpr u32 least_size_of() {
    if constexpr (HAS_RECORD<T>) {
        return T::record().fields.apply([](const auto&... field) {
            return (u32{0} + ... + (field.rules.always_there() ? field.least_size() : 0));
        });
    } else {
        return T::LEAST_RECORD_SIZE;
    }
}

/// Whether it is `RECORDED` that gives the class its `save`, and no code of its own.
template<class T, class... BASES>
constexpr bool is_save_of_record(bool (RECORDED<T, BASES...>::*)(VOR2_WRITE_STREAM&) const) {
    return true;
}
template<class T, class OTHER>
constexpr bool is_save_of_record(OTHER /*own*/) {
    return false;
}

/// Whether the class writes its record as the table tells it, from members that can all be put.
template<class T>
constexpr bool is_put() {
    if constexpr (HAS_RECORD<T>) {
        if constexpr (is_save_of_record<T>(&T::save)) {
            return T::record().fields.apply(
                [](const auto&... field) { return ((!field.rules.is_written || field.IS_PUT) && ...); });
        } else {
            return false;
        }
    } else {
        return false;
    }
}

template<class T>
u64 OBJECT_KIND::stored_size(const T& object) {
    static constexpr auto RECORD_OF_T = T::record();
    u64 size = 0;
    RECORD_OF_T.each([&](const auto& field) {
        if constexpr (std::remove_cvref_t<decltype(field)>::IS_PUT) {
            if (field.rules.is_written) size += field.stored_size(object);
        }
    });
    return size;
}

template<class T>
void OBJECT_KIND::get(T& object, const u8*& from) {
    static constexpr auto RECORD_OF_T = T::record();
    RECORD_OF_T.each([&](const auto& field) { field.get(object, from); });
}

template<class T>
void OBJECT_KIND::put(const T& object, u8*& to) {
    static constexpr auto RECORD_OF_T = T::record();
    RECORD_OF_T.each([&](const auto& field) {
        if constexpr (std::remove_cvref_t<decltype(field)>::IS_PUT) {
            if (field.rules.is_written) field.put(object, to);
        }
    });
}

} // namespace VOR2_LOADER
