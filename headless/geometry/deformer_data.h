#pragma once

#include "headless/graph/node.h"

#include <span>

namespace headless {

/// Influences that one skin cluster may have; those of higher index are left out.
inline constexpr int most_influences = 65536;

struct PointWeight {
    std::uint32_t influence;
    double weight;
};

/// Weights of points, for each of them one after the other.
struct PointWeights {
    std::vector<std::size_t> start; ///< one more than there are points
    std::vector<PointWeight> weights;

    std::span<const PointWeight> of(std::size_t point) const {
        if (point + 1 >= start.size()) return {};
        return std::span(weights).subspan(start[point], start[point + 1] - start[point]);
    }
};

/// What is worked out of a deformer's attributes and used at every moment, until one of them changes. It keeps no
/// values itself.
class DeformerData final : public NodeData {
public:
    bool set(const Plug&, const Value&) override { return false; }
    bool get(const Plug&, Value&) const override { return false; }
    bool indices(const Plug&, std::vector<int>&) const override { return false; }

    static DeformerData& of(const Node& deformer) { return static_cast<DeformerData&>(*deformer.data()); }

    /// What a skin cluster's `weightList` holds for that many points, but for weights of 0.
    const PointWeights& weights(const Node& node, std::size_t point_count);

private:
    std::uint64_t edit_ = 0;
    std::size_t point_count_ = 0;
    PointWeights weights_;
};

/// The weight at which a target of a blend shape counts in full, by its index.
inline double target_weight(int index) {
    return (index - 5000) / 1000.0;
}

/// How much of each target counts at a weight, where several stand at rising weights: none at 0, and straight from one
/// to the next. Pairs of a place among them and a share.
std::vector<std::pair<std::size_t, double>> shares_between(std::span<const double> targets, double weight);

/// The points of a "pointArray".
std::vector<Vector3> kept_points(const Value& value);

} // namespace headless
