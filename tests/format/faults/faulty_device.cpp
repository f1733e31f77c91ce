#include "tests/format/faults/faulty_device.h"

#include "support/platform/hooks.h"

#include <cerrno>
#include <cstdlib>

namespace VOR2_LOADER {
namespace {

FAULTY_DEVICE* device = nullptr;

/// Whether this call is one that fails.
bool fails() {
    const u32 call = device->calls++;
    const bool failing =
        device->manner == FAULTY_DEVICE::MANNER::ONCE ? call == device->failing_call : call >= device->failing_call;
    if (failing) errno = EIO;
    return failing;
}

ssize_t write_some(void* cookie, const char* bytes, std::size_t size) {
    auto* file = static_cast<std::FILE*>(cookie);
    const bool first_failure = device->calls == device->failing_call;
    if (fails()) {
        // What the C library takes for an error is 0.
        if (device->manner == FAULTY_DEVICE::MANNER::ONCE || !first_failure) return 0;
        size /= 2;
    }
    const u64 position = static_cast<u64>(std::ftell(file));
    if (position + size > device->room) {
        size = device->room > position ? device->room - position : 0;
        errno = ENOSPC;
    }
    return static_cast<ssize_t>(std::fwrite(bytes, 1, size, file));
}

ssize_t read_some(void* cookie, char* bytes, std::size_t size) {
    auto* file = static_cast<std::FILE*>(cookie);
    const u64 position = static_cast<u64>(std::ftell(file));
    if (position >= device->read_error_at) {
        errno = EIO;
        return -1;
    }
    const u64 stop = std::min<u64>(device->end_of_reading, device->read_error_at);
    const u64 there = stop > position ? stop - position : 0;
    return static_cast<ssize_t>(std::fread(bytes, 1, std::min<u64>({size, there, device->bytes_a_read}), file));
}

int seek(void* cookie, off64_t* offset, int origin) {
    auto* file = static_cast<std::FILE*>(cookie);
    if (fails() || std::fseek(file, static_cast<long>(*offset), origin) != 0) return -1;
    *offset = std::ftell(file);
    return 0;
}

int close(void* cookie) {
    const bool failing = fails();
    return std::fclose(static_cast<std::FILE*>(cookie)) != 0 || failing ? EOF : 0;
}

std::FILE* between(std::FILE* opened, const char* mode) {
    (void)std::setvbuf(opened, nullptr, _IONBF, 0);
    return fopencookie(opened, mode, {read_some, write_some, seek, close});
}

} // namespace

FAULTY_DEVICE::FAULTY_DEVICE() {
    device = this;
    platform::output_stream_hook = [](std::FILE* opened) { return between(opened, "wb"); };
    platform::input_stream_hook = [](std::FILE* opened) { return between(opened, "rb"); };
    platform::print_line_hook = [](std::string_view) {};
}

FAULTY_DEVICE::~FAULTY_DEVICE() {
    platform::output_stream_hook = nullptr;
    platform::input_stream_hook = nullptr;
    platform::print_line_hook = nullptr;
    device = nullptr;
}

FAULTS_FOLDER::FAULTS_FOLDER() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vor2-faults-XXXXXX").string();
    my_path = mkdtemp(pattern.data());
}

FAULTS_FOLDER::~FAULTS_FOLDER() {
    std::error_code ignored;
    std::filesystem::remove_all(my_path, ignored);
}

std::vector<u8> FAULTS_FOLDER::read(const std::string& file) const {
    std::ifstream stream(path(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

VOR2 scene_of_every_record(u32 length, bool nested) {
    VOR2 scene;
    EXPECT_TRUE(load_scene(scene, EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, true, length}.file().data));
    if (!nested) return scene;
    VOR2_XREF<15>& reference = *scene.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>());
    reference.file_name = TEXT(u"nested.vr2");
    reference.scene = make_owned<VOR2>();
    EXPECT_TRUE(load_scene(*reference.scene, EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, true, length}.file().data));
    return scene;
}

} // namespace VOR2_LOADER
