#include "format/tracks/tracks.h"

#include <cmath>

namespace VOR2_LOADER {
namespace {

/// `dot` is that of the two keys.
QUATERNION blend_on_arc(const QUATERNION& a, const QUATERNION& b, f32 t, f32 dot) {
    // Opposed up to rounding: the sine of the float nearest to pi is some 1e-7, and all below would be noise.
    if (dot <= -1.0F && dot > -1.00001F) return t < 0.5F ? a : b;
    const f32 theta = std::acos(dot);
    const f32 s = 1.0F / std::sin(theta);
    const f32 k0 = std::sin((1.0F - t) * theta) * s;
    const f32 k1 = std::sin(theta * t) * s;
    return {a.x * k0 + b.x * k1, a.y * k0 + b.y * k1, a.z * k0 + b.z * k1, a.w * k0 + b.w * k1};
}

/// Most keys are so near each other that they blend component by component, which is inlined where values are asked
/// for.
inline QUATERNION blend_rotations(const QUATERNION& a, const QUATERNION& b, f32 t) {
    const f32 dot = a.x * b.x + a.w * b.w + a.y * b.y + a.z * b.z;
    return dot > 0.99F ? blend(a, b, t) : blend_on_arc(a, b, t, dot);
}

} // namespace

OWNED<VOR2_ANIMATABLE_FLOAT32> VOR2_ANIMATABLE_FLOAT32::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_FLOAT32>(type_id);
}
OWNED<VOR2_ANIMATABLE_FLOAT32_RANGE> VOR2_ANIMATABLE_FLOAT32_RANGE::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_FLOAT32_RANGE>(type_id);
}
OWNED<VOR2_ANIMATABLE_COLOUR> VOR2_ANIMATABLE_COLOUR::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_COLOUR>(type_id);
}
OWNED<VOR2_ANIMATABLE_VECTOR_3> VOR2_ANIMATABLE_VECTOR_3::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_VECTOR_3>(type_id);
}
OWNED<VOR2_ANIMATABLE_VECTOR_2> VOR2_ANIMATABLE_VECTOR_2::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_VECTOR_2>(type_id);
}
OWNED<VOR2_ANIMATABLE_QUATERNION> VOR2_ANIMATABLE_QUATERNION::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_QUATERNION>(type_id);
}
OWNED<VOR2_ANIMATABLE_RECTF> VOR2_ANIMATABLE_RECTF::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_RECTF>(type_id);
}
OWNED<VOR2_ANIMATABLE_INT32> VOR2_ANIMATABLE_INT32::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_INT32>(type_id);
}
OWNED<VOR2_ANIMATABLE_VECTOR_4> VOR2_ANIMATABLE_VECTOR_4::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_VECTOR_4>(type_id);
}
OWNED<VOR2_ANIMATABLE_BINORMAL_TANGENT> VOR2_ANIMATABLE_BINORMAL_TANGENT::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_BINORMAL_TANGENT>(type_id);
}
OWNED<VOR2_ANIMATABLE_BOUNDING_BOX> VOR2_ANIMATABLE_BOUNDING_BOX::make_track(u32 type_id) {
    return make_of_kind<VOR2_ANIMATABLE_BOUNDING_BOX>(type_id);
}

f32 VOR2_ANIMATABLE_FLOAT32_LINEAR::value() const {
    return at_cursor(0.0F, [](f32 a, f32 b, f32 t) { return blend(a, b, t); });
}
VOR2_ANIMATABLE_FLOAT32& VOR2_ANIMATABLE_FLOAT32_LINEAR::add(f32 value) {
    for (f32& key : key_values()) key += value;
    return *this;
}
VOR2_ANIMATABLE_FLOAT32& VOR2_ANIMATABLE_FLOAT32_LINEAR::multiply(f32 factor) {
    for (f32& key : key_values()) key *= factor;
    return *this;
}

VOR2_ANIMATABLE_FLOAT32_RANGE& VOR2_ANIMATABLE_FLOAT32_RANGE_LINEAR::add(const VOR2_FLOAT32_RANGE& value) {
    return change_each([&value](const VOR2_FLOAT32_RANGE& key) { return key + value; });
}

VOR2_ANIMATABLE_COLOUR& VOR2_ANIMATABLE_COLOUR_LINEAR::add(const VOR2_COLOUR& value) {
    return change_each([&value](const VOR2_COLOUR& key) { return key + value; });
}
VOR2_ANIMATABLE_COLOUR& VOR2_ANIMATABLE_COLOUR_LINEAR::multiply(const VOR2_COLOUR& factors) {
    return change_each([&factors](const VOR2_COLOUR& key) { return key * factors; });
}
VOR2_ANIMATABLE_COLOUR& VOR2_ANIMATABLE_COLOUR_LINEAR::scale(f32 factor) {
    return change_each([factor](const VOR2_COLOUR& key) { return key * factor; });
}

i32 VOR2_ANIMATABLE_INT32_RLE::value() const {
    return at_cursor(0, [](i32 a, i32 b, f32 t) { return t == 1.0F ? b : a; });
}

QUATERNION& VOR2_ANIMATABLE_QUATERNION_LERP::value(QUATERNION& out) const {
    return out = at_cursor(QUATERNION::identity(),
                           [](const QUATERNION& a, const QUATERNION& b, f32 t) { return blend(a, b, t); });
}

QUATERNION& VOR2_ANIMATABLE_QUATERNION_SLERP::value(QUATERNION& out) const {
    return out = at_cursor(QUATERNION::identity(), blend_rotations);
}

QUATERNION slerp(const QUATERNION& a, const QUATERNION& b, f32 t) {
    return blend_rotations(a, b, t);
}

} // namespace VOR2_LOADER
