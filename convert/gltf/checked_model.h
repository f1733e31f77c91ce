#pragma once

#include "convert/gltf/tiny_gltf.h"
#include "convert/gltf_reader.h"

namespace vor2::convert {

/// Reads a file into the glTF library's model, after a look at what the library itself takes on trust. A `BadFile` says
/// why it can't. Pictures have their encoded bytes, or the name of their file.
tinygltf::Model checked_model(const GltfSource& source);

} // namespace vor2::convert
