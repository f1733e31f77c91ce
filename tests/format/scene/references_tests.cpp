#include "tests/format/format_test.h"

namespace VOR2_LOADER {
namespace {

namespace fs = std::filesystem;

/// A folder that goes away with this object.
class TEMPORARY_FOLDER {
public:
    TEMPORARY_FOLDER() : my_path(fresh_path("_references")) { fs::create_directories(my_path); }
    ~TEMPORARY_FOLDER() {
        std::error_code ignored;
        fs::remove_all(my_path, ignored);
    }
    TEMPORARY_FOLDER(const TEMPORARY_FOLDER&) = delete;
    TEMPORARY_FOLDER& operator=(const TEMPORARY_FOLDER&) = delete;

    [[nodiscard]] fs::path operator/(const fs::path& name) const { return my_path / name; }
    [[nodiscard]] TEXT name(const std::string& file) const { return library_name((my_path / file).string()); }
    /// A scene of one helper that refers to other files.
    void write(const std::string& file, std::initializer_list<std::u16string_view> references) const {
        BYTES bytes =
            file_of_version(1.16F).chunk(17, BYTES().text(u"h").text(u"").text(u"").words({0, 0, 0, 0, 0, 0, 0}));
        u32 chunk_id = 15;
        for (const std::u16string_view reference : references) {
            bytes.chunk(chunk_id, BYTES().text(reference));
            chunk_id = 35 - chunk_id;
        }
        std::ofstream(my_path / file, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data.data()), static_cast<std::streamsize>(bytes.size()));
    }
    /// Why the file can't be loaded; empty if it can.
    [[nodiscard]] std::string problem(const std::string& file) const {
        VOR2 root;
        VOR2_INPUT_BUFFER buffer(name(file));
        const bool loaded = root.load(buffer, true);
        EXPECT_EQ(loaded, buffer.problem().empty());
        return buffer.problem();
    }

private:
    fs::path my_path;
};

bool says(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST(references, paths_follow_their_rules) {
    EXPECT_EQ(resolve_path(u"C:\\a\\b.vr2", u"x\\y.vr2"), TEXT(u"C:\\a\\x\\y.vr2"));
    EXPECT_EQ(resolve_path(u"/a/b.vr2", u"y.vr2"), TEXT(u"y.vr2")) << "only a backslash is cut at";
    for (const char16_t* name : {u"\\y", u"/y", u"D:y", u"a:b"}) {
        EXPECT_TRUE(is_absolute(name));
        EXPECT_EQ(resolve_path(u"C:\\a\\b.vr2", name), TEXT(name));
    }
    EXPECT_FALSE(is_absolute(u"") || is_absolute(u"a\\b"));
    struct CASE {
        const char16_t *path, *directory, *file;
        bool is_file;
    };
    for (const CASE& c :
         {CASE{u"a\\b/c.vr2", u"a\\b/", u"c.vr2", true}, CASE{u"c", u"", u"c", true},
          CASE{u"a.b\\c", u"a.b\\c", u"", false}, CASE{u"a\\", u"a\\", u"", false}, CASE{u"", u"", u"", true}}) {
        bool is_file = !c.is_file;
        EXPECT_EQ(file_name_of(c.path, is_file), TEXT(c.file));
        EXPECT_EQ(is_file, c.is_file);
        EXPECT_EQ(directory_of(c.path, is_file), TEXT(c.directory));
    }
}

TEST(references, a_scene_is_read_from_and_written_to_the_files_it_names) {
    const TEMPORARY_FOLDER folder;
    VOR2 root;
    root.environment.time_range = {2, 3};
    root.xrefs_15.push_back(make_owned<VOR2_XREF<15>>());
    root.xrefs_20.push_back(make_owned<VOR2_XREF<20>>());
    root.xrefs_15[0]->file_name = TEXT(u"deep\\\u00e9r\\part.vr2");
    root.xrefs_15[0]->scene = make_owned<VOR2>();
    root.xrefs_15[0]->scene->helpers.push_back(make_owned<VOR2_HELPER>());
    root.xrefs_15[0]->scene->ambient_light = make_owned<VOR2_AMBIENT_LIGHT>();
    root.xrefs_20[0]->file_name = TEXT(u"missing.vr2");
    ASSERT_TRUE(root.save(folder.name("all.vr2")));
    EXPECT_TRUE(fs::exists(folder / fs::path(u8"deep/\u00e9r/part.vr2")));
    EXPECT_FALSE(fs::exists(folder / "missing.vr2")) << "an absent scene writes no file";

    VOR2 loaded;
    ASSERT_TRUE(loaded.load(folder.name("all.vr2"), true));
    ASSERT_EQ(loaded.xrefs_15[0]->scene->helpers.size(), 1U);
    ASSERT_TRUE(loaded.xrefs_20[0]->scene) << "a missing file gives an empty scene";
    EXPECT_TRUE(loaded.xrefs_20[0]->scene->helpers.empty());
    const VOR2 copy(loaded);
    EXPECT_NE(copy.xrefs_15[0]->scene.get(), loaded.xrefs_15[0]->scene.get());
    EXPECT_EQ(copy.xrefs_15[0]->scene->helpers.size(), 1U);
    ASSERT_TRUE(loaded.save(folder.name("all.vr2")));
    EXPECT_EQ(fs::file_size(folder / "missing.vr2"), 204U) << "a save of it writes a file with no objects";
}

TEST(references, cycles_chains_and_crowds_are_refused) {
    const TEMPORARY_FOLDER folder;
    folder.write("self.vr2", {u"self.vr2"});
    EXPECT_TRUE(says(folder.problem("self.vr2"), "refers back"));
    folder.write("a.vr2", {u"b.vr2"});
    folder.write("b.vr2", {u".\\c.vr2"});
    std::error_code no_links; // as on Windows, without special rights
    fs::create_symlink(folder / "a.vr2", folder / "c.vr2", no_links);
    if (no_links) folder.write("c.vr2", {u"a.vr2"});
    const std::string problem = folder.problem("a.vr2");
    EXPECT_TRUE(says(problem, "b.vr2: ") && says(problem, "c.vr2: ") && says(problem, "refers back")) << problem;

    folder.write("17.vr2", {});
    for (int i = 16; i >= 0; --i) {
        const std::string next = std::to_string(i + 1) + ".vr2";
        folder.write(std::to_string(i) + ".vr2", {std::u16string(next.begin(), next.end())});
    }
    EXPECT_TRUE(says(folder.problem("0.vr2"), "more than 16 files"));
    EXPECT_EQ(folder.problem("1.vr2"), "");

    // Each level doubles: 2 + 4 + ... + 1024 files.
    folder.write("leaf.vr2", {});
    folder.write("crowd0.vr2", {u"leaf.vr2", u"leaf.vr2"});
    for (int i = 1; i < 10; ++i) {
        const std::string next = "crowd" + std::to_string(i - 1) + ".vr2";
        const std::u16string wide(next.begin(), next.end());
        folder.write("crowd" + std::to_string(i) + ".vr2", {wide, wide});
    }
    EXPECT_TRUE(says(folder.problem("crowd9.vr2"), "more than 1024 files"));
    EXPECT_EQ(folder.problem("crowd8.vr2"), "") << "the same file may be named twice";

    VOR2 root;
    VOR2_INPUT_BUFFER buffer(folder.name("crowd0.vr2"));
    const u64 leaf = fs::file_size(folder / "leaf.vr2");
    buffer.bytes_referred_to = LONGEST_FILE - 2 * leaf + 1; // as if other references had read so many
    EXPECT_FALSE(root.load(buffer, true));
    EXPECT_TRUE(says(buffer.problem(), "come to more than 2147483647 bytes")) << buffer.problem();
    EXPECT_EQ(buffer.bytes_referred_to, LONGEST_FILE - leaf + 1) << "the first of the two was read";
}

TEST(references, what_is_no_scene_file_fails_the_outer_one) {
    const TEMPORARY_FOLDER folder;
    folder.write("outer.vr2", {u"inner.vr2"});
    std::ofstream(folder / "inner.vr2") << "no scene";
    EXPECT_TRUE(says(folder.problem("outer.vr2"), "inner.vr2: no scene file"));
    fs::remove(folder / "inner.vr2");
    fs::create_directory(folder / "inner.vr2");
    EXPECT_TRUE(says(folder.problem("outer.vr2"), "can't be opened"));
#ifndef _WIN32
    folder.write("device.vr2", {u"/dev/zero"});
    EXPECT_TRUE(says(folder.problem("device.vr2"), "can't be opened"));
#endif
}

TEST(references, a_save_never_writes_over_a_file_that_is_being_written) {
    const TEMPORARY_FOLDER folder;
    VOR2 root;
    root.xrefs_15.push_back(make_owned<VOR2_XREF<15>>());
    root.xrefs_15[0]->scene = make_owned<VOR2>();
    for (const char16_t* name : {u"all.vr2", u".\\all.vr2", u"no_extension\\", u"folder\\no_dot"}) {
        root.xrefs_15[0]->file_name = TEXT(name);
        EXPECT_FALSE(root.save(folder.name("all.vr2")));
    }
    std::error_code no_links;
    fs::create_symlink(folder / "all.vr2", folder / "link.vr2", no_links);
    root.xrefs_15[0]->file_name = TEXT(no_links ? u"ALL.VR2" : u"link.vr2");
    EXPECT_FALSE(root.save(folder.name("all.vr2")));
    root.xrefs_15[0]->scene.reset();
    EXPECT_TRUE(root.save(folder.name("all.vr2")));
}

} // namespace
} // namespace VOR2_LOADER
