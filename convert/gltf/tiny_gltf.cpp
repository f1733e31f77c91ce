// The body of the glTF library, whose every function is in its header.
#define TINYGLTF_IMPLEMENTATION
#include "convert/gltf/tiny_gltf.h"
