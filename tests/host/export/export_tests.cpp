#include "tests/host/host_test.h"

#include <maya/MAnimControl.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MObject.h>

#include <cmath>

namespace VOR2_EXPORTER_MAYA {
namespace {

using TEXTS = std::vector<std::string>;
using INDICES = std::vector<int>;

class EXPORT : public HOST_TEST {
protected:
    static std::vector<f32> times(const VOR2& root, const char* name) {
        const auto times = node(root, name).position_track->key_times().view();
        return {times.begin(), times.end()};
    }
};

TEST_F(EXPORT, samples_from_the_start_to_less_than_a_step_past_the_stop) {
    const MDagPath hips = make("joint", "hips");
    animate(hips, "translateX", {0, 1}, {0, 2400}); // a metre a frame
    select({"hips"});
    MGlobal::viewFrame(7.0);
    EXPORT_SETTINGS& settings = export_settings();
    settings.start_frame = 0;
    settings.stop_frame = 1;
    for (const bool update_view : {true, false}) {
        settings.update_view = update_view;
        const VOR2 root = exported();
        EXPECT_EQ(times(root, "hips"), (std::vector<f32>{0, 1 / 60.0F, 2 / 60.0F, 3 / 60.0F}));
        for (u64 k = 0; k < 4; ++k)
            EXPECT_NEAR(node(root, "hips").position_track->key_values()[k].x, 0.4F * static_cast<f32>(k), 1e-6F);
        EXPECT_EQ(root.environment.sample_rate, 60.0);
        EXPECT_EQ(root.environment.time_range.end, 1 / 24.0F);
        EXPECT_EQ(MAnimControl::currentTime().as(MTime::uiUnit()), 7.0);
    }
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    MObject selected;
    ASSERT_TRUE(selection.getDependNode(0, selected));
    EXPECT_EQ(MFnDependencyNode(selected).name(), "time1");
}

TEST_F(EXPORT, states_times_in_seconds_at_every_rate) {
    const MDagPath hips = make("joint", "hips");
    animate(hips, "translateX", {0, 10}, {0, 1000});
    select({"hips"});
    EXPORT_SETTINGS& settings = export_settings();
    settings.start_frame = 10;
    settings.stop_frame = 11;
    settings.sample_at = 24;
    EXPECT_EQ(times(exported(), "hips"), (std::vector<f32>{10 / 24.0F, 11 / 24.0F}));
    session.scene().time_unit = *headless::TimeUnit::by_name("120fps"); // a rate without a name of its own
    settings.sample_at = 60;
    const VOR2 root = exported();
    EXPECT_EQ(times(root, "hips"), (std::vector<f32>{5 / 60.0F, 6 / 60.0F}));
    EXPECT_EQ(root.environment.time_range.start, 10 / 120.0F);
}

TEST_F(EXPORT, puts_an_inserted_root_over_the_nodes_selected) {
    const MDagPath hips = make("joint", "hips");
    const MDagPath knee = make("joint", "knee", hips);
    make("joint", "foot", knee);
    make("transform", "group", knee);
    make("locator", "marker", knee);
    make("orientConstraint", "turns", hips);
    make("pointConstraint", "moves", hips);
    make("parentConstraint", "holds", hips);
    make("joint", "prop");
    select({"hips", "prop"});
    const VOR2 root = exported();
    EXPECT_EQ(names(root), (TEXTS{"Exporter Inserted Root", "hips", "knee", "foot", "group", "prop"}));
    EXPECT_EQ(parents(root), (INDICES{-1, 0, 1, 2, 2, 0}));
    for (const VOR2_MATRIX_NODE& one : root.matrix_hierarchy.nodes) {
        EXPECT_EQ(one.position_track->key_values().size(), 1U);
        EXPECT_EQ(one.rotation_track->key_values().size(), 1U);
    }
    expect_rotation(root.matrix_hierarchy.nodes[0].rotation_track->key_values()[0], 0, 0, 0, 1);
}

TEST_F(EXPORT, hangs_nodes_whose_parent_is_left_out_under_the_inserted_root) {
    const MDagPath hips = make("joint", "hips");
    make("joint", "foot", make("joint", "knee", hips));
    select({"knee"});
    EXPECT_EQ(parents(exported()), (INDICES{-1, 0, 1}));
}

TEST_F(EXPORT, takes_what_begins_with_a_selected_path_along) {
    make("joint", "knee", make("joint", "joint10"));
    make("joint", "joint1");
    make("joint", "other");
    select({"joint1"});
    EXPECT_EQ(names(exported()), (TEXTS{"Exporter Inserted Root", "joint10", "knee", "joint1"}));
    const MDagPath other = path_of("other");
    make("joint", "arm_end", make("joint", "arm_twist", other));
    make("joint", "arm", other);
    make("joint", "leg", other);
    select({"|other|arm"});
    EXPECT_EQ(names(exported()), (TEXTS{"Exporter Inserted Root", "arm_twist", "arm_end", "arm"}));
}

TEST_F(EXPORT, gives_a_node_in_two_selections_two_places_with_the_same_keys) {
    const MDagPath hips = at("joint", "hips", {0, 100, 0});
    const MDagPath knee = at("joint", "knee", {10, 20, 30}, hips);
    at("joint", "foot", {1, 2, 3}, knee);
    select({"hips", "knee"});
    const VOR2 root = exported();
    EXPECT_EQ(names(root), (TEXTS{"Exporter Inserted Root", "hips", "knee", "foot", "knee", "foot"}));
    EXPECT_EQ(parents(root), (INDICES{-1, 0, 1, 2, 1, 4}));
    const auto& nodes = root.matrix_hierarchy.nodes;
    for (const auto& [first, second] : {std::pair{2, 4}, {3, 5}}) {
        const auto one = static_cast<u64>(first), two = static_cast<u64>(second);
        EXPECT_TRUE(nodes[one].position_track->equals(*nodes[two].position_track));
        EXPECT_TRUE(nodes[one].rotation_track->equals(*nodes[two].rotation_track));
    }
}

TEST_F(EXPORT, follows_the_last_node_of_a_name_before_namespaces_go) {
    session.scene().add_namespace("a");
    session.scene().add_namespace("b");
    const MDagPath left = make("transform", "left"), right = make("transform", "right");
    at("joint", "hand", {1, 0, 0}, left);
    at("joint", "hand", {2, 0, 0}, right);
    at("joint", "a:hip", {3, 0, 0}, left);
    at("joint", "b:hip", {4, 0, 0}, right);
    select({"left", "right"});
    const auto x_of = [](const VOR2& root, u64 index) {
        return root.matrix_hierarchy.nodes[index].position_track->key_values()[0].x;
    };
    const VOR2 root = exported();
    EXPECT_EQ(names(root), (TEXTS{"Exporter Inserted Root", "left", "hand", "hip", "right", "hand", "hip"}));
    EXPECT_FLOAT_EQ(x_of(root, 2), 0.02F);
    EXPECT_FLOAT_EQ(x_of(root, 5), 0.02F);
    EXPECT_FLOAT_EQ(x_of(root, 3), 0.03F);
    EXPECT_FLOAT_EQ(x_of(root, 6), 0.04F);
    export_settings().strip_namespace = false;
    EXPECT_EQ(names(exported())[6], "b:hip");
}

TEST_F(EXPORT, strips_all_namespaces_but_no_name_to_nothing) {
    VOR2_MATRIX_HIERARCHY hierarchy;
    hierarchy.nodes.grow_by(4);
    const char16_t* before[] = {u"a:b:c", u"c", u"a:", u":x"};
    const char16_t* after[] = {u"c", u"c", u"a:", u"x"};
    for (u64 i = 0; i < 4; ++i) hierarchy.nodes[i].name = before[i];
    strip_namespaces(hierarchy);
    for (u64 i = 0; i < 4; ++i) EXPECT_EQ(hierarchy.nodes[i].name, TEXT(after[i]));
}

TEST_F(EXPORT, writes_a_file_that_loads) {
    const MDagPath hips = make("joint", "hips");
    animate(hips, "rotateZ", {0, 1}, {0, 6});
    select({"hips"});
    const std::string path = temporary_folder() + "export tests.vr2";
    ASSERT_TRUE(build_and_save(path.c_str()));
    EXPECT_EQ(messages,
              (TEXTS{"I: Building vor2...", "I: Building vor2 - translating nodes...",
                     "I: Building vor2 - finalising vr2...", "I: Saving vor2 as " + path + "...", "I: Done."}));
    VOR2 loaded;
    ASSERT_TRUE(loaded.load(to_text(path.c_str()), true));
    const auto& rotations = node(loaded, "hips").rotation_track->key_values();
    // Six radians pass half a turn, where a matrix gives the other sign: the signs are made to agree.
    for (u64 k = 1; k < rotations.size(); ++k) {
        const QUATERNION &a = rotations[k - 1], &b = rotations[k];
        EXPECT_GT(a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w, 0.99F);
    }
    messages.clear();
    EXPECT_FALSE(build_and_save("/nowhere/at/all.vr2"));
    EXPECT_EQ(messages.back(), "E: Failed to write vor2 file: /nowhere/at/all.vr2");
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
