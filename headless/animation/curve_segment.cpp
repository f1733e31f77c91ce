#include "headless/animation/curve_segment.h"

#include <algorithm>
#include <cmath>

namespace headless {
namespace {

// Shortens the offsets, as parts of the stretch, until the Bezier's x doesn't turn back: both lie within the ellipse
// x1^2 + x2^2 - 2 (x1 + x2) + x1 x2 + 1 <= 0 where one is longer than the stretch.
void keep_from_turning_back(double& x1, double& x2) {
    if (!(x1 > 1.0 || x2 > 1.0) || x1 * (x1 - 2.0 + x2) + x2 * (x2 - 2.0) + 1.0 <= 0.0) return;
    if (x1 >= 4.0 / 3.0) {
        x1 = 4.0 / 3.0;
        x2 = 1.0 / 3.0;
        return;
    }
    const double middle = 2.0 - x1, apart = std::sqrt(middle * middle - 4.0 * (x1 - 1.0) * (x1 - 1.0));
    x2 = std::clamp(x2, 0.5 * (middle - apart), 0.5 * (middle + apart));
}

} // namespace

double CurveSegment::snap(double t0, double t1) {
    return std::min(1e-7, (t1 - t0) * 1e-3);
}

CurveSegment CurveSegment::hold(double t0, double t1, double v0, double v1) {
    return {Kind::hold, t0, t1, v0, v1};
}

CurveSegment CurveSegment::jump(double t0, double t1, double v0, double v1) {
    return {Kind::jump, t0, t1, v0, v1};
}

CurveSegment CurveSegment::hermite(double t0, double t1, double v0, double v1, double slope0, double slope1) {
    CurveSegment out(Kind::hermite, t0, t1, v0, v1);
    const double rise = v1 - v0, rise0 = slope0 * (t1 - t0), rise1 = slope1 * (t1 - t0);
    out.c1_ = rise0;
    out.c2_ = 3.0 * rise - 2.0 * rise0 - rise1;
    out.c3_ = rise0 + rise1 - 2.0 * rise;
    return out;
}

CurveSegment CurveSegment::bezier(double t0, double t1, double v0, double v1, Control out, Control in) {
    CurveSegment made(Kind::bezier, t0, t1, v0, v1);
    const double span = t1 - t0;
    const double x1 = std::max(out.x, 0.0) / span, x2 = std::max(in.x, 0.0) / span;
    double kept1 = x1, kept2 = x2;
    if (x1 > 1.0 || x2 > 2.0) keep_from_turning_back(kept1, kept2);
    if (kept1 != x1) out.y *= kept1 / x1;
    if (kept2 != x2 && x2 > 0.0) in.y *= kept2 / x2;
    made.x1_ = kept1;
    made.x2_ = 1.0 - kept2;
    made.find_what_is_passed_twice();
    const double rise = v1 - v0, y1 = out.y, y2 = rise - in.y;
    made.c1_ = 3.0 * y1;
    made.c2_ = 3.0 * (y2 - 2.0 * y1);
    made.c3_ = rise + 3.0 * (y1 - y2);
    return made;
}

// Where x turns back, at the roots of its derivative, it goes on from a greater x than it returns to.
void CurveSegment::find_what_is_passed_twice() {
    const double a = x1_, b = x2_ - 2.0 * x1_, c = 1.0 + 3.0 * (x1_ - x2_); // x' / 3 = a + 2 b u + c u^2
    const double square = b * b - a * c;
    if (!(square > 0.0) || c == 0.0) return;
    const double root = std::sqrt(square), u1 = (-b - root) / c, u2 = (-b + root) / c;
    const double first = std::min(u1, u2), second = std::max(u1, u2);
    if (!(first > 0.0 && second < 1.0)) return;
    const auto x = [&](double u) { return ((c * u + 3.0 * b) * u + 3.0 * a) * u; };
    twice_from_ = x(second);
    twice_to_ = x(first);
}

// The parameter at which the Bezier's x is the given part of the stretch. Newton's steps, but never out of the
// bracket that shrinks around the root: where x stands still they would fly off.
double CurveSegment::solve(double x) const {
    if (x > twice_from_ && x < twice_to_) return 0.0;
    const double a = 3.0 * x1_, b = 3.0 * (x2_ - 2.0 * x1_), c = 1.0 + 3.0 * (x1_ - x2_);
    double low = 0.0, high = 1.0, u = x;
    for (int i = 0; i < 100; ++i) {
        const double error = ((c * u + b) * u + a) * u - x;
        if (error == 0.0) return u;
        (error < 0.0 ? low : high) = u;
        const double slope = (3.0 * c * u + 2.0 * b) * u + a;
        double next = u - error / slope;
        if (!(next > low && next < high)) next = 0.5 * (low + high);
        if (std::abs(next - u) <= 1e-16 || next == low || next == high) return next;
        u = next;
    }
    return u;
}

double CurveSegment::evaluate(double t) const {
    if (kind_ == Kind::hold) return t1_ - t <= snap(t0_, t1_) ? v1_ : v0_;
    if (kind_ == Kind::jump) return t - t0_ <= snap(t0_, t1_) ? v0_ : v1_;
    if (t <= t0_) return v0_;
    if (t >= t1_) return v1_;
    const double part = (t - t0_) / (t1_ - t0_);
    const double u = kind_ == Kind::bezier ? solve(part) : part;
    const double value = v0_ + u * (c1_ + u * (c2_ + u * c3_));
    return std::isfinite(value) ? value : v0_;
}

} // namespace headless
