#include "tests/format/format_test.h"

#include <cmath>

namespace VOR2_LOADER {
namespace {

VOR2_RIGID_BEZIER_SPLINE chain(std::initializer_list<VECTOR_3> points, std::initializer_list<u32> degrees) {
    VOR2_RIGID_BEZIER_SPLINE spline;
    for (const VECTOR_3& point : points) spline.points.push_back(point);
    for (const u32 degree : degrees) {
        spline.curves.emplace_back().degree = degree;
        spline.curves.back().length = 1.5F;
    }
    spline.link_curves();
    return spline;
}

constexpr VECTOR_3 ZERO{0.0F, 0.0F, 0.0F};

TEST(splines, positions_and_tangents_follow_the_formula) {
    const VECTOR_3 points[7] = {{0, 0, 0}, {1, 2, 0}, {3, 2, 1}, {4, 0, 0}, {5, -2, 0}, {7, 1, 1}, {8, 0, 5}};
    VOR2_RIGID_BEZIER_SPLINE spline =
        chain({points[0], points[1], points[2], points[3], points[4], points[5], points[6]}, {3, 3});
    EXPECT_EQ(spline.total_length(), 3);
    const VOR2_RIGID_BEZIER_SPLINE copy = spline;
    spline.points.clear();
    spline.link_curves();
    constexpr f64 BINOMIALS[] = {1, 3, 3, 1};
    for (int step = 0; step <= 20; ++step) {
        const f64 t = step / 20.0;
        const int curve = t < 0.5 ? 0 : 1;
        const f64 u = 2 * t - curve;
        f64 position[3] = {}, tangent[3] = {};
        for (int i = 0; i <= 3; ++i) {
            const f64 weight = BINOMIALS[i] * std::pow(u, i) * std::pow(1 - u, 3 - i);
            for (int axis = 0; axis < 3; ++axis) {
                constexpr f32 VECTOR_3::*AXES[] = {&VECTOR_3::x, &VECTOR_3::y, &VECTOR_3::z};
                const VECTOR_3* p = points + 3 * curve;
                position[axis] += weight * p[i].*AXES[axis];
                if (i < 3) tangent[axis] += weight * (p[i + 1].*AXES[axis] - p[i].*AXES[axis]);
            }
        }
        VECTOR_3 found;
        copy.position_at(found, static_cast<f32>(t));
        EXPECT_NEAR(found.x, position[0], 1e-4);
        EXPECT_NEAR(found.z, position[2], 1e-4);
        copy.tangent_at(found, static_cast<f32>(t));
        EXPECT_NEAR(found.x, tangent[0], 1e-4);
        EXPECT_NEAR(found.y, tangent[1], 1e-4);
    }
    VECTOR_3 found;
    EXPECT_EQ(copy.position_at(found, 1), points[6]);
    EXPECT_EQ(copy.tangent_at(found, 1), ZERO);
    EXPECT_EQ(spline.position_at(found, 0.5F), ZERO) << "its points are gone";
    const VOR2_RIGID_BEZIER_SPLINE line = chain({{0, 0, 0}, {2, 0, 0}}, {1});
    EXPECT_EQ(line.tangent_at(found, 0.5F), VECTOR_3(1.0F, 0.0F, 0.0F));
    EXPECT_EQ(line.position_at(found, 2), VECTOR_3(4.0F, 0.0F, 0.0F)) << "beyond the end it goes on";
    EXPECT_EQ(line.position_at(found, -1), VECTOR_3(-2.0F, 0.0F, 0.0F));
    spline = line;
    const VOR2_RIGID_BEZIER_SPLINE& itself = spline;
    spline = itself;
    EXPECT_EQ(spline.position_at(found, 2), VECTOR_3(4.0F, 0.0F, 0.0F)) << "its curves look at points of its own";
    const VOR2_RIGID_BEZIER_SPLINE moved = std::move(spline);
    EXPECT_EQ(moved.position_at(found, 0.5F), VECTOR_3(1.0F, 0.0F, 0.0F));
}

TEST(splines, what_cant_be_evaluated_gives_zero) {
    VECTOR_3 found{9, 9, 9};
    EXPECT_EQ(VOR2_RIGID_BEZIER_SPLINE().position_at(found, 0.5F), ZERO);
    EXPECT_EQ(VOR2_RIGID_BEZIER_SPLINE().total_length(), 0);
    const VECTOR_3 one{1, 1, 1};
    const std::initializer_list<u32> degree_lists[] = {{4}, {0xFFFFFFFF}, {3, 3}, {0xFFFFFFFF, 0xFFFFFFFF}};
    for (const auto& degrees : degree_lists) {
        const VOR2_RIGID_BEZIER_SPLINE spline = chain({one, one, one, one, one, one}, degrees);
        EXPECT_EQ(spline.position_at(found, 0.9F), ZERO);
        EXPECT_EQ(spline.tangent_at(found, 0.9F), ZERO);
    }
    const VOR2_RIGID_BEZIER_SPLINE point = chain({one}, {0});
    EXPECT_EQ(point.position_at(found, 0.3F), one);
    EXPECT_EQ(point.tangent_at(found, 0.3F), ZERO);
    for (const f32 t : {std::nanf(""), HUGE_VALF, -HUGE_VALF, 1e30F, -1e30F}) {
        chain({one, one}, {1, 0}).position_at(found, t);
    }
}

TEST(splines, moving_ones_follow_the_clock_and_copies_have_their_own) {
    VOR2_BEZIER_SPLINE_OBJECT object;
    VOR2_ANIM_BEZIER_SPLINE& spline = object.anim_splines.emplace_back();
    spline.point_tracks.push_back({});
    spline.point_tracks.push_back(make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>());
    spline.point_tracks[1]->add_key({0, 0, 0}, 0);
    spline.point_tracks[1]->add_key({8, 0, 0}, 1);
    spline.curves.emplace_back().degree = 1;
    spline.link_curves();
    object.box_track = make_owned<VOR2_ANIMATABLE_BOUNDING_BOX_LINEAR>();
    object.box_track->add_key({}, 0);
    object.box_track->add_key({}, 1);
    VOR2_BEZIER_SPLINE_OBJECT copy(object);
    object.set_time(0.5F);
    VECTOR_3 found;
    EXPECT_EQ(object.anim_splines[0].position_at(found, 0.5F), VECTOR_3(2.0F, 0.0F, 0.0F));
    EXPECT_EQ(object.box_track->cursor_fraction(), 0);
    EXPECT_EQ(copy.anim_splines[0].position_at(found, 1), ZERO);
    copy = object;
    VOR2_ANIM_BEZIER_SPLINE alone;
    alone = object.anim_splines[0];
    object.set_time(1);
    EXPECT_EQ(alone.position_at(found, 1), VECTOR_3(4.0F, 0.0F, 0.0F));
    EXPECT_EQ(copy.anim_splines[0].position_at(found, 1), VECTOR_3(4.0F, 0.0F, 0.0F));
    for (int i = 0; i < 20; ++i) object.anim_splines.emplace_back();
    EXPECT_EQ(object.anim_splines[0].position_at(found, 1), VECTOR_3(8.0F, 0.0F, 0.0F)) << "moved, not cut off";
}

} // namespace
} // namespace VOR2_LOADER
