#pragma once

/// The twelve kinds of tracks, each with the number that stands for it in a file.

#include "format/tracks/track_families.h"

namespace VOR2_LOADER {

/// The kind's number, name and copy.
template<class SELF, class FAMILY, u32 NUMBER>
class TRACK_KIND : public FAMILY {
public:
    static constexpr u32 TYPE_ID = NUMBER;
    [[nodiscard]] u32 type_id() const final { return NUMBER; }
    [[nodiscard]] OWNED<FAMILY> clone() const final { return OWNED<FAMILY>(new SELF(static_cast<const SELF&>(*this))); }
};

/// (to - from) x fraction + from, in that order; neither eased nor clamped.
template<class VALUE>
[[nodiscard]] constexpr VALUE blend(const VALUE& from, const VALUE& to, f32 fraction) {
    return (to - from) * fraction + from;
}
[[nodiscard]] inline QUATERNION blend(const QUATERNION& a, const QUATERNION& b, f32 t) {
    return {(b.x - a.x) * t + a.x, (b.y - a.y) * t + a.y, (b.z - a.z) * t + a.z, (b.w - a.w) * t + a.w};
}
/// Blended corner by corner, so that it stays between its keys, which scaling the difference about its
/// centre would not do.
[[nodiscard]] inline VOR2_BOUNDING_BOX blend(const VOR2_BOUNDING_BOX& from, const VOR2_BOUNDING_BOX& to, f32 fraction) {
    if (fraction == 1.0F) return to;
    return {blend(from.min, to.min, fraction), blend(from.max, to.max, fraction)};
}

/// A straight line between the two keys of the cursor's interval.
template<class SELF, class FAMILY, u32 NUMBER>
class LINEAR_TRACK : public TRACK_KIND<SELF, FAMILY, NUMBER> {
public:
    using VALUE = typename FAMILY::VALUE_TYPE;
    VALUE& value(VALUE& out) const final {
        return out = this->at_cursor(VALUE(), [](const VALUE& a, const VALUE& b, f32 t) { return blend(a, b, t); });
    }

protected:
    SELF& change_each(auto change) {
        for (VALUE& key : this->key_values()) key = change(key);
        return static_cast<SELF&>(*this);
    }
};

template<class SELF, class FAMILY, u32 NUMBER>
class ARITHMETIC_TRACK : public LINEAR_TRACK<SELF, FAMILY, NUMBER> {
public:
    using VALUE = typename FAMILY::VALUE_TYPE;
    FAMILY& add(const VALUE& value) final {
        return this->change_each([&value](const VALUE& key) { return key + value; });
    }
    FAMILY& subtract(const VALUE& value) final { return add(-value); }
    FAMILY& multiply(f32 factor) final {
        return this->change_each([factor](const VALUE& key) { return key * factor; });
    }
    FAMILY& divide(f32 divisor) final { return multiply(1.0F / divisor); }
};

class VOR2_ANIMATABLE_FLOAT32_LINEAR final
    : public TRACK_KIND<VOR2_ANIMATABLE_FLOAT32_LINEAR, VOR2_ANIMATABLE_FLOAT32, 0> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_FLOAT32_LINEAR"; }
    [[nodiscard]] f32 value() const override;
    VOR2_ANIMATABLE_FLOAT32& add(f32 value) override;
    VOR2_ANIMATABLE_FLOAT32& subtract(f32 value) override { return add(-value); }
    VOR2_ANIMATABLE_FLOAT32& multiply(f32 factor) override;
    VOR2_ANIMATABLE_FLOAT32& divide(f32 divisor) override { return multiply(1.0F / divisor); }
};

class VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR final
    : public LINEAR_TRACK<VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR, VOR2_ANIMATABLE_FLOAT32_RANGE, 1> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR"; }
    VOR2_ANIMATABLE_FLOAT32_RANGE& add(const VOR2_FLOAT32_RANGE& value) override;
    VOR2_ANIMATABLE_FLOAT32_RANGE& subtract(const VOR2_FLOAT32_RANGE& value) override { return add(-value); }
};

class VOR2_ANIMATABLE_COLOUR_LINEAR final
    : public LINEAR_TRACK<VOR2_ANIMATABLE_COLOUR_LINEAR, VOR2_ANIMATABLE_COLOUR, 2> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_COLOUR_LINEAR"; }
    VOR2_ANIMATABLE_COLOUR& add(const VOR2_COLOUR& value) override;
    VOR2_ANIMATABLE_COLOUR& subtract(const VOR2_COLOUR& value) override { return add(-value); }
    VOR2_ANIMATABLE_COLOUR& multiply(const VOR2_COLOUR& factors) override;
    VOR2_ANIMATABLE_COLOUR& scale(f32 factor) override;
};

class VOR2_ANIMATABLE_VECTOR_3_LINEAR final
    : public ARITHMETIC_TRACK<VOR2_ANIMATABLE_VECTOR_3_LINEAR, VOR2_ANIMATABLE_VECTOR_3, 3> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_VECTOR_3_LINEAR"; }
};

class VOR2_ANIMATABLE_VECTOR_2_LINEAR final
    : public ARITHMETIC_TRACK<VOR2_ANIMATABLE_VECTOR_2_LINEAR, VOR2_ANIMATABLE_VECTOR_2, 4> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_VECTOR_2_LINEAR"; }
};

