#include "headless/animation/curve_node.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace headless {
namespace {

// The same for all kinds of curves, which have their attributes in one order.
struct CurveAttributes {
    AttributeId tangent, weighted, before, behind, input;
    AttributeId key, time, value, in_type, out_type, in_x, in_y, out_x, out_y, tangent_lock, weight_lock, breakdown;

    static const CurveAttributes& ids() {
        static const CurveAttributes made = [] {
            const NodeType& type = *NodeTypes::all().find("animCurveTL");
            return CurveAttributes{type.find("tan"), type.find("wgt"), type.find("pre"), type.find("pst"),
                                   type.find("i"),   type.find("ktv"), type.find("kt"),  type.find("kv"),
                                   type.find("kit"), type.find("kot"), type.find("kix"), type.find("kiy"),
                                   type.find("kox"), type.find("koy"), type.find("ktl"), type.find("kwl"),
                                   type.find("kbd")};
        }();
        return made;
    }
};

std::uint8_t small_code(const Value& value) {
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(value.integer(), 0, 255));
}

} // namespace

CurveData* CurveData::of(const Node& node) {
    return node.type().derives_from("animCurve") ? static_cast<CurveData*>(node.data()) : nullptr;
}

const AnimCurve& CurveData::keys() const {
    if (!checked_) {
        checked_ = true;
        ordered_ = places_.empty() && stored_.ordered();
        sorted_ = ordered_ ? nullptr : std::make_unique<AnimCurve>(stored_.in_order(indices_));
    }
    return ordered_ ? stored_ : *sorted_;
}

AnimCurve& CurveData::edit() {
    if (&keys() != &stored_) stored_ = std::move(*sorted_);
    sorted_.reset();
    ordered_ = true;
    indices_.clear();
    places_.clear();
    return stored_;
}

std::optional<std::size_t> CurveData::place(int index) const {
    if (index < 0) return std::nullopt;
    if (indices_.empty())
        return static_cast<std::size_t>(index) < stored_.size() ? std::optional<std::size_t>(index) : std::nullopt;
    if (!places_.empty()) {
        const auto at = places_.find(index);
        return at == places_.end() ? std::nullopt : std::optional(at->second);
    }
    const auto at = std::lower_bound(indices_.begin(), indices_.end(), index);
    if (at == indices_.end() || *at != index) return std::nullopt;
    return static_cast<std::size_t>(at - indices_.begin());
}

std::size_t CurveData::place_or_make(int index) {
    if (const auto at = place(index)) return *at;
    const std::size_t count = stored_.size();
    if (!indices_.empty() || static_cast<std::size_t>(index) != count) {
        if (indices_.empty()) {
            indices_.resize(count);
            std::iota(indices_.begin(), indices_.end(), 0);
        }
        if (places_.empty() && count > 0 && index < indices_.back()) {
            for (std::size_t i = 0; i < count; ++i) places_.emplace(indices_[i], i);
        }
        indices_.push_back(index);
        if (!places_.empty()) places_.emplace(index, count);
    }
    stored_.append(std::numeric_limits<double>::quiet_NaN(), 0.0);
    return count;
}

bool CurveData::set_of_curve(AttributeId id, const Value& value) {
    const CurveAttributes& ids = CurveAttributes::ids();
    if (!value.is_number()) return false;
    if (id == ids.tangent)
        stored_.set_tangent(Tangent{small_code(value)});
    else if (id == ids.weighted)
        stored_.set_weighted(value.boolean());
    else if (id == ids.before)
        stored_.before = Infinity{small_code(value)};
    else if (id == ids.behind)
        stored_.behind = Infinity{small_code(value)};
    else
        return false;
    return true;
}

bool CurveData::set_time_value(int index, const Value& value) {
    const auto* pair = value.get_if<Value::Doubles>();
    if (!pair || pair->size() != 2) return false;
    const std::size_t at = place_or_make(index);
    stored_.set_time(at, (*pair)[0]);
    stored_.set_value(at, (*pair)[1]);
    return true;
}

bool CurveData::set_of_key(AttributeId id, std::size_t at, const Value& value) {
    const CurveAttributes& ids = CurveAttributes::ids();
    if (id == ids.time) {
        stored_.set_time(at, value.number());
        return true;
    }
    if (id == ids.value) {
        stored_.set_value(at, value.number());
        if (std::isnan(stored_.times()[at])) stored_.set_time(at, 0.0);
        return true;
    }
    CurveKey key = stored_.key(at);
    if (id == ids.in_type)
        key.in = Tangent{small_code(value)};
    else if (id == ids.out_type)
        key.out = Tangent{small_code(value)};
    else if (id == ids.in_x)
        key.in_vector.x = value.number();
    else if (id == ids.in_y)
        key.in_vector.y = value.number();
    else if (id == ids.out_x)
        key.out_vector.x = value.number();
    else if (id == ids.out_y)
        key.out_vector.y = value.number();
    else if (id == ids.tangent_lock)
        key.tangents_locked = value.boolean();
    else if (id == ids.weight_lock)
        key.weights_locked = value.boolean();
    else
        key.breakdown = value.boolean();
    stored_.set_key(at, key);
    return true;
}

