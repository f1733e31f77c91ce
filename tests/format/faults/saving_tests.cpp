// A save that fails says so, and what it leaves is refused at the next load or whole.

#include "tests/format/faults/faulty_device.h"

#include <csignal>
#include <random>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace VOR2_LOADER {
namespace {

using MANNER = FAULTY_DEVICE::MANNER;

/// Empty or the reason why the bytes aren't read as a scene.
std::string problem_of(const std::vector<u8>& bytes) {
    VOR2 scene;
    VOR2_INPUT_BUFFER buffer(std::span<const u8>{bytes}, TEXT());
    return scene.load(buffer, true) ? std::string() : buffer.problem();
}

TEST(saving, onto_a_disk_that_is_full_after_any_byte_is_refused) {
    const FAULTS_FOLDER folder;
    const VOR2 scene = scene_of_every_record(1, false);
    const u32 size = static_cast<u32>(saved_scene(scene).size());
    FAULTY_DEVICE device;
    for (device.room = 0; device.room < size; device.room += device.room < 40 ? 1 : 97) {
        ASSERT_FALSE(scene.save(folder.name("a.vr2"))) << device.room;
        const std::vector<u8> left = folder.read("a.vr2");
        ASSERT_EQ(left.size(), device.room);
        ASSERT_FALSE(problem_of(left).empty()) << device.room;
    }
    device.room = size;
    EXPECT_TRUE(scene.save(folder.name("a.vr2"))) << "and to the last byte it fits";
}

TEST(saving, fails_with_any_call_to_the_system) {
    const FAULTS_FOLDER folder;
    const VOR2 scene = scene_of_every_record(9, true); // some blocks long, so that lengths are patched in, too
    ASSERT_TRUE(scene.save(folder.name("a.vr2")));
    const std::vector<u8> outer = folder.read("a.vr2"), nested = folder.read("nested.vr2");
    FAULTY_DEVICE device;
    ASSERT_TRUE(scene.save(folder.name("a.vr2")));
    const u32 calls = device.calls;
    ASSERT_GT(calls, 20U);
    for (device.manner = MANNER::ONCE;; device.manner = MANNER::HALFWAY) {
        for (u32 call = 0; call < calls; ++call) {
            device.calls = 0;
            device.failing_call = call;
            EXPECT_FALSE(scene.save(folder.name("a.vr2"))) << call;
            const std::vector<u8> left = folder.read("a.vr2"), left_nested = folder.read("nested.vr2");
            EXPECT_TRUE(left == outer || !problem_of(left).empty()) << call;
            EXPECT_TRUE(left_nested == nested || !problem_of(left_nested).empty()) << call;
        }
        if (device.manner == MANNER::HALFWAY) break;
    }
}

TEST(saving, that_is_killed_leaves_what_is_refused_or_whole) {
    const FAULTS_FOLDER folder;
    const VOR2 scene = scene_of_every_record(12, false);
    const std::vector<u8> whole = saved_scene(scene);
    std::minstd_rand chance; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same moments in every run
    u32 refused = 0;
    for (int i = 0; i < 24; ++i) {
        std::filesystem::remove(folder.path("a.vr2"));
        const pid_t child = fork();
        if (child == 0) {
            while (scene.save(folder.name("a.vr2"))) {
            }
            _exit(1);
        }
        for (int wait = 0; wait < 100000 && !std::filesystem::exists(folder.path("a.vr2")); ++wait) usleep(50);
        usleep(chance() % 3000);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "no save failed";
        const std::vector<u8> left = folder.read("a.vr2");
        if (left == whole) continue;
        ++refused;
        const std::string problem = problem_of(left);
        ASSERT_TRUE(problem.starts_with("the file is empty") || problem.starts_with("no scene file")) << problem;
    }
    EXPECT_GT(refused, 0U) << "some were hit midway";
}

TEST(saving, where_no_file_can_be_says_so_at_once) {
    const FAULTS_FOLDER folder;
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.path("real.vr2"), folder.path("link.vr2"));
    std::filesystem::create_symlink("circle.vr2", folder.path("circle.vr2"));
    const VOR2 scene = scene_of_every_record(1, false);
    for (const char* file : {"folder", "pipe", "circle.vr2", "link.vr2/a.vr2", "none/a.vr2"})
        EXPECT_FALSE(scene.save(folder.name(file))) << file;
    EXPECT_TRUE(scene.save(folder.name("link.vr2")));
    EXPECT_EQ(folder.read("real.vr2"), saved_scene(scene)) << "a link is written through";
    if (geteuid() == 0) return; // to whom no file is closed
    ASSERT_EQ(chmod(folder.path("real.vr2").c_str(), 0400), 0);
    EXPECT_FALSE(VOR2().save(folder.name("link.vr2")));
    EXPECT_EQ(folder.read("real.vr2"), saved_scene(scene));
}

} // namespace
} // namespace VOR2_LOADER
