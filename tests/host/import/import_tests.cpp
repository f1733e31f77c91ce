#include "tests/host/host_test.h"

#include "host/import/import_driver.h"

#include <maya/MAnimControl.h>
#include <maya/MMatrix.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <numbers>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr f32 NOT_A_NUMBER = std::numeric_limits<f32>::quiet_NaN();

class IMPORT : public HOST_TEST {
protected:
    VOR2_MATRIX_NODE& add(const char16_t* name, i32 parent) {
        root.matrix_hierarchy.nodes.grow_by(1);
        VOR2_MATRIX_NODE& node = root.matrix_hierarchy.nodes.back();
        node.name = name;
        node.parent_index = parent;
        return node;
    }
    static void positions(VOR2_MATRIX_NODE& node, std::vector<f32> times, std::vector<VECTOR_3> values) {
        node.position_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
        for (const f32 time : times) node.position_track->key_times().push_back(time);
        for (const VECTOR_3& value : values) node.position_track->key_values().push_back(value);
    }
    static void rotations(VOR2_MATRIX_NODE& node, std::vector<f32> times, std::vector<QUATERNION> values) {
        node.rotation_track = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
        for (const f32 time : times) node.rotation_track->key_times().push_back(time);
        for (const QUATERNION& value : values) node.rotation_track->key_values().push_back(value);
    }
    bool import() {
        EXPECT_TRUE(root.save(to_text(file.c_str())));
        return import_scene(file.c_str());
    }
    /// Of a joint's attribute: the keys' frames, and values in the host's own units.
    std::vector<double> frames(const std::string& plug) {
        std::vector<double> out;
        if (const headless::AnimCurve* keys = keys_of(plug)) {
            for (const double time : keys->times().view()) out.push_back(std::round(time * 24e4) / 1e4);
        }
        return out;
    }
    std::vector<double> values(const std::string& plug) {
        const headless::AnimCurve* keys = keys_of(plug);
        return keys ? std::vector<double>(keys->values().begin(), keys->values().end()) : std::vector<double>();
    }
    const headless::AnimCurve* keys_of(const std::string& plug) {
        const auto found = session.scene().find_plug(plug);
        return found ? headless::keys_of(*found) : nullptr;
    }
    MMatrix matrix_at(const char* joint, double frame) {
        MGlobal::viewFrame(frame);
        return MFnTransform(path_of(joint)).transformation().asMatrix();
    }
    static double frame(const MTime& time) { return time.as(MTime::uiUnit()); }

    VOR2 root;
    std::string file = temporary_folder() + "import_tests.vr2";
};

TEST_F(IMPORT, makes_and_keys_joints) {
    root.inf.file_info = u"who and when";
    root.environment.time_range = {0.5F, 1.0F};
    positions(add(u"base", -1), {0.5F}, {{0, 0, 0}});
    VOR2_MATRIX_NODE& hips = add(u"hips", 0);
    positions(hips, {0.5F, 0.75F, 1.0F}, {{1, 2, 3}, {2, 2, 3}, {4, 2, 3}});
    const f32 half_root = std::sqrt(0.5F);
    rotations(hips, {0.5F, 1.0F}, {{0, 0, 0, 1}, {0, half_root, 0, half_root}});
    add(u"knee", 1);
    ASSERT_TRUE(import());
    EXPECT_EQ(path_of("knee").fullPathName(), "|base|hips|knee");
    // Of the gaps of 0.25 and 0.5 only the second of a track counts: 0.25, four keys a second.
    EXPECT_EQ(frames("hips.tx"), (std::vector<double>{12, 18, 24}));
    EXPECT_EQ(values("hips.tx"), (std::vector<double>{100, 200, 400}));
    EXPECT_EQ(values("hips.ty"), (std::vector<double>{300, 300, 300})); // y and z change places
    EXPECT_EQ(values("hips.tz"), (std::vector<double>{200, 200, 200}));
    EXPECT_EQ(frames("hips.rz"), (std::vector<double>{12, 24}));
    EXPECT_NEAR(values("hips.rz")[1], -std::numbers::pi / 2, 1e-6); // the swap turns the sense around
    EXPECT_TRUE(frames("knee.tx").empty());
    EXPECT_EQ(frame(MAnimControl::minTime()), 12.0);
    EXPECT_EQ(frame(MAnimControl::animationStartTime()), 12.0);
    EXPECT_EQ(frame(MAnimControl::maxTime()), 24.0);
    EXPECT_EQ(frame(MAnimControl::animationEndTime()), 24.0);
    EXPECT_EQ(messages, (std::vector<std::string>{"I: Reading...", "I: who and when"}));
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    EXPECT_EQ(selection.length(), 0U);
    messages.clear();
    ASSERT_TRUE(import()); // beside the joints that are there
    EXPECT_EQ(values("|base1|hips|knee.tx").size(), 0U);
    EXPECT_EQ(values("|base1|hips.tx"), (std::vector<double>{100, 200, 400}));
}

