#include "headless/files/bvh_reader.h"
#include "headless/files/frame_rate.h"
#include "headless/session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <sstream>

namespace headless {
namespace {

using Rows = std::array<std::array<double, 3>, 3>;

Rows turn(char axis, double degrees) {
    const double c = std::cos(degrees * std::numbers::pi / 180.0), s = std::sin(degrees * std::numbers::pi / 180.0);
    if (axis == 'X') return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
    if (axis == 'Y') return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
    return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
}

Rows product(const Rows& a, const Rows& b) {
    Rows out{};
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            for (int k = 0; k < 3; ++k) out[r][c] += a[r][k] * b[k][c];
    return out;
}

class Bvh : public testing::Test {
protected:
    Result<void> read(const std::string& text, const BvhOptions& options = {}) {
        return read_bvh_text(scene, text, "walk.bvh", options);
    }
    std::string error_of(const std::string& text) {
        const Result<void> done = read(text);
        return done ? "none" : done.error().text();
    }
    Node& node(const char* name) { return **scene.find_node(name); }
    // The value of a key of the curve behind a plug.
    double key(const std::string& plug, int i, int part = 1) {
        const Plug at = *scene.find_plug(plug);
        const Plug curve = at.node->source_of(at.key);
        if (!curve) return NAN;
        const Plug found = curve.node->find_plug(".ktv").element(i).child(part);
        return found.node->get(found.key).number();
    }

    Scene scene;
};

std::string one_joint(const std::string& body, const std::string& motion) {
    return "HIERARCHY\nROOT hips\n{\n" + body + "}\nMOTION\n" + motion;
}

TEST_F(Bvh, turns_each_channel_order_into_the_rotate_order_of_the_same_rotation) {
    for (const std::string order : {"XYZ", "YZX", "ZXY", "XZY", "YXZ", "ZYX"}) {
        Scene own;
        std::string body = "OFFSET 0 0 0\nCHANNELS 3";
        for (const char axis : order) body += std::string(" ") + axis + "rotation";
        ASSERT_TRUE(read_bvh_text(own, one_joint(body + "\n", "Frames: 1\nFrame Time: 0.04\n20 -35 50\n"), ""));
        const Rows wanted = product(product(turn(order[0], 20), turn(order[1], -35)), turn(order[2], 50));
        const Matrix found = own.local_matrix(**own.find_node("hips"));
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c) EXPECT_NEAR(found[c][r], wanted[r][c], 1e-14) << order << r << c;

        // With Z up the same rotation is seen from other axes: X, Z and -Y of the file.
        Scene upright;
        ASSERT_TRUE(read_bvh_text(upright,
                                  one_joint("OFFSET 9 9 9\nCHANNELS 6 Zposition Xposition Yposition" +
                                                body.substr(body.rfind("CHANNELS 3") + 10) + "\n",
                                            "Frames: 1\nFrame Time: 0.04\n3 1 2 20 -35 50\n"),
                                  "", {1.0, true}));
        const Rows axes{{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}}, back{{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}};
        const Rows turned = product(product(axes, wanted), back);
        const Matrix seen = upright.local_matrix(**upright.find_node("hips"));
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c) EXPECT_NEAR(seen[c][r], turned[r][c], 1e-14) << order << r << c;
        EXPECT_EQ((std::array{seen[3][0], seen[3][1], seen[3][2]}), (std::array{1.0, 3.0, -2.0}));
    }
}

TEST_F(Bvh, makes_joints_offsets_ends_and_a_linear_key_a_frame_from_a_file_as_people_write_them) {
    const std::string text =
        "\xEF\xBB\xBFhierarchy\r\nRoot Big Hips {\r\n"
        "  Channels 6 ZROTATION Xrotation yrotation Xposition Yposition Zposition offset 1 2 3\r\n"
        "  Joint 2nd  {\r\n  OFFSET 0 +4 -.5\n CHANNELS 1 Yposition\n"
        "    End Site\n {\n OFFSET 0 1e1 0 }\r\n  }\r\n}\r\n"
        "ROOT prop { OFFSET 7 8 9 CHANNELS 0 }\r"
        "motion\r\nFrames:2\r\nFrame Time:.0083333 \r\n90 1 2 10\n20 30 40\t\r\n 45 0 0 11 21 31 41  \n\n";
    ASSERT_TRUE(read(text, {2.5}));
    EXPECT_EQ(scene.full_name(scene.path_to(node("_nd_end"))), "|Big_Hips|_nd|_nd_end");
    EXPECT_EQ(scene.evaluate(*scene.find_plug("prop.t")).vector(), (Vector3{17.5, 20, 22.5}));
    EXPECT_EQ(scene.evaluate(*scene.find_plug("_nd_end.t")).vector(), (Vector3{0, 25, 0}));
    EXPECT_EQ(key("Big_Hips.rz", 0), std::numbers::pi / 2);
    EXPECT_EQ(key("Big_Hips.ty", 1), 21 * 2.5);
    EXPECT_EQ(key("Big_Hips.rz", 1, 0), 1 / 120.0);
    EXPECT_EQ(key("_nd.ty", 1), 41 * 2.5);
    EXPECT_TRUE(std::isnan(key("_nd.tx", 0)));
    const Node& curve = *node("Big_Hips").source_of(node("Big_Hips").find_plug("rz").key).node;
    EXPECT_EQ(curve.type().name(), "animCurveTA");
    EXPECT_EQ(curve.get(curve.find_plug("tan").key).integer(), 2);
    EXPECT_EQ(scene.time_unit.name, "120fps");
    EXPECT_EQ(scene.current_time(), 0.0);
    EXPECT_EQ(scene.playback.max, 1 / 120.0);
    EXPECT_EQ(scene.playback.animation_end, 1 / 120.0);
}

