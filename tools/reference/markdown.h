#pragma once

#include "tools/reference/shapes.h"

namespace reference {

/// Fills a page's places: lines `@chunks@`, `@instances@`, `@versions@`, `@anatomy@`, `@record NAME@` and
/// `@family NAME@`. Throws `std::runtime_error` for a line that names nothing, and where a record or a family has no
/// place or two.
std::string fill_page(const Shapes& shapes, const std::string& page, const std::string& anatomy);

} // namespace reference
