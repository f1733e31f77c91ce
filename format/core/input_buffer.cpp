#include "format/core/input_buffer.h"

#include "format/core/files.h"
#include "support/platform/platform.h"

#include <algorithm>
#include <cerrno>

namespace VOR2_LOADER {
namespace {

constexpr u32 MOST_PLACES = 6;

} // namespace

VOR2_INPUT_BUFFER::VOR2_INPUT_BUFFER(TEXT name) : file_name(std::move(name)) {
    read_file();
}

VOR2_INPUT_BUFFER::VOR2_INPUT_BUFFER(TEXT name, VOR2_INPUT_BUFFER& referring)
    : file_name(std::move(name)), my_referring(&referring) {
    read_file();
}

VOR2_INPUT_BUFFER::VOR2_INPUT_BUFFER(std::span<const u8> bytes, TEXT name) : file_name(std::move(name)) {
    if (bytes.size() > LONGEST_FILE) {
        fail("the file is longer than 2147483647 bytes");
        return;
    }
    my_block.allocate(std::max<u32>(static_cast<u32>(bytes.size()), 1));
    if (my_block.address() == nullptr) throw std::bad_alloc();
    if (!bytes.empty()) std::memcpy(my_block.address(), bytes.data(), bytes.size());
    cursor = start = my_block.address();
    end = start + bytes.size();
}

void VOR2_INPUT_BUFFER::read_file() {
    READ_FILE file;
    if (!file.open(file_name)) {
        fail(std::string("can't be opened: ") + std::strerror(file.last_error()));
        return;
    }
    const i64 length = file.length();
    if (length < 0) {
        fail(file.last_error() == EFBIG ? "the file is longer than 2147483647 bytes"
                                        : std::string("can't be read: ") + std::strerror(file.last_error()));
        return;
    }
    if (my_referring != nullptr) {
        u64& referred_to = outermost().bytes_referred_to;
        if (referred_to + static_cast<u64>(length) > LONGEST_FILE) {
            fail("the files that are referred to come to more than 2147483647 bytes");
            return;
        }
        referred_to += static_cast<u64>(length);
    }
    // A file of no bytes still gets a block, so that its three pointers are equal and not null.
    my_block.allocate(std::max<u32>(static_cast<u32>(length), 1));
    if (my_block.address() == nullptr) throw std::bad_alloc();
    if (file.read(my_block.address(), static_cast<u32>(length)) != static_cast<u32>(length)) {
        platform::print_line("Some error message here");
        fail("the file can't be read whole");
        return;
    }
    cursor = start = my_block.address();
    end = start + length;
}

bool VOR2_INPUT_BUFFER::overrun(void* to, u64 size) {
    std::memset(to, 0, size);
    return fail("the file ends within a record");
}

bool VOR2_INPUT_BUFFER::refuse(u32& count) {
    const std::string found = std::to_string(count);
    count = 0;
    return fail("a count of " + found + " is more than the rest of the file can hold");
}

bool VOR2_INPUT_BUFFER::fail(std::string_view why) {
    if (!my_failed) {
        my_failed = true;
        my_failure_offset = offset();
        my_why = why;
    }
    cursor = end;
    return false;
}

bool VOR2_INPUT_BUFFER::fail_within(std::string_view where) {
    if (my_failed && my_places < MOST_PLACES) {
        ++my_places;
        my_where.append(my_where.empty() ? "" : " of ").append(where);
    }
    return false;
}

bool VOR2_INPUT_BUFFER::fail_within(u64 element_index) {
    return fail_within("element " + std::to_string(element_index));
}

std::string VOR2_INPUT_BUFFER::problem() const {
    if (!my_failed) return {};
    std::string text = my_why;
    if (start != nullptr) text += " (offset " + std::to_string(my_failure_offset);
    if (start != nullptr && !my_where.empty()) text += ", in " + my_where;
    if (start != nullptr) text += ")";
    return text;
}

VOR2_INPUT_BUFFER& VOR2_INPUT_BUFFER::outermost() noexcept {
    VOR2_INPUT_BUFFER* buffer = this;
    while (buffer->my_referring != nullptr) buffer = buffer->my_referring;
    return *buffer;
}

void read_text(VOR2_INPUT_BUFFER& buffer, TEXT& text) {
    u16 count = 0;
    const u64 head = std::min<u64>(sizeof count, buffer.remaining());
    if (head > 0) std::memcpy(&count, buffer.cursor, head);
    buffer.cursor += head;
    text.resize_uninitialised(count);
    const u64 wanted = u64{count} * sizeof(char16_t);
    const u64 there = std::min(wanted, buffer.remaining());
    u8* to = reinterpret_cast<u8*>(text.data());
    if (there > 0) std::memcpy(to, buffer.cursor, there);
    if (there < wanted) std::memset(to + there, 0, wanted - there);
    buffer.cursor += there;
}

} // namespace VOR2_LOADER
