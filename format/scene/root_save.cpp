#include "format/scene/detail/root_chunks.h"

namespace VOR2_LOADER {

bool VOR2::save(VOR2_WRITE_STREAM& stream) const {
    const u32 unfinished = 0;
    const u32 start = stream.file().tell();
    stream.file().write(&unfinished, sizeof unfinished);
    bool saved = save_chunk(inf, stream);
    saved = save_chunk(VOR2_ARRAY_LENGTH_HELPER(*this), stream) && saved;
    each_chunk_row([&](const auto& row) {
        if (row.chunk_id != VOR2_INF::CHUNK_ID) saved = row.save(*this, stream) && saved;
    });
    if (!stream.file().flush() || stream.file().failed()) return false;
    return stream.file().seek(start) && stream.file().write(&MAGIC_WORD, sizeof MAGIC_WORD) == sizeof MAGIC_WORD &&
           stream.file().flush() && saved;
}

bool VOR2::save(const TEXT& file_name) const {
    VOR2_WRITE_STREAM stream;
    if (!stream.open(file_name, false, true)) return false;
    const bool saved = save(stream);
    return stream.close() && saved;
}

} // namespace VOR2_LOADER
