// The byte layer: chunk framing, failures of files, texts.

#include "tests/format/format_test.h"

#include "format/core/files.h"

#include <cerrno>

namespace VOR2_LOADER {
namespace {

TEST(write_stream, frames_chunks_and_refuses_what_stands_outside) {
    TEMPORARY_FILE file;
    VOR2_WRITE_STREAM stream(file.name(), false, true);
    ASSERT_TRUE(stream.good());
    EXPECT_EQ(stream.write("abcd", 4), 0U) << "no chunk is open";
    EXPECT_FALSE(stream.end_chunk());
    write_text(stream.file(), TEXT(u"x"));
    EXPECT_TRUE(stream.begin_chunk());
    EXPECT_FALSE(stream.begin_chunk()) << "chunks don't nest";
    EXPECT_TRUE(stream.write_value(7U));
    const u32 before = stream.file().tell();
    EXPECT_TRUE(stream.end_chunk());
    EXPECT_EQ(stream.file().tell(), before) << "the position is where it was";
    EXPECT_TRUE(stream.begin_chunk() && stream.write_value(8U) && stream.end_chunk());
    EXPECT_TRUE(stream.close());
    EXPECT_EQ(file.read(), BYTES().text(u"x").words({8, 7, 8, 8}).data);
}

TEST(write_stream, an_unfinished_chunk_shows_its_own_offset) {
    TEMPORARY_FILE file;
    {
        VOR2_WRITE_STREAM stream(file.name(), false, false);
        stream.write_value(1U);
        stream.begin_chunk();
        stream.write_value(9U);
    }
    EXPECT_EQ(file.read(), BYTES().words({1, 4, 9}).data);
}

TEST(write_stream, long_chunks_are_patched_where_they_began) {
    TEMPORARY_FILE file;
    const std::vector<u8> block(200000, 0x5A);
    {
        VOR2_WRITE_STREAM stream(file.name(), false, true);
        stream.begin_chunk();
        stream.write_value(3U);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(stream.write(block.data(), 200000), 200000U);
        stream.end_chunk();
        EXPECT_EQ(stream.file().tell(), 600008U);
    }
    const std::vector<u8> bytes = file.read();
    ASSERT_EQ(bytes.size(), 600008U);
    EXPECT_EQ(BYTES().raw(bytes.data(), 8).data, BYTES().words({600008, 3}).data);
}

TEST(write_stream, appends_and_seeks_from_both_ends) {
    TEMPORARY_FILE file;
    file.write({1, 2, 3, 4});
    {
        WRITE_FILE out;
        ASSERT_TRUE(out.open(file.name(), true));
        EXPECT_EQ(out.tell(), 4U);
        out.write("ab", 2);
    }
    EXPECT_EQ(file.read(), (std::vector<u8>{1, 2, 3, 4, 'a', 'b'}));
    WRITE_FILE out;
    ASSERT_TRUE(out.open(file.name(), false));
    out.write("abcdef", 6);
    EXPECT_TRUE(out.seek(static_cast<u32>(-2)));
    EXPECT_EQ(out.tell(), 4U);
    EXPECT_FALSE(out.seek(static_cast<u32>(-100)));
    EXPECT_TRUE(out.failed());
}

TEST(write_stream, failures_are_told) {
    VOR2_WRITE_STREAM closed;
    EXPECT_EQ(closed.file().last_error(), NO_FILE_ERROR);
    EXPECT_FALSE(closed.good());
    EXPECT_FALSE(closed.open(TEXT(u"/nowhere/at/all"), false, true));
    EXPECT_EQ(closed.file().last_error(), ENOENT);
    EXPECT_EQ(closed.file().write("a", 1), 0U);
    EXPECT_FALSE(closed.open(TEXT(u"/"), false, true)) << "a folder";
}

TEST(write_stream, a_full_disk_fails_the_save_and_withholds_the_magic_word) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    EXPECT_FALSE(VOR2().save(TEXT(u"/dev/full")));
    VOR2 root;
    root.matrix_hierarchy.nodes.grow_by(5000);
    EXPECT_FALSE(root.save(TEXT(u"/dev/full")));
}

TEST(file_status, maps_the_system_s_codes) {
    const std::pair<i32, i32> table[] = {{0, 0},  {38, 1}, {997, 2}, {2, 3},   {3, 3},    {6, 3},   {183, 4}, {8, 6},
                                         {14, 6}, {5, 7},  {13, 7},  {87, 19}, {123, 20}, {32, 21}, {22, 22}, {1, 23}};
    for (const auto& [error, status] : table) EXPECT_EQ(file_status(error), status) << error;
}

TEST(read_text, is_cut_at_the_end_of_the_buffer) {
    const BYTES bytes = BYTES().text(u"ab").u16s({3, u'x'});
    VOR2_INPUT_BUFFER buffer(std::span<const u8>{bytes.data}, TEXT());
    TEXT text;
    read_text(buffer, text);
    EXPECT_EQ(text.view(), u"ab");
    read_text(buffer, text);
    EXPECT_EQ(text.view(), std::u16string_view(u"x\0\0", 3));
    read_text(buffer, text);
    EXPECT_EQ(text.length(), 0U);
    EXPECT_EQ(buffer.cursor, buffer.end);
    EXPECT_FALSE(buffer.failed()) << "a text that is cut is no failure";
}

TEST(input_buffer, reads_whole_files_and_refuses_what_is_none) {
    TEMPORARY_FILE file;
    file.write({});
    VOR2_INPUT_BUFFER empty(file.name());
    EXPECT_NE(empty.start, nullptr);
    EXPECT_EQ(empty.start, empty.end);
    const std::u16string folder = std::filesystem::temp_directory_path().u16string();
    for (const std::u16string& name : {folder, std::u16string(u"/dev/zero"), std::u16string(u"")}) {
        VOR2_INPUT_BUFFER buffer{TEXT(name)};
        EXPECT_EQ(buffer.end, nullptr);
        EXPECT_FALSE(buffer.problem().empty());
    }
}

} // namespace
} // namespace VOR2_LOADER
