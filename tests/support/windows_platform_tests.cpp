// What is Windows's own. The programs built of this run with UTF-8 as their 8-bit character set, as the tool does, and
// with the system's, as the host does.

#include "support/platform/platform.h"
#include "support/platform/windows_headers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include <io.h>
#include <winternl.h>

namespace VOR2_LOADER {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* told_to = L"VOR2_ARGUMENT_GOES_TO";

/// Started by a test below, this program only tells what it was given.
const bool told = [] {
    const wchar_t* file = _wgetenv(told_to);
    if (file == nullptr) return false;
    std::ofstream(fs::path(file), std::ios::binary) << __argc << ' ' << (__argc > 1 ? __argv[1] : "") << '|';
    std::_Exit(0);
}();

class WINDOWS : public testing::Test {
protected:
    WINDOWS() { fs::create_directories(folder); }
    ~WINDOWS() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    std::u16string name(std::u16string_view file) const { return folder.u16string() + u"\\" + std::u16string(file); }
    static bool write(std::u16string_view name, const char* text = "") {
        i32 error = 0;
        std::FILE* stream = platform::open_for_writing(name, false, error);
        return stream != nullptr && std::fputs(text, stream) >= 0 && std::fclose(stream) == 0;
    }

    const fs::path folder = fs::temp_directory_path() / ("vor2_windows_" + std::to_string(GetCurrentProcessId()));
};

/// The flags that the system keeps for an open file.
ULONG mode_of(std::FILE* stream) {
    using QUERY = NTSTATUS(WINAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, int);
    const auto query = reinterpret_cast<QUERY>( // NOLINT
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll"), "NtQueryInformationFile")));
    constexpr int file_mode_information = 16;
    IO_STATUS_BLOCK status{};
    ULONG mode = 0;
    const auto file = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))); // NOLINT
    return query(file, &status, &mode, sizeof mode, file_mode_information) == 0 ? mode : 0;
}

TEST_F(WINDOWS, files_are_opened_for_sequential_access) {
    constexpr ULONG sequential_only = 4;
    i32 error = 0;
    for (const bool append : {false, true}) {
        std::FILE* stream = platform::open_for_writing(name(u"file"), append, error);
        ASSERT_NE(stream, nullptr);
        EXPECT_TRUE(mode_of(stream) & sequential_only);
        std::fclose(stream);
    }
    std::FILE* stream = platform::open_for_reading(name(u"file"), error);
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(mode_of(stream) & sequential_only);
    std::fclose(stream);
    stream = _wfopen((folder / "file").c_str(), L"rb");
    EXPECT_FALSE(mode_of(stream) & sequential_only) << "so the flag means something";
    std::fclose(stream);
}

TEST_F(WINDOWS, case_leads_to_the_same_file_and_devices_and_drives_are_no_scenes) {
    ASSERT_TRUE(write(name(u"Scene.vr2")));
    EXPECT_TRUE(platform::same_file(name(u"scene.VR2"), name(u"Scene.vr2")));
    EXPECT_TRUE(platform::file_exists(name(u"SCENE.VR2")));
    std::u16string slashes = name(u"Scene.vr2");
    std::replace(slashes.begin(), slashes.end(), u'\\', u'/');
    EXPECT_TRUE(platform::same_file(slashes, name(u"Scene.vr2")));
    i32 error = 0;
    for (const char16_t* no_file : {u"C:\\", u".", u"nul", u"<>", u"\\\\.\\NUL"}) {
        EXPECT_EQ(platform::open_for_reading(no_file, error), nullptr);
        EXPECT_NE(error, 0);
    }
}

TEST_F(WINDOWS, marks_on_a_file_go_so_that_it_can_be_written) {
    const std::u16string file = name(u"marked");
    const std::wstring wide(file.begin(), file.end());
    platform::make_writable(file);
    EXPECT_FALSE(platform::file_exists(file));
    for (const DWORD mark : {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN}) {
        ASSERT_TRUE(write(file, "before"));
        ASSERT_TRUE(SetFileAttributesW(wide.c_str(), mark));
        platform::make_writable(file);
        EXPECT_EQ(GetFileAttributesW(wide.c_str()) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN), 0U);
        EXPECT_TRUE(write(file, "after"));
    }
}

