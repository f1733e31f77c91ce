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

template<class T>
void OBJECT_KIND::get(T& object, const u8*& from) {
    static constexpr auto RECORD_OF_T = T::record();
    RECORD_OF_T.each([&](const auto& field) { field.get(object, from); });
}

template<class T>
void OBJECT_KIND::put(const T& object, u8*& to) {
    static constexpr auto RECORD_OF_T = T::record();
    RECORD_OF_T.each([&](const auto& field) { field.put(object, to); });
}

} // namespace VOR2_LOADER
