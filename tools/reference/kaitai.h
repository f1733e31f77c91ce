#pragma once

#include "tools/reference/shapes.h"

namespace reference {

/// The format as a Kaitai Struct description. Keys that begin with a minus are for the comparison with `vor2 dump`,
/// and no compiler looks at them: a class's name, what an older file's missing field means.
std::string write_kaitai(const Shapes& shapes);

} // namespace reference
