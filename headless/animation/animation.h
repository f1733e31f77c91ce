#pragma once

namespace headless {

/// Gives animation curves their keys and makes the nodes between a curve and a transform evaluated. Called once before
/// the first scene is made; more calls change nothing.
void register_animation();

} // namespace headless
