#pragma once

#include "headless/graph/math.h"

#include <array>
#include <vector>

namespace headless {

/// A joint of a chain. What it does to its own space is `before`, its rotation, then `after`, in rows: the space of
/// the joint above (for the first one, the chain's space) comes out. `after` ends with the joint's place there.
struct IkJoint {
    Matrix before;     ///< scale and rotate axis
    Matrix after;      ///< joint orient, compensation, translation, and what stands between it and the joint above
    Vector3 preferred; ///< radians: the pose that the solver starts from
    RotateOrder order = RotateOrder::xyz;
    std::array<bool, 3> turns{true, true, true}; ///< axes that the solver may turn about
    Vector3 rotate;                              ///< what the other axes keep
};

/// Joints from the first to the last, each standing under the one before it. The chain's space has the first joint
/// at its origin.
struct IkChain {
    std::vector<IkJoint> joints;
    Matrix effector; ///< in the last joint's space: the point that is to reach the goal, and its orientation
};

/// Where the effector is to go, in the chain's space.
struct IkGoal {
    Vector3 point;
    /// A rotate plane solver turns the chain about the line to the goal until its first bone is on the pole vector's
    /// side, and by `twist` more; a single chain one until the effector's orientation is as near to `orientation` as
    /// the line allows.
    bool rotate_plane = true;
    Vector3 pole{0, 0, 1};
    double twist = 0.0; ///< radians
    Matrix orientation;
};

/// Works out the rotate values of every joint into `rotations`; false when there is nothing to solve (no joint, or
/// bones of no length), and then `rotations` is as it was.
///
/// Both solvers begin at the preferred angles, whatever the joints' rotations were, so that a pose follows from the
/// goal alone. First the joints between the ends bend, each about the normal that its two bones have there and all in
/// proportion, until the effector is as far from the first joint as the goal is; a chain that is straight there has
/// no normal and stays straight. A goal out of reach straightens it, one too near folds it as far as it goes. Then
/// the chain swings by the shortest way towards the goal, and turns about the line there.
///
/// With two bones this is the closed form by the law of cosines, as in the host's published two-bone solver
/// (vector12, qEH, qNP, qTwist there). That more bones bend in proportion isn't published; it is how the host left the
/// legs of three bones in its files, to within its own tolerance, as is the side of theirs that it turned to the pole
/// vector.
bool solve_ik(const IkChain& chain, const IkGoal& goal, std::vector<Vector3>& rotations);

} // namespace headless
