#pragma once

#include "format/vor2.h"
#include "inspect/json_writer.h"

namespace vor2::inspect {

/// The whole scene as one JSON object: a member for each field of the root. A record is an object with its "class"
/// first and then its fields in file order; an absent part is null.
void write_scene_json(const VOR2_LOADER::VOR2& scene, TextOut& out);

} // namespace vor2::inspect
