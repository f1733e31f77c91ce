#include "format/core/write_stream.h"

namespace VOR2_LOADER {

bool VOR2_WRITE_STREAM::open(const TEXT& name, bool append, bool chunks_required) {
    my_file_name = name;
    my_chunks_required = chunks_required;
    my_chunk_open = false;
    return my_file.open(name, append);
}

bool VOR2_WRITE_STREAM::begin_chunk() {
    if (my_chunk_open) return false;
    my_chunk_start = my_file.tell();
    my_file.write(&my_chunk_start, sizeof my_chunk_start);
    my_chunk_open = true;
    return true;
}

bool VOR2_WRITE_STREAM::end_chunk() {
    if (!my_chunk_open) return false;
    my_file.patch(my_chunk_start, my_file.tell() - my_chunk_start);
    my_chunk_open = false;
    return true;
}

// A longer text is cut to as many units as its stored count says: the record stays readable.
void write_text(WRITE_FILE& file, const TEXT& text) {
    const u16 count = static_cast<u16>(text.length());
    file.write(&count, sizeof count);
    file.write(text.data(), count * u32{sizeof(char16_t)});
}

} // namespace VOR2_LOADER