TEST_F(WINDOWS, names_are_in_the_character_set_of_the_process) {
    const std::u16string file = name(u"Füße.vr2");
    ASSERT_TRUE(write(file));
    EXPECT_TRUE(platform::file_exists(file));
    const std::string native = platform::native_file_name(file);
    if (GetACP() == CP_UTF8) {
        EXPECT_TRUE(native.ends_with("F\xC3\xBC\xC3\x9F"
                                     "e.vr2"));
        EXPECT_TRUE(write(name(std::u16string(100, u'ä')))) << "200 bytes, 100 letters";
        EXPECT_FALSE(write(name(std::u16string(300, u'x')))) << "refused, not cut";
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2);
        return;
    }
    // Low bytes: what the host meant, when it widened an 8-bit name.
    EXPECT_TRUE(native.ends_with("F\xFC\xDF"
                                 "e.vr2"));
    EXPECT_TRUE(platform::native_file_name(name(u"\u0141")).ends_with("\\A"));
    EXPECT_EQ(platform::native_file_name(std::u16string(300, u'x')).size(), 260U);
    // A file of which the 8-bit set has no name is found by all 16 bits; an 8-bit one if there is none.
    std::ofstream(folder / L"\u96EA.vr2") << "snow";
    EXPECT_TRUE(platform::file_exists(name(u"\u96EA.vr2")));
    i32 error = 0;
    std::FILE* stream = platform::open_for_reading(name(u"\u96EA.vr2"), error);
    ASSERT_NE(stream, nullptr);
    std::fclose(stream);
}

TEST_F(WINDOWS, pages_are_committed_and_can_be_written) {
    void* pages = platform::allocate_pages(2 * 65536);
    MEMORY_BASIC_INFORMATION facts{};
    ASSERT_NE(VirtualQuery(pages, &facts, sizeof facts), 0U);
    EXPECT_EQ(facts.AllocationBase, pages);
    EXPECT_EQ(facts.State, DWORD{MEM_COMMIT});
    EXPECT_EQ(facts.Protect, DWORD{PAGE_READWRITE});
    EXPECT_GE(facts.RegionSize, 2U * 65536);
    platform::free_pages(pages, 2 * 65536);
    ASSERT_NE(VirtualQuery(pages, &facts, sizeof facts), 0U);
    EXPECT_EQ(facts.State, DWORD{MEM_FREE});
}

// A box in a window station that has no screen would never be answered.
TEST_F(WINDOWS, no_box_waits_where_nobody_sees_it) {
    const HWINSTA before = GetProcessWindowStation();
    const HWINSTA hidden = CreateWindowStationA(nullptr, 0, GENERIC_ALL, nullptr);
    if (hidden == nullptr || SetProcessWindowStation(hidden) == 0) GTEST_SKIP() << "no right to hide";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(platform::ask_yes_no(nullptr, "words", "caption"), platform::ANSWER::YES);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    SetProcessWindowStation(before);
    CloseWindowStation(hidden);
}

TEST_F(WINDOWS, a_program_is_started_with_its_one_argument_whole) {
    wchar_t self[1024];
    ASSERT_LT(GetModuleFileNameW(nullptr, self, 1024), 1024U);
    const fs::path program = folder / "a program.exe";
    fs::copy_file(self, program);
    const fs::path answer = folder / "answer";
    SetEnvironmentVariableW(told_to, answer.c_str());
    const std::string narrow = program.string();
    for (const std::string argument : {"C:\\some folder\\r\xC3\xBC"
                                       "ck.txt",
                                       "", "ends in \\", "a  b\\\\"}) {
        platform::start_program(narrow.c_str(), argument.c_str());
        std::string told_text;
        for (int tenths = 0; tenths < 200 && !told_text.ends_with('|'); ++tenths) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            std::ifstream file(answer, std::ios::binary);
            told_text.assign(std::istreambuf_iterator<char>(file), {});
        }
        EXPECT_EQ(told_text, "2 " + argument + "|");
        fs::remove(answer);
    }
    SetEnvironmentVariableW(told_to, nullptr);
    platform::start_program("no such program", "x");
}

} // namespace
} // namespace VOR2_LOADER
