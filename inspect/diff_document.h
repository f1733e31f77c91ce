#pragma once

#include "inspect/json_writer.h"
#include "inspect/scene_diff.h"

namespace vor2::inspect {

/// The two scenes of a comparison, with what the documents call them.
struct ScenePair {
    const VOR2_LOADER::VOR2& first;
    const VOR2_LOADER::VOR2& second;
    std::string first_name, second_name;
};

/// A line for each difference: the record with its index and name, the field, and the two values. Gives how many.
std::uint64_t write_diff_text(const ScenePair& scenes, const DiffOptions& options, TextOut& out);
/// One JSON object with both names, the differences and their count.
std::uint64_t write_diff_json(const ScenePair& scenes, const DiffOptions& options, TextOut& out);

} // namespace vor2::inspect
