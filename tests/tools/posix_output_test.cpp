// Pipes, devices, links and limits as POSIX has them.

#include "tool_test.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace tool_test {
namespace {

using Names = std::vector<std::string>;
namespace fs = std::filesystem;

TEST_F(ToolTest, pipes_and_devices_are_refused) {
    save(two_nodes(), "a.vr2");
    ASSERT_EQ(mkfifo(path("pipe.vr2").c_str(), 0600), 0);
    for (const std::string file : {"pipe.vr2", "/dev/zero"}) {
        for (const std::string verb : {"info", "dump", "pose"}) expect_refused({verb, file}, file, "");
        expect_refused({"upgrade", file, "out.vr2"}, file, "is no regular file");
    }
    expect_refused({"upgrade", "a.vr2", "/dev/null"}, "/dev/null", "is no regular file");
    EXPECT_EQ(listing(), (Names{"a.vr2", "pipe.vr2"}));
}

TEST_F(ToolTest, a_full_disk_leaves_what_was_there) {
    save(two_nodes(), "a.vr2");
    const std::string kept = read("a.vr2");
    write("target.vr2", "what was there");
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit small{100, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const Outcome outcome = run({"upgrade", "a.vr2", "target.vr2"});
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_NE(outcome.err.find("vor2: target.vr2: "), std::string::npos) << outcome.err;
    EXPECT_EQ(read("target.vr2"), "what was there");
    EXPECT_EQ(listing(), (Names{"a.vr2", "target.vr2"}));

    // Through a link the file that it leads to is replaced, and a new file has a new file's rights.
    fs::create_symlink("../a folder ü/target.vr2", place("link.vr2"));
    EXPECT_EQ(run({"upgrade", "a.vr2", "link.vr2"}).exit_code, 0);
    EXPECT_TRUE(fs::is_symlink(place("link.vr2")));
    EXPECT_EQ(read("target.vr2"), kept);
    struct stat fresh {
    }, made{};
    write("fresh", "");
    ASSERT_EQ(stat(path("fresh").c_str(), &fresh), 0);
    ASSERT_EQ(stat(path("target.vr2").c_str(), &made), 0);
    EXPECT_EQ(made.st_mode, fresh.st_mode);
}

TEST_F(ToolTest, results_that_nobody_takes_are_a_problem) {
    save(two_nodes(), "a.vr2");
    const std::string line = std::string(VOR2_TOOL) + " dump '" + path("a.vr2") + "' 2>/dev/null >/dev/full";
    const int status = std::system(line.c_str()); // NOLINT(cert-env33-c): a line of the test's own
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

} // namespace
} // namespace tool_test
