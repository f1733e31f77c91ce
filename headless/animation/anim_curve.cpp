#include "headless/animation/anim_curve.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace headless {
namespace {

// An upright vector of a weighted curve has no slope to go on along.
double fixed_slope(const TangentVector& vector, bool weighted) {
    if (!std::isfinite(vector.y) || vector.y == 0.0) return 0.0;
    if (!(vector.x > 0.0)) return weighted ? 0.0 : std::copysign(AnimCurve::max_slope, vector.y);
    return std::clamp(vector.y / vector.x, -AnimCurve::max_slope, AnimCurve::max_slope);
}

bool cycles(Infinity how) {
    return how == Infinity::cycle || how == Infinity::cycle_with_offset || how == Infinity::oscillate;
}

} // namespace

CurveKey AnimCurve::key(std::size_t i) const {
    return {times_[i],
            values_[i],
            in_types_[i],
            out_types_[i],
            in_vectors_[i],
            out_vectors_[i],
            tangents_locked_[i] != 0,
            weights_locked_[i] != 0,
            breakdowns_[i] != 0};
}

void AnimCurve::set_tangent(Tangent type) {
    tangent_ = type;
    changed();
}

void AnimCurve::set_weighted(bool on) {
    weighted_ = on;
    changed();
}

void AnimCurve::append(double time, double value) {
    times_.push_back(time);
    push_back_tight(values_, value);
    changed();
}

void AnimCurve::insert(std::size_t at, const CurveKey& key) {
    times_.insert(at, key.time);
    values_.insert(values_.begin() + static_cast<std::ptrdiff_t>(at), key.value);
    in_types_.insert(at);
    out_types_.insert(at);
    in_vectors_.insert(at);
    out_vectors_.insert(at);
    tangents_locked_.insert(at);
    weights_locked_.insert(at);
    breakdowns_.insert(at);
    set_key(at, key);
}

void AnimCurve::set_key(std::size_t at, const CurveKey& key) {
    times_.set(at, key.time);
    values_[at] = key.value;
    set_types(at, key.in, key.out);
    in_vectors_.set(at, key.in_vector, size());
    out_vectors_.set(at, key.out_vector, size());
    tangents_locked_.set(at, key.tangents_locked, size());
    weights_locked_.set(at, key.weights_locked, size());
    breakdowns_.set(at, key.breakdown, size());
    changed();
}

void AnimCurve::set_time(std::size_t at, double time) {
    times_.set(at, time);
    changed();
}

void AnimCurve::set_value(std::size_t at, double value) {
    values_[at] = value;
    changed();
}

void AnimCurve::set_types(std::size_t at, Tangent in, Tangent out) {
    in_types_.set(at, in, size());
    out_types_.set(at, out, size());
    changed();
}

void AnimCurve::erase(std::size_t first, std::size_t last) {
    times_.erase(first, last);
    values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(first),
                  values_.begin() + static_cast<std::ptrdiff_t>(last));
    in_types_.erase(first, last);
    out_types_.erase(first, last);
    in_vectors_.erase(first, last);
    out_vectors_.erase(first, last);
    tangents_locked_.erase(first, last);
    weights_locked_.erase(first, last);
    breakdowns_.erase(first, last);
    changed();
}

void AnimCurve::assign(KeyTimes times, std::vector<double> values, Tangent type) {
    AnimCurve made;
    made.tangent_ = type;
    made.weighted_ = weighted_;
    made.before = before;
    made.behind = behind;
    if (times.size() > values.size()) times.erase(values.size(), times.size());
    values.resize(times.size());
    made.times_ = std::move(times);
    made.values_ = std::move(values);
    *this = std::move(made);
}

bool AnimCurve::ordered() const {
    for (std::size_t i = 0; i < size(); ++i) {
        if (!std::isfinite(times_[i]) || !std::isfinite(values_[i])) return false;
        if (i > 0 && !(times_[i - 1] < times_[i])) return false;
    }
    return true;
}

AnimCurve AnimCurve::in_order(std::span<const int> ranks) const {
    AnimCurve out;
    out.tangent_ = tangent_;
    out.weighted_ = weighted_;
    out.before = before;
    out.behind = behind;
    std::vector<std::size_t> places(size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::erase_if(places, [&](std::size_t i) { return !std::isfinite(times_[i]) || !std::isfinite(values_[i]); });
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
        if (times_[a] != times_[b]) return times_[a] < times_[b];
        return !ranks.empty() && ranks[a] < ranks[b];
    });
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (i + 1 < places.size() && times_[places[i]] == times_[places[i + 1]]) continue;
        const CurveKey kept = key(places[i]);
        out.append(kept.time, kept.value);
        out.set_key(out.size() - 1, kept);
    }
    return out;
}

