#pragma once

namespace headless {

/// Makes pairBlend evaluated. By axis of translation mode 0 blends, 1 passes the first input on, 2 the second
/// (`translateXMode` and its like); so does `rotateMode` for the rotation. `weight`, kept from 0 to 1, is the second
/// input's share. Rotations blend angle by angle, or along the shorter arc where `rotInterpolation` is 1 (angles by
/// `rotateOrder`). A rotation that is connected on one side alone passes, whatever mode and weight.
void register_pair_blend();

} // namespace headless
