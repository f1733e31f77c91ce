#pragma once

namespace headless {

/// Makes mesh nodes, made from now on, keep their lists in their own form.
void register_geometry();

} // namespace headless
