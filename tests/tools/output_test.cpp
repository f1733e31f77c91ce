#include "tool_test.h"

namespace tool_test {
namespace {

using Names = std::vector<std::string>;
namespace fs = std::filesystem;

TEST_F(ToolTest, what_cannot_be_read_is_refused_with_one_line) {
    save(two_nodes(), "a.vr2");
    write("nothing.vr2", "");
    write("foreign.vr2", "<html>");
    write("cut.vr2", read("a.vr2").substr(0, 300));
    fs::create_directory(place("folder.vr2"));
    const std::pair<std::string, std::string> files[] = {{"missing.vr2", "No such file"},
                                                         {"nothing.vr2", "empty"},
                                                         {"foreign.vr2", ""},
                                                         {"cut.vr2", ""},
                                                         {"folder.vr2", "is a folder"}};
    for (const auto& [file, words] : files) {
        for (const std::string verb : {"info", "dump", "pose"}) expect_refused({verb, file}, file, "");
        expect_refused({"upgrade", file, "out.vr2"}, file, words);
    }
    EXPECT_FALSE(exists("out.vr2"));
}

TEST_F(ToolTest, an_output_appears_whole_or_not_at_all) {
    save(two_nodes(), "a.vr2");
    fs::create_directory(place("folder"));
    const Names before = listing();
    expect_refused({"upgrade", "a.vr2", "folder"}, "folder", "is a folder");
    expect_refused({"upgrade", "a.vr2", "folder/"}, "folder/", "");
    expect_refused({"upgrade", "a.vr2", "none/out.vr2"}, "none/out.vr2", "doesn't exist");
    expect_refused({"upgrade", "a.vr2", "a.vr2/out.vr2"}, "a.vr2/out.vr2", "is no folder");
    EXPECT_EQ(listing(), before);

    // What stands at the target is replaced.
    write("target.vr2", "what was there");
    EXPECT_EQ(run({"upgrade", "a.vr2", "target.vr2"}).exit_code, 0);
    EXPECT_EQ(read("target.vr2"), read("a.vr2"));
    EXPECT_EQ(listing(), (Names{"a.vr2", "folder", "target.vr2"}));
}

TEST_F(ToolTest, a_scene_within_a_scene_is_saved_beside_the_output) {
    using namespace VOR2_LOADER;
    const auto referring = [this](std::u16string_view name) {
        VOR2 scene = two_nodes();
        scene.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>())->file_name = TEXT(name);
        return scene;
    };
    fs::create_directories(place("in/sub"));
    fs::create_directory(place("out"));
    save(two_nodes(), "in/sub/nested.vr2");
    save(referring(u"sub\\nested.vr2"), "in/a.vr2");
    const Outcome good = run({"upgrade", "in/a.vr2", "out/a.vr2"});
    EXPECT_EQ(good.exit_code, 0) << good.err;
    EXPECT_EQ(read("out/a.vr2"), read("in/a.vr2"));
    EXPECT_TRUE(exists("out/sub/nested.vr2"));
}

} // namespace
} // namespace tool_test
