#include "headless/files/formats.h"

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
    session.register_writer("ma", [](Scene& scene, const std::string& path) { return write_maya_ascii(scene, path); });
}

} // namespace headless
