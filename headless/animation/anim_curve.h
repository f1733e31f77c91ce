#pragma once

#include "headless/animation/curve_segment.h"
#include "headless/animation/key_times.h"
#include "headless/animation/tangents.h"

#include <optional>
#include <span>

namespace headless {

/// What few keys have: nothing is kept until a key has another value than the usual one.
template<typename T>
class KeyColumn {
public:
    explicit KeyColumn(T usual) : usual_(usual) {}

    bool empty() const { return values_.empty(); } ///< every key has the usual value
    T operator[](std::size_t i) const { return i < values_.size() ? values_[i] : usual_; }
    void set(std::size_t i, T value, std::size_t count) {
        if (values_.size() < count && (value != usual_ || !values_.empty())) values_.resize(count, usual_);
        if (i < values_.size()) values_[i] = value;
    }
    void insert(std::size_t at) {
        if (at < values_.size()) values_.insert(values_.begin() + static_cast<std::ptrdiff_t>(at), usual_);
    }
    void erase(std::size_t first, std::size_t last) {
        last = last < values_.size() ? last : values_.size();
        if (first < last)
            values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(first),
                          values_.begin() + static_cast<std::ptrdiff_t>(last));
    }

private:
    T usual_;
    std::vector<T> values_;
};

/// A key told whole.
struct CurveKey {
    double time = 0.0;  ///< seconds; of a driven curve, the driver's unit
    double value = 0.0; ///< centimetres, radians, seconds or plain
    Tangent in = Tangent::by_default, out = Tangent::by_default;
    TangentVector in_vector, out_vector; ///< count on a side that is `fixed`; kept for all
    bool tangents_locked = true, weights_locked = true, breakdown = false;
    bool operator==(const CurveKey&) const = default;
};

/// The keys of an animation curve and its value between and beyond them.
///
/// Evaluation wants keys in order: finite times and values, times rising. `ordered` says whether they are;
/// `in_order` gives them so.
///
/// Slopes, where d is the rise over the run of a stretch between keys, on a key's side toward the stretch:
/// - linear d; flat and step 0; stepnext 1; slow 0; fast 2d; fixed y/x, `max_slope` where x isn't positive, or 0 there
///   if weighted;
/// - spline: (next - previous value) / (next - previous time), and `max_slope` where these times are less than
///   `shortest_run` apart; at an end key the d of its one stretch;
/// - clamped: as spline, but 0 where a neighbour's value, on either side, is within `near_values` of the key's;
/// - plateau and auto: as spline, but 0 at an end key and where the values on both sides aren't on opposite sides of
///   the key's; where it exceeds 3 times the smaller d, which keeps each stretch within its keys' values, auto is
///   that and plateau 0.
/// A side without a neighbour is level if linear; a spline or clamped one goes on as on the side with a neighbour.
///
/// Between keys: by the first key's out type it holds (step) or jumps (stepnext, but it holds when a stretch that holds
/// was played right before); else not weighted the cubic with both slopes, weighted the Bezier with both vectors. A
/// weighted tangent that isn't fixed is as long as the stretch, a stepped one has no length, and a stepnext one on the
/// way in is endless. All this is what the real host's published evaluation does.
class AnimCurve {
public:
    static constexpr double max_slope = 5729577.95;
    static constexpr double near_values = 0.05;
    static constexpr double shortest_run = 1e-4;

    std::size_t size() const { return times_.size(); }
    const KeyTimes& times() const { return times_; }
    std::span<const double> values() const { return values_; }
    CurveKey key(std::size_t i) const;
    Tangent in_type(std::size_t i) const { return resolved(in_types_[i]); } ///< never `by_default`
    Tangent out_type(std::size_t i) const { return resolved(out_types_[i]); }
    bool has_tangent_types() const { return !in_types_.empty() || !out_types_.empty(); }
    bool has_vectors() const { return !in_vectors_.empty() || !out_vectors_.empty(); }
    bool has_breakdowns() const { return !breakdowns_.empty(); }

    Tangent tangent() const { return tangent_; } ///< of sides that say `by_default`
    bool weighted() const { return weighted_; }
    Infinity before = Infinity::constant, behind = Infinity::constant;

    // Editing. Places are those of the keys as they stand, whatever their times.
    void set_tangent(Tangent type);
    void set_weighted(bool on);
    void append(double time, double value);
    void insert(std::size_t at, const CurveKey& key);
    void set_key(std::size_t at, const CurveKey& key);
    void set_time(std::size_t at, double time);
    void set_value(std::size_t at, double value);
    void set_types(std::size_t at, Tangent in, Tangent out);
    void erase(std::size_t first, std::size_t last); ///< up to but without `last`
    /// All keys at once, with one type on every side; the shorter list counts.
    void assign(KeyTimes times, std::vector<double> values, Tangent tangent);
    /// Lets curves that are about to be keyed at the same times keep them once. Only for a curve without keys.
    void share_times(const AnimCurve& other) { times_.share(other.times_); }

    // Looking up, for keys in order.
    bool ordered() const;
    /// The keys in order of time: those that aren't finite left out, of several at one time the last placed kept, or
    /// the one of the highest rank where `ranks` gives each key one.
    AnimCurve in_order(std::span<const int> ranks = {}) const;
    /// The place of the key within `tolerance` of a time (the nearest); nothing when there is none.
    std::optional<std::size_t> find(double time, double tolerance) const;
    std::size_t first_at_or_behind(double time) const;
    double in_slope(std::size_t i) const;
    double out_slope(std::size_t i) const;
    /// The value at a time. A curve without keys is 0. A time that is no number reads as the first key's; beyond the
    /// ends the infinities go on from the end keys, where rounds of a cycle meet a time belongs to the round farther
    /// from the keys, and where that gives no finite number, the end key's value. Steps on from the stretch last asked
    /// for, so that times that rise by less than a stretch cost no search.
    double evaluate(double time) const;

private:
    enum class Side { in, out };
    /// A time that the keys are played: which way, and whether a round went before it, that way or the other.
    struct Round {
        bool backward = false, follows = false, turned = false;
        bool operator==(const Round&) const = default;
    };

    Tangent resolved(Tangent type) const { return type == Tangent::by_default ? tangent_ : type; }
    double slope(std::size_t i, Side side) const;
    double smooth_slope(std::size_t i, Tangent type) const;
    bool is_near_a_neighbour(std::size_t i) const;
    TangentVector weighted_vector(std::size_t i, Side side, double span) const;
    bool holds(std::size_t i, Round round) const;
    CurveSegment segment(std::size_t i, Round round) const;
    double within(double time, Round round) const;
    double beyond(double time, bool is_before) const;
    void changed() const { segment_at_ = none; }

    Tangent tangent_ = Tangent::automatic;
    bool weighted_ = false;
    KeyTimes times_;
    std::vector<double> values_;
    KeyColumn<Tangent> in_types_{Tangent::by_default}, out_types_{Tangent::by_default};
    KeyColumn<TangentVector> in_vectors_{TangentVector{}}, out_vectors_{TangentVector{}};
    KeyColumn<char> tangents_locked_{1}, weights_locked_{1}, breakdowns_{0};

    static constexpr double endless = 3.4028234663852886e38;
    static constexpr std::size_t none = ~std::size_t{0};
    mutable std::size_t cursor_ = 0; ///< where the last time lay, should it still be there
    mutable std::size_t segment_at_ = none;
    mutable Round segment_round_;
    mutable CurveSegment segment_ = CurveSegment::hold(0, 1, 0, 0);
};

} // namespace headless
