#pragma once

/// Files whose counts, depths and times ask for more than their bytes are worth.

#include "tests/format/every_record.h"

#include <functional>

namespace VOR2_LOADER {

using VISIT_FILE = std::function<void(const std::string& what, const BYTES& file)>;

/// Of about `size` bytes each, and all of them scenes that load and can be played.
void each_hostile_scene(u32 size, const VISIT_FILE& visit);
/// Every record there is with a count that its own bytes can just about hold, or can't, at every place of it; most are
/// refused.
void each_hostile_count(const VISIT_FILE& visit);

} // namespace VOR2_LOADER