TEST_F(Bvh, frames_without_channels_make_a_range_and_nothing_else) {
    ASSERT_TRUE(read(one_joint("OFFSET 1 2 3\n", "Frames: 2147483647\nFrame Time: 0.04\n")));
    EXPECT_EQ(scene.playback.max, 2147483646 / 25.0);
    EXPECT_EQ(scene.evaluate(*scene.find_plug("hips.t")).vector(), (Vector3{1, 2, 3}));
}

TEST_F(Bvh, of_more_or_fewer_frames_than_stated_those_that_are_there_are_read_with_one_note) {
    const std::string body = "CHANNELS 2 Xrotation Yrotation\n", time = "Frame Time: 0.00833330\n";
    for (const auto& [stated, frames] : {std::pair("1", 3), {"900000000000000", 3}, {"4", 3}, {"3", 3}, {"0", 1}}) {
        Scene own;
        std::vector<std::string> notes;
        Session::current().set_message_sink([&](MessageKind, const std::string& text) { notes.push_back(text); });
        std::string motion = "Frames: " + std::string(stated) + "\n" + time;
        for (int i = 0; i < frames; ++i) motion += "1 2\n";
        EXPECT_TRUE(read_bvh_text(own, one_joint(body, motion), "walk.bvh"));
        Session::current().set_message_sink(nullptr);
        EXPECT_EQ(own.playback.max, (frames - 1) / 120.0);
        std::vector<std::string> wanted;
        if (std::stoll(stated) != frames)
            wanted.push_back("walk.bvh: the file says that it has " + std::string(stated) + " frames and has " +
                             std::to_string(frames));
        EXPECT_EQ(notes, wanted);
    }
}

TEST_F(Bvh, a_frame_time_with_an_exponent_is_rounded_to_its_last_digit) {
    ASSERT_TRUE(read(one_joint("OFFSET 0 0 0\n", "Frames: 2\nFrame Time: 4.17E-2\n")));
    EXPECT_EQ(scene.time_unit.name, "film");
    Scene other;
    ASSERT_TRUE(read_bvh_text(other, one_joint("", "Frames: 2\nFrame Time: .00000417e+4\n"), ""));
    EXPECT_EQ(other.time_unit.name, "film");
}

TEST_F(Bvh, an_import_keeps_the_units_of_the_scene_it_joins) {
    ASSERT_TRUE(scene.create_node("joint", "hips"));
    ASSERT_TRUE(read(one_joint("CHANNELS 1 Xrotation\n", "Frames: 2\nFrame Time: 0.04\n1 2\n")));
    EXPECT_EQ(scene.time_unit.name, "film");
    EXPECT_EQ(key("hips1.rx", 1, 0), 0.04);
    EXPECT_EQ(scene.playback.min, 1.0 / 24);
}

TEST(FrameRates, a_rounded_frame_time_stands_for_the_rate_it_was_rounded_from) {
    const struct {
        double time, digit;
        const char* unit;
        double rate;
    } cases[] = {{0.0083333, 1e-7, "120fps", 120},
                 {0.008333, 1e-6, "120fps", 120},
                 {0.033333, 1e-6, "ntsc", 30},
                 {0.0333, 1e-4, "ntsc", 30},
                 {0.0333667, 1e-7, "29.97fps", 30000.0 / 1001},
                 {0.0417, 1e-4, "film", 24},
                 {0.041708, 1e-6, "23.976fps", 24000.0 / 1001},
                 {0.0166, 1e-4, "ntscf", 60},
                 {0.0167, 1e-4, "ntscf", 60},
                 {0.0083, 1e-4, "120fps", 120},
                 {0.033, 1e-3, "ntsc", 30},
                 {0.0334, 1e-4, "29.97fps", 30000.0 / 1001},
                 {0.00833333358168602, 1e-17, "120fps", 120},
                 {0.01666, 1e-5, "ntscf", 60},
                 {1.0, 1, "sec", 1},
                 {0.0123, 1e-4, "80fps", 1 / 0.0123},
                 {0.011111, 1e-6, "90fps", 90}};
    for (const auto& [time, digit, unit, rate] : cases) {
        EXPECT_EQ(frame_rate(time, digit).unit.name, unit) << time;
        EXPECT_EQ(frame_rate(time, digit).per_second, rate) << time;
    }
}

