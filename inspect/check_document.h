#pragma once

/// What a check of a scene found, for people and for programs.

#include "format/vor2.h"
#include "inspect/json_writer.h"

namespace vor2::inspect {

/// What `VOR2_LOADER::check_scene` writes of a scene that nothing is repaired in. Positions are told in the world at
/// the start of the scene; its cursors stay where they are.
VOR2_LOADER::NARROW_TEXT report_of(VOR2_LOADER::VOR2& scene);

struct CheckedScene {
    const VOR2_LOADER::VOR2& scene;
    std::string file;            ///< as the documents call it
    VOR2_LOADER::TEXT file_name; ///< in the library's form: references are looked for beside it
    std::string_view report;     ///< what `report_of` gave
    bool strict = false;         ///< also everything of `check_strictly`
};

/// A block for each mesh with numbers that aren't finite, a line for each further finding. Gives how many problems.
std::uint64_t write_check_text(const CheckedScene& checked, TextOut& out);
/// One JSON object with the meshes, the findings and the count.
std::uint64_t write_check_json(const CheckedScene& checked, JsonWriter::Layout layout, TextOut& out);

} // namespace vor2::inspect
