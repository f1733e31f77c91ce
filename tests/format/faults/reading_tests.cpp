// A file that can't be read to its end is refused and says so; one that comes in crumbs is read like any.

#include "tests/format/faults/faulty_device.h"

namespace VOR2_LOADER {
namespace {

struct ATTEMPT {
    bool loaded;
    std::string problem;
    VOR2 scene;

    explicit ATTEMPT(const TEXT& name) {
        VOR2_INPUT_BUFFER buffer(name);
        loaded = scene.load(buffer, false);
        problem = buffer.problem();
    }
};

TEST(reading, in_crumbs_gives_the_scene) {
    const FAULTS_FOLDER folder;
    const VOR2 scene = scene_of_every_record(1, true);
    ASSERT_TRUE(scene.save(folder.name("a.vr2")));
    FAULTY_DEVICE device;
    for (const u32 crumb : {1U, 7U, 4096U}) {
        device.bytes_a_read = crumb;
        const ATTEMPT attempt(folder.name("a.vr2"));
        EXPECT_TRUE(attempt.loaded) << attempt.problem;
        ASSERT_TRUE(attempt.scene.save(folder.name("a.vr2")));
        EXPECT_EQ(folder.read("a.vr2"), saved_scene(attempt.scene));
    }
}

TEST(reading, a_file_that_shrinks_or_breaks_meanwhile_is_refused) {
    const FAULTS_FOLDER folder;
    ASSERT_TRUE(scene_of_every_record(1, true).save(folder.name("a.vr2")));
    const u32 size = static_cast<u32>(folder.read("nested.vr2").size());
    const u32 outer_size = static_cast<u32>(folder.read("a.vr2").size());
    ASSERT_GT(outer_size, size);
    FAULTY_DEVICE device;
    for (u32 FAULTY_DEVICE::*end : {&FAULTY_DEVICE::end_of_reading, &FAULTY_DEVICE::read_error_at}) {
        for (u32 at = 0; at < outer_size; at += at < outer_size - 200 ? 997 : 1) {
            device.*end = at;
            const ATTEMPT attempt(folder.name("a.vr2"));
            EXPECT_FALSE(attempt.loaded);
            EXPECT_EQ(attempt.problem, "the file can't be read whole") << at;
        }
        device.*end = NEVER;
    }
    std::filesystem::remove(folder.path("a.vr2"));
    VOR2 outer;
    outer.xrefs_20.emplace_back(make_owned<VOR2_XREF<20>>())->file_name = TEXT(u"nested.vr2");
    ASSERT_TRUE(outer.save(folder.name("a.vr2")));
    device.end_of_reading = size - 1; // behind the end of the outer file
    EXPECT_NE(ATTEMPT(folder.name("a.vr2")).problem.find("nested.vr2: the file can't be read whole"),
              std::string::npos);
    device.end_of_reading = NEVER;
    ASSERT_TRUE(ATTEMPT(folder.name("a.vr2")).loaded);

    device.calls = 0;
    device.failing_call = 0; // the seek that asks for the length
    const ATTEMPT attempt(folder.name("a.vr2"));
    EXPECT_FALSE(attempt.loaded);
    EXPECT_NE(attempt.problem.find("Input/output error"), std::string::npos) << attempt.problem;
}

} // namespace
} // namespace VOR2_LOADER