bool CurveData::set(const Plug& plug, const Value& value) {
    const CurveAttributes& ids = CurveAttributes::ids();
    const AttributeId id = plug.key.attribute;
    if (id < ids.tangent || id > ids.value || id == ids.input) return false;
    checked_ = false;
    if (plug.key.depth == 0) return set_of_curve(id, value);
    const int index = plug.key.index[0];
    if (index < 0) return false;
    if (id == ids.key) return set_time_value(index, value);
    const bool mine = id == ids.time || id == ids.value || (id >= ids.tangent_lock && id <= ids.breakdown);
    return mine && value.is_number() && set_of_key(id, place_or_make(index), value);
}

bool CurveData::get_of_key(AttributeId id, std::size_t at, Value& out) const {
    const CurveAttributes& ids = CurveAttributes::ids();
    const CurveKey key = stored_.key(at);
    const double time = std::isnan(key.time) ? 0.0 : key.time;
    if (id == ids.key)
        out = Value::Doubles{time, key.value};
    else if (id == ids.time)
        out = time;
    else if (id == ids.value)
        out = key.value;
    else if (id == ids.in_type)
        out = static_cast<int>(stored_.in_type(at));
    else if (id == ids.out_type)
        out = static_cast<int>(stored_.out_type(at));
    else if (id == ids.in_x || id == ids.in_y)
        out = id == ids.in_x ? key.in_vector.x : key.in_vector.y;
    else if (id == ids.out_x || id == ids.out_y)
        out = id == ids.out_x ? key.out_vector.x : key.out_vector.y;
    else if (id == ids.tangent_lock || id == ids.weight_lock)
        out = id == ids.tangent_lock ? key.tangents_locked : key.weights_locked;
    else if (id == ids.breakdown)
        out = key.breakdown;
    else
        return false;
    return true;
}

bool CurveData::get(const Plug& plug, Value& out) const {
    const CurveAttributes& ids = CurveAttributes::ids();
    const AttributeId id = plug.key.attribute;
    if (plug.key.depth > 0) {
        const auto at = place(plug.key.index[0]);
        return at && get_of_key(id, *at, out);
    }
    if (id == ids.tangent)
        out = static_cast<int>(stored_.tangent());
    else if (id == ids.weighted)
        out = stored_.weighted();
    else if (id == ids.before)
        out = static_cast<int>(stored_.before);
    else if (id == ids.behind)
        out = static_cast<int>(stored_.behind);
    else
        return false;
    return true;
}

bool CurveData::indices(const Plug& array, std::vector<int>& out) const {
    const CurveAttributes& ids = CurveAttributes::ids();
    const AttributeId id = array.key.attribute;
    const auto list = [&](auto&& wanted) {
        out.clear();
        for (std::size_t i = 0; i < stored_.size(); ++i) {
            if (wanted(i)) out.push_back(indices_.empty() ? static_cast<int>(i) : indices_[i]);
        }
        if (!places_.empty()) std::ranges::sort(out);
        return true;
    };
    if (id == ids.key) return list([&](std::size_t i) { return !std::isnan(stored_.times()[i]); });
    if (id == ids.in_type) return list([&](std::size_t i) { return stored_.key(i).in != Tangent::by_default; });
    if (id == ids.out_type) return list([&](std::size_t i) { return stored_.key(i).out != Tangent::by_default; });
    if (id >= ids.in_x && id <= ids.out_y) return list([&](std::size_t) { return stored_.has_vectors(); });
    if (id == ids.tangent_lock) return list([&](std::size_t i) { return !stored_.key(i).tangents_locked; });
    if (id == ids.weight_lock) return list([&](std::size_t i) { return !stored_.key(i).weights_locked; });
    return id == ids.breakdown && list([&](std::size_t) { return stored_.has_breakdowns(); });
}

bool is_time_curve(const Node& curve) {
    switch (curve.type().api_type()) {
    case MFn::kAnimCurveTimeToAngular:
    case MFn::kAnimCurveTimeToDistance:
    case MFn::kAnimCurveTimeToTime:
    case MFn::kAnimCurveTimeToUnitless:
        return true;
    default:
        return false;
    }
}

Value compute_curve(EvaluationContext& context, Node& node, const Plug&) {
    const auto* data = static_cast<const CurveData*>(node.data());
    if (!data) return 0.0;
    const bool clock = node.inputs().empty() && is_time_curve(node);
    return data->keys().evaluate(clock ? context.time() : context.number(node.plug(CurveAttributes::ids().input)));
}

} // namespace headless
