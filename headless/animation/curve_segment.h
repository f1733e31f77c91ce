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
    /// height at the key's own time, one that passes the other key is shortened to end at its time; so x never turns
    /// back and there is one value at each time.
    static CurveSegment bezier(double t0, double t1, double v0, double v1, Control out, Control in);

    /// At a time from the first key's to the second's; within `snap` of a key's time, a stretch that jumps there has
    /// the key's own value. Numbers too large to compute with give the first key's value.
    double evaluate(double t) const;
    /// Seconds within which a time counts as a key's: a clock that counts in another unit misses it by a rounding.
    static double snap(double t0, double t1);

private:
    enum class Kind { hold, jump, hermite, bezier };

    CurveSegment(Kind kind, double t0, double t1, double v0, double v1)
        : kind_(kind), t0_(t0), t1_(t1), v0_(v0), v1_(v1) {}
    double solve(double x) const;

    Kind kind_ = Kind::hold;
    double t0_ = 0.0, t1_ = 0.0, v0_ = 0.0, v1_ = 0.0;
    double c1_ = 0.0, c2_ = 0.0, c3_ = 0.0; // value less v0 by powers of the parameter
    double x1_ = 0.0, x2_ = 0.0;            // inner control points' times, as parts of the stretch
};

} // namespace headless