TEST_F(IMPORT, infers_the_rate_from_the_gaps_that_count) {
    struct CASE {
        std::vector<f32> times;
        double diff;
    };
    const CASE cases[] = {{{0, 0.1F}, 1.0},         {{0, 0.1F, 0.5F}, 0.4F}, {{0, 0.5F, 0.75F, 1.0F}, 0.25},
                          {{0, 0.5F, 0.5F}, 1.0},   {{0, 1, 3}, 1.0},        {{0, 1, 0.5F}, 1.0},
                          {{0, 1, NOT_A_NUMBER}, 1}};
    for (const CASE& one : cases) {
        root.matrix_hierarchy.clear();
        positions(add(u"first", -1), {0, 0.001F, 0.002F}, {{}, {}, {}});
        add(u"bare", 0);
        VOR2_MATRIX_NODE& node = add(u"node", 0);
        rotations(node, one.times, std::vector<QUATERNION>(one.times.size(), QUATERNION::identity()));
        double diff = 1.0;
        smallest_key_gap(diff, root, 3);
        EXPECT_NEAR(diff, one.diff, 1e-7);
    }
}

TEST_F(IMPORT, sets_the_playback_range_in_the_hosts_frames) {
    root.environment.time_range = {0.0F, 1.0F};
    IMPORT_TIMES times;
    times.diff = static_cast<double>(1 / 60.0F);
    ASSERT_TRUE(set_playback_range(root, times));
    EXPECT_NEAR(times.fps_diff, 0.4, 1e-7);
    EXPECT_NEAR(times.maya_stop, 24.0, 1e-5);
    root.environment.time_range = {NOT_A_NUMBER, 1.0F};
    ASSERT_TRUE(set_playback_range(root, times));
    EXPECT_TRUE(said("W: The vor2 file's time range isn't finite"));
    EXPECT_EQ(times.maya_stop, 0.0F);
    EXPECT_NEAR(frame(MAnimControl::maxTime()), 24.0, 1e-5);
}

