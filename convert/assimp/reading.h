#pragma once

#include "convert/assimp_reader.h"

#include <assimp/scene.h>

namespace vor2::convert {

/// What the parts of the reader share.
struct AssimpReading {
    const aiScene& source;
    Report& report;
    ImportedFile& out;
    double metres = 1;                               ///< to one of the file's units
    std::vector<const aiNode*> nodes;                ///< by place in the scene
    std::map<std::string, int> places;               ///< by name; the first of that name
    std::map<int, std::vector<std::size_t>> of_node; ///< by place, the meshes that the node got
};

void read_materials(AssimpReading& reading, const std::string& name);
void read_meshes(AssimpReading& reading);
void read_looks(AssimpReading& reading); ///< lights and cameras
void read_animations(AssimpReading& reading);

} // namespace vor2::convert