std::size_t AnimCurve::first_at_or_behind(double time) const {
    const std::span<const double> all = times_.view();
    return static_cast<std::size_t>(std::lower_bound(all.begin(), all.end(), time) - all.begin());
}

std::optional<std::size_t> AnimCurve::find(double time, double tolerance) const {
    if (times_.empty() || time > times_.back() + tolerance) return std::nullopt;
    std::size_t at = first_at_or_behind(time);
    if (at == size() || (at > 0 && time - times_[at - 1] < times_[at] - time)) --at;
    return std::abs(times_[at] - time) <= tolerance ? std::optional(at) : std::nullopt;
}

double AnimCurve::in_slope(std::size_t i) const {
    return slope(i, Side::in);
}

double AnimCurve::out_slope(std::size_t i) const {
    return slope(i, Side::out);
}

// For a key in between: that of the line from neighbour to neighbour. `plateau` and `automatic` keep each stretch
// within the range of its keys, which a cubic does whose end slopes are within 3 times its mean slope.
double AnimCurve::smooth_slope(std::size_t i, Tangent type) const {
    const double run0 = times_[i] - times_[i - 1], run1 = times_[i + 1] - times_[i];
    const double rise0 = values_[i] - values_[i - 1], rise1 = values_[i + 1] - values_[i];
    const double slope = run0 + run1 < shortest_run ? max_slope : (rise0 + rise1) / (run0 + run1);
    if (type != Tangent::plateau && type != Tangent::automatic) return slope;
    if (!((rise0 > 0.0 && rise1 > 0.0) || (rise0 < 0.0 && rise1 < 0.0))) return 0.0;
    const double bound = 3.0 * std::min(std::abs(rise0 / run0), std::abs(rise1 / run1));
    if (std::abs(slope) <= bound) return slope;
    return type == Tangent::plateau ? 0.0 : std::copysign(bound, slope);
}

bool AnimCurve::is_near_a_neighbour(std::size_t i) const {
    const auto near = [&](std::size_t other) { return std::abs(values_[other] - values_[i]) <= near_values; };
    return (i > 0 && near(i - 1)) || (i + 1 < size() && near(i + 1));
}

double AnimCurve::slope(std::size_t i, Side side) const {
    const Tangent type = side == Side::in ? in_type(i) : out_type(i);
    if (type == Tangent::fixed) return fixed_slope(side == Side::in ? in_vectors_[i] : out_vectors_[i], weighted_);
    if (type == Tangent::step_next) return 1.0;
    if (size() < 2) return 0.0;
    const bool end = i == 0 || i + 1 == size();
    const bool outward = side == Side::in ? i == 0 : i + 1 == size(); // there is no key on that side
    const bool behind_key = i == 0 || (side == Side::out && i + 1 < size());
    const std::size_t from = behind_key ? i : i - 1;
    const double mean = (values_[from + 1] - values_[from]) / (times_[from + 1] - times_[from]);
    switch (type) {
    case Tangent::linear:
        return outward ? 0.0 : mean;
    case Tangent::fast:
        return 2.0 * mean;
    case Tangent::flat:
    case Tangent::slow:
    case Tangent::step:
        return 0.0;
    case Tangent::clamped:
        if (!outward && is_near_a_neighbour(i)) return 0.0;
        break;
    case Tangent::plateau:
    case Tangent::automatic:
        if (end) return 0.0;
        break;
    default:
        break;
    }
    return end ? mean : smooth_slope(i, type);
}

TangentVector AnimCurve::weighted_vector(std::size_t i, Side side, double span) const {
    const bool in = side == Side::in;
    const Tangent type = in ? in_type(i) : out_type(i);
    if (type == Tangent::step) return {0.0, 0.0};
    if (type == Tangent::step_next) return {endless, endless};
    if (type != Tangent::fixed) return {span, slope(i, side) * span};
    const TangentVector vector = in ? in_vectors_[i] : out_vectors_[i];
    return std::isfinite(vector.x) && std::isfinite(vector.y) ? vector : TangentVector{span, 0.0};
}

