#include "headless/files/formats.h"

#include "headless/files/bvh_reader.h"
#include "headless/session.h"

namespace headless {

void register_file_formats(Session& session) {
    session.register_reader("bvh", [](Scene& scene, const std::string& path) { return read_bvh(scene, path); });
}

} // namespace headless
