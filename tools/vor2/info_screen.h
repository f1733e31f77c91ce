#pragma once

#include "tools/vor2/json_writer.h"
#include "tools/vor2/scene_facts.h"

namespace tool {

/// The facts for people. At most `most_nodes` rows of the tree are shown; how many more there are is told.
void write_info_screen(const SceneFacts& facts, std::size_t most_nodes, TextOut& out);
/// The facts for programs: one JSON object on one line.
void write_info_json(const SceneFacts& facts, TextOut& out);

} // namespace tool
