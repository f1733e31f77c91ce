#include "headless/geometry/triangulation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using namespace headless;

namespace {

struct Polygon {
    Mesh mesh;

    explicit Polygon(const std::vector<std::pair<double, double>>& corners, std::vector<std::size_t> holes = {}) {
        for (const auto& [x, y] : corners) mesh.points.push_back(narrow({x, y, 0.0}));
        std::vector<int> vertices(corners.size());
        std::iota(vertices.begin(), vertices.end(), 0);
        mesh.add_face(vertices);
        if (!holes.empty()) mesh.holes.push_back({0, std::move(holes)});
    }

    std::vector<std::size_t> triangles() const {
        std::vector<std::size_t> out;
        Triangulation(mesh).face(0, out);
        return out;
    }
};

// Twice the area of each triangle, counter-clockwise positive.
std::vector<double> areas(const Polygon& polygon) {
    std::vector<double> out;
    const std::vector<std::size_t> corners = polygon.triangles();
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
        const Float3 a = polygon.mesh.points[corners[i]], b = polygon.mesh.points[corners[i + 1]],
                     c = polygon.mesh.points[corners[i + 2]];
        out.push_back((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x));
    }
    return out;
}

double total(const std::vector<double>& list) {
    return std::accumulate(list.begin(), list.end(), 0.0);
}

} // namespace

TEST(Triangulation, cuts_a_convex_face_into_a_fan_about_its_last_corner) {
    EXPECT_EQ(Polygon({{0, 0}, {1, 0}, {1, 1}, {0, 1}}).triangles(), (std::vector<std::size_t>{0, 1, 3, 3, 1, 2}));
    EXPECT_EQ(Polygon({{0, 0}, {2, 0}, {3, 1}, {1, 2}, {-1, 1}}).triangles(),
              (std::vector<std::size_t>{0, 1, 4, 4, 1, 2, 4, 2, 3}));
    EXPECT_TRUE(Polygon({{0, 0}, {1, 0}}).triangles().empty());
    EXPECT_TRUE(Polygon(std::vector<std::pair<double, double>>{}).triangles().empty());
}

// Triangles that all run the face's way and add up to its area cover it without overlap.
TEST(Triangulation, covers_concave_and_holed_faces) {
    const struct {
        const char* what;
        Polygon polygon;
        std::size_t triangles;
        double twice_area;
    } cases[] = {
        {"arrow", Polygon({{0, 0}, {2, 1}, {0, 2}, {1, 1}}), 2, 2.0},
        {"comb",
         Polygon({{0, 0}, {5, 0}, {5, 3}, {4, 3}, {4, 1}, {3, 1}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}}), 10,
         22.0},
        {"with points on its sides", Polygon({{0, 0}, {1, 0}, {2, 0}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}), 5, 8.0},
        {"window", Polygon({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {1, 1}, {1, 2}, {2, 2}, {2, 1}}, {4}), 8, 30.0},
        {"two windows side by side",
         Polygon({{0, 0}, {9, 0}, {9, 3}, {0, 3}, {1, 1}, {1, 2}, {2, 2}, {2, 1}, {6, 1}, {6, 2}, {8, 2}, {8, 1}},
                 {4, 4}),
         14, 48.0},
    };
    for (const auto& [what, polygon, count, twice_area] : cases) {
        SCOPED_TRACE(what);
        const std::vector<double> found = areas(polygon);
        EXPECT_EQ(found.size(), count);
        EXPECT_NEAR(total(found), twice_area, 1e-6);
        for (const double area : found) EXPECT_GE(area, 0.0);
    }
}

TEST(Triangulation, gives_as_many_triangles_whatever_the_shape) {
    const double nan = std::nan("");
    EXPECT_EQ(areas(Polygon({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}})).size(), 3u);         // on a line
    EXPECT_EQ(areas(Polygon({{0, 0}, {0, 0}, {0, 0}, {0, 0}})).size(), 2u);                 // on a point
    EXPECT_EQ(areas(Polygon({{0, 0}, {2, 2}, {2, 0}, {0, 2}, {1, 5}})).size(), 3u);         // crosses itself
    EXPECT_EQ(areas(Polygon({{0, 0}, {nan, 0}, {1, nan}, {0, 1}, {nan, nan}})).size(), 3u); // nowhere
    EXPECT_EQ(areas(Polygon({{0, 0}, {4, 0}, {4, 4}, {9, 9}}, {1})).size(), 4u);            // a hole of one corner
    std::vector<std::pair<double, double>> star;
    for (int i = 0; i < 40'000; ++i) {
        const double angle = 2.0 * 3.14159265358979 * i / 40'000, radius = i % 2 ? 1.0 : 2.0;
        star.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
    }
    EXPECT_EQ(areas(Polygon(star)).size(), 39'998u);
    star.resize(1000);
    EXPECT_EQ(areas(Polygon(star)).size(), 998u);
}
