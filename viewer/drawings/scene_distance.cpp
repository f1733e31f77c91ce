#include "viewer/drawings/scene_distance.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <string>

namespace vor2::viewer {
namespace {

using namespace VOR2_LOADER;

constexpr int most_times = 2000;

/// A number for each node that is the same for nodes of the same path, in either scene.
using PathNumbers = std::map<std::pair<int, std::u16string>, int>;

std::vector<int> path_numbers(const VOR2& scene, PathNumbers& known) {
    std::vector<int> numbers;
    for (const VOR2_MATRIX_NODE& node : scene.matrix_hierarchy.nodes) {
        const bool has_parent = node.parent_index >= 0 && static_cast<u64>(node.parent_index) < numbers.size();
        const int parent = has_parent ? numbers[static_cast<std::size_t>(node.parent_index)] : -1;
        numbers.push_back(
            known.emplace(std::pair(parent, std::u16string(node.name.view())), static_cast<int>(known.size()))
                .first->second);
    }
    return numbers;
}

double apart(VECTOR_3 a, VECTOR_3 b) {
    const auto finite = [](VECTOR_3 v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); };
    if (finite(a) != finite(b)) return HUGE_VAL;
    if (!finite(a)) return 0;
    return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y, static_cast<double>(a.z) - b.z);
}

void pair_up(const VOR2& first, const VOR2& second, SceneDistance& distance) {
    PathNumbers known;
    const std::vector<int> first_numbers = path_numbers(first, known);
    const std::vector<int> second_numbers = path_numbers(second, known);
    std::map<int, std::deque<u64>> waiting;
    for (u64 i = 0; i < second_numbers.size(); ++i) waiting[second_numbers[i]].push_back(i);
    for (u64 i = 0; i < first_numbers.size(); ++i) {
        std::deque<u64>& twins = waiting[first_numbers[i]];
        if (twins.empty()) {
            ++distance.only_first;
        } else {
            distance.pairs.push_back({i, twins.front()});
            twins.pop_front();
        }
    }
    distance.only_second = second_numbers.size() - distance.pairs.size();
}

} // namespace

SceneDistance measure_distance(VOR2& first, VOR2& second) {
    SceneDistance distance;
    pair_up(first, second, distance);
    const VOR2_FLOAT32_RANGE &a = first.environment.time_range, &b = second.environment.time_range;
    double start = std::min(a.start, b.start), end = std::max(a.end, b.end);
    if (!std::isfinite(start) || !std::isfinite(end) || end < start) start = end = 0;
    const double rate = first.environment.sample_rate > 0 ? first.environment.sample_rate : 30;
    const int steps =
        static_cast<int>(std::clamp(std::round((end - start) * rate), 1.0, static_cast<double>(most_times)));
    for (int i = 0; i <= steps; ++i) {
        const double time = start + (end - start) * i / steps;
        first.matrix_hierarchy.set_time(static_cast<f32>(time));
        second.matrix_hierarchy.set_time(static_cast<f32>(time));
        double greatest = 0;
        for (JointPair& pair : distance.pairs) {
            const double now = apart(first.matrix_hierarchy.nodes[pair.first].world_matrix.translation(),
                                     second.matrix_hierarchy.nodes[pair.second].world_matrix.translation());
            greatest = std::max(greatest, now);
            if (now > pair.distance) {
                pair.distance = now;
                pair.time = time;
            }
        }
        distance.times.push_back(time);
        distance.greatest.push_back(greatest);
    }
    std::ranges::stable_sort(distance.pairs, std::ranges::greater{}, &JointPair::distance);
    return distance;
}

} // namespace vor2::viewer
