#include "headless/animation/curve_segment.h"

#include <algorithm>
#include <cmath>

namespace headless {
namespace {

CurveSegment::Control limited(CurveSegment::Control control, double span) {
    if (!(control.x > 0.0)) return {0.0, control.y};
    if (control.x > span) return {span, control.y * (span / control.x)};
    return control;
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
    out = limited(out, span);
    in = limited(in, span);
    made.x1_ = out.x / span;
    made.x2_ = 1.0 - in.x / span;
    const double rise = v1 - v0, y1 = out.y, y2 = rise - in.y;
    made.c1_ = 3.0 * y1;
    made.c2_ = 3.0 * (y2 - 2.0 * y1);
    made.c3_ = rise + 3.0 * (y1 - y2);
    return made;
}

// The parameter at which the Bezier's x is the given part of the stretch. Newton's steps, but never out of the
// bracket that shrinks around the root: where x stands still they would fly off.
double CurveSegment::solve(double x) const {
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
