#pragma once

#include "format/vor2.h"
#include "inspect/json_writer.h"

namespace vor2::inspect {

/// The whole scene as indented lines: "name value", "name CLASS" over the fields of a record, "name [count]" over the
/// elements of a list, each under its index.
void write_scene_text(const VOR2_LOADER::VOR2& scene, TextOut& out);

} // namespace vor2::inspect
