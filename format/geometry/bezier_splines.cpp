#include "format/geometry/bezier_splines.h"

#include "format/core/record_operations.h"

#include <cmath>

namespace VOR2_LOADER {
namespace {

/// Row d holds the d + 1 numbers d! / ((d - i)! i!).
constexpr f32 BINOMIALS[VOR2_IBEZIER_CURVE::HIGHEST_DEGREE + 1][4] = {{1}, {1, 1}, {1, 2, 1}, {1, 3, 3, 1}};

f32 weight_of(u32 degree, u32 i, f32 t) {
    const f32 rising = std::pow(t, static_cast<f32>(i));
    const f32 falling = std::pow(1.0F - t, static_cast<f32>(degree - i));
    return BINOMIALS[degree][i] * rising * falling;
}

VECTOR_3 point_of(const VECTOR_3& control) {
    return control;
}
VECTOR_3 point_of(const OWNED<VOR2_ANIMATABLE_VECTOR_3>& control) {
    VECTOR_3 point{0.0F, 0.0F, 0.0F};
    if (control) control->value(point);
    return point;
}

} // namespace

template<class SELF>
VECTOR_3& BEZIER_CURVE<SELF>::position_at(VECTOR_3& out, f32 t) const {
    out = {0.0F, 0.0F, 0.0F};
    const auto controls = static_cast<const SELF&>(*this).controls();
    for (u32 i = 0; i < controls.size(); ++i) out += point_of(controls[i]) * weight_of(this->degree, i, t);
    return out;
}

template<class SELF>
VECTOR_3& BEZIER_CURVE<SELF>::tangent_at(VECTOR_3& out, f32 t) const {
    out = {0.0F, 0.0F, 0.0F};
    const auto controls = static_cast<const SELF&>(*this).controls();
    for (u32 i = 0; i + 1 < controls.size(); ++i) {
        out += (point_of(controls[i + 1]) - point_of(controls[i])) * weight_of(this->degree, i, t);
    }
    return out;
}

template<class SELF, class CURVE>
void BEZIER_CHAIN<SELF, CURVE>::link_curves() noexcept {
    const auto all = static_cast<const SELF&>(*this).controls();
    u64 first = 0;
    for (CURVE& curve : curves) {
        const bool is_whole = curve.degree <= CURVE::HIGHEST_DEGREE && first + curve.degree < all.size();
        curve.link(is_whole ? all.subspan(first, curve.degree + 1) : all.first(0));
        first += curve.degree;
    }
}

template<class SELF, class CURVE>
typename BEZIER_CHAIN<SELF, CURVE>::PLACE BEZIER_CHAIN<SELF, CURVE>::find(f32 t) const {
    const f32 count = static_cast<f32>(curves.size());
    const f32 v = t / (1.0F / count);
    const u64 index = !(count > v) ? curves.size() - 1 : v > 0 ? static_cast<u64>(v) : 0;
    return {&curves[index], v - static_cast<f32>(index)};
}

template<class SELF, class CURVE>
VECTOR_3& BEZIER_CHAIN<SELF, CURVE>::position_at(VECTOR_3& out, f32 t) const {
    if (curves.empty()) return out = {0.0F, 0.0F, 0.0F};
    const PLACE place = find(t);
    return place.curve->position_at(out, place.t);
}

template<class SELF, class CURVE>
VECTOR_3& BEZIER_CHAIN<SELF, CURVE>::tangent_at(VECTOR_3& out, f32 t) const {
    if (curves.empty()) return out = {0.0F, 0.0F, 0.0F};
    const PLACE place = find(t);
    return place.curve->tangent_at(out, place.t);
}

template<class SELF, class CURVE>
f32 BEZIER_CHAIN<SELF, CURVE>::total_length() const {
    f32 sum = 0;
    for (const CURVE& curve : curves) sum += curve.length;
    return sum;
}

template class BEZIER_CURVE<VOR2_RIGID_BEZIER_CURVE>;
template class BEZIER_CURVE<VOR2_ANIM_BEZIER_CURVE>;
template class BEZIER_CHAIN<VOR2_RIGID_BEZIER_SPLINE, VOR2_RIGID_BEZIER_CURVE>;
template class BEZIER_CHAIN<VOR2_ANIM_BEZIER_SPLINE, VOR2_ANIM_BEZIER_CURVE>;

VOR2_RIGID_BEZIER_SPLINE::VOR2_RIGID_BEZIER_SPLINE(const VOR2_RIGID_BEZIER_SPLINE& source)
    : RECORDED(source), points(source.points) {
    link_curves();
}

VOR2_RIGID_BEZIER_SPLINE& VOR2_RIGID_BEZIER_SPLINE::operator=(const VOR2_RIGID_BEZIER_SPLINE& source) {
    if (this == &source) return *this;
    curves = source.curves;
    points = source.points;
    link_curves();
    return *this;
}

bool VOR2_RIGID_BEZIER_SPLINE::load(VOR2_INPUT_BUFFER& buffer, f32 version) {
    const bool loaded = RECORDED::load(buffer, version);
    link_curves();
    return loaded;
}

VOR2_ANIM_BEZIER_SPLINE::VOR2_ANIM_BEZIER_SPLINE(const VOR2_ANIM_BEZIER_SPLINE& source)
    : ANIMATED_RECORD(source), point_tracks(source.point_tracks) {
    link_curves();
}

VOR2_ANIM_BEZIER_SPLINE& VOR2_ANIM_BEZIER_SPLINE::operator=(const VOR2_ANIM_BEZIER_SPLINE& source) {
    if (this == &source) return *this;
    curves = source.curves;
    point_tracks = source.point_tracks;
    link_curves();
    return *this;
}

bool VOR2_ANIM_BEZIER_SPLINE::load(VOR2_INPUT_BUFFER& buffer, f32 version) {
    const bool loaded = RECORDED::load(buffer, version);
    link_curves();
    return loaded;
}

template struct RECORD_OPERATIONS<VOR2_IBEZIER_CURVE>;
template struct RECORD_OPERATIONS<VOR2_RIGID_BEZIER_CURVE>;
template struct RECORD_OPERATIONS<VOR2_ANIM_BEZIER_CURVE>;
template struct RECORD_OPERATIONS<VOR2_RIGID_BEZIER_SPLINE>;
template struct RECORD_OPERATIONS<VOR2_ANIM_BEZIER_SPLINE>;
template struct RECORD_OPERATIONS<VOR2_BEZIER_SPLINE_OBJECT>;

} // namespace VOR2_LOADER
