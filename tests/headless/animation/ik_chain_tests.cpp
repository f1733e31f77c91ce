#include "network.h"

#include "headless/animation/ik_chain.h"
#include "headless/animation/rotation_blend.h"

#include <algorithm>

namespace headless {
namespace {

/// A chain along x whose bones lie in the plane of x and y, each bent from the one before it by its preferred angle.
IkChain planar(std::vector<double> bones, std::vector<double> bends) {
    IkChain out;
    for (std::size_t i = 0; i < bones.size(); ++i) {
        IkJoint joint;
        if (i > 0) joint.after = Matrix::translate({bones[i - 1], 0, 0});
        joint.preferred.z = i < bends.size() ? bends[i] * degree : 0.0;
        out.joints.push_back(joint);
    }
    out.effector = Matrix::translate({bones.back(), 0, 0});
    return out;
}

/// Where the joints and the effector come to be.
std::vector<Vector3> places(const IkChain& chain, const std::vector<Vector3>& rotations, Matrix* last = nullptr) {
    std::vector<Vector3> out;
    Matrix space;
    for (std::size_t i = 0; i < chain.joints.size(); ++i) {
        const IkJoint& joint = chain.joints[i];
        space = joint.before * euler_to_matrix(rotations[i], joint.order) * joint.after * space;
        out.push_back(space.translation());
    }
    out.push_back(transform_point(chain.effector.translation(), space));
    if (last) *last = chain.effector * space;
    return out;
}

std::vector<Vector3> solved(const IkChain& chain, const IkGoal& goal) {
    std::vector<Vector3> out;
    EXPECT_TRUE(solve_ik(chain, goal, out));
    return out;
}

double bend_at(const std::vector<Vector3>& at, std::size_t joint) {
    const Vector3 in = at[joint] - at[joint - 1], out = at[joint + 1] - at[joint];
    return std::atan2(length(cross(in, out)), dot(in, out)) / degree;
}

// The leg of 3 and 4 makes a right angle at the knee for a goal at 5: the knee stands 9/5 along the line and 12/5 off
// it, to the side of the pole vector, or turned on from there by the twist.
TEST(IkChain, two_bones_reach_the_goal_with_the_knee_on_the_pole_vectors_side) {
    const IkChain leg = planar({3, 4}, {0, 30});
    for (const Vector3& way : {Vector3{1, 0, 0}, Vector3{-1, 0, 0}, Vector3{0, 1, 0}, Vector3{1, -2, 2} * (1.0 / 3)}) {
        for (const Vector3& pole : {Vector3{.3, 7, 2}, Vector3{-1, -.2, .1}, Vector3{0, .4, -9}}) {
            for (const double twist : {0.0, 90.0, -35.0}) {
                const auto at = places(leg, solved(leg, {way * 5.0, true, pole, twist * degree, {}}));
                expect_near(at[2], way * 5.0, 1e-12);
                const Vector3 side = pole - way * dot(pole, way), unit = side * (1.0 / length(side));
                const Vector3 turned = unit * std::cos(twist * degree) + cross(way, unit) * std::sin(twist * degree);
                expect_near(at[1], way * 1.8 + turned * 2.4, 1e-9);
            }
        }
    }
}

TEST(IkChain, goals_out_of_reach_straighten_and_those_too_near_fold_the_chain) {
    const IkChain leg = planar({3, 4}, {0, 30});
    const auto far = places(leg, solved(leg, {{0, 20, 0}, true, {1, 0, 0}, 0, {}}));
    expect_near(far[1], {0, 3, 0});
    expect_near(far[2], {0, 7, 0});
    const auto near = places(leg, solved(leg, {{0, .5, 0}, true, {1, 0, 0}, 0, {}}));
    expect_near(near[1], {0, -3, 0}, 1e-9);
    expect_near(near[2], {0, 1, 0}, 1e-9);
    // At the first joint there is no line: the chain folds as near as it can and stays on its side.
    const auto none = places(leg, solved(leg, {{0, 0, 0}, true, {1, 0, 0}, 0, {}}));
    EXPECT_NEAR(length(none[2]), 1, 1e-9);

    const IkChain stick = planar({3, 4}, {});
    const auto straight = places(stick, solved(stick, {{0, 5, 0}, true, {0, 0, 1}, 0, {}}));
    expect_near(straight[1], {0, 3, 0});
    expect_near(straight[2], {0, 7, 0});
}

// A straight chain is turned by its first joint's own axes: along x, its z is on the pole vector's side.
TEST(IkChain, a_single_bone_turns_about_itself_to_the_pole_vector) {
    for (const auto& [along, side] : {std::pair{0, 2}, {1, 0}, {2, 1}}) {
        IkChain bone;
        bone.joints.emplace_back();
        Vector3 end;
        end[along] = 2;
        bone.effector = Matrix::translate(end);
        Matrix axes;
        places(bone, solved(bone, {{3, 3, 0}, true, {5, 0, 1}, 0, {}}), &axes);
        const double root = 1 / std::sqrt(2.0);
        expect_near(axes.row(along), {root, root, 0});
        const Vector3 pole = Vector3{5, 0, 1} - Vector3{2.5, 2.5, 0};
        expect_near(axes.row(side), pole * (1 / length(pole)));
    }
}

TEST(IkChain, the_preferred_pose_is_the_answer_where_it_reaches) {
    IkChain chain = planar({2, 3, 1.5, 1}, {20, 35, 60, 15});
    std::vector<Vector3> rest;
    for (const IkJoint& joint : chain.joints) rest.push_back(joint.preferred);
    const auto at = places(chain, rest);
    const auto found = solved(chain, {at.back(), true, at[1], 0, {}});
    for (std::size_t i = 0; i < rest.size(); ++i) expect_near(found[i], rest[i], 1e-9);
}

// Bends of 37 and 60 degrees the other way, as a hind leg has them: one share of each, whatever the goal.
TEST(IkChain, more_bones_bend_in_the_proportions_of_the_preferred_pose) {
    IkChain leg = planar({1.7, 1.1, .9}, {0, 37, -60});
    for (const double reach : {3.6, 3.2, 2.5, 1.7}) {
        const Vector3 goal{0, -reach, 0};
        const auto at = places(leg, solved(leg, {goal, true, {1, 0, 0}, 0, {}}));
        expect_near(at[3], goal, 1e-9);
        EXPECT_NEAR(bend_at(at, 1) / bend_at(at, 2), 37.0 / 60.0, 1e-6) << reach;
        // Most of what leg and line enclose lies on the hock's side, so that is turned to the pole vector: seen along
        // the line the knee goes on bending to the left, however far it is bent.
        EXPECT_GT(cross(at[1], at[2] - at[1]).z, 0.0);
        for (const Vector3& point : at) EXPECT_NEAR(point.z, 0.0, 1e-9);
    }
}

// As published for the single chain: the position first, then as near to the orientation as turning about the line
// allows. The nearest is found again by trying.
TEST(IkChain, a_single_chain_turns_as_near_to_the_goals_orientation_as_its_line_allows) {
    const IkChain leg = planar({3, 4}, {0, 30});
    IkGoal goal{{1, 4, -2}, false, {}, 0, euler_to_matrix({.4, -1.1, 2.3}, RotateOrder::xyz)};
    const auto nearness = [&](const Matrix& axes) {
        double out = 0.0;
        for (int r = 0; r < 3; ++r) out += dot(axes.row(r), goal.orientation.row(r));
        return out;
    };
    Matrix own;
    const auto at = places(leg, solved(leg, goal), &own);
    expect_near(at[2], goal.point, 1e-9);
    double best = -3.0;
    const Vector3 line = goal.point * (1 / length(goal.point));
    for (int i = 0; i < 3600; ++i) {
        const double half = i * degree / 20;
        const Matrix turn =
            to_matrix({line.x * std::sin(half), line.y * std::sin(half), line.z * std::sin(half), std::cos(half)});
        best = std::max(best, nearness(own * turn));
    }
    EXPECT_GE(nearness(own), best - 1e-12);
}

TEST(IkChain, scales_orients_and_orders_of_joints_are_part_of_the_bones) {
    IkChain leg = planar({3, 4}, {0, 30});
    leg.joints[0].before = Matrix::scale({2, 2, 2}) * euler_to_matrix({.3, .2, -.4}, RotateOrder::xyz);
    leg.joints[0].after = euler_to_matrix({1, -.5, .2}, RotateOrder::xyz);
    leg.joints[0].order = RotateOrder::zxy;
    // The knee's own length doesn't follow the hip's scale evenly: no closed form holds.
    leg.joints[1].before = Matrix::scale({1, 3, .5});
    leg.joints[1].after =
        euler_to_matrix({0, 0, .7}, RotateOrder::xyz) * Matrix::scale({1, .8, 1}) * leg.joints[1].after;
    leg.joints[1].order = RotateOrder::yxz;
    const Vector3 goal{4, 3, -5};
    const auto at = places(leg, solved(leg, {goal, true, {0, 1, 0}, 0, {}}));
    expect_near(at[2], goal, 1e-9);
    const Vector3 normal = cross(goal, {0, 1, 0});
    EXPECT_NEAR(dot(at[1], normal), 0.0, 1e-9);
    EXPECT_GT(dot(at[1] - goal * (dot(at[1], goal) / dot(goal, goal)), {0, 1, 0}), 0.0);
}

TEST(IkChain, axes_that_may_not_turn_keep_their_values_and_what_cannot_be_solved_is_told) {
    IkChain leg = planar({3, 4}, {0, 30});
    leg.joints[1].turns = {false, true, true};
    leg.joints[1].rotate = {.25, 9, 9};
    EXPECT_EQ(solved(leg, {{1, 2, 3}, true, {0, 1, 0}, 0, {}})[1].x, .25);

    std::vector<Vector3> untouched{{1, 2, 3}};
    const IkChain point = planar({0, 0}, {0, 30});
    EXPECT_FALSE(solve_ik(point, {{1, 2, 3}, true, {0, 1, 0}, 0, {}}, untouched));
    EXPECT_FALSE(solve_ik(leg, {{std::nan(""), 2, 3}, true, {0, 1, 0}, 0, {}}, untouched));
    EXPECT_FALSE(solve_ik(leg, {{1, 2, 3}, true, {0, 1, 0}, std::nan(""), {}}, untouched));
    EXPECT_FALSE(solve_ik({}, {}, untouched));
    EXPECT_EQ(untouched, std::vector<Vector3>({{1, 2, 3}}));
}

} // namespace
} // namespace headless
