#pragma once

/// `VOR2_WRITE_STREAM`: the file writer, with chunk framing.
///
/// Everything is little-endian. A chunk is its `length` in bytes (u32, counted from this field's
/// first byte), its `chunk_id` (i32) and its body. The length is unknown when the body starts: until
/// `end_chunk` its place holds the chunk's own offset.

#include "format/core/files.h"

#include <bit>

namespace VOR2_LOADER {

static_assert(std::endian::native == std::endian::little, "records are the memory of a little-endian machine");

class VOR2_WRITE_STREAM {
public:
    /// No file open, chunks required.
    VOR2_WRITE_STREAM() = default;
    /// Opens; ask `good` whether that succeeded.
    VOR2_WRITE_STREAM(const TEXT& name, bool append, bool chunks_required) { open(name, append, chunks_required); }

    /// While `chunks_required` holds, `write` refuses every write outside a chunk.
    bool open(const TEXT& name, bool append, bool chunks_required);
    /// True if all that was written reached the system.
    bool close() { return my_file.close(); }
    /// Whether the file was opened and its `last_error` tells of success.
    [[nodiscard]] bool good() const noexcept { return my_file.is_open() && file_status(my_file.last_error()) == 0; }

    /// False, writing nothing, when a chunk is open already.
    bool begin_chunk();
    /// False, writing nothing, when no chunk is open.
    bool end_chunk();
    /// `WRITE_FILE::room`, where a write would be allowed.
    [[nodiscard]] u8* room(u64 size) { return my_chunks_required && !my_chunk_open ? nullptr : my_file.room(size); }
    /// The bytes taken; 0 outside a chunk where one is required.
    u32 write(const void* data, u32 count) {
        if (my_chunks_required && !my_chunk_open) return 0;
        return my_file.write(data, count);
    }
    /// Whether all bytes of a plain value were taken.
    template<class VALUE>
    bool write_value(const VALUE& value) {
        return write(&value, sizeof value) == sizeof value;
    }

    /// The stream of the file that refers to this one's, null for the first. Set by who opens a referenced
    /// file, so that a reference that leads back to a file that is being written can be refused.
    const VOR2_WRITE_STREAM* referring = nullptr;

    [[nodiscard]] bool chunk_open() const noexcept { return my_chunk_open; }
    [[nodiscard]] u32 chunk_start() const noexcept { return my_chunk_start; }
    [[nodiscard]] bool chunks_required() const noexcept { return my_chunks_required; }
    [[nodiscard]] WRITE_FILE& file() noexcept { return my_file; }
    [[nodiscard]] const TEXT& file_name() const noexcept { return my_file_name; }

private:
    bool my_chunk_open = false;
    u32 my_chunk_start = 0;
    bool my_chunks_required = true;
    WRITE_FILE my_file;
    TEXT my_file_name;
};

/// Writes the count of code units as 16 bits and then the units, straight to the file, inside a chunk
/// or not. Of a text of more than 65,535 units only the low 16 bits of its length are stored, and as
/// many units. A failure lies in the file's error state alone.
void write_text(WRITE_FILE& file, const TEXT& text);

} // namespace VOR2_LOADER
