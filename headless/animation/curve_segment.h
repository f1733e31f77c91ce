#pragma once

namespace headless {

/// The stretch of a curve between two keys, ready to be evaluated at any time within it.
class CurveSegment {
public:
    /// One end of a weighted stretch: the control point's offset from its key, into the stretch.
    struct Control {
        double x = 0.0;
        double y = 0.0;
    };

    /// The first key's value up to the second key.
    static CurveSegment hold(double t0, double t1, double v0, double v1);
    /// The second key's value at once behind the first.
    static CurveSegment jump(double t0, double t1, double v0, double v1);
    /// The cubic with the given slopes at its ends.
    static CurveSegment hermite(double t0, double t1, double v0, double v1, double slope0, double slope1);
    /// The Bezier whose inner control points stand off the keys. An offset that points out of the stretch keeps its
    /// height at the key's own time. Where the first is longer than the stretch or the second than twice of it, the
    /// second is shortened until x doesn't turn back. A shorter second that makes x turn back stays; at the times that
    /// the curve then passes more than once it has the first key's value.
    static CurveSegment bezier(double t0, double t1, double v0, double v1, Control out, Control in);

    /// At a time from the first key's to the second's; within `snap` of a key's time, a stretch that jumps there has
    /// the key's own value. Numbers too large to compute with give the first key's value.
    double evaluate(double t) const;
    bool is_hold() const { return kind_ == Kind::hold; }
    /// Seconds within which a time counts as a key's: a clock that counts in another unit misses it by a rounding.
    static double snap(double t0, double t1);

private:
    enum class Kind { hold, jump, hermite, bezier };

    CurveSegment(Kind kind, double t0, double t1, double v0, double v1)
        : kind_(kind), t0_(t0), t1_(t1), v0_(v0), v1_(v1) {}
    void find_what_is_passed_twice();
    double solve(double x) const;

    Kind kind_ = Kind::hold;
    double t0_ = 0.0, t1_ = 0.0, v0_ = 0.0, v1_ = 0.0;
    double c1_ = 0.0, c2_ = 0.0, c3_ = 0.0;    // value less v0 by powers of the parameter
    double x1_ = 0.0, x2_ = 0.0;               // inner control points' times, as parts of the stretch
    double twice_from_ = 1.0, twice_to_ = 0.0; // the part of the stretch that is passed more than once, if any
};

} // namespace headless
