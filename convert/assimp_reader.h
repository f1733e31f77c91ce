#pragma once

/// FBX, Collada and further formats in, through Assimp. Hierarchy, animation at its own times, skins, targets, cameras,
/// lights and materials come along, in metres and upright whatever the file's units and axes. The pivots of FBX are
/// worked into the nodes' placements.

#include "convert/scene_builder.h"

#include <span>
#include <string>

namespace vor2::convert {

struct AssimpSource {
    std::span<const std::uint8_t> bytes;
    std::string extension; ///< of the file's name, with its dot, which tells the format
    std::string name;      ///< how the names of pictures that lie in the file begin
};

/// Reads nothing but the bytes. Assimp itself may crash on a bad file: who can't trust one reads it in a process of its
/// own.
Report read_with_assimp(const AssimpSource& source, ImportedFile& out);

/// Whether files of that ending can be read so.
bool assimp_reads(const std::string& extension);

} // namespace vor2::convert
