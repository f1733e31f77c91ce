#include "tools/vor2/cli/foreign_file.h"

#include "convert/gltf_reader.h"
#ifdef VOR2_HAS_ASSIMP
#include "convert/assimp_reader.h"
#endif
#include "support/platform/native_path.h"
#include "support/text/ascii.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/whole_file.h"

namespace tool {

using namespace vor2::convert;
using VOR2_LOADER::platform::native_path;

std::string extension_of(const std::string& name) {
    return VOR2_LOADER::lowered(native_path(name).extension().string());
}

bool is_gltf(const std::string& extension) {
    return extension == ".glb" || extension == ".gltf";
}

bool is_foreign(const std::string& extension) {
#ifdef VOR2_HAS_ASSIMP
    if (assimp_reads(extension)) return true;
#endif
    return is_gltf(extension);
}

bool wants_process(const std::string& extension) {
    return is_foreign(extension) && !is_gltf(extension);
}

std::string foreign_extensions() {
#ifdef VOR2_HAS_ASSIMP
    return ".glb, .gltf, .fbx, .dae and the like";
#else
    return ".glb and .gltf";
#endif
}

bool tell(const std::string& file, const Report& report) {
    for (const std::string& text : report.notes) note(file, text);
    if (!report.good()) problem(file, report.problem);
    return report.good();
}

bool read_foreign(const std::string& file, const std::string& pictures, ImportedFile& out) {
    std::string why;
    const std::optional<std::vector<std::uint8_t>> bytes = read_whole(file, why);
    if (!bytes) {
        problem(file, why);
        return false;
    }
#ifdef VOR2_HAS_ASSIMP
    if (assimp_reads(extension_of(file)))
        return tell(file, read_with_assimp({*bytes, extension_of(file), pictures}, out));
#endif
    const auto read = [&file](const std::string& name) {
        std::string ignored;
        return read_whole((native_path(file).parent_path() / native_path(name)).string(), ignored);
    };
    return tell(file, read_gltf({*bytes, pictures, read}, out));
}

} // namespace tool
