#include "tests/host/host_test.h"

#include "host/export/transform_conversion.h"

#include <cmath>
#include <numbers>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr f32 HALF_ROOT = 0.70710678F;
using TRANSFORM_CONVERSION = HOST_TEST;

TEST_F(TRANSFORM_CONVERSION, swaps_y_and_z_and_turns_top_level_nodes) {
    const MDagPath hips = at("joint", "hips", {100, 200, 300});
    at("joint", "knee", {100, 200, 300}, hips);
    select({"hips"});
    for (const bool rotate_180 : {false, true}) {
        export_settings().rotate_180 = rotate_180;
        const VOR2 root = exported();
        const VOR2_MATRIX_NODE &top = node(root, "hips"), &child = node(root, "knee");
        ASSERT_EQ(top.position_track->key_times().size(), 1U);
        expect_vector(child.position_track->key_values()[0], 1, 3, 2);
        expect_rotation(child.rotation_track->key_values()[0], 0, 0, 0, 1);
        const f32 turned = rotate_180 ? 1.0F : -1.0F;
        expect_vector(top.position_track->key_values()[0], turned, 2, -3 * turned);
        const QUATERNION& rotation = top.rotation_track->key_values()[0];
        if (rotate_180)
            expect_rotation(rotation, HALF_ROOT, 0, 0, -HALF_ROOT);
        else
            expect_rotation(rotation, 0, HALF_ROOT, HALF_ROOT, 0);
    }
}

TEST_F(TRANSFORM_CONVERSION, takes_an_inch_scale_from_the_first_node_for_all) {
    const MDagPath first = at("transform", "first", {1, 0, 0});
    const MDagPath under = at("joint", "under", {100, 200, 300}, first);
    at("joint", "second", {100, 0, 0});
    select({"first", "second"});
    set(first, "scaleX", 2.54);
    const VOR2 scaled = exported();
    expect_vector(node(scaled, "under").position_track->key_values()[0], 2.54F, 7.62F, 5.08F, 2e-6F);
    expect_vector(node(scaled, "second").position_track->key_values()[0], 2.54F, 0, 0);
    set(first, "scaleX", 2.5400001);
    expect_vector(node(exported(), "under").position_track->key_values()[0], 1, 3, 2);
    expect_vector(local_position(under), 1, 3, 2);
    expect_vector(local_position_scaled(under), 2.54F, 7.62F, 5.08F, 2e-6F);
    select({"second", "first"});
    set(first, "scaleX", 2.54);
    expect_vector(node(exported(), "under").position_track->key_values()[0], 1, 3, 2);
}

TEST_F(TRANSFORM_CONVERSION, drops_scale_and_keeps_rotation) {
    const MDagPath big = at("joint", "big", {0, 0, 0});
    const MDagPath child = at("joint", "child", {100, 0, 0}, big);
    const MDagPath grandchild = at("joint", "grandchild", {0, 0, 0}, child);
    set(at("transform", "sheared", {0, 0, 0}, big), "shearXY", 1.5);
    for (const char* axis : {"scaleX", "scaleY", "scaleZ"}) set(big, axis, 2.0);
    set(child, "segmentScaleCompensate", 0);
    set(child, "rotateZ", std::numbers::pi / 2);
    set(grandchild, "scaleY", 0.0);
    select({"big"});
    const VOR2 root = exported();
    expect_vector(node(root, "child").position_track->key_values()[0], 1, 0, 0);
    // A quarter turn about the host's z is one about the file's y the other way round.
    expect_rotation(node(root, "child").rotation_track->key_values()[0], 0, -HALF_ROOT, 0, HALF_ROOT);
    expect_rotation(local_rotation(child), 0, -HALF_ROOT, 0, HALF_ROOT);
    expect_rotation(local_rotation_scaled(child), 0, -HALF_ROOT, 0, HALF_ROOT);
    EXPECT_TRUE(std::isnan(node(root, "grandchild").rotation_track->key_values()[0].w));
    EXPECT_TRUE(said("W: A scale of 0 leaves this node without a rotation: grandchild"));
    EXPECT_TRUE(said("W: Shear leaves this node a rotation that isn't of unit length: sheared"));
    EXPECT_FALSE(said("W: Shear leaves this node a rotation that isn't of unit length: child"));
}

TEST_F(TRANSFORM_CONVERSION, measures_from_the_origin_node_at_the_first_frame) {
    const MDagPath origin = at("transform", "origin", {0, 0, 0});
    animate(origin, "translateX", {0, 1}, {0, 240});
    set(origin, "translateY", 50);
    set(origin, "translateZ", 30);
    at("joint", "hips", {100, 200, 300});
    export_settings().use_node_origin = "origin";
    export_settings().export_node_list.append("hips");
    export_settings().start_frame = 12; // the origin stands at x 120
    MGlobal::viewFrame(3.0);
    const VOR2 root = exported();
    // Sampled: (1, 3, 2). The offset, (-1.2, -0.3, -0.5) as sampled, is added with y and z swapped; then two half
    // turns leave (x, z, -y).
    expect_vector(node(root, "hips").position_track->key_values()[0], -0.2F, 1.7F, -2.5F, 1e-5F);
    export_settings().export_node_list.clear();
    select({"hips"});
    EXPECT_EQ(names(exported()).size(), 2U) << "the selection is read before the clock takes it";
    select({"hips"});
    export_settings().use_node_origin = "nobody";
    EXPECT_EQ(names(exported()).size(), 2U);
    EXPECT_TRUE(said("W: The origin node has no place in the scene: nobody"));
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