TEST_F(IMPORT, reorients_the_first_joint_at_all_its_times) {
    root.environment.time_range = {0.0F, 0.25F};
    VOR2_MATRIX_NODE& first = add(u"first", -1);
    positions(first, {0.0F, 0.0625F, 0.125F}, {{0, 0, 0}, {1, 2, 3}, {2, 4, 6}}); // frames 0, 1.5 and 3
    rotations(first, {0.0F}, {{0, 0, 0, 1}});
    add(u"other", 0);
    ASSERT_TRUE(import());
    EXPECT_EQ(frames("first.tx"), (std::vector<double>{0, 1, 1.5, 2, 3, 4, 5, 6}));
    EXPECT_EQ(frames("first.rz"), (std::vector<double>{0, 1, 1.5, 2, 3, 4, 5, 6}));
    // Half a turn about (0, 1, 1): x is turned around, y and z change places. In the host the joint moved
    // by (100, 300, 200) and (200, 600, 400).
    const double rows[3][3] = {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}};
    for (const auto& [time, x, y, z] : {std::tuple{0.0, 0, 0, 0},
                                        {1.5, -100, 200, 300},
                                        {3.0, -200, 400, 600},
                                        {4.5, -200, 400, 600},
                                        {6.0, -200, 400, 600}}) {
        const MMatrix matrix = matrix_at("first", time);
        for (unsigned int r = 0; r < 3; ++r) {
            for (unsigned int c = 0; c < 3; ++c) EXPECT_NEAR(matrix(r, c), rows[r][c], 1e-6) << time;
        }
        EXPECT_NEAR(matrix(3, 0), x, 1e-3) << time;
        EXPECT_NEAR(matrix(3, 1), y, 1e-3) << time;
        EXPECT_NEAR(matrix(3, 2), z, 1e-3) << time;
    }
}

TEST_F(IMPORT, bounds_what_a_long_range_costs) {
    root.environment.time_range = {0.0F, 1e9F};
    rotations(add(u"first", -1), {0.0F}, {{0, 0, 0, 1}});
    ASSERT_TRUE(import());
    EXPECT_EQ(frames("first.rz").size(), 2U);
    EXPECT_TRUE(said("W: The playback range is too long"));
}

TEST_F(IMPORT, takes_damaged_hierarchies_and_tracks_in_order) {
    root.environment.time_range = {0.0F, 1.0F};
    add(u"first", 7);
    add(u"free", -1);
    add(u"beyond", 99);
    add(u"itself", 3);
    add(u"circle", 5);
    add(u"circle_too", 4);
    VOR2_MATRIX_NODE& odd = add(u"odd", 0);
    positions(odd, {0.0F, 0.25F, NOT_A_NUMBER, 0.5F}, {{1, 1, 1}, {NOT_A_NUMBER, 0, 0}, {2, 2, 2}, {3, 3, 3}});
    rotations(odd, {}, {});
    VOR2_MATRIX_NODE& resting = add(u"resting", 0);
    positions(resting, {}, {{1, 2, 3}});
    ASSERT_TRUE(import());
    for (const char* name : {"|first", "|free", "|beyond", "|itself", "|circle_too|circle", "|first|odd"})
        EXPECT_EQ(path_of(name).fullPathName(), name);
    std::size_t warnings = 0;
    for (const std::string& message : messages) warnings += message.starts_with("W: Stays under the world") ? 1 : 0;
    EXPECT_EQ(warnings, 3U); // beyond, itself, and the second of the circle
    EXPECT_EQ(values("odd.tx"), (std::vector<double>{100, 300}));
    EXPECT_TRUE(said("W: Keys of the vor2 file that aren't finite"));
    EXPECT_TRUE(values("odd.rx").empty());
    EXPECT_TRUE(values("resting.tx").empty());
    EXPECT_EQ(matrix_at("resting", 0)(3, 1), 300.0);
}

TEST_F(IMPORT, fails_with_nothing_done) {
    const std::size_t before = session.scene().node_count();
    EXPECT_FALSE(import_scene("/nowhere/x.vr2"));
    EXPECT_EQ(messages[0], "E: Failed to read vor2 file: /nowhere/x.vr2");
    add(u"first", -1);
    ASSERT_TRUE(root.save(to_text(file.c_str())));
    std::ofstream(file, std::ios::binary | std::ios::app) << "cut";
    EXPECT_FALSE(import_scene(file.c_str()));
    EXPECT_EQ(session.scene().node_count(), before);
    root.matrix_hierarchy.clear();
    EXPECT_TRUE(import());
    EXPECT_EQ(session.scene().node_count(), before);
    EXPECT_TRUE(said("W: The vor2 file holds no nodes to import"));
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
