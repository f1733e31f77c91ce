// Motion capture files sampled at their own rate: each exported key is what the file's channels say.

#include "tests/host/host_test.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <numbers>

namespace VOR2_EXPORTER_MAYA {
namespace {

using ROTATION = std::array<std::array<double, 3>, 3>; // column form

ROTATION product(const ROTATION& a, const ROTATION& b) {
    ROTATION out{};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            for (int k = 0; k < 3; ++k) out[r][c] += a[r][k] * b[k][c];
        }
    }
    return out;
}

ROTATION about(int axis, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const int b = (axis + 1) % 3, c = (axis + 2) % 3;
    ROTATION out{};
    out[axis][axis] = 1;
    out[b][b] = out[c][c] = std::cos(angle);
    out[c][b] = std::sin(angle);
    out[b][c] = -out[c][b];
    return out;
}

/// What a plain reading of the file gives: joints by name, and a number a channel and frame.
struct CAPTURE {
    struct JOINT {
        bool is_root = false;
        double offset[3]{};
        std::vector<std::string> channels;
        std::size_t first_channel = 0;
    };
    std::map<std::string, JOINT> joints;
    std::size_t channel_count = 0;
    double frame_time = 0;
    std::vector<std::vector<double>> frames;

    explicit CAPTURE(const std::string& path) {
        std::ifstream file(path);
        std::string word, name;
        while (file >> word && word != "MOTION") {
            if (word == "ROOT" || word == "JOINT") {
                file >> name;
                joints[name].is_root = word == "ROOT";
            } else if (word == "End") {
                file >> word;
                name += "_end";
            } else if (word == "OFFSET") {
                for (double& number : joints[name].offset) file >> number;
            } else if (word == "CHANNELS") {
                std::size_t count = 0;
                file >> count;
                joints[name].first_channel = channel_count;
                channel_count += count;
                for (; count > 0; --count) file >> joints[name].channels.emplace_back();
            }
        }
        std::size_t count = 0;
        file >> word >> count >> word >> word >> frame_time;
        for (; count > 0; --count) {
            frames.emplace_back(channel_count);
            for (double& number : frames.back()) file >> number;
        }
    }
};

void expect_keys(const CAPTURE& capture, const CAPTURE::JOINT& joint, VOR2_MATRIX_NODE& node, double rate) {
    const auto frame_of = [&](f32 time) { return static_cast<std::size_t>(std::lround(time * rate)); };
    for (u64 k = 0; k < node.position_track->key_times().size(); ++k) {
        const std::size_t frame = frame_of(node.position_track->key_times()[k]);
        if (frame >= capture.frames.size()) continue; // the walk over the range may take one step beyond it
        double at[3] = {joint.offset[0], joint.offset[1], joint.offset[2]};
        for (std::size_t c = 0; c < joint.channels.size(); ++c) {
            const double number = capture.frames[frame][joint.first_channel + c];
            if (joint.channels[c].ends_with("position")) at[joint.channels[c][0] - 'X'] = number;
        }
        const VECTOR_3 key = node.position_track->key_values()[k];
        ASSERT_EQ(key, VECTOR_3(static_cast<f32>(at[0]) * 0.01F, static_cast<f32>(at[2]) * 0.01F,
                                static_cast<f32>(at[1]) * 0.01F))
            << frame;
    }
    for (u64 k = 0; k < node.rotation_track->key_times().size(); ++k) {
        const std::size_t frame = frame_of(node.rotation_track->key_times()[k]);
        if (frame >= capture.frames.size()) continue;
        ROTATION turn{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
        for (std::size_t c = 0; c < joint.channels.size(); ++c) {
            if (!joint.channels[c].ends_with("rotation")) continue;
            turn = product(turn, about(joint.channels[c][0] - 'X', capture.frames[frame][joint.first_channel + c]));
        }
        const int swapped[3] = {0, 2, 1};
        const MATRIX_3X4 got = node.rotation_track->key_values()[k].matrix();
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 3; ++c) {
                ASSERT_NEAR(got.m[r][c], turn[swapped[r]][swapped[c]], 2e-6) << frame << ' ' << r << ' ' << c;
            }
        }
    }
}

using MOTION_CAPTURE = HOST_TEST;

TEST_F(MOTION_CAPTURE, keys_of_children_equal_the_files_channels_frame_by_frame) {
    int files = 0;
    if (std::filesystem::is_directory(VOR2_SHARED_DATA)) {
        for (const auto& entry : std::filesystem::directory_iterator(VOR2_SHARED_DATA)) {
            if (entry.path().extension() != ".bvh") continue;
            ++files;
            SCOPED_TRACE(entry.path().filename());
            const CAPTURE capture(entry.path().string());
            ASSERT_TRUE(session.open_file(entry.path().string()));
            const double rate = session.scene().time_unit.per_second;
            EXPECT_NEAR(rate * capture.frame_time, 1, 1e-3) << "the scene counts in the file's own frames";
            std::string roots;
            for (const auto& [name, joint] : capture.joints) roots += joint.is_root ? " -enl " + name : "";
            const std::string file = temporary_folder() + "motion_capture.vr2";
            ASSERT_TRUE(session.run_mel("VOR2Export -f \"" + file + "\" -sAt " + std::to_string(rate) + roots));
            VOR2 root;
            ASSERT_TRUE(root.load(to_text(file.c_str()), false));
            std::size_t compared = 0;
            for (VOR2_MATRIX_NODE& node : root.matrix_hierarchy.nodes) {
                const auto joint = capture.joints.find(to_host_text(node.name).asChar());
                if (joint == capture.joints.end() || joint->second.is_root) continue;
                SCOPED_TRACE(joint->first);
                expect_keys(capture, joint->second, node, rate);
                ++compared;
            }
            EXPECT_GE(compared, capture.joints.size() / 2);
        }
    }
    if (files == 0) GTEST_SKIP() << "no motion capture files in " << VOR2_SHARED_DATA;
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
