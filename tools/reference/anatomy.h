#pragma once

#include "tools/reference/shapes.h"

#include <span>

namespace reference {

/// A whole file taken apart: for each field a line with its offset, its bytes, its name and its value. Throws
/// `std::runtime_error` for a file that isn't as the shapes tell.
std::string take_apart(const Shapes& shapes, std::span<const u8> file);

} // namespace reference
