#include "headless/animation/ik_chain.h"

#include "headless/animation/aim.h"
#include "headless/animation/rotation_blend.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace headless {
namespace {

// Bones closer to one line than this (as a sine) have no normal: what is left is rounding.
constexpr double straight = 1e-5;

Matrix turn_about(const Vector3& axis, double angle) {
    const double size = length(axis);
    if (size == 0.0) return {};
    const Vector3 along = axis * (std::sin(angle / 2) / size);
    return to_matrix({along.x, along.y, along.z, std::cos(angle / 2)});
}

Vector3 square_part(const Vector3& of, const Vector3& to) {
    const double size = dot(to, to);
    return size > 0.0 ? of - to * (dot(of, to) / size) : of;
}

// From one direction to another about a third that both are seen square to.
double angle_about(const Vector3& axis, const Vector3& from, const Vector3& to) {
    return std::atan2(dot(cross(from, to), axis) / length(axis), dot(from, to));
}

// How far a joint between two bones is bent where the solver starts, and about which axis of the space that its
// rotation leads to.
struct Hinge {
    Vector3 axis;
    double bend = 0.0;
};

class Solver {
public:
    Solver(const IkChain& chain, const IkGoal& goal) : chain_(chain), goal_(goal), count_(chain.joints.size()) {
        rotations_.reserve(count_);
        for (const IkJoint& joint : chain.joints) {
            Vector3 at;
            for (int i = 0; i < 3; ++i)
                at[i] = joint.turns[static_cast<std::size_t>(i)] ? joint.preferred[i] : joint.rotate[i];
            rotations_.push_back(euler_to_matrix(at, joint.order));
        }
        place();
    }

    bool solve() {
        for (std::size_t i = 0; i < count_; ++i) total_ += length(bone(i));
        if (!(total_ > 0.0) || !std::isfinite(total_ + length(goal_.point) + goal_.twist)) return false;
        start_ = rotations_;
        const Vector3 normal = normal_at_start();
        bend();
        const Matrix swing = shortest_turn(points_[count_], goal_.point);
        turn_all(swing);
        if (!(length(goal_.point) > 0.0)) return true;
        const double angle =
            goal_.rotate_plane ? turn_to_pole(transform_direction(normal, swing)) : turn_to_orientation();
        turn_all(turn_about(goal_.point, angle));
        return true;
    }

    Vector3 rotate_of(std::size_t i) const {
        const IkJoint& joint = chain_.joints[i];
        Vector3 out = matrix_to_euler(rotations_[i], joint.order);
        for (int k = 0; k < 3; ++k) {
            if (!joint.turns[static_cast<std::size_t>(k)]) out[k] = joint.rotate[k];
        }
        return out;
    }

private:
    Vector3 bone(std::size_t i) const { return points_[i + 1] - points_[i]; }

    // Where the joints and the effector are with the rotations as they stand.
    void place() {
        spaces_.resize(count_);
        points_.resize(count_ + 1);
        for (std::size_t i = 0; i < count_; ++i) {
            const IkJoint& joint = chain_.joints[i];
            spaces_[i] = joint.before * rotations_[i] * joint.after;
            if (i > 0) spaces_[i] = spaces_[i] * spaces_[i - 1];
            points_[i] = spaces_[i].translation();
        }
        points_[count_] = transform_point(chain_.effector.translation(), spaces_.back());
    }

    // The rotation of the space that a joint's own rotation leads to.
    Matrix frame_of(std::size_t i) const {
        const Matrix& after = chain_.joints[i].after;
        return rotation_part(i > 0 ? after * spaces_[i - 1] : after);
    }

    void turn_all(const Matrix& by) {
        const Matrix frame = frame_of(0);
        rotations_[0] = rotations_[0] * frame * by * transposed(frame);
        place();
    }

    // The normal of the chain's plane where the solver starts: that of the area which the chain and the line from its
    // first joint to the effector enclose. For a straight chain it has an axis of the first joint on the side that
    // counts, the one before the axis that runs along the bone (for x that is z). The host has the same at rest for a
    // joint along y; that it goes on round the axes is a guess.
    Vector3 normal_at_start() const {
        const Vector3& end = points_[count_];
        Vector3 area;
        for (std::size_t i = 1; i < count_; ++i) area = area + cross(points_[i], points_[i + 1]);
        if (length(area) > straight * total_ * length(end)) return area;
        const Vector3 first = bone(0);
        const Matrix axes = rotation_part(spaces_[0]);
        int along = 0;
        for (int k = 1; k < 3; ++k) {
            if (std::abs(dot(axes.row(k), first)) > std::abs(dot(axes.row(along), first)) * (1.0 + straight)) along = k;
        }
        return cross(axes.row((along + 2) % 3), length(first) > 0.0 ? first : end);
    }

