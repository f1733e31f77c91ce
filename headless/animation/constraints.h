#pragma once

namespace headless {

/// Makes point, orient, parent, aim and scale constraints evaluated. Other kinds stay unevaluated drivers.
///
/// Row vectors, leftmost acts first. For each target i (an element of `target`, `tg` in short):
/// - its pivot in the world: (tt + trp + trt) through tpm;
/// - its orientation in the world: the rotation part of R(tr by tro) JO(tjo) tpm.
/// Inputs that nothing is connected to count as stored. A weight that isn't positive and finite counts as 0.
///
/// - pointConstraint: the weighted mean of the pivots, plus `offset` along the world's axes (minus, where
///   `constraintOffsetPolarity` is on), brought into the parent's space through cpim, less crp and crt.
/// - orientConstraint: the mean of the orientations as `interpType` says (see `RotationBlend`), with `offset` (by cro)
///   acting before it, brought into the parent's space; then freed of the joint orient cjo and told by cro.
/// - parentConstraint: both, where a target's orientation has its `targetOffsetRotate` (by tro) acting before it, and
///   its point is `targetOffsetTranslate` in the space around its pivot: S(ts) R JO IS, where IS is the inverse of
///   `targetInverseScale` when `targetScaleCompensate` is on.
/// - aimConstraint: turns `aimVector` from the constrained node's pivot toward the mean of the targets' pivots, and
///   `upVector` as near as can be to the world's y (`worldUpType` 0), the place of `worldUpMatrix` (1), its turn of
///   `worldUpVector` (2), or `worldUpVector` (3); with 4 by the shortest turn. Then `offset`, cjo and cro as for the
///   orientConstraint. With no direction to aim in, `aimVector` keeps its own in the world.
/// - scaleConstraint: the weighted mean of the targets' world scales (the lengths of the rows of S(ts) tpm), times
///   `offset`, over the scale of the parent. An axis on which the parent has no scale is left as in the world.
///
/// When no weight counts (or their sum is beyond numbers): the rest position (`restTranslate`, `restRotate`,
/// `restScale`) if `enableRestPosition` is on; else the value stored in the attribute that the output drives, as if the
/// constraint weren't there.
void register_constraints();

} // namespace headless
