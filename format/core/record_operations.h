#pragma once

/// What `RECORD_OPERATIONS` do, for the sources that make them.

#include "format/core/record.h"

namespace VOR2_LOADER {

template<class T>
bool RECORD_OPERATIONS<T>::load(T& self, VOR2_INPUT_BUFFER& buffer, f32 version) {
    static constexpr auto RECORD_OF_T = T::record();
    if constexpr (fixed_size_of<T>() > 0) {
        if (fixed_size_of<T>() <= buffer.remaining()) [[likely]] {
            const u8* from = buffer.cursor;
            RECORD_OF_T.each([&](const auto& field) { field.get(self, from); });
            buffer.cursor = from;
            return true;
        }
    }
    bool loaded = true;
    RECORD_OF_T.each([&](const auto& field) {
        constexpr u32 FIXED_SIZE = std::remove_cvref_t<decltype(field)>::fixed_size();
        if constexpr (FIXED_SIZE > 0) {
            if (field.is_fixed() && FIXED_SIZE <= buffer.remaining()) return field.get(self, buffer.cursor);
        }
        if (!field.rules.is_read(version) || field.load(self, buffer, version)) return;
        loaded = loaded && !field.rules.load_counts;
        if (buffer.failed()) buffer.fail_within(field.name);
    });
    return loaded;
}

template<class T>
bool RECORD_OPERATIONS<T>::save(const T& self, VOR2_WRITE_STREAM& stream) {
    static constexpr auto RECORD_OF_T = T::record();
    bool saved = true;
    if constexpr (is_put<T>()) {
        const bool failed_before = stream.file().failed();
        const u64 size = OBJECT_KIND::stored_size(self);
        if (u8* to = stream.room(size)) {
            OBJECT_KIND::put(self, to);
            stream.file().took(size);
            return true;
        }
        saved = stream.file().failed() == failed_before;
    }
    RECORD_OF_T.each([&](const auto& field) {
        if (field.rules.is_written && !field.save(self, stream)) saved = saved && !field.rules.save_counts;
    });
    return saved;
}

template<class T>
bool RECORD_OPERATIONS<T>::equal(const T& a, const T& b) {
    static constexpr auto RECORD_OF_T = T::record();
    return RECORD_OF_T.fields.apply(
        [&](const auto&... field) { return ((!field.rules.is_compared || field.equal(a, b)) && ...); });
}

template<class T>
void RECORD_OPERATIONS<T>::describe(const T& self, RECORD_VISITOR& visitor) {
    static constexpr auto RECORD_OF_T = T::record();
    RECORD_OF_T.each([&](const auto& field) {
        if (field.rules.is_written) field.describe(self, visitor);
    });
}

namespace detail {

template<class T, class STEP>
void move_record(T& self, const STEP& step) {
    if constexpr (std::derived_from<T, VOR2_INTERNAL_ANIM_OBJECT>) {
        static constexpr auto RECORD_OF_T = T::record();
        RECORD_OF_T.each([&](const auto& field) {
            if (field.rules.is_walked) field.walk(self, step);
        });
        if constexpr (requires { self.moved(); }) self.moved();
    }
}

} // namespace detail

template<class T>
void RECORD_OPERATIONS<T>::advance(T& self, f32 delta) {
    detail::move_record(self, ADVANCE{delta});
}

template<class T>
void RECORD_OPERATIONS<T>::set_time(T& self, f32 time) {
    detail::move_record(self, SET_TIME{time});
}

} // namespace VOR2_LOADER
