#pragma once

#include <maya/MIOStreamFwd.h>
#include <maya/MTypes.h>

/// A colour with its opacity. The host's value for "no colour" is -1 in all four.
class MColor {
public:
    enum MColorType { kRGB, kHSV, kCMY, kCMYK };

    MColor() = default;
    MColor(float r_, float g_, float b_ = 0.0f, float a_ = 1.0f) : r(r_), g(g_), b(b_), a(a_) {}
    MColor(const float v[4]) : r(v[0]), g(v[1]), b(v[2]), a(v[3]) {}

    float operator()(unsigned int i) const { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    float operator[](unsigned int i) const { return (*this)(i); }
    float& operator[](unsigned int i) { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    MColor operator*(float k) const { return {r * k, g * k, b * k, a * k}; }
    MColor operator+(const MColor& o) const { return {r + o.r, g + o.g, b + o.b, a + o.a}; }
    bool operator==(const MColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
    bool operator!=(const MColor& o) const { return !(*this == o); }

    static const MColor kOpaqueBlack;

    float r = 0.0f, g = 0.0f, b = 0.0f, a = 1.0f;
};
