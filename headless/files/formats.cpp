#include "headless/files/formats.h"

#ifdef HEADLESS_HAS_ASSIMP
#include "headless/files/assimp_reader.h"
#endif
#include "headless/files/bvh_reader.h"
#include "headless/files/ma_reader.h"
#include "headless/files/ma_writer.h"
#include "headless/session.h"

namespace headless {

void register_file_formats(Session& session) {
    session.register_reader("bvh", [](Scene& scene, const std::string& path) { return read_bvh(scene, path); });
    session.register_reader("ma", [&session](Scene& scene, const std::string& path) {
        return read_maya_ascii(scene, path, {{}, session.file_search});
    });
#ifdef HEADLESS_HAS_ASSIMP
    for (const char* extension : {"fbx", "dae", "glb", "gltf"})
        session.register_reader(extension,
                                [](Scene& scene, const std::string& path) { return read_with_assimp(scene, path); });
#endif
    session.register_writer("ma", [](Scene& scene, const std::string& path) { return write_maya_ascii(scene, path); });
}

} // namespace headless
