#pragma once

namespace headless {

/// Makes point, orient and parent constraints evaluated. Other kinds stay unevaluated drivers.
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
///
/// When no weight counts: the rest position (`restTranslate`, `restRotate`) if `enableRestPosition` is on; else the
/// value stored in the attribute that the output drives, as if the constraint weren't there.
void register_constraints();

} // namespace headless
