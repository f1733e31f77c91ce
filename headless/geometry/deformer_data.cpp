#include "headless/geometry/deformer_data.h"

#include <algorithm>
#include <charconv>

namespace headless {

const PointWeights& DeformerData::weights(const Node& node, std::size_t point_count) {
    if (edit_ == node.edit_count() && point_count_ == point_count) return weights_;
    weights_ = {};
    const AttributeId list = node.find_attribute("weightList"), array = node.attribute(list).children.front();
    for (const PlugKey& key : node.stored()) { // in order of their indices
        if (key.attribute != array || key.depth != 2) continue;
        const auto point = static_cast<std::size_t>(key.index[0]);
        const double weight = node.get(key).number();
        if (weight == 0.0 || point >= point_count) continue;
        weights_.start.resize(std::max(weights_.start.size(), point + 1), weights_.weights.size());
        weights_.weights.push_back({static_cast<std::uint32_t>(key.index[1]), weight});
    }
    weights_.start.push_back(weights_.weights.size());
    edit_ = node.edit_count();
    point_count_ = point_count;
    return weights_;
}

std::vector<std::pair<std::size_t, double>> shares_between(std::span<const double> targets, double weight) {
    if (targets.empty()) return {};
    std::size_t next = 0;
    while (next + 1 < targets.size() && targets[next] < weight) ++next;
    const double at = targets[next];
    if (next == 0)
        return at == 0.0 ? std::vector<std::pair<std::size_t, double>>() : std::vector{std::pair(next, weight / at)};
    const double before = targets[next - 1], share = (weight - before) / (at - before);
    return {{next - 1, 1.0 - share}, {next, share}};
}

std::vector<Vector3> kept_points(const Value& value) {
    std::vector<Vector3> out;
    const auto* raw = value.get_if<RawTokens>();
    if (!raw) return out;
    // How many there are, then four numbers each.
    for (std::size_t i = 1; i + 3 < raw->tokens.size(); i += 4) {
        Vector3 point;
        for (int c = 0; c < 3; ++c) {
            const std::string& word = raw->tokens[i + static_cast<std::size_t>(c)];
            std::from_chars(word.data(), word.data() + word.size(), point[c]);
        }
        out.push_back(point);
    }
    return out;
}

} // namespace headless
