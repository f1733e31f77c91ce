#include "tests/format/format_test.h"

#include <cmath>
#include <random>

namespace VOR2_LOADER {
namespace {

using VERT = VOR2_TRI_CLIPPER_RIGID_VERT;

/// A corner whose values all follow linearly from where it stands.
VERT corner(f32 x, f32 z) {
    VERT vertex;
    vertex.clip_position = {x, x + z, z};
    vertex.position = {2 * x, 3 * z, x - z};
    vertex.normal = {0, 0, 2};
    vertex.colour = {x, z, x + z, 1};
    vertex.uvs.push_back({x, z, 1});
    vertex.binormal_tangents.emplace_back(VECTOR_3{3, 0, 0}, VECTOR_3{0, 3, 0});
    return vertex;
}

struct POINT {
    f64 x, z;
};

/// Sutherland and Hodgman's clip of a polygon by one half plane, in double precision.
std::vector<POINT> half(const std::vector<POINT>& polygon, f64 POINT::*axis, f64 limit, f64 sign) {
    std::vector<POINT> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const POINT a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        const f64 da = (a.*axis - limit) * sign, db = (b.*axis - limit) * sign;
        if (da >= 0) kept.push_back(a);
        if ((da >= 0) == (db >= 0)) continue;
        const f64 t = da / (da - db);
        kept.push_back({a.x + (b.x - a.x) * t, a.z + (b.z - a.z) * t});
    }
    return kept;
}

std::vector<POINT> plain_clip(std::vector<POINT> polygon, f64 min_x, f64 min_z, f64 max_x, f64 max_z) {
    polygon = half(polygon, &POINT::x, min_x, 1);
    polygon = half(polygon, &POINT::z, min_z, 1);
    polygon = half(polygon, &POINT::x, max_x, -1);
    return half(polygon, &POINT::z, max_z, -1);
}

f64 area(const std::vector<POINT>& polygon) {
    f64 sum = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const POINT a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        sum += a.x * b.z - b.x * a.z;
    }
    return sum / 2;
}

struct RESULT {
    bool changed;
    std::vector<const VERT*> vertices;
};

RESULT clip(const std::vector<VERT>& polygon, f32 min_x, f32 min_z, f32 max_x, f32 max_z) {
    clip_begin();
    for (const VERT& vertex : polygon) EXPECT_TRUE(clip_add_vertex(vertex));
    VERT* first = nullptr;
    RESULT result{clip_to_rectangle(min_x, min_z, max_x, max_z, first), {}};
    for (const VERT* vertex = first; vertex != nullptr && result.vertices.size() < 20; vertex = vertex->next) {
        result.vertices.push_back(vertex);
    }
    return result;
}

TEST(clipper, agrees_with_a_plain_clip_in_double_precision) {
    std::mt19937 engine(3);
    std::uniform_real_distribution<f32> number(-2, 2);
    for (int run = 0; run < 20000; ++run) {
        const int corners = run % 2 == 0 ? 3 : 4;
        std::vector<POINT> polygon;
        const f32 turn = number(engine), x0 = number(engine), z0 = number(engine);
        for (int i = 0; i < corners; ++i) {
            // Corners around a centre, in order: a convex polygon.
            const f32 angle = turn + static_cast<f32>(i) * 6.2831853F / static_cast<f32>(corners);
            const f32 x = x0 + std::cos(angle) * 1.7F, z = z0 + std::sin(angle) * (run % 3 == 0 ? 0.2F : 1.7F);
            polygon.push_back({x, z});
        }
        std::vector<VERT> vertices;
        for (const POINT& p : polygon) vertices.push_back(corner(static_cast<f32>(p.x), static_cast<f32>(p.z)));
        const RESULT found = clip(vertices, -0.75F, -1, 1, 0.5F);
        const std::vector<POINT> expected = plain_clip(polygon, -0.75, -1, 1, 0.5);
        std::vector<POINT> points;
        for (const VERT* vertex : found.vertices) {
            const VECTOR_3 p = vertex->clip_position;
            points.push_back({p.x, p.z});
            ASSERT_TRUE(p.x >= -0.75F && p.x <= 1 && p.z >= -1 && p.z <= 0.5F) << run;
            EXPECT_NEAR(p.y, p.x + p.z, 1e-5);
            EXPECT_NEAR(vertex->position.x, 2 * p.x, 1e-5);
            EXPECT_NEAR(vertex->colour.green, p.z, 1e-5);
            EXPECT_NEAR(vertex->uvs[0].y, p.z, 1e-5);
            // A new corner's normal is of unit length, one that was added stays as it is.
            EXPECT_TRUE(vertex->normal.z == 2 || (found.changed && std::abs(vertex->normal.z - 1) < 1e-6F));
        }
        EXPECT_NEAR(area(points), area(expected), 1e-4) << run;
    }
}

