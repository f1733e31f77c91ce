#pragma once

/// Vectors in single precision. Plain values: a default-constructed one is not initialised.

#include "support/types.h"

#include <cmath>
#include <concepts>

namespace VOR2_LOADER {

struct VECTOR_2 {
    f32 x, y;

    VECTOR_2() noexcept = default;
    constexpr VECTOR_2(f32 x_value, f32 y_value) noexcept : x(x_value), y(y_value) {}

    constexpr VECTOR_2& operator+=(VECTOR_2 b) noexcept { return *this = {x + b.x, y + b.y}; }
    constexpr VECTOR_2& operator-=(VECTOR_2 b) noexcept { return *this = {x - b.x, y - b.y}; }
    constexpr VECTOR_2& operator*=(f32 s) noexcept { return *this = {x * s, y * s}; }
    friend constexpr VECTOR_2 operator+(VECTOR_2 a, VECTOR_2 b) noexcept { return a += b; }
    friend constexpr VECTOR_2 operator-(VECTOR_2 a, VECTOR_2 b) noexcept { return a -= b; }
    friend constexpr VECTOR_2 operator-(VECTOR_2 a) noexcept { return {-a.x, -a.y}; }
    friend constexpr VECTOR_2 operator*(VECTOR_2 a, f32 s) noexcept { return a *= s; }
    friend constexpr bool operator==(VECTOR_2 a, VECTOR_2 b) noexcept = default;
};

struct VECTOR_3 {
    f32 x, y, z;

    VECTOR_3() noexcept = default;
    constexpr VECTOR_3(f32 x_value, f32 y_value, f32 z_value) noexcept : x(x_value), y(y_value), z(z_value) {}
    /// Narrows each number: the form in which a host's vectors arrive.
    template<std::same_as<f64> NUMBER>
    constexpr VECTOR_3(NUMBER x_value, NUMBER y_value, NUMBER z_value) noexcept
        : x(static_cast<f32>(x_value)), y(static_cast<f32>(y_value)), z(static_cast<f32>(z_value)) {}

    constexpr VECTOR_3& operator+=(VECTOR_3 b) noexcept { return *this = {x + b.x, y + b.y, z + b.z}; }
    constexpr VECTOR_3& operator-=(VECTOR_3 b) noexcept { return *this = {x - b.x, y - b.y, z - b.z}; }
    constexpr VECTOR_3& operator*=(f32 s) noexcept { return *this = {x * s, y * s, z * s}; }
    friend constexpr VECTOR_3 operator+(VECTOR_3 a, VECTOR_3 b) noexcept { return a += b; }
    friend constexpr VECTOR_3 operator-(VECTOR_3 a, VECTOR_3 b) noexcept { return a -= b; }
    friend constexpr VECTOR_3 operator-(VECTOR_3 a) noexcept { return {-a.x, -a.y, -a.z}; }
    friend constexpr VECTOR_3 operator*(VECTOR_3 a, f32 s) noexcept { return a *= s; }
    friend constexpr bool operator==(VECTOR_3 a, VECTOR_3 b) noexcept = default;

    [[nodiscard]] constexpr f32 length_squared() const noexcept { return x * x + y * y + z * z; }
    [[nodiscard]] f32 length() const noexcept { return std::sqrt(length_squared()); }
    /// Each component times 1 / `length`. A zero vector gives NaNs.
    [[nodiscard]] VECTOR_3 normalised() const noexcept { return *this * (1.0F / length()); }
};

struct VECTOR_4 {
    f32 x, y, z, w;

    VECTOR_4() noexcept = default;
    constexpr VECTOR_4(f32 x_value, f32 y_value, f32 z_value, f32 w_value) noexcept
        : x(x_value), y(y_value), z(z_value), w(w_value) {}

    constexpr VECTOR_4& operator+=(VECTOR_4 b) noexcept { return *this = {x + b.x, y + b.y, z + b.z, w + b.w}; }
    constexpr VECTOR_4& operator-=(VECTOR_4 b) noexcept { return *this = {x - b.x, y - b.y, z - b.z, w - b.w}; }
    constexpr VECTOR_4& operator*=(f32 s) noexcept { return *this = {x * s, y * s, z * s, w * s}; }
    friend constexpr VECTOR_4 operator+(VECTOR_4 a, VECTOR_4 b) noexcept { return a += b; }
    friend constexpr VECTOR_4 operator-(VECTOR_4 a, VECTOR_4 b) noexcept { return a -= b; }
    friend constexpr VECTOR_4 operator-(VECTOR_4 a) noexcept { return {-a.x, -a.y, -a.z, -a.w}; }
    friend constexpr VECTOR_4 operator*(VECTOR_4 a, f32 s) noexcept { return a *= s; }
    friend constexpr bool operator==(VECTOR_4 a, VECTOR_4 b) noexcept = default;
};

} // namespace VOR2_LOADER
