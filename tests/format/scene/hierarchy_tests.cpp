#include "tests/format/format_test.h"

namespace VOR2_LOADER {
namespace {

void give_tracks(VOR2_MATRIX_NODE& node, VECTOR_3 position, QUATERNION rotation) {
    node.position_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    node.position_track->add_key(position, 0);
    node.rotation_track = make_owned<VOR2_ANIMATABLE_QUATERNION_SLERP>();
    node.rotation_track->add_key(rotation, 0);
}

constexpr f32 HALF_ROOT = 0.70710678F;
const QUATERNION QUARTER_TURN_ABOUT_Z{0, 0, HALF_ROOT, HALF_ROOT};

TEST(hierarchy, world_matrices_compose_down_the_chain) {
    VOR2_MATRIX_HIERARCHY hierarchy;
    hierarchy.nodes.grow_by(2);
    give_tracks(hierarchy.nodes[0], {1, 2, 3}, QUARTER_TURN_ABOUT_Z);
    give_tracks(hierarchy.nodes[1], {10, 0, 0}, QUATERNION::identity());
    hierarchy.nodes[1].parent_index = 0;
    hierarchy.nodes[0].scale_track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    hierarchy.nodes[0].scale_track->add_key({2, 1, 1}, 0);
    hierarchy.link_parents();
    hierarchy.set_time(0);
    // The parent's x axis is turned to y and twice as long.
    const VECTOR_3 axis = hierarchy.nodes[0].world_matrix.column(0);
    EXPECT_NEAR(axis.y, 2, 1e-6);
    const VECTOR_3 place = hierarchy.nodes[1].world_matrix.translation();
    EXPECT_NEAR(place.x, 1, 1e-5);
    EXPECT_NEAR(place.y, 22, 1e-5);
    EXPECT_NEAR(place.z, 3, 1e-5);
}

TEST(hierarchy, a_bad_parent_leaves_a_root_and_is_written_back) {
    for (const i32 parent : {1, 2, 7, -5, 0x7FFFFFFF}) {
        BYTES node;
        node.text(u"n").words({static_cast<u32>(parent), 0, 0, 0}).text(u"").words({0, 0, 0, 0, 0});
        VOR2_MATRIX_HIERARCHY hierarchy;
        load_whole(hierarchy, BYTES().words({2}).bytes(node).bytes(node));
        EXPECT_EQ(hierarchy.nodes[1].parent_matrix, nullptr) << parent;
        hierarchy.set_time(1);
        EXPECT_EQ(hierarchy.nodes[1].world_matrix, MATRIX_3X4::identity());
        EXPECT_EQ(hierarchy.nodes[0].parent_index, parent);
    }
}

TEST(hierarchy, node_records_of_every_age) {
    BYTES matrix;
    for (int i = 0; i < 16; ++i) matrix.floats({static_cast<f32>(i)});
    const BYTES head = BYTES().text(u"hip").words({0xFFFFFFFF, 0, 0});
    const BYTES bag = BYTES().words({0, 0, 0, 0, 0});
    const BYTES newest = BYTES().bytes(head).words({0}).text(u"x").bytes(bag);
    const std::pair<f32, BYTES> ages[] = {
        {1.00F, BYTES().bytes(head).bytes(matrix).text(u"x")},
        {1.04F, BYTES().bytes(head).bytes(matrix).text(u"x").bytes(bag)},
        {1.05F, BYTES().bytes(head).bytes(matrix).text(u"x").bytes(bag)},
        {1.06F, BYTES().bytes(head).text(u"x").bytes(bag)},
        {1.15F, newest},
    };
    for (const auto& [version, bytes] : ages) {
        VOR2_MATRIX_NODE node;
        load_whole(node, bytes, version);
        EXPECT_EQ(node.world_matrix.m[1][3], version <= 1.05F ? 13.0F : 0.0F) << version;
        EXPECT_EQ(saved_record(node), newest.data) << version;
    }
}

} // namespace
} // namespace VOR2_LOADER
