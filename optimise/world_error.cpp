#include "optimise/world_error.h"

#include "optimise/pose.h"
#include "optimise/sample_times.h"

namespace vor2::optimise {
namespace {

using namespace VOR2_LOADER;

constexpr int density = 4;

class Poser {
public:
    Poser(VOR2_MATRIX_HIERARCHY& hierarchy, const std::vector<Joint>& joints)
        : hierarchy_(hierarchy), joints_(joints), worlds_(joints.size()) {}

    const std::vector<Affine>& pose(f32 time) {
        for (std::size_t j = 0; j < joints_.size(); ++j) {
            const Joint& joint = joints_[j];
            VOR2_MATRIX_NODE& node = hierarchy_.nodes[joint.node];
            const Affine local = joint.has_tracks ? local_matrix(values_at(node, time)) : affine(node.world_matrix);
            worlds_[j] = joint.parent ? compose(local, worlds_[*joint.parent]) : local;
        }
        return worlds_;
    }

private:
    VOR2_MATRIX_HIERARCHY& hierarchy_;
    const std::vector<Joint>& joints_;
    std::vector<Affine> worlds_;
};

/// Whether the joint is over its limits. Exact differences are worked out only where they could be the worst.
bool look_at(const Affine& original, const Affine& thinned, f32 time, double distance, const Limits& limits,
             NodeReport& report) {
    if (!is_finite(original)) return false;
    if (!is_finite(thinned)) return true;
    const Difference difference(original, thinned);
    if (difference.point_bound(distance) > report.worst_position) {
        const double error = difference.point(distance);
        if (error > report.worst_position) {
            report.worst_position = error;
            report.worst_time = time;
        }
    }
    double angle = 0;
    if (difference.turn_bound() > 0) {
        angle = angle_of(difference.turn_bound(), original);
        if (angle > report.worst_rotation || angle > limits.rotation.value_or(angle)) {
            angle = angle_of(difference.turn(), original);
            report.worst_rotation = std::max(report.worst_rotation, angle);
        }
    }
    return !difference.is_within(distance, limits.position) || (limits.rotation && angle > *limits.rotation);
}

} // namespace

void measure(VOR2_MATRIX_HIERARCHY& original, VOR2_MATRIX_HIERARCHY& thinned, const std::vector<Joint>& joints,
             const std::vector<f32>& times, const Limits& limits, std::vector<NodeReport>& reports,
             const TellOver& over) {
    for (NodeReport& report : reports) report.worst_position = report.worst_rotation = report.worst_time = 0;
    Poser before(original, joints), after(thinned, joints);
    for (std::size_t i = 0; i < times.size(); ++i) {
        for (int k = 0; k < (i + 1 < times.size() ? density : 1); ++k) {
            const f32 time = k == 0 ? times[i] : time_between(times[i], times[i + 1], k, density);
            const std::vector<Affine>&a = before.pose(time), &b = after.pose(time);
            for (std::uint32_t j = 0; j < joints.size(); ++j) {
                const Joint& joint = joints[j];
                if (look_at(a[j], b[j], time, joint.point_distance, limits, reports[joint.node])) over(j, time);
            }
        }
    }
}

} // namespace vor2::optimise
