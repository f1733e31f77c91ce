#pragma once

/// `WRITE_FILE` and `READ_FILE`: binary files whose positions fit a signed 32-bit number.

#include "support/text/text.h"

#include <cstdio>
#include <cstring>
#include <memory>

namespace VOR2_LOADER {

/// A file's `last_error` as a portable status: 0 success, 1 end of file, 3 not found or no file, 6 out
/// of memory, 7 access denied, 23 anything without a status of its own.
[[nodiscard]] i32 file_status(i32 last_error) noexcept;

/// The `last_error` of a file that was never opened: the system's code for an invalid handle.
inline constexpr i32 NO_FILE_ERROR = 6;
/// The `last_error` after a read that met the end of the file.
inline constexpr i32 END_OF_FILE_ERROR = 38;
/// The longest file: positions are told in 31 bits.
inline constexpr u32 LONGEST_FILE = 0x7FFFFFFF;

/// A buffered output file. Written bytes are held in a block of its own until that is full, a seek
/// leaves it, or the file is closed; so a full disk can show at a later call than the one that wrote.
/// The first failure sticks in `failed`, whatever succeeds after it.
class WRITE_FILE {
public:
    WRITE_FILE() = default;
    ~WRITE_FILE() { close(); }
    WRITE_FILE(const WRITE_FILE&) = delete;
    WRITE_FILE& operator=(const WRITE_FILE&) = delete;

    /// Closes what is open and opens `name`, emptied or at its end. A failure lies in `last_error`.
    bool open(const TEXT& name, bool append);
    /// True if all that was written reached the system.
    bool close();
    [[nodiscard]] bool is_open() const noexcept { return my_handle != nullptr; }

    /// The bytes taken: `count`, or fewer when the file is closed, too long or its device full.
    u32 write(const void* data, u32 count) {
        if (count - 1 >= my_room) [[unlikely]] // also where there is nothing to write
            return write_past_block(data, count);
        std::memcpy(my_block.get() + my_held, data, count);
        my_held += count;
        my_room -= count;
        return count;
    }
    /// A place for `size` bytes that the caller writes there at once, all of them, and then claims with `took`. Null
    /// where there is none, for which `write` has the reason.
    [[nodiscard]] u8* room(u64 size) {
        if (size > my_room && (size > BLOCK_SIZE || !flush() || size > my_room)) return nullptr;
        return my_block.get() + my_held;
    }
    void took(u64 size) noexcept {
        my_held += static_cast<u32>(size);
        my_room -= static_cast<u32>(size);
    }
    /// Hands all held bytes to the system.
    bool flush();
    [[nodiscard]] u32 tell() const noexcept { return my_block_position + my_held; }
    /// From the start; a position that is negative as a signed number counts from the file's end.
    bool seek(u32 position);
    /// Puts 4 bytes at an earlier position and goes on where the file stood.
    bool patch(u32 position, u32 value);

    /// 6 until a file is opened, 0 after a success, `errno` after a failed open or seek, the file's
    /// error indicator after a short write.
    [[nodiscard]] i32 last_error() const noexcept { return my_last_error; }
    /// Whether any call since `open` failed.
    [[nodiscard]] bool failed() const noexcept { return my_failed; }

private:
    static constexpr u32 BLOCK_SIZE = 1U << 16;

    bool note_failure(i32 error) noexcept;
    bool note_short_write() noexcept;
    u32 write_past_block(const void* data, u32 count);
    /// To be called when the block is empty and stands somewhere else.
    void place_block(u32 position) noexcept;

    std::FILE* my_handle = nullptr;
    TEXT my_name;
    std::unique_ptr<u8[]> my_block;
    u32 my_held = 0;           ///< bytes in the block
    u32 my_room = 0;           ///< bytes that it can still take; 0 while no file is open
    u32 my_block_position = 0; ///< where in the file the block's first byte belongs
    i32 my_last_error = NO_FILE_ERROR;
    bool my_failed = false;
};

/// An input file that is read from start to end.
class READ_FILE {
public:
    READ_FILE() = default;
    ~READ_FILE() { close(); }
    READ_FILE(const READ_FILE&) = delete;
    READ_FILE& operator=(const READ_FILE&) = delete;

    bool open(const TEXT& name);
    void close();
    /// In bytes; -1, with `last_error` set, for a file of more than `LONGEST_FILE`.
    [[nodiscard]] i64 length();
    /// The bytes read: fewer than `count` at the file's end or on an error.
    u32 read(void* data, u32 count);
    [[nodiscard]] i32 last_error() const noexcept { return my_last_error; }

private:
    std::FILE* my_handle = nullptr;
    i32 my_last_error = NO_FILE_ERROR;
};

} // namespace VOR2_LOADER
