#pragma once

/// Small values with records of their own, the same in every file version: a colour, a box, a pair of
/// vectors, a rectangle and a range. Tracks hold them as key values, vertices as fields.

#include "format/core/record.h"

namespace VOR2_LOADER {

/// Not clamped anywhere. 16 bytes.
class VOR2_COLOUR : public RECORDED<VOR2_COLOUR, VOR2_SERIALISABLE_OBJECT> {
public:
    f32 red = 0, green = 0, blue = 0, alpha = 0; ///< fully transparent black by default

    VOR2_COLOUR() = default;
    VOR2_COLOUR(f32 r, f32 g, f32 b, f32 a) noexcept : red(r), green(g), blue(b), alpha(a) {}
    static constexpr auto record() {
        using C = VOR2_COLOUR;
        return RECORD("VOR2_COLOUR", value("red", &C::red), value("green", &C::green), value("blue", &C::blue),
                      value("alpha", &C::alpha));
    }
    friend VOR2_COLOUR operator+(const VOR2_COLOUR& a, const VOR2_COLOUR& b) {
        return {a.red + b.red, a.green + b.green, a.blue + b.blue, a.alpha + b.alpha};
    }
    friend VOR2_COLOUR operator-(const VOR2_COLOUR& a, const VOR2_COLOUR& b) {
        return {a.red - b.red, a.green - b.green, a.blue - b.blue, a.alpha - b.alpha};
    }
    friend VOR2_COLOUR operator-(const VOR2_COLOUR& a) { return {-a.red, -a.green, -a.blue, -a.alpha}; }
    friend VOR2_COLOUR operator*(const VOR2_COLOUR& a, f32 s) {
        return {a.red * s, a.green * s, a.blue * s, a.alpha * s};
    }
    /// Component by component.
    friend VOR2_COLOUR operator*(const VOR2_COLOUR& a, const VOR2_COLOUR& b) {
        return {a.red * b.red, a.green * b.green, a.blue * b.blue, a.alpha * b.alpha};
    }
};

/// 24 bytes. A box that nothing has been added to has `min` above `max`; note that the default `max` is
/// the smallest positive normal number, not the most negative one.
class VOR2_BOUNDING_BOX : public RECORDED<VOR2_BOUNDING_BOX, VOR2_SERIALISABLE_OBJECT> {
public:
    VECTOR_3 min{3.40282347e+38F, 3.40282347e+38F, 3.40282347e+38F};
    VECTOR_3 max{1.17549435e-38F, 1.17549435e-38F, 1.17549435e-38F};

    VOR2_BOUNDING_BOX() = default;
    VOR2_BOUNDING_BOX(VECTOR_3 least, VECTOR_3 most) noexcept : min(least), max(most) {}
    VOR2_BOUNDING_BOX(f32 x0, f32 y0, f32 z0, f32 x1, f32 y1, f32 z1) noexcept : min(x0, y0, z0), max(x1, y1, z1) {}
    static constexpr auto record() {
        using C = VOR2_BOUNDING_BOX;
        return RECORD("VOR2_BOUNDING_BOX", value("min", &C::min), value("max", &C::max));
    }
    friend VOR2_BOUNDING_BOX operator+(const VOR2_BOUNDING_BOX& a, const VOR2_BOUNDING_BOX& b) {
        return {a.min + b.min, a.max + b.max};
    }
    friend VOR2_BOUNDING_BOX operator-(const VOR2_BOUNDING_BOX& a, const VOR2_BOUNDING_BOX& b) {
        return {a.min - b.min, a.max - b.max};
    }
    /// Each corner in its place: the two aren't swapped.
    friend VOR2_BOUNDING_BOX operator-(const VOR2_BOUNDING_BOX& a) { return {-a.min, -a.max}; }
    /// About the box's own centre: above 1 it grows, and a negative number turns it inside out.
    friend VOR2_BOUNDING_BOX operator*(const VOR2_BOUNDING_BOX& a, f32 s) {
        const VECTOR_3 centre = (a.min + a.max) * 0.5F;
        const VECTOR_3 extent = (a.max - centre) * s;
        return {centre - extent, extent + centre};
    }
};

/// The tangent frame of a vertex but for its normal. 24 bytes.
class VOR2_BINORMAL_TANGENT : public RECORDED<VOR2_BINORMAL_TANGENT, VOR2_SERIALISABLE_OBJECT> {
public:
    VECTOR_3 binormal{0.0F, 0.0F, 0.0F};
    VECTOR_3 tangent{0.0F, 0.0F, 0.0F};

