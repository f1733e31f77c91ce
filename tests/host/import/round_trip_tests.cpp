#include "tests/host/host_test.h"

#include <maya/MAnimControl.h>
#include <maya/MFileIO.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr f32 POSITION_TOLERANCE = 3e-4F; // metres
constexpr double ANGLE_TOLERANCE = 0.1 * std::numbers::pi / 180;

VECTOR_3 position_at(const VOR2_MATRIX_NODE& node, f32 time) {
    VECTOR_3 out;
    node.position_track->set_time(time);
    return node.position_track->value(out);
}
QUATERNION rotation_at(const VOR2_MATRIX_NODE& node, f32 time) {
    QUATERNION out;
    node.rotation_track->set_time(time);
    return node.rotation_track->value(out);
}
f32 length(const QUATERNION& q) {
    return std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
}
double angle_between(const QUATERNION& a, const QUATERNION& b) {
    const QUATERNION conjugate{-a.x, -a.y, -a.z, a.w};
    const QUATERNION d = conjugate * b;
    const double sine =
        std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z) / double(length(a) * length(b));
    return 2 * std::asin(std::min(1.0, sine));
}

/// Exports a scene file, imports that into a new scene, exports again, and compares all child nodes.
class ROUND_TRIP : public HOST_TEST {
protected:
    VOR2 export_to(const std::string& file, const std::string& nodes) {
        VOR2 root;
        // The host exports a selection, whatever is named.
        EXPECT_TRUE(session.run_mel("select -r persp; VOR2Export -f \"" + file + "\"" + nodes));
        EXPECT_TRUE(root.load(to_text(file.c_str()), true)) << file;
        return root;
    }
    std::string top_level_transforms() {
        std::string out;
        for (const headless::Node* node : session.scene().world().children()) {
            if (node->type().is_shape() || node->default_node()) continue;
            out += " -enl \"|" + node->name() + "\"";
        }
        return out;
    }
    void expect_same_children(const VOR2& first, const VOR2& second) {
        const auto& before = first.matrix_hierarchy.nodes;
        const auto& after = second.matrix_hierarchy.nodes;
        // The second file has one node more: the first one's inserted root is a joint by now.
        ASSERT_EQ(after.size(), before.size() + 1);
        const f32 start = first.environment.time_range.start, end = first.environment.time_range.end;
        EXPECT_NEAR(second.environment.time_range.start, start, 1e-5F);
        EXPECT_NEAR(second.environment.time_range.end, end, 1e-5F);
        for (u64 i = 1; i < before.size(); ++i) {
            if (before[i].parent_index == 0) continue;
            double worst_angle = 0;
            f32 worst_distance = 0;
            for (int tick = 0; start + static_cast<f32>(tick) / 60 <= end; ++tick) {
                const f32 time = start + static_cast<f32>(tick) / 60;
                const VECTOR_3 away = position_at(before[i], time) - position_at(after[i + 1], time);
                worst_distance = std::max({worst_distance, std::fabs(away.x), std::fabs(away.y), std::fabs(away.z)});
                const QUATERNION turned = rotation_at(before[i], time);
                // The axes of a sheared pose give no rotation, and a joint can't take them up.
                if (std::fabs(length(turned) - 1) > 1e-4F) continue;
                worst_angle = std::max(worst_angle, angle_between(turned, rotation_at(after[i + 1], time)));
            }
            EXPECT_LT(worst_distance, POSITION_TOLERANCE) << to_host_text(before[i].name).asChar();
            EXPECT_LT(worst_angle, ANGLE_TOLERANCE) << to_host_text(before[i].name).asChar();
        }
    }
    void round_trip(const std::string& nodes) {
        const std::string unit = session.scene().time_unit.name;
        const VOR2 first = export_to(temporary_folder() + "first.vr2", nodes);
        session.new_scene();
        ASSERT_TRUE(
            session.run_mel("currentUnit -t " + unit + "; VOR2Import -f \"" + temporary_folder() + "first.vr2\""));
        const VOR2 second = export_to(temporary_folder() + "second.vr2", " -enl Exporter_Inserted_Root");
        expect_same_children(first, second);
    }
};

TEST_F(ROUND_TRIP, keeps_the_poses_of_a_walk_with_orients_and_holds) {
    const MDagPath hips = at("joint", "hips", {0, 90, 0});
    const MDagPath thigh = at("joint", "thigh", {10, -5, 0}, hips);
    const MDagPath shin = at("joint", "shin", {0, -40, 0}, thigh);
    set(thigh, "jointOrientX", 0.4);
    set(shin, "rotateOrder", 3);
    animate(hips, "translateZ", {0, 2}, {0, 180});
    animate(thigh, "rotateX", {0, 0.5, 1, 1.5, 2}, {0.6, -0.6, 0.6, 0.6, -0.6});
    animate(shin, "rotateX", {0, 0.5, 1, 2}, {0, 1.2, 0, 12}); // nearly two turns in the last second
    animate(shin, "rotateY", {0, 1, 2}, {0, 1.5, -1.6});
    animate(shin, "translateX", {0, 1, 2}, {0, 0, 0.3});
    MAnimControl::setMinTime(MTime(0.0));
    MAnimControl::setMaxTime(MTime(48.0));
    round_trip(" -enl hips");
}

TEST_F(ROUND_TRIP, keeps_the_poses_of_real_scenes) {
    if (!std::filesystem::is_directory(VOR2_SHARED_DATA)) GTEST_SKIP();
    for (const auto& entry : std::filesystem::directory_iterator(VOR2_SHARED_DATA)) {
        const std::string file = entry.path().string();
        if (!file.ends_with(".ma") && !file.ends_with(".bvh")) continue;
        SCOPED_TRACE(file);
        session.new_scene();
        ASSERT_TRUE(session.open_file(file));
        round_trip(top_level_transforms());
    }
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