/// Settles the signs of rotation keys and turns them; the two kinds differ in `value` alone.
template<class SELF, u32 NUMBER>
class QUATERNION_TRACK : public TRACK_KIND<SELF, VOR2_ANIMATABLE_QUATERNION, NUMBER> {
public:
    VOR2_ANIMATABLE_QUATERNION& rotate(QUATERNION q) final {
        for (QUATERNION& key : this->key_values()) key = key * q;
        return *this;
    }
    void make_continuous() final {
        ARRAY<QUATERNION>& keys = this->key_values();
        for (u64 k = 1; k < keys.size(); ++k) {
            const QUATERNION& p = keys[k - 1];
            QUATERNION& c = keys[k];
            if (p.x * c.x + p.y * c.y + p.z * c.z + p.w * c.w < 0) c = -c;
        }
    }
};

/// On the chord: component by component, not normalised.
class VOR2_ANIMATABLE_QUATERNION_LERP final : public QUATERNION_TRACK<VOR2_ANIMATABLE_QUATERNION_LERP, 5> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_QUATERNION_LERP"; }
    QUATERNION& value(QUATERNION& out) const override;
};

/// On the arc.
class VOR2_ANIMATABLE_QUATERNION_SLERP final : public QUATERNION_TRACK<VOR2_ANIMATABLE_QUATERNION_SLERP, 6> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_QUATERNION_SLERP"; }
    QUATERNION& value(QUATERNION& out) const override;
};

class VOR2_ANIMATABLE_RECTF_LINEAR final
    : public ARITHMETIC_TRACK<VOR2_ANIMATABLE_RECTF_LINEAR, VOR2_ANIMATABLE_RECTF, 7> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_RECTF_LINEAR"; }
};

/// A key's value holds until the cursor stands exactly on the next key. In spite of the name the record
/// has no runs.
class VOR2_ANIMATABLE_INT32_RLE final : public TRACK_KIND<VOR2_ANIMATABLE_INT32_RLE, VOR2_ANIMATABLE_INT32, 8> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_INT32_RLE"; }
    [[nodiscard]] i32 value() const override;
    VOR2_ANIMATABLE_INT32& add(i32) override { return *this; }
    VOR2_ANIMATABLE_INT32& subtract(i32) override { return *this; }
    VOR2_ANIMATABLE_INT32& multiply(i32) override { return *this; }
    VOR2_ANIMATABLE_INT32& divide(i32) override { return *this; }
};

class VOR2_ANIMATABLE_VECTOR_4_LINEAR final
    : public ARITHMETIC_TRACK<VOR2_ANIMATABLE_VECTOR_4_LINEAR, VOR2_ANIMATABLE_VECTOR_4, 9> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_VECTOR_4_LINEAR"; }
};

class VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR final
    : public LINEAR_TRACK<VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR, VOR2_ANIMATABLE_BINORMAL_TANGENT, 10> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR"; }
};

class VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR final
    : public ARITHMETIC_TRACK<VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR, VOR2_ANIMATABLE_BOUNDING_BOX, 11> {
public:
    [[nodiscard]] std::string_view class_name() const override { return "VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR"; }
};

CLASSES<VOR2_ANIMATABLE_FLOAT32_LINEAR> classes_of(const VOR2_ANIMATABLE_FLOAT32*);
CLASSES<VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR> classes_of(const VOR2_ANIMATABLE_FLOAT32_RANGE*);
CLASSES<VOR2_ANIMATABLE_COLOUR_LINEAR> classes_of(const VOR2_ANIMATABLE_COLOUR*);
CLASSES<VOR2_ANIMATABLE_VECTOR_3_LINEAR> classes_of(const VOR2_ANIMATABLE_VECTOR_3*);
CLASSES<VOR2_ANIMATABLE_VECTOR_2_LINEAR> classes_of(const VOR2_ANIMATABLE_VECTOR_2*);
CLASSES<VOR2_ANIMATABLE_QUATERNION_LERP, VOR2_ANIMATABLE_QUATERNION_SLERP>
classes_of(const VOR2_ANIMATABLE_QUATERNION*);
CLASSES<VOR2_ANIMATABLE_RECTF_LINEAR> classes_of(const VOR2_ANIMATABLE_RECTF*);
CLASSES<VOR2_ANIMATABLE_INT32_RLE> classes_of(const VOR2_ANIMATABLE_INT32*);
CLASSES<VOR2_ANIMATABLE_VECTOR_4_LINEAR> classes_of(const VOR2_ANIMATABLE_VECTOR_4*);
CLASSES<VOR2_ANIMATABLE_BINORMAL_TANGENT_LINEAR> classes_of(const VOR2_ANIMATABLE_BINORMAL_TANGENT*);
CLASSES<VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR> classes_of(const VOR2_ANIMATABLE_BOUNDING_BOX*);

/// Spherical interpolation of unit quaternions (Shoemake 1985) along the arc that their signs give, the
/// long one where their dot product is negative. Above a dot product of 0.99 it blends component by
/// component and doesn't normalise. Exactly opposed keys, between which no arc is defined, give the key
/// that is nearer.
[[nodiscard]] QUATERNION slerp(const QUATERNION& a, const QUATERNION& b, f32 t);

} // namespace VOR2_LOADER
