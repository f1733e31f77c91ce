// glTF in: whatever the bytes are, they are told as bad or become a scene that is fit for anything, which glTF can
// hold.

#include "convert/gltf_reader.h"
#include "convert/gltf_writer.h"
#include "fuzz/input.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vor2::convert;
    ImportedFile file;
    if (!read_gltf({{data, size}, "file", {}}, file).good()) return 0;
    if (!file.animations.empty()) set_animation(file.animations[0], file.scene);
    VOR2_LOADER::VOR2 scene;
    Report report;
    build_scene(file.scene, scene, report);
    scene.set_time(scene.environment.time_range.end);
    GltfOptions options;
    options.leave_out_textures = true;
    GltfFile out;
    const Take take{&scene, "walk"};
    const Report written = write_gltf({&take, 1}, options, out);
    ImportedFile again;
    const std::span<const std::uint8_t> bytes(reinterpret_cast<const std::uint8_t*>(out.bytes.data()),
                                              out.bytes.size());
    if (written.good() && !read_gltf({bytes, "file", {}}, again).good()) fuzz::wrong("what was written can't be read");
    return 0;
}