// A stretch that jumps holds where the last played before it that doesn't jump holds.
bool AnimCurve::holds(std::size_t i, Round round) const {
    if (out_type(i) != Tangent::step_next) return out_type(i) == Tangent::step;
    const auto stretches = static_cast<std::ptrdiff_t>(size()) - 1;
    std::ptrdiff_t at = static_cast<std::ptrdiff_t>(i), back = round.backward ? 1 : -1;
    for (bool earlier_round = false;; at += back) {
        if (at < 0 || at >= stretches) {
            if (earlier_round || !round.follows) return false;
            earlier_round = true;
            if (round.turned) back = -back;
            at = back < 0 ? stretches - 1 : 0;
        }
        const auto played = static_cast<std::size_t>(at);
        if (out_type(played) != Tangent::step_next) return out_type(played) == Tangent::step;
        if (played == segment_at_ && played != i && round == segment_round_) return segment_.is_hold();
    }
}

CurveSegment AnimCurve::segment(std::size_t i, Round round) const {
    const double t0 = times_[i], t1 = times_[i + 1], v0 = values_[i], v1 = values_[i + 1];
    if (holds(i, round)) return CurveSegment::hold(t0, t1, v0, v1);
    if (out_type(i) == Tangent::step_next) return CurveSegment::jump(t0, t1, v0, v1);
    if (!weighted_) return CurveSegment::hermite(t0, t1, v0, v1, out_slope(i), in_slope(i + 1));
    const TangentVector first = weighted_vector(i, Side::out, t1 - t0);
    const TangentVector second = weighted_vector(i + 1, Side::in, t1 - t0);
    return CurveSegment::bezier(t0, t1, v0, v1, {first.x / 3.0, first.y / 3.0}, {second.x / 3.0, second.y / 3.0});
}

// At a time from the first key's to the last's. On a key, where a scene is sampled most, no segment is made.
double AnimCurve::within(double time, Round round) const {
    if (size() == 1) return values_[0];
    std::size_t at = cursor_;
    const auto spans = [&](std::size_t i) { return i + 1 < size() && times_[i] <= time && time <= times_[i + 1]; };
    if (!spans(at)) {
        if (spans(at + 1)) {
            ++at;
        } else {
            const std::span<const double> all = times_.view();
            const auto behind_time = std::upper_bound(all.begin(), all.end() - 1, time);
            at = static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind_time - all.begin(), 1)) - 1;
        }
        cursor_ = at;
    }
    if (time == times_[at]) return values_[at];
    if (time == times_[at + 1]) return values_[at + 1];
    if (at != segment_at_ || round != segment_round_) {
        segment_ = segment(at, round);
        segment_at_ = at;
        segment_round_ = round;
    }
    return segment_.evaluate(time);
}

double AnimCurve::beyond(double time, bool is_before) const {
    const double first = times_.front(), last = times_.back(), range = last - first;
    const std::size_t end = is_before ? 0 : size() - 1;
    const double away = is_before ? first - time : time - last;
    const Infinity how = is_before ? before : behind;
    if (size() == 1) return values_[end];
    if (how == Infinity::linear) return values_[end] + (is_before ? -in_slope(0) : out_slope(end)) * away;
    if (!cycles(how) || !(range > 0.0) || !std::isfinite(range)) return values_[end];

    // How far into its round, from 0 up; what falls short of a whole round by a rounding has begun the next.
    double rest = std::fmod(away, range);
    if (rest >= range * (1.0 - 1e-10)) rest = 0.0;
    const double rounds = std::round((away - rest) / range) + 1.0;
    const bool backward = how == Infinity::oscillate && std::fmod(rounds, 2.0) == 1.0;
    const bool from_first = is_before == backward;
    const Round round{backward, true, how == Infinity::oscillate};
    const double value = within(std::clamp(from_first ? first + rest : last - rest, first, last), round);
    if (how != Infinity::cycle_with_offset) return value;
    return value + (is_before ? -rounds : rounds) * (values_.back() - values_.front());
}

double AnimCurve::evaluate(double time) const {
    if (times_.empty()) return 0.0;
    const bool is_before = !(time >= times_.front());
    if (!is_before && time <= times_.back())
        return within(time, {false, cycles(before), before == Infinity::oscillate});
    const double end = is_before ? values_.front() : values_.back();
    if (std::isnan(time)) return end;
    const double value = beyond(time, is_before);
    return std::isfinite(value) ? value : end;
}

} // namespace headless
