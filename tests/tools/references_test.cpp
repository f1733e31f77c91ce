// What a name in a file can reach through the verbs that save scenes: nothing outside the output's folder, no file that
// is no scene, and no file that was never read.

#include "tool_test.h"

#include <set>

namespace tool_test {
namespace {

using namespace VOR2_LOADER;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

class ReferencesTest : public ToolTest {
protected:
    ReferencesTest() {
        for (const char* folder : {"in/sub", "out", "beyond"}) fs::create_directories(place(folder));
    }
    /// Saves "in/a.vr2" with a reference of each of the two kinds to each of the names; none of the scenes is written.
    void refer(std::initializer_list<std::u16string> names) const {
        VOR2 scene = two_nodes();
        for (const std::u16string& name : names) {
            scene.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>())->file_name = TEXT(name);
            scene.xrefs_20.emplace_back(make_owned<VOR2_XREF<20>>())->file_name = TEXT(name);
        }
        save(scene, "in/a.vr2");
    }
    /// The verbs that save a scene as "out/a.vr2".
    static std::vector<Names> saving_lines() {
        return {{"upgrade", "in/a.vr2", "out/a.vr2"}, {"check", "in/a.vr2", "--fix", "out/a.vr2"}};
    }
    void expect_nothing_saved(const Names& line, const std::string& words) {
        const Names before = listing();
        expect_refused(line, "out/a.vr2", words);
        EXPECT_EQ(listing(), before);
    }
    void expect_nothing_saved(const std::string& words) {
        for (const Names& line : saving_lines()) expect_nothing_saved(line, words);
    }
    std::u16string wide(const std::string& name) const { return place(name).u16string(); }
};

TEST_F(ReferencesTest, no_name_leads_out_of_the_folder) {
    std::error_code no_links;
    fs::create_directory_symlink(place("beyond"), place("out/folder_link"), no_links);
    fs::create_symlink(place("beyond/new.vr2"), place("out/dangling.vr2"), no_links);
    // Each is a scene beside the input, so that there is something to save.
    for (const char* name : {"in/evil.vr2", "in/sub/evil.vr2", "evil.vr2", "beyond/evil.vr2", "in/dangling.vr2"})
        save(two_nodes(), name);
    fs::create_directory(place("in/folder_link"));
    save(two_nodes(), "in/folder_link/evil.vr2");
    // The verbs take turns: what keeps them in is the same for both.
    std::size_t turn = 0;
    for (const std::u16string& name :
         {std::u16string(u"..\\evil.vr2"), std::u16string(u"../evil.vr2"), std::u16string(u"sub\\..\\..\\evil.vr2"),
          std::u16string(u"sub/..\\../beyond/evil.vr2"), std::u16string(u".\\.././evil.vr2"), wide("beyond/evil.vr2"),
          wide("in/../evil.vr2"), std::u16string(u"folder_link\\evil.vr2"), std::u16string(u"dangling.vr2")}) {
        if (no_links && (name.starts_with(u"folder") || name.starts_with(u"dangling"))) continue;
        refer({name});
        expect_nothing_saved(saving_lines()[turn++ % 2], "--allow-outside");
    }
    for (Names line : saving_lines()) {
        refer({u"..\\evil.vr2"});
        fs::remove(place("evil.vr2"));
        save(two_nodes(), "evil.vr2");
        line.emplace_back("--allow-outside");
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
        EXPECT_TRUE(exists("out/a.vr2"));
        fs::remove(place("out/a.vr2"));
    }
}

#ifndef _WIN32
TEST_F(ReferencesTest, a_drive_of_another_system_is_a_folder_like_any) {
    // Such a name counts as absolute and so isn't looked for beside the file: it leads to where the tool runs.
    fs::create_directory(place("C:"));
    save(two_nodes(), "C:/evil.vr2");
    refer({u"C:\\evil.vr2"});
    expect_nothing_saved("--allow-outside");
}
#endif

TEST_F(ReferencesTest, a_scene_takes_the_place_of_nothing_but_a_scene) {
    save(two_nodes(), "in/notes.txt");
    refer({u"notes.txt"});
    write("out/notes.txt", "years of work");
    expect_nothing_saved("is none");
    EXPECT_EQ(read("out/notes.txt"), "years of work");
    for (const std::string& gives_way : {std::string(), std::string(300, '\0'), read("in/notes.txt")}) {
        for (const Names& line : saving_lines()) {
            write("out/notes.txt", gives_way);
            EXPECT_EQ(run(line).exit_code, 0);
            EXPECT_EQ(read("out/notes.txt"), read("in/notes.txt"));
        }
    }
}

TEST_F(ReferencesTest, what_was_never_read_is_never_written) {
    save(two_nodes(), "in/sub/there.vr2");
    VOR2 middle;
    middle.xrefs_15.emplace_back(make_owned<VOR2_XREF<15>>())->file_name = TEXT(u"gone too.vr2");
    save(middle, "in/sub/middle.vr2");
    refer({u"gone.vr2", u"sub\\there.vr2", u"sub\\middle.vr2"});
    save(two_nodes(), "out/gone.vr2");
    const std::string kept = read("out/gone.vr2");
    for (const Names& line : saving_lines()) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.exit_code, 0);
        EXPECT_EQ(read("out/a.vr2"), read("in/a.vr2")) << "the names stay";
        EXPECT_EQ(read("out/gone.vr2"), kept);
        EXPECT_TRUE(exists("out/sub/there.vr2"));
        EXPECT_FALSE(exists("out/sub/gone too.vr2"));
        // Either kind refers to it, directly and through the one in the middle.
        const Names told = outcome.problems();
        EXPECT_EQ(told.size(), 4U) << outcome.err;
        EXPECT_EQ(std::set<std::string>(told.begin(), told.end()).size(), 2U) << outcome.err;
        for (const std::string& text : told) EXPECT_TRUE(text.starts_with("vor2: in/a.vr2: warning: ")) << text;
        fs::remove_all(place("out/sub"));
    }
}

} // namespace
} // namespace tool_test
