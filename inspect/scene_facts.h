#pragma once

/// What there is to say about a scene file in a screen, gathered once for people and for programs.

#include "format/vor2.h"
#include "inspect/chunk_table.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vor2::inspect {

/// The four lines that an export leaves in a file; a line that isn't there is empty.
struct ExportRecord {
    std::string user, exported_at, exported_as, source;
    bool forced = false; ///< the export went on in spite of problems
    bool recognised = false;
};
/// `file_info` in other words than an export's gives a record that isn't recognised.
ExportRecord parse_export_record(const std::string& file_info);

/// The keys of a node's tracks; nothing for a track that isn't there.
struct NodeFacts {
    std::string name;
    int parent = -1; ///< as the file tells it
    std::optional<std::uint64_t> position_keys, rotation_keys, scale_keys;
};

/// A text of a scene for people to read: well-formed UTF-8, whatever the text holds.
std::string readable(const VOR2_LOADER::TEXT& text);

struct SceneFacts {
    std::string file;
    std::uint64_t bytes = 0;
    float version = 0;
    std::string creator, file_info;
    ExportRecord record;
    float start = 0, end = 0;
    double sample_rate = 0;
    std::vector<NodeFacts> nodes;
    std::vector<std::pair<std::string, std::uint64_t>> objects; ///< "rigids" and how many, empty lists left out
    std::uint64_t tracks = 0, keys = 0;                         ///< of the whole scene
    ChunkTable chunks;
};

SceneFacts gather_facts(const std::string& file, const VOR2_LOADER::VOR2& scene,
                        std::span<const VOR2_LOADER::u8> bytes);

} // namespace vor2::inspect
