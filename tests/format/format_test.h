#pragma once

/// Scenes in files and bytes, and what both are compared by.

#include "tests/format/bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace VOR2_LOADER {

/// A path as the library takes it, with backslashes.
inline TEXT library_name(const std::string& path) {
    std::u16string name(path.begin(), path.end());
    std::replace(name.begin(), name.end(), u'/', u'\\');
    return TEXT(name);
}

/// A place in the folder for temporary files that nobody uses; test programs and threads run side by side.
inline std::filesystem::path fresh_path(const std::string& ending) {
    static const unsigned run = std::random_device()();
    static std::atomic<int> count = 0;
    return std::filesystem::temp_directory_path() /
           ("vor2_test_" + std::to_string(run) + "_" + std::to_string(count++) + ending);
}

/// A name for a file that goes away with this object.
class TEMPORARY_FILE {
public:
    TEMPORARY_FILE() { path_ = fresh_path(".vr2").string(); }
    ~TEMPORARY_FILE() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    TEMPORARY_FILE(const TEMPORARY_FILE&) = delete;
    TEMPORARY_FILE& operator=(const TEMPORARY_FILE&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// In the library's own form, with backslashes.
    [[nodiscard]] TEXT name() const { return library_name(path_); }
    [[nodiscard]] std::vector<u8> read() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void write(const std::vector<u8>& bytes) const {
        std::ofstream(path_, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::string path_;
};

/// The bytes that a record writes.
template<class OBJECT>
std::vector<u8> saved_record(const OBJECT& object) {
    TEMPORARY_FILE file;
    VOR2_WRITE_STREAM stream(file.name(), false, false);
    EXPECT_TRUE(object.save(stream));
    EXPECT_TRUE(stream.close());
    return file.read();
}

inline std::vector<u8> saved_scene(const VOR2& root) {
    TEMPORARY_FILE file;
    EXPECT_TRUE(root.save(file.name()));
    return file.read();
}

/// Reads a record from bytes and expects all of them to be used.
template<class OBJECT>
void load_whole(OBJECT& object, const BYTES& bytes, f32 version = CURRENT_VERSION) {
    VOR2_INPUT_BUFFER buffer(std::span<const u8>(bytes.data), TEXT());
    EXPECT_TRUE(object.load(buffer, version)) << buffer.problem();
    EXPECT_FALSE(buffer.failed()) << buffer.problem();
    EXPECT_EQ(buffer.remaining(), 0U);
}

inline bool load_scene(VOR2& root, const std::vector<u8>& bytes, bool set_to_start = false) {
    VOR2_INPUT_BUFFER buffer(std::span<const u8>{bytes}, TEXT());
    return root.load(buffer, set_to_start);
}

} // namespace VOR2_LOADER
