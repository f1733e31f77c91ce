#pragma once

/// `VOR2_INPUT_BUFFER`: a whole file in memory, with a cursor.
///
/// Reading never passes the end. A fixed-size read that would is answered with zeros and fails the
/// buffer; a text is cut at the end, which is no failure. Once failed, the buffer stands at its end,
/// so that every further read gives zeros and every walk over it ends soon, and `problem` says what
/// was found where.

#include "support/array/virtual_block.h"
#include "support/text/text.h"

#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace VOR2_LOADER {

class VOR2_INPUT_BUFFER {
public:
    /// Reads the whole file. A file that can't be opened or read whole leaves the three pointers null
    /// and says why in `problem`.
    explicit VOR2_INPUT_BUFFER(TEXT name);
    /// For a file that `referring` names: the chain back to the first file is kept, so that a reference
    /// that leads back into it can be refused. `referring` must outlive this buffer.
    VOR2_INPUT_BUFFER(TEXT name, VOR2_INPUT_BUFFER& referring);
    /// Takes a copy of bytes that are in memory already; references resolve against `name`.
    VOR2_INPUT_BUFFER(std::span<const u8> bytes, TEXT name);
    ~VOR2_INPUT_BUFFER() { end = nullptr; }
    VOR2_INPUT_BUFFER(const VOR2_INPUT_BUFFER&) = delete;
    VOR2_INPUT_BUFFER& operator=(const VOR2_INPUT_BUFFER&) = delete;

    const u8* cursor = nullptr; ///< the next unread byte
    const u8* start = nullptr;
    const u8* end = nullptr; ///< one past the last byte; null when the file couldn't be read
    TEXT file_name;

    [[nodiscard]] u64 remaining() const noexcept { return static_cast<u64>(end - cursor); }
    [[nodiscard]] u64 offset() const noexcept { return static_cast<u64>(cursor - start); }

    /// Copies `size` bytes and moves on; zeros and false past the end.
    bool read(void* to, u64 size) {
        if (size > remaining()) [[unlikely]]
            return overrun(to, size);
        std::memcpy(to, cursor, size);
        cursor += size;
        return true;
    }
    template<class VALUE>
    bool read_value(VALUE& value) {
        return read(&value, sizeof value);
    }
    /// Reads a u32 count of elements that take at least `least_size` bytes each. A count that the rest
    /// of the file can't hold fails the buffer and is given as 0, before anything is reserved for it.
    bool read_count(u32& count, u32 least_size) {
        if (!read_value(count)) return false;
        return u64{count} * least_size <= remaining() || refuse(count);
    }

    /// Fails the buffer: the first reason and place are kept. Gives false.
    bool fail(std::string_view why);
    /// Says within which record, field or element the failure came up, from the inside out; the first
    /// few are kept. Gives false.
    bool fail_within(std::string_view where);
    bool fail_within(u64 element_index);
    [[nodiscard]] bool failed() const noexcept { return my_failed; }
    /// One line: what, at which offset, within what. Empty for a buffer that is good.
    [[nodiscard]] std::string problem() const;

    /// The buffer of the file that refers to this one; null for the first.
    [[nodiscard]] VOR2_INPUT_BUFFER* referring() const noexcept { return my_referring; }
    /// The buffer of the file that all this began with.
    [[nodiscard]] VOR2_INPUT_BUFFER& outermost() noexcept;
    /// Files opened through references below this one; kept on the outermost buffer.
    u32 references_opened = 0;
    /// Their bytes, each file as often as it was opened; kept there, too. They may come to `LONGEST_FILE`: a load that
    /// reads one file many times over costs no more than the longest file there is.
    u64 bytes_referred_to = 0;

private:
    void read_file();
    bool overrun(void* to, u64 size);
    bool refuse(u32& count);

    VIRTUAL_BLOCK my_block;
    VOR2_INPUT_BUFFER* my_referring = nullptr;
    bool my_failed = false;
    u64 my_failure_offset = 0;
    u32 my_places = 0;
    std::string my_why, my_where;
};

/// Reads a u16 count and then as many code units; those that would stand past the end are NUL.
void read_text(VOR2_INPUT_BUFFER& buffer, TEXT& text);

} // namespace VOR2_LOADER
