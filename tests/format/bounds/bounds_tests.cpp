// What a load costs, held to what its header promises.

#include "tests/format/bounds/counting_memory.h"
#include "tests/format/bounds/hostile_files.h"
#include "tests/format/format_test.h"

#include <limits>

namespace VOR2_LOADER {
namespace {

constexpr u64 KILOBYTES = 1024;

/// The most that loading a scene took beside its file's own bytes, in multiples of them.
f64 loaded_multiple(const std::string& what, const BYTES& file, bool must_load) {
    const u64 before = bytes_taken();
    forget_peak();
    {
        VOR2_INPUT_BUFFER buffer(std::span<const u8>(file.data), TEXT());
        VOR2 root;
        const bool loaded = root.load(buffer, true);
        EXPECT_TRUE(loaded || !must_load) << what << ": " << buffer.problem();
        root.advance(0.1F);
    }
    EXPECT_EQ(bytes_taken(), before) << what << " leaves something behind";
    const u64 most = peak_of_bytes_taken() - before;
    EXPECT_LE(most, MOST_MEMORY_A_BYTE * file.size() + 64 * KILOBYTES) << what;
    return static_cast<f64>(most) / static_cast<f64>(file.size());
}

TEST(bounds, memory_is_a_multiple_of_the_file) {
    f64 highest = 0;
    each_hostile_scene(128 * KILOBYTES, [&](const std::string& what, const BYTES& file) {
        highest = std::max(highest, loaded_multiple(what, file, true));
    });
    each_hostile_count([&](const std::string& what, const BYTES& file) {
        highest = std::max(highest, loaded_multiple(what, file, false));
    });
    EXPECT_GT(highest, MOST_MEMORY_A_BYTE / 4) << "the bound is within reason";
    RecordProperty("highest", std::to_string(highest));
}

TEST(bounds, hostile_scenes_are_used_without_trouble) {
    each_hostile_scene(256 * KILOBYTES, [&](const std::string& what, const BYTES& file) {
        VOR2_INPUT_BUFFER buffer(std::span<const u8>(file.data), TEXT());
        VOR2 root;
        EXPECT_TRUE(root.load(buffer, true)) << what << ": " << buffer.problem();
        for (const f32 time : {0.3F, 1e9F, -1e9F, std::numeric_limits<f32>::quiet_NaN()}) root.set_time(time);
        root.advance(0.1F);
        const VOR2 copy(root);
        EXPECT_EQ(copy.matrix_hierarchy.nodes.size(), root.matrix_hierarchy.nodes.size()) << what;
    });
}

} // namespace
} // namespace VOR2_LOADER
