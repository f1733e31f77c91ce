// A scene file of any bytes: what loads must follow the clock, copy, describe itself, save, load again and
// save to the same bytes.

#include "format/vor2.h"
#include "fuzz/input.h"
#include "support/platform/hooks.h"

#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace VOR2_LOADER;

/// Lets a save reach a file in memory alone, whatever names the scene's references hold.
class MemoryOnly : public platform::OUTPUT_REDIRECTION {
public:
    std::optional<std::string> redirect(const std::string& name) override {
        if (name == path) return path;
        return {};
    }
    const int file = memfd_create("scene", 0);
    const std::string path = "/proc/self/fd/" + std::to_string(file);
};

std::vector<u8> saved(const VOR2& root, MemoryOnly& memory) {
    const TEXT name(std::u16string(memory.path.begin(), memory.path.end()));
    if (!root.save(name)) return {};
    VOR2_INPUT_BUFFER buffer(name);
    return {buffer.start, buffer.end};
}

/// Touches all that a program can see.
class Counter : public RECORD_VISITOR {
public:
    u64 seen = 0;
    void boolean(std::string_view, bool) override { ++seen; }
    void signed_number(std::string_view, i32) override { ++seen; }
    void unsigned_number(std::string_view, u32) override { ++seen; }
    void real(std::string_view, f32) override { ++seen; }
    void long_real(std::string_view, f64) override { ++seen; }
    void text(std::string_view, const TEXT& value) override { seen += value.length(); }
    void tuple(std::string_view, std::span<const f32> numbers) override { seen += numbers.size(); }
    void reals(std::string_view, std::span<const f32> numbers, u32) override { seen += numbers.size(); }
    void signed_numbers(std::string_view, std::span<const i32> numbers) override { seen += numbers.size(); }
    void unsigned_numbers(std::string_view, std::span<const u32> numbers) override { seen += numbers.size(); }
    void begin_object(std::string_view, std::string_view) override { ++depth; }
    void end_object() override { --depth; }
    void absent(std::string_view) override { ++seen; }
    void begin_list(std::string_view, u64) override { ++depth; }
    void end_list() override { --depth; }
    i64 depth = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    static MemoryOnly memory;
    platform::output_redirection = &memory;
    if (size > (1U << 20)) return 0;
    VOR2_INPUT_BUFFER buffer(std::span<const u8>(data, size), TEXT(u"/nowhere/scene.vr2"));
    VOR2 root;
    if (!root.load(buffer, (size & 1) != 0)) {
        if (buffer.problem().empty()) fuzz::wrong("refused without a reason");
        root.advance(0.1F);
        return 0;
    }
    for (const f32 time : {0.0F, 0.3F, -1.0F, 1e30F}) root.set_time(time);
    for (const f32 delta : {0.1F, 5.0F, -0.2F}) root.advance(delta);
    Counter counter;
    root.describe(counter);
    if (counter.depth != 0) fuzz::wrong("a description that doesn't close");
    const VOR2 copy(root);
    const std::vector<u8> first = saved(root, memory);
    if (saved(copy, memory) != first) fuzz::wrong("a copy that saves to other bytes");
    if (first.empty()) return 0;
    VOR2_INPUT_BUFFER again(std::span<const u8>(first), TEXT(u"/nowhere/scene.vr2"));
    VOR2 reloaded;
    if (!reloaded.load(again, false)) fuzz::wrong("a saved scene that doesn't load");
    if (saved(reloaded, memory) != first) fuzz::wrong("a second save with other bytes");
    return 0;
}
