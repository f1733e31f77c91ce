#pragma once

/// Runs the built tool as a user would, in a folder of its own.

#include "format/vor2.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace tool_test {

using Json = nlohmann::ordered_json;

struct Outcome {
    int exit_code = -1; ///< -1 when a signal ended the tool, or it ran for longer than a minute
    std::string out, err;

    std::vector<std::string> problems() const; ///< the lines of `err`
};

class ToolTest : public ::testing::Test {
protected:
    ToolTest();
    ~ToolTest() override;

    /// Runs the tool in the folder, with `variables` ("NAME=value") added to its environment.
    Outcome run(const std::vector<std::string>& arguments, const std::vector<std::string>& variables = {});
    /// Runs it and expects exit code 1 with one line "vor2: FILE: why" whose reason holds `words`.
    void expect_refused(const std::vector<std::string>& arguments, const std::string& file, const std::string& words);
    /// Where a file of that name stands, for the standard library and for a command line.
    std::filesystem::path place(const std::string& name) const { return folder_ / name; }
    std::string path(const std::string& name) const { return place(name).generic_string(); }
    bool exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }
    std::string read(const std::string& name) const;
    void write(const std::string& name, const std::string& bytes) const;
    /// The names of all that is in the folder, sorted.
    std::vector<std::string> listing() const;

    /// A scene of two nodes: "root" without tracks, and under it "hips", which moves from (0, 0, 0) to (4, 8, 0) and
    /// turns by nothing between 0 and 2 seconds.
    static VOR2_LOADER::VOR2 two_nodes();
    void save(const VOR2_LOADER::VOR2& scene, const std::string& name) const;

private:
    std::filesystem::path folder_;
};

} // namespace tool_test
