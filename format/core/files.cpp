#include "format/core/files.h"

#include "support/platform/hooks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace VOR2_LOADER {
namespace {

constexpr i32 FILE_TOO_LARGE_ERROR = EFBIG;

std::FILE* through(std::FILE* (*hook)(std::FILE* opened), std::FILE* opened) {
    return hook != nullptr && opened != nullptr ? hook(opened) : opened;
}

i32 seek_from(std::FILE* file, u32 position) {
    const i32 signed_position = static_cast<i32>(position);
    return std::fseek(file, signed_position, signed_position < 0 ? SEEK_END : SEEK_SET);
}

} // namespace

i32 file_status(i32 last_error) noexcept {
    switch (last_error) {
    case 0:
        return 0;
    case 38:
        return 1;
    case 997:
        return 2;
    case 2:
    case 3:
    case 6:
        return 3;
    case 183:
        return 4;
    case 8:
    case 14:
        return 6;
    case 5:
    case 13:
        return 7;
    case 87:
        return 19;
    case 123:
        return 20;
    case 32:
        return 21;
    case 22:
        return 22;
    default:
        return 23;
    }
}

bool WRITE_FILE::note_failure(i32 error) noexcept {
    my_last_error = error != 0 ? error : EIO;
    my_failed = true;
    return false;
}

bool WRITE_FILE::note_short_write() noexcept {
    return note_failure(std::feof(my_handle) != 0 ? END_OF_FILE_ERROR : std::ferror(my_handle));
}

bool WRITE_FILE::open(const TEXT& name, bool append) {
    close();
    my_failed = false;
    my_block_position = 0;
    u32 position = 0;
    i32 error = 0;
    my_handle = through(platform::output_stream_hook, platform::open_for_writing(name.view(), append, error));
    my_name = name;
    if (my_handle == nullptr) return note_failure(error);
    // The block below is the buffer; a second one would only copy every byte again.
    (void)std::setvbuf(my_handle, nullptr, _IONBF, 0);
    if (!my_block) my_block = std::make_unique_for_overwrite<u8[]>(BLOCK_SIZE);
    if (append) {
        if (std::fseek(my_handle, 0, SEEK_END) != 0) return note_failure(errno);
        const long end = std::ftell(my_handle);
        if (end < 0 || end > static_cast<long>(LONGEST_FILE)) return note_failure(FILE_TOO_LARGE_ERROR);
        position = static_cast<u32>(end);
    }
    place_block(position);
    my_last_error = 0;
    return true;
}

bool WRITE_FILE::close() {
    if (my_handle == nullptr) return !my_failed;
    const bool flushed = flush();
    const i32 error = std::fclose(my_handle) == 0 ? 0 : errno;
    my_handle = nullptr;
    my_room = 0;
    if (error != 0) note_failure(error);
    platform::note_closed(my_name.view(), flushed && !my_failed);
    return flushed && !my_failed;
}

bool WRITE_FILE::flush() {
    if (my_handle == nullptr) return false;
    if (my_held == 0) return true;
    const u32 held = my_held;
    place_block(my_block_position + held);
    if (std::fwrite(my_block.get(), 1, held, my_handle) != held) return note_short_write();
    my_last_error = 0;
    return true;
}

void WRITE_FILE::place_block(u32 position) noexcept {
    my_held = 0;
    my_block_position = position;
    my_room = std::min(BLOCK_SIZE, LONGEST_FILE - position);
}

u32 WRITE_FILE::write_past_block(const void* data, u32 count) {
    if (my_handle == nullptr) {
        note_failure(NO_FILE_ERROR);
        return 0;
    }
    if (count == 0) return 0;
    if (count > LONGEST_FILE - tell()) {
        note_failure(FILE_TOO_LARGE_ERROR);
        return 0;
    }
    if (!flush()) return 0;
    if (count <= my_room) return write(data, count);
    const std::size_t taken = std::fwrite(data, 1, count, my_handle);
    place_block(my_block_position + static_cast<u32>(taken));
    if (taken != count) note_short_write();
    return static_cast<u32>(taken);
}

bool WRITE_FILE::seek(u32 position) {
    if (!flush()) return false;
    if (seek_from(my_handle, position) != 0) return note_failure(errno);
    const long now = std::ftell(my_handle);
    if (now < 0 || now > static_cast<long>(LONGEST_FILE)) return note_failure(FILE_TOO_LARGE_ERROR);
    place_block(static_cast<u32>(now));
    my_last_error = 0;
    return true;
}

bool WRITE_FILE::patch(u32 position, u32 value) {
    if (position >= my_block_position && u64{position} + sizeof value <= tell()) {
        std::memcpy(my_block.get() + (position - my_block_position), &value, sizeof value);
        return true;
    }
    const u32 back = tell();
    return seek(position) && write(&value, sizeof value) == sizeof value && seek(back);
}

bool READ_FILE::open(const TEXT& name) {
    close();
    my_handle = through(platform::input_stream_hook, platform::open_for_reading(name.view(), my_last_error));
    if (my_handle == nullptr && my_last_error == 0) my_last_error = EIO;
    return my_handle != nullptr;
}

void READ_FILE::close() {
    if (my_handle != nullptr) (void)std::fclose(my_handle);
    my_handle = nullptr;
}

i64 READ_FILE::length() {
    if (my_handle == nullptr) return -1;
    if (std::fseek(my_handle, 0, SEEK_END) != 0) {
        my_last_error = errno;
        return -1;
    }
    const long end = std::ftell(my_handle);
    if (end < 0 || end > static_cast<long>(LONGEST_FILE)) {
        my_last_error = FILE_TOO_LARGE_ERROR;
        return -1;
    }
    if (std::fseek(my_handle, 0, SEEK_SET) != 0) {
        my_last_error = errno;
        return -1;
    }
    return end;
}

u32 READ_FILE::read(void* data, u32 count) {
    if (my_handle == nullptr) return 0;
    const std::size_t taken = std::fread(data, 1, count, my_handle);
    my_last_error = taken == count ? 0 : std::feof(my_handle) != 0 ? END_OF_FILE_ERROR : std::ferror(my_handle);
    return static_cast<u32>(taken);
}

} // namespace VOR2_LOADER