TEST(clipper, telling_cases) {
    const std::vector<VERT> triangle{corner(0, 0), corner(1, 0), corner(0, 1)};
    RESULT found = clip(triangle, -1, -1, 1, 1);
    EXPECT_FALSE(found.changed) << "on the edge is inside";
    ASSERT_EQ(found.vertices.size(), 3U);
    EXPECT_EQ(found.vertices[1]->normal, VECTOR_3(0.0F, 0.0F, 2.0F)) << "as it was added";
    found = clip(triangle, -3, -3, -2, 3);
    EXPECT_TRUE(found.changed && found.vertices.empty()) << "wholly beyond one edge";
    found = clip({corner(3, 0), corner(0, 3), corner(3, 3)}, -1, -1, 1, 1);
    EXPECT_TRUE(found.changed && found.vertices.empty()) << "around a corner, outside by no one edge";

    found = clip({corner(0, 0), corner(-1, 1), corner(-1, -1)}, 0, -5, 5, 5);
    ASSERT_EQ(found.vertices.size(), 3U) << "a corner on the edge and two cuts in the same place";
    for (const VERT* vertex : found.vertices) EXPECT_EQ(vertex->clip_position.x, 0);

    // The first corner is outside: the list starts with the cut from the last outside corner.
    found = clip({corner(-1, 0), corner(1, -1), corner(1, 1)}, 0.3F, -5, 5, 5);
    ASSERT_EQ(found.vertices.size(), 4U);
    EXPECT_EQ(found.vertices[0]->clip_position.x, 0.3F) << "exactly the edge";
    EXPECT_LT(found.vertices[0]->clip_position.z, 0);
    EXPECT_EQ(found.vertices[1]->clip_position, VECTOR_3(1.0F, 0.0F, -1.0F));

    const OWNED<VOR2_VERT> clone = found.vertices[0]->clone();
    EXPECT_EQ(dynamic_cast<VERT*>(clone.get()), nullptr) << "a clone is a plain vertex";
    EXPECT_EQ(saved_record(*found.vertices[0]).size(), 48U + 12 + 24);
}

TEST(clipper, odd_polygons_end_in_order) {
    EXPECT_TRUE(clip({}, 0, 0, 1, 1).vertices.empty());
    clip_begin();
    for (u32 i = 0; i < 6; ++i) EXPECT_EQ(clip_add_vertex(corner(0, 0)), i < MOST_CLIP_VERTICES);
    // Ends with other lists, with opposite normals, and where one number is none.
    std::vector<VERT> polygon{corner(-1, 0), corner(1, -1), corner(1, 1)};
    polygon[1].uvs.clear();
    polygon[2].binormal_tangents.emplace_back();
    polygon[2].normal = {0, 0, -2};
    RESULT found = clip(polygon, 0, -5, 5, 5);
    ASSERT_EQ(found.vertices.size(), 4U);
    EXPECT_EQ(found.vertices[0]->uvs.size(), 1U);
    polygon[0].clip_position.x = std::nanf("");
    static_cast<void>(clip(polygon, 0, -0.5F, 0.5F, 5));
    // A bow tie over every edge and a dart, at many places.
    for (f32 shift = -2; shift < 2; shift += 0.01F) {
        static_cast<void>(clip({corner(shift, -2), corner(shift, 2), corner(2, -2), corner(-2, 2)}, -1, -1, 1, 1));
        static_cast<void>(clip({corner(-2, shift), corner(2, 0), corner(-2, -shift), corner(0, 0)}, -1, -1, 1, 1));
    }
    found = clip({corner(0, 0), corner(1, 0)}, 0.5F, -1, 2, 1);
    EXPECT_TRUE(found.changed);
}

} // namespace
} // namespace VOR2_LOADER
