#include "tools/vor2/cli/foreign_file.h"

#include "convert/gltf_reader.h"
#include "support/platform/native_path.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/whole_file.h"

namespace tool {

using namespace vor2::convert;
using VOR2_LOADER::platform::native_path;

std::string extension_of(const std::string& name) {
    std::string ending = native_path(name).extension().string();
    for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return ending;
}

bool is_gltf(const std::string& extension) {
    return extension == ".glb" || extension == ".gltf";
}

bool is_foreign(const std::string& extension) {
    return is_gltf(extension);
}

std::string foreign_extensions() {
    return ".glb and .gltf";
}

bool tell(const std::string& file, const Report& report) {
    for (const std::string& text : report.notes) note(file + ": " + text);
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
    const auto read = [&file](const std::string& name) {
        std::string ignored;
        return read_whole((native_path(file).parent_path() / native_path(name)).string(), ignored);
    };
    return tell(file, read_gltf({*bytes, pictures, read}, out));
}

} // namespace tool
