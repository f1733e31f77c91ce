#include "support/platform/native_path.h"
#include "support/platform/platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <random>
#include <thread>

namespace VOR2_LOADER {
namespace {

namespace fs = std::filesystem;

/// A folder that goes away with this object, and the names of things in it as the library spells them.
class PLATFORM : public testing::Test {
protected:
    PLATFORM() { fs::create_directories(folder); }
    ~PLATFORM() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    std::u16string name(std::u16string_view file) const { return folder.u16string() + u"\\" + std::u16string(file); }
    static bool write(std::u16string_view name, std::string_view bytes, bool append = false) {
        i32 error = -1;
        std::FILE* stream = platform::open_for_writing(name, append, error);
        if (stream == nullptr) return false;
        const bool whole = std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size();
        return std::fclose(stream) == 0 && whole && error == 0;
    }
    static std::string read(std::u16string_view name) {
        i32 error = -1;
        std::FILE* stream = platform::open_for_reading(name, error);
        if (stream == nullptr) return "error " + std::to_string(error);
        char bytes[256];
        const std::size_t count = std::fread(bytes, 1, sizeof bytes, stream);
        std::fclose(stream);
        return {bytes, count};
    }
    static std::string error(int number) { return "error " + std::to_string(number); }

    const fs::path folder = fs::temp_directory_path() / ("vor2_platform_" + std::to_string(std::random_device()()));
};

TEST_F(PLATFORM, files_have_16_bit_names_and_keep_their_bytes) {
    const std::u16string file = name(u"Füße 雪 \U0001F43E.vr2"); // the last letter takes two units
    const std::string bytes("line\r\nline\n\x1A\0end", 16);
    ASSERT_TRUE(write(file, bytes));
    EXPECT_TRUE(fs::exists(folder / fs::path(u8"Füße 雪 \U0001F43E.vr2")));
    EXPECT_EQ(read(file), bytes);
    ASSERT_TRUE(write(file, "\n\r", true));
    EXPECT_EQ(read(file), bytes + "\n\r");
    ASSERT_TRUE(write(file, "new"));
    EXPECT_EQ(read(file), "new");

    // As the host hands names over: each byte of the 8-bit name in a unit of its own.
    std::u16string bytewise;
    for (const char byte : platform::native_file_name(file)) bytewise.push_back(static_cast<unsigned char>(byte));
    EXPECT_NE(bytewise, file);
    EXPECT_EQ(read(bytewise), "new");
    EXPECT_TRUE(platform::file_exists(file) && platform::file_exists(bytewise));
    EXPECT_TRUE(platform::same_file(file, bytewise));
    ASSERT_TRUE(write(bytewise, "newer"));
    EXPECT_EQ(read(file), "newer");
    EXPECT_EQ(platform::flush_to_disk(platform::native_file_name(file)), 0);
    EXPECT_EQ(platform::flush_to_disk(folder.string()), 0);
    EXPECT_EQ(platform::flush_to_disk((folder / "missing").string()), ENOENT);
}

TEST_F(PLATFORM, what_is_no_file_to_be_read_is_refused) {
    EXPECT_EQ(read(name(u"missing")), error(ENOENT));
    EXPECT_EQ(read(folder.u16string()), error(EISDIR));
#ifdef _WIN32
    EXPECT_EQ(read(u"NUL"), error(EINVAL));
#else
    EXPECT_EQ(read(u"\\dev\\zero"), error(EINVAL));
#endif
    EXPECT_FALSE(write(name(u"missing\\file"), ""));
    EXPECT_FALSE(write(folder.u16string(), ""));
    EXPECT_FALSE(platform::file_exists(name(u"missing")));
    EXPECT_FALSE(platform::same_file(name(u"missing"), name(u"missing")));
    ASSERT_TRUE(write(name(u"a"), "") && write(name(u"b"), ""));
    EXPECT_FALSE(platform::same_file(name(u"a"), name(u"b")));
    EXPECT_TRUE(platform::same_file(name(u"a"), name(u".\\a")));
}

TEST_F(PLATFORM, folders_are_made_one_at_a_time) {
    EXPECT_FALSE(platform::create_directory(name(u"ö\\inner")));
    EXPECT_TRUE(platform::create_directory(name(u"ö")));
    EXPECT_TRUE(platform::create_directory(name(u"ö"))) << "it is there";
    EXPECT_TRUE(platform::create_directory(name(u"ö\\inner")));
    EXPECT_TRUE(fs::is_directory(folder / fs::path(u8"ö") / "inner"));
    ASSERT_TRUE(write(name(u"file"), ""));
    EXPECT_FALSE(platform::create_directory(name(u"file")));
}

TEST_F(PLATFORM, pages_and_blocks_are_aligned_and_pages_zeroed) {
    constexpr std::size_t size = 3 * 65536;
    auto* pages = static_cast<unsigned char*>(platform::allocate_pages(size));
    ASSERT_NE(pages, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pages) % 4096, 0U);
    EXPECT_EQ(std::count(pages, pages + size, 0), static_cast<std::ptrdiff_t>(size));
    std::fill(pages, pages + size, static_cast<unsigned char>(7));
    platform::free_pages(pages, size);
    EXPECT_EQ(platform::allocate_pages(std::size_t{1} << 62), nullptr);
    for (const std::size_t alignment : {8U, 64U, 4096U}) {
        void* block = platform::aligned_allocate(100, alignment);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0U);
        platform::aligned_free(block);
    }
    platform::aligned_free(nullptr);
}

TEST_F(PLATFORM, the_clock_is_universal_and_the_account_fits) {
    const std::time_t before = std::time(nullptr);
    const platform::UTC_TIME now = platform::utc_now();
    const std::time_t after = std::time(nullptr);
    using namespace std::chrono;
    const sys_seconds told =
        sys_days(year(now.year) / now.month / now.day) + hours(now.hour) + minutes(now.minute) + seconds(now.second);
    EXPECT_GE(told, sys_seconds(seconds(before - 1)));
    EXPECT_LE(told, sys_seconds(seconds(after + 1)));

    const std::optional<std::string> account = platform::account_name(256);
    ASSERT_TRUE(account);
    EXPECT_EQ(platform::account_name(account->size() + 1), account);
    EXPECT_FALSE(platform::account_name(account->size()));
}

#ifndef _WIN32
TEST_F(PLATFORM, a_program_is_started_with_its_one_argument) {
    const fs::path made = folder / "two words";
    platform::start_program("touch", made.c_str());
    platform::start_program("no such program", "x");
    for (int tries = 0; tries < 1000 && !fs::exists(made); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_TRUE(fs::exists(made));
}
#endif

} // namespace
} // namespace VOR2_LOADER