TEST_F(Bvh, says_where_and_why_a_file_is_refused_and_leaves_the_scene_alone) {
    const std::string body = "OFFSET 0 0 0\nCHANNELS 2 Xrotation Yrotation\n";
    const std::string time = "Frame Time: 0.04\n";
    const std::size_t nodes = scene.node_count();
    EXPECT_EQ(error_of(""), "walk.bvh:1:1: expected HIERARCHY, found the end of the file");
    EXPECT_EQ(error_of("//Maya ASCII"), "walk.bvh:1:1: expected HIERARCHY, found \"//Maya\"");
    EXPECT_EQ(error_of("HIERARCHY\r\nROOT a\r\n{\r\n OFFSET 1 x 3"), "walk.bvh:4:11: expected an offset, found \"x\"");
    EXPECT_EQ(
        error_of("HIERARCHY\nROOT a {\n OFFSET 0 0 0"),
        "walk.bvh:3:14: expected OFFSET, CHANNELS, JOINT, End Site or \"}\" in joint \"a\", found the end of the file");
    EXPECT_EQ(error_of(one_joint("CHANNELS 3 Xrotation Yrotation\n", "")),
              "walk.bvh:5:1: expected 3 channels, found 2 and \"}\"");
    EXPECT_EQ(error_of(one_joint("CHANNELS 1 Xrotation CHANNELS 1 Yrotation\n", "")),
              "walk.bvh:4:31: the joint \"hips\" lists channels twice");
    EXPECT_EQ(error_of(one_joint("CHANNELS 2 Xrotation xRotation\n", "")),
              "walk.bvh:4:22: the channel \"xRotation\" stands twice");
    EXPECT_EQ(error_of(one_joint(body, "Frames: -3\n" + time)),
              "walk.bvh:8:9: expected a number of frames, found a number that counts nothing");
    EXPECT_EQ(error_of(one_joint(body, "Frames: 900000000000000\n" + time)),
              "walk.bvh:10:1: wrong frame count: expected 900000000000000 frames of 2 values, found none");
    EXPECT_EQ(error_of(one_joint(body, "Frames: 1\n" + time + "1 2\n3\n")),
              "walk.bvh:12:1: wrong frame count: expected 1 frames of 2 values, found 3 values (1 frames and a part)");
    EXPECT_EQ(error_of(one_joint(body, "Frames: 1\n" + time + "1 nan\n")),
              "walk.bvh:10:3: expected a value of a channel, found \"nan\"");
    EXPECT_EQ(error_of(one_joint(body, "Frames: 1\nFrame Time: 0\n1 2 3 4\n")),
              "walk.bvh:9:13: a frame time must lie between 0.000001 and 1000 seconds");
    std::string deep = "HIERARCHY\n";
    for (int i = 0; i < 5000; ++i) deep += i == 0 ? "ROOT a {\n" : "JOINT a {\n";
    EXPECT_EQ(error_of(deep), "walk.bvh:1026:9: joints stand more than 1024 deep");
    EXPECT_EQ(scene.node_count(), nodes);
}

TEST(BvhFiles, at_its_own_rate_a_scene_has_each_value_of_the_file_to_the_last_bit) {
    if (!std::filesystem::exists(VOR2_SHARED_DATA)) GTEST_SKIP();
    Session& session = Session::current();
    for (const auto& entry : std::filesystem::directory_iterator(VOR2_SHARED_DATA)) {
        if (entry.path().extension() != ".bvh") continue;
        ASSERT_TRUE(session.open_file(entry.path().string()));
        Scene& scene = session.scene();
        std::ifstream file(entry.path());
        std::string line;
        std::vector<Plug> channels; // as the hierarchy lists them
        std::string joint;
        while (std::getline(file, line) && !line.starts_with("Frame Time")) {
            std::istringstream words(line);
            std::string word, count, channel;
            words >> word;
            if (word == "ROOT" || word == "JOINT") words >> joint;
            if (word != "CHANNELS") continue;
            for (words >> count; words >> channel;) {
                const char axis[] = {'.', channel.ends_with("rotation") ? 'r' : 't', char(channel[0] - 'X' + 'x'), 0};
                channels.push_back(*scene.find_plug(legal_name(joint) + axis));
            }
        }
        const double last = scene.time_unit.from_seconds(scene.playback.max);
        for (int frame = 0; frame <= std::lround(last); ++frame) {
            scene.set_current_time(scene.time_unit.to_seconds(frame));
            for (const Plug& channel : channels) {
                double value = NAN;
                file >> value;
                if (channel.attribute().kind == AttributeKind::angle) value *= std::numbers::pi / 180.0;
                ASSERT_EQ(scene.evaluate(channel).number(), value) << entry.path() << channel.name() << frame;
            }
        }
        EXPECT_FALSE(file >> line) << entry.path();
    }
    EXPECT_EQ(session.open_file("nowhere.bvh").error().text(), "nowhere.bvh: File not found");
    session.new_scene();
}

} // namespace
} // namespace headless
