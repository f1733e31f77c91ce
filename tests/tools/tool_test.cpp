#include "tool_test.h"

#include "run_program.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

namespace tool_test {

using namespace VOR2_LOADER;
namespace fs = std::filesystem;

std::vector<std::string> Outcome::problems() const {
    std::vector<std::string> lines;
    std::istringstream stream(err);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

ToolTest::ToolTest() {
    static const unsigned run = std::random_device()(); // test programs run side by side
    static int count = 0;
    const fs::path own =
        fs::canonical(fs::temp_directory_path()) / ("vor2-tool-" + std::to_string(run) + "-" + std::to_string(count++));
    folder_ = own / fs::path(u8"a folder ü");
    fs::create_directories(folder_);
}

ToolTest::~ToolTest() {
    std::error_code ignored;
    fs::remove_all(folder_.parent_path(), ignored);
}

Outcome ToolTest::run(const std::vector<std::string>& arguments, const std::vector<std::string>& variables) {
    const fs::path beside = folder_.parent_path();
    const int code = run_program({VOR2_TOOL, arguments, variables, folder_, beside / "out", beside / "err"});
    return {code, read("../out"), read("../err")};
}

void ToolTest::expect_refused(const std::vector<std::string>& arguments, const std::string& file,
                              const std::string& words) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exit_code, 1) << outcome.err;
    EXPECT_EQ(outcome.problems().size(), 1U) << outcome.err;
    EXPECT_TRUE(outcome.err.starts_with("vor2: " + file + ": ")) << outcome.err;
    EXPECT_NE(outcome.err.find(words), std::string::npos) << outcome.err;
}

std::string ToolTest::read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ToolTest::write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
}

std::vector<std::string> ToolTest::listing() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_)) {
        names.push_back(entry.path().lexically_relative(folder_).generic_string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

VOR2 ToolTest::two_nodes() {
    VOR2 scene;
    scene.environment.time_range = {0.0F, 2.0F};
    scene.environment.sample_rate = 30;
    auto& nodes = scene.matrix_hierarchy.nodes;
    nodes.emplace_back().name = TEXT(u"root");
    VOR2_MATRIX_NODE& hips = nodes.emplace_back();
    hips.name = TEXT(u"hips");
    hips.parent_index = 0;
    OWNED<VOR2_ANIMATABLE_VECTOR_3_LINEAR> position = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    position->add_key({0.0F, 0.0F, 0.0F}, 0.0F);
    position->add_key({4.0F, 8.0F, 0.0F}, 2.0F);
    hips.position_track = std::move(position);
    OWNED<VOR2_ANIMATABLE_QUATERNION_SLERP> rotation = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
    rotation->add_key({0.0F, 0.0F, 0.0F, 1.0F}, 0.0F);
    hips.rotation_track = std::move(rotation);
    scene.matrix_hierarchy.link_parents();
    return scene;
}

void ToolTest::save(const VOR2& scene, const std::string& name) const {
    TEXT file;
    for (const char c : path(name)) file.append(static_cast<char16_t>(static_cast<unsigned char>(c)));
    ASSERT_TRUE(scene.save(file));
}

} // namespace tool_test
