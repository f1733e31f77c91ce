#include "tool_test.h"

#include <sys/resource.h>
#include <sys/stat.h>

namespace tool_test {
namespace {

using Names = std::vector<std::string>;
namespace fs = std::filesystem;

TEST_F(ToolTest, what_cannot_be_read_is_refused_with_one_line) {
    save(two_nodes(), "a.vr2");
    write("nothing.vr2", "");
    write("foreign.vr2", "<html>");
    write("cut.vr2", read("a.vr2").substr(0, 300));
    ASSERT_EQ(mkfifo(path("pipe.vr2").c_str(), 0600), 0);
    fs::create_directory(path("folder.vr2"));
    const std::pair<std::string, std::string> files[] = {{"missing.vr2", "No such file"},
                                                         {"nothing.vr2", "empty"},
                                                         {"foreign.vr2", ""},
                                                         {"cut.vr2", ""},
                                                         {"folder.vr2", "is a folder"},
                                                         {"pipe.vr2", "is no regular file"},
                                                         {"/dev/zero", "is no regular file"}};
    for (const auto& [file, words] : files) {
        for (const std::string verb : {"info", "dump", "pose"}) expect_refused({verb, file}, file, "");
        expect_refused({"upgrade", file, "out.vr2"}, file, words);
    }
    EXPECT_FALSE(exists("out.vr2"));
}

TEST_F(ToolTest, an_output_appears_whole_or_not_at_all) {
    save(two_nodes(), "a.vr2");
    fs::create_directory(path("folder"));
    const Names before = listing();
    expect_refused({"upgrade", "a.vr2", "folder"}, "folder", "is a folder");
    expect_refused({"upgrade", "a.vr2", "folder/"}, "folder/", "");
    expect_refused({"upgrade", "a.vr2", "none/out.vr2"}, "none/out.vr2", "doesn't exist");
    expect_refused({"upgrade", "a.vr2", "a.vr2/out.vr2"}, "a.vr2/out.vr2", "is no folder");
    expect_refused({"upgrade", "a.vr2", "/dev/null"}, "/dev/null", "is no regular file");
    EXPECT_EQ(listing(), before);

    // A disk that takes no more than so many bytes.
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
    EXPECT_EQ(listing(), (Names{"a.vr2", "folder", "target.vr2"}));

    // Through a link the file that it leads to is replaced, and a new file has a new file's rights.
    fs::create_symlink("../a folder ü/target.vr2", path("link.vr2"));
    EXPECT_EQ(run({"upgrade", "a.vr2", "link.vr2"}).exit_code, 0);
    EXPECT_TRUE(fs::is_symlink(path("link.vr2")));
    EXPECT_EQ(read("target.vr2"), kept);
    struct stat fresh {
    }, made{};
    write("fresh", "");
    ASSERT_EQ(stat(path("fresh").c_str(), &fresh), 0);
    ASSERT_EQ(stat(path("target.vr2").c_str(), &made), 0);
    EXPECT_EQ(made.st_mode, fresh.st_mode);
}

TEST_F(ToolTest, a_scene_within_a_scene_is_saved_beside_the_output_and_not_outside) {
    using namespace VOR2_LOADER;
    const auto referring = [this](std::u16string_view name) {
        VOR2 scene = two_nodes();
        scene.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>())->file_name = TEXT(name);
        return scene;
    };
    fs::create_directories(path("in/sub"));
    fs::create_directory(path("out"));
    save(two_nodes(), "in/sub/nested.vr2");
    save(referring(u"sub\\nested.vr2"), "in/a.vr2");
    const Outcome good = run({"upgrade", "in/a.vr2", "out/a.vr2"});
    EXPECT_EQ(good.exit_code, 0) << good.err;
    EXPECT_EQ(read("out/a.vr2"), read("in/a.vr2"));
    EXPECT_TRUE(exists("out/sub/nested.vr2"));

    // Ways out: up, absolute, by a link; and what is refused leaves neither files nor folders.
    fs::remove_all(path("out"));
    fs::create_directory(path("out"));
    fs::create_symlink(path("in"), path("out/link"));
    const Names before = listing();
    const std::u16string absolute = u"/tmp/vor2-" + std::u16string(8, u'x') + u"/evil.vr2";
    for (const std::u16string& name : {std::u16string(u"..\\evil.vr2"), std::u16string(u"new/../../evil.vr2"), absolute,
                                       std::u16string(u"link\\evil.vr2")}) {
        save(referring(name), "in/a.vr2");
        expect_refused({"upgrade", "in/a.vr2", "out/a.vr2"}, "out/a.vr2", "--allow-outside");
        EXPECT_EQ(listing(), before);
    }
    save(referring(u"..\\evil.vr2"), "in/a.vr2");
    EXPECT_EQ(run({"upgrade", "--allow-outside", "in/a.vr2", "out/a.vr2"}).exit_code, 0);
    EXPECT_TRUE(exists("evil.vr2"));
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
