#pragma once

#include "inspect/json_writer.h"
#include "inspect/scene_facts.h"

namespace vor2::inspect {

/// The facts for people. At most `most_nodes` rows of the tree are shown; how many more there are is told.
void write_info_screen(const SceneFacts& facts, std::size_t most_nodes, TextOut& out);
/// The facts for programs: one JSON object on one line.
void write_info_json(const SceneFacts& facts, TextOut& out);

} // namespace vor2::inspect
