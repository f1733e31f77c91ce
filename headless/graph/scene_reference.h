#pragma once

#include "headless/graph/node.h"

#include <string>

namespace headless {

/// What a scene says of a file that it refers to, as its own files state it.
struct SceneReference {
    std::string file;
    std::string node_name;   ///< of the node that keeps what the scene changes there; empty for none
    std::string name_space;  ///< that the file's names go into, or
    std::string name_prefix; ///< what stands in front of them
    std::string sort;        ///< of file, as the host calls it ("mayaAscii", "FBX"); empty to go by the name
    std::string options;     ///< for the reader of such files
    bool unloaded = false;   ///< not to be read until somebody asks for it
    NodeHandle node{};       ///< that of `node_name`, once there is one
};

} // namespace headless
