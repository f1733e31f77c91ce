#include "format/scene/scene_info.h"

#include "format/core/record_operations.h"

namespace VOR2_LOADER {

bool VOR2_INF::load(VOR2_INPUT_BUFFER& buffer) {
    RECORD_OPERATIONS<VOR2_INF>::load(*this, buffer, 0);
    if (buffer.failed()) return false;
    if (CURRENT_VERSION >= version) return true;
    return buffer.fail("the file's version, " + std::to_string(version) + ", is newer than " +
                       std::to_string(CURRENT_VERSION));
}

bool VOR2_INF::save(VOR2_WRITE_STREAM& stream) const {
    stream.write_value(CURRENT_VERSION);
    write_text(stream.file(), creator);
    write_text(stream.file(), file_info);
    return true;
}

template struct RECORD_OPERATIONS<VOR2_INF>;

} // namespace VOR2_LOADER