    VOR2_BINORMAL_TANGENT() = default;
    VOR2_BINORMAL_TANGENT(VECTOR_3 b, VECTOR_3 t) noexcept : binormal(b), tangent(t) {}
    static constexpr auto record() {
        using C = VOR2_BINORMAL_TANGENT;
        return RECORD("VOR2_BINORMAL_TANGENT", value("binormal", &C::binormal), value("tangent", &C::tangent));
    }
    /// Gives each vector unit length by itself; one whose squared length isn't above 0.01 stays.
    void normalise_pair() noexcept {
        for (VECTOR_3* vector : {&binormal, &tangent}) {
            const f32 squared = vector->length_squared();
            if (squared > 0.01F) *vector *= 1.0F / std::sqrt(squared);
        }
    }
    friend VOR2_BINORMAL_TANGENT operator+(const VOR2_BINORMAL_TANGENT& a, const VOR2_BINORMAL_TANGENT& b) {
        return {a.binormal + b.binormal, a.tangent + b.tangent};
    }
    friend VOR2_BINORMAL_TANGENT operator-(const VOR2_BINORMAL_TANGENT& a, const VOR2_BINORMAL_TANGENT& b) {
        return {a.binormal - b.binormal, a.tangent - b.tangent};
    }
    friend VOR2_BINORMAL_TANGENT operator*(const VOR2_BINORMAL_TANGENT& a, f32 s) {
        return {a.binormal * s, a.tangent * s};
    }
};

/// A rectangle by two corners; all four numbers are treated alike. 16 bytes.
class VOR2_RECTF : public RECORDED<VOR2_RECTF, VOR2_SERIALISABLE_OBJECT> {
public:
    VECTOR_2 first{0.0F, 0.0F};
    VECTOR_2 second{1.0F, 1.0F};

    VOR2_RECTF() = default;
    VOR2_RECTF(VECTOR_2 a, VECTOR_2 b) noexcept : first(a), second(b) {}
    VOR2_RECTF(f32 x0, f32 y0, f32 x1, f32 y1) noexcept : first(x0, y0), second(x1, y1) {}
    static constexpr auto record() {
        using C = VOR2_RECTF;
        return RECORD("VOR2_RECTF", value("first", &C::first), value("second", &C::second));
    }
    friend VOR2_RECTF operator+(const VOR2_RECTF& a, const VOR2_RECTF& b) {
        return {a.first + b.first, a.second + b.second};
    }
    friend VOR2_RECTF operator-(const VOR2_RECTF& a, const VOR2_RECTF& b) {
        return {a.first - b.first, a.second - b.second};
    }
    friend VOR2_RECTF operator-(const VOR2_RECTF& a) { return {-a.first, -a.second}; }
    friend VOR2_RECTF operator*(const VOR2_RECTF& a, f32 s) { return {a.first * s, a.second * s}; }
};

/// Nothing keeps `start` below `end`. 8 bytes.
class VOR2_FLOAT32_RANGE : public RECORDED<VOR2_FLOAT32_RANGE, VOR2_SERIALISABLE_OBJECT> {
public:
    f32 start = 0, end = 0;

    VOR2_FLOAT32_RANGE() = default;
    VOR2_FLOAT32_RANGE(f32 from, f32 to) noexcept : start(from), end(to) {}
    static constexpr auto record() {
        using C = VOR2_FLOAT32_RANGE;
        return RECORD("VOR2_FLOAT32_RANGE", value("start", &C::start), value("end", &C::end));
    }
    friend VOR2_FLOAT32_RANGE operator+(const VOR2_FLOAT32_RANGE& a, const VOR2_FLOAT32_RANGE& b) {
        return {a.start + b.start, a.end + b.end};
    }
    friend VOR2_FLOAT32_RANGE operator-(const VOR2_FLOAT32_RANGE& a, const VOR2_FLOAT32_RANGE& b) {
        return {a.start - b.start, a.end - b.end};
    }
    friend VOR2_FLOAT32_RANGE operator-(const VOR2_FLOAT32_RANGE& a) { return {-a.start, -a.end}; }
    friend VOR2_FLOAT32_RANGE operator*(const VOR2_FLOAT32_RANGE& a, f32 s) { return {a.start * s, a.end * s}; }
};

} // namespace VOR2_LOADER