    // The side on which the chain lies off its line is told by the normal as it was at the start, so that it stays
    // the same while joints that bend against one another pass the line. Of two bones the knee itself tells it.
    double turn_to_pole(const Vector3& normal) const {
        const Vector3& line = goal_.point;
        const Vector3 pole = square_part(goal_.pole, line);
        if (!(length(pole) > straight * length(goal_.pole))) return goal_.twist;
        Vector3 side = cross(line, normal);
        if (count_ == 2) {
            const Vector3 knee = square_part(bone(0), line);
            if (length(knee) > straight * length(bone(0))) side = knee;
        }
        return angle_about(line, side, pole) + goal_.twist;
    }

    // The angle whose turn Q about the line brings E Q nearest to H: the trace of E Q H^-1 is greatest.
    double turn_to_orientation() const {
        const Vector3 u = goal_.point * (1.0 / length(goal_.point));
        const Matrix own = rotation_part(chain_.effector * spaces_.back());
        const Matrix m = transposed(rotation_part(goal_.orientation)) * own;
        const double trace = m[0][0] + m[1][1] + m[2][2];
        const double along = dot(transform_direction(u, m), u);
        const double sine = u.x * (m[2][1] - m[1][2]) + u.y * (m[0][2] - m[2][0]) + u.z * (m[1][0] - m[0][1]);
        return std::atan2(sine, trace - along);
    }

    void find_hinges() {
        hinges_.assign(count_, {});
        for (std::size_t i = 1; i < count_; ++i) {
            const Vector3 in = bone(i - 1), out = bone(i), normal = cross(in, out);
            const double size = length(normal);
            if (!(size > straight * length(in) * length(out))) continue;
            const Matrix frame = frame_of(i);
            hinges_[i] = {transform_direction(normal * (1.0 / size), transposed(frame)),
                          std::atan2(size, dot(in, out))};
            most_ = std::max(most_, hinges_[i].bend);
        }
    }

    // How far the effector is from the first joint with every bend scaled.
    double distance_at(double scale) {
        for (std::size_t i = 1; i < count_; ++i)
            rotations_[i] = start_[i] * turn_about(hinges_[i].axis, (scale - 1.0) * hinges_[i].bend);
        place();
        return length(points_[count_]);
    }

    void bend() {
        find_hinges();
        if (!(most_ > 0.0)) return;
        const double wanted = length(goal_.point);
        if (count_ == 2 && std::abs(distance_at(cosine_law(wanted)) - nearest_reach(wanted)) <= 1e-10 * total_) return;
        search(wanted);
    }

    double nearest_reach(double wanted) const {
        const double a = length(bone(0)), b = length(bone(1));
        return std::clamp(wanted, std::abs(a - b), a + b);
    }

    double cosine_law(double wanted) const {
        const double a = length(bone(0)), b = length(bone(1));
        const double cosine = (wanted * wanted - a * a - b * b) / (2 * a * b);
        return std::acos(std::clamp(cosine, -1.0, 1.0)) / hinges_[1].bend;
    }

    // Straighter or more bent from the start on until the distance is passed; at most to where all is straight, or
    // one joint folded.
    void search(double wanted) {
        constexpr int steps = 48;
        const double fold = std::numbers::pi / most_;
        double near = 1.0, off = distance_at(1.0) - wanted, best = 1.0, least = std::abs(off);
        const double end = off > 0.0 ? fold : 0.0;
        for (int i = 1; i <= steps; ++i) {
            const double far = 1.0 + (end - 1.0) * i / steps, there = distance_at(far) - wanted;
            if (std::abs(there) < least) {
                least = std::abs(there);
                best = far;
            }
            if ((there > 0.0) != (off > 0.0)) {
                close_in(wanted, near, off, far, there);
                return;
            }
            near = far;
            off = there;
        }
        distance_at(best);
    }

    // The Illinois form of false position: both ends of the bracket move, so that it ends within few steps.
    void close_in(double wanted, double a, double at_a, double b, double at_b) {
        for (int i = 0; i < 60; ++i) {
            const double c = at_b == at_a ? (a + b) / 2 : b - at_b * (b - a) / (at_b - at_a);
            const double at_c = distance_at(c) - wanted;
            if (std::abs(at_c) <= 1e-13 * total_) return;
            if ((at_c > 0.0) == (at_b > 0.0)) {
                at_a /= 2;
            } else {
                a = b;
                at_a = at_b;
            }
            b = c;
            at_b = at_c;
        }
    }

    const IkChain& chain_;
    const IkGoal& goal_;
    std::size_t count_;
    std::vector<Matrix> rotations_, start_, spaces_;
    std::vector<Vector3> points_; // of the joints, then the effector's
    std::vector<Hinge> hinges_;
    double total_ = 0.0, most_ = 0.0;
};

} // namespace

bool solve_ik(const IkChain& chain, const IkGoal& goal, std::vector<Vector3>& rotations) {
    if (chain.joints.empty()) return false;
    Solver solver(chain, goal);
    if (!solver.solve()) return false;
    rotations.resize(chain.joints.size());
    for (std::size_t i = 0; i < rotations.size(); ++i) rotations[i] = solver.rotate_of(i);
    return true;
}

} // namespace headless
