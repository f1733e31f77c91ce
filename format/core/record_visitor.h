#pragma once

/// `RECORD_VISITOR`: how a program sees every field of a scene without knowing its classes.

#include "support/text/text.h"

#include <span>
#include <string_view>

namespace VOR2_LOADER {

/// Told of each field in file order. Within a list the elements have empty names.
class RECORD_VISITOR {
public:
    virtual ~RECORD_VISITOR() = default;

    virtual void boolean(std::string_view name, bool value) = 0;
    virtual void signed_number(std::string_view name, i32 value) = 0;
    virtual void unsigned_number(std::string_view name, u32 value) = 0;
    virtual void real(std::string_view name, f32 value) = 0;
    virtual void long_real(std::string_view name, f64 value) = 0;
    virtual void text(std::string_view name, const TEXT& value) = 0;
    /// The components of one vector or quaternion.
    virtual void tuple(std::string_view name, std::span<const f32> components) = 0;

    /// Lists of plain values, each of `width` numbers.
    virtual void reals(std::string_view name, std::span<const f32> numbers, u32 width) = 0;
    virtual void signed_numbers(std::string_view name, std::span<const i32> numbers) = 0;
    virtual void unsigned_numbers(std::string_view name, std::span<const u32> numbers) = 0;

    /// An object's fields stand between these two.
    virtual void begin_object(std::string_view name, std::string_view class_name) = 0;
    virtual void end_object() = 0;
    /// An optional object that isn't there.
    virtual void absent(std::string_view name) = 0;
    virtual void begin_list(std::string_view name, u64 count) = 0;
    virtual void end_list() = 0;
};

} // namespace VOR2_LOADER
