#pragma once

#include "headless/animation/anim_curve.h"
#include "headless/graph/evaluation.h"
#include "headless/graph/node.h"

#include <unordered_map>

namespace headless {

/// The keys of an animCurve node, behind its attributes: `tan`, `wgt`, `pre`, `pst`, and by key `ktv` (with `kt` and
/// `kv`), `kit`, `kot`, `kix`, `kiy`, `kox`, `koy`, `ktl`, `kwl`, `kbd`. An element's index is a name, not a place:
/// indices may be sparse, come in any order, and give back what was set by them. `ktv[i]` takes a list of time and
/// value. An element without a `ktv` is no key yet; one whose `kt` alone or `kv` alone was set has 0 for the other.
/// Keys whose time or value isn't finite are kept and take no part in evaluation; of keys at one time the one with
/// the highest index counts.
class CurveData final : public NodeData {
public:
    bool set(const Plug& plug, const Value& value) override;
    bool get(const Plug& plug, Value& out) const override;
    bool indices(const Plug& array, std::vector<int>& out) const override;

    /// The keys in order of time, for evaluation and for writers; the same reference until the next edit.
    const AnimCurve& keys() const;
    /// The keys for editing, put in order and numbered from 0 first. The caller keeps them in order, and calls
    /// `Node::touch` behind the last edit.
    AnimCurve& edit();

    /// Of a node; null when it isn't an animation curve.
    static CurveData* of(const Node& node);

private:
    std::optional<std::size_t> place(int index) const;
    std::size_t place_or_make(int index);
    bool set_of_curve(AttributeId id, const Value& value);
    bool set_time_value(int index, const Value& value);
    bool set_of_key(AttributeId id, std::size_t at, const Value& value);
    bool get_of_key(AttributeId id, std::size_t at, Value& out) const;

    AnimCurve stored_;
    // Keys stand in the order in which they came, since one that comes in front of many would push them all along.
    std::vector<int> indices_;                    // by place; empty while they are 0, 1, 2 ...
    std::unordered_map<int, std::size_t> places_; // by index; empty while the indices rise
    mutable bool checked_ = true, ordered_ = true;
    mutable std::unique_ptr<AnimCurve> sorted_; // where `stored_` isn't in order
};

/// Curves over time take the scene's clock where nothing is connected to `input`; driven curves the stored input.
Value compute_curve(EvaluationContext& context, Node& node, const Plug& plug);
/// Whether the curve's input is a time.
bool is_time_curve(const Node& curve);

} // namespace headless
